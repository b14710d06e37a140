// Diction: the omit list, counting the words, their order, and the .DIC.
#include "analysis/diction.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <vector>

#include "analysis/analysis_common.h"
#include "analysis/line_blocks.h"
#include "analysis/exchange_sort.h"
#include "analysis/select_record_file.h"
#include "analysis/word_count.h"
#include "core/brindle.h"
#include "core/error.h"
#include "core/files.h"
#include "core/input_file.h"
#include "core/line_reader.h"
#include "core/text.h"
#include "core/text_out.h"

namespace zv {

namespace {

constexpr int32_t kOmitMax = 500;
constexpr int32_t kWordsMax = 10000;

[[noreturn]] void subscriptError(const std::string& detail) {
  throw ZvError(9, "Subscript out of range", detail);
}

// An element of the word table: the word as stored (cut to 35 characters) and its count.
struct WordRec {
  std::string word;
  int32_t count = 0;
};

// Words to their first element, by hashing, for the no-limits mode. Finds what the
// search in order would find first. A slot keeps the word's hash beside the element
// number, so that a probe rarely looks at the element itself.
class WordIndex {
 public:
  static uint64_t hash(std::string_view s) {
    uint64_t h = 1469598103934665603ull;
    for (char c : s) h = (h ^ static_cast<unsigned char>(c)) * 1099511628211ull;
    return h ^ (h >> 29);
  }
  int32_t find(std::string_view word, uint64_t h) const {
    if (slots_.empty()) return 0;
    const auto tag = static_cast<uint32_t>(h >> 32);
    for (std::size_t i = h & mask_;; i = (i + 1) & mask_) {
      const Slot& slot = slots_[i];
      if (slot.at == 0) return 0;
      if (slot.tag == tag && (*words_)[static_cast<std::size_t>(slot.at)].word == word) return slot.at;
    }
  }
  int32_t find(std::string_view word) const { return find(word, hash(word)); }
  // Notes element `at` under its word, unless an earlier element has the word already.
  void add(const std::vector<WordRec>& words, int32_t at) {
    words_ = &words;
    if (static_cast<std::size_t>(used_ + 1) * 2 > slots_.size()) grow();
    const std::string& word = words[static_cast<std::size_t>(at)].word;
    const uint64_t h = hash(word);
    const auto tag = static_cast<uint32_t>(h >> 32);
    for (std::size_t i = h & mask_;; i = (i + 1) & mask_) {
      Slot& slot = slots_[i];
      if (slot.at == 0) {
        slot = {at, tag};
        ++used_;
        return;
      }
      if (slot.tag == tag && words[static_cast<std::size_t>(slot.at)].word == word) return;
    }
  }

 private:
  struct Slot {
    int32_t at = 0;
    uint32_t tag = 0;
  };
  void grow() {
    std::vector<Slot> old;
    old.swap(slots_);
    slots_.assign(old.empty() ? 1024 : old.size() * 2, Slot{});
    mask_ = slots_.size() - 1;
    used_ = 0;
    for (const Slot& slot : old)
      if (slot.at != 0) add(*words_, slot.at);
  }

  const std::vector<WordRec>* words_ = nullptr;
  std::vector<Slot> slots_;
  std::size_t mask_ = 0;
  int32_t used_ = 0;
};

// gsOmit, searched in order, or by hashing without limits.
class OmitList {
 public:
  void read(const std::string& path, bool large) {
    LineReader in(path);
    std::string line;
    while (in.readLine(line)) {
      if (!large && static_cast<int32_t>(entries_.size()) == kOmitMax) subscriptError(path);
      entries_.push_back({line, 0});
    }
    // The list is cut to the lines read, and an array of none is the subscript error.
    if (!large && entries_.empty()) subscriptError(path);
    entries_.insert(entries_.begin(), WordRec{});
    if (large)
      for (int32_t i = 1; i < static_cast<int32_t>(entries_.size()); ++i) index_.add(entries_, i);
    large_ = large;
  }
  bool empty() const { return entries_.size() <= 1; }
  std::vector<std::string> lines() const {
    std::vector<std::string> out;
    for (std::size_t i = 1; i < entries_.size(); ++i) out.push_back(entries_[i].word);
    return out;
  }
  bool has(std::string_view word) const {
    if (large_) return index_.find(word) != 0;
    for (std::size_t i = 1; i < entries_.size(); ++i)
      if (entries_[i].word == word) return true;
    return false;
  }

 private:
  std::vector<WordRec> entries_;
  WordIndex index_;
  bool large_ = false;
};

// Counts each word met. Element 0 stays empty at count 0.
class WordTable {
 public:
  explicit WordTable(bool large) : large_(large), words_(1) {}

  // Counts `word`; true when it was a new word.
  bool count(std::string_view word) {
    int32_t at = 0;
    if (large_) {
      // A word longer than its slot never equals what was stored of it.
      if (word.size() <= kDicWordLen) at = index_.find(word);
    } else {
      for (std::size_t i = 1; i < words_.size(); ++i) {
        if (words_[i].word == word) {
          at = static_cast<int32_t>(i);
          break;
        }
      }
    }
    if (at != 0) {
      int32_t& n = words_[static_cast<std::size_t>(at)].count;
      if (large_) {
        Add32(n, 1, "the count of a word");
      } else {
        if (n == std::numeric_limits<int16_t>::max())
          ThrowOverflow(LimitReason("the count of a word", std::numeric_limits<int16_t>::max()) + " \"" +
                        words_[static_cast<std::size_t>(at)].word + "\" passed it.");
        ++n;
      }
      return false;
    }
    if (!large_ && static_cast<int32_t>(words_.size()) > kWordsMax) subscriptError("gWordRec");
    words_.push_back({std::string(word.substr(0, kDicWordLen)), 1});
    if (large_) index_.add(words_, static_cast<int32_t>(words_.size() - 1));
    return true;
  }

  int32_t unique() const { return static_cast<int32_t>(words_.size() - 1); }
  std::vector<WordRec>& elements() { return words_; }

 private:
  bool large_;
  std::vector<WordRec> words_;
  WordIndex index_;
};

// Writes elements first..last of `words` as one group, alphabetized.
void writeGroup(TextOut& dic, const std::vector<WordRec>& words, int32_t first, int32_t last, bool large) {
  std::vector<WordRec> group(1);
  group.insert(group.end(), words.begin() + first, words.begin() + last + 1);
  const int32_t n = last - first + 1;
  if (large)
    StableSortFrom1(group, n, [](const WordRec& a, const WordRec& b) { return a.word < b.word; });
  else
    GapExchangeSort(group, n, [](const WordRec& a, const WordRec& b) { return a.word > b.word; });
  for (int32_t i = 1; i <= n; ++i) {
    const WordRec& w = group[static_cast<std::size_t>(i)];
    PrintLine(!large).number(w.count).tab(9).text(w.word).writeTo(dic);
  }
}

// The words of one line as the counting loop takes them: "--" made a blank, the line
// trimmed, passed over when it holds "Record - ", cut at the delimiters, lowered.
template <class OnWord>
void forEachLineWord(std::string& line, const DelimiterSet& delims, std::string& word, OnWord&& onWord) {
  if (line.find("--") != std::string::npos) ReplaceAll(line, "--", " ");
  const std::string_view text = TrimBlanks(line);
  // Label lines, and any line holding the label's words, are passed over whole.
  if (text.empty() || text.find("Record - ") != std::string_view::npos) return;
  std::size_t at = 0;
  while (at < text.size()) {
    if (delims.has(text[at])) {  // delimiters in a row make no word
      ++at;
      continue;
    }
    std::size_t end = at;
    while (end < text.size() && !delims.has(text[end])) ++end;
    word.assign(text.substr(at, end - at));
    at = end;
    LowerInPlace(word.data(), word.size());
    onWord(word);
  }
}

// The .DIC of a count without limits: the five head lines, then the counter's list.
JobOutcome writeLargeList(Job& job, JobResult& result, const DictionParams& params, const std::string& gsDicFile,
                          WordCounter& counter) {
  if (counter.unique() > std::numeric_limits<int32_t>::max())
    ThrowOverflow(LimitReason("the distinct words of a list", std::numeric_limits<int32_t>::max()));
  const auto unique = static_cast<int32_t>(counter.unique());
  job.outputs.add(gsDicFile);
  TextOut dic(gsDicFile);
  dic.line("Diction List for " + params.gsInFile);
  dic.line(ReportDateLine(params.reportTime));
  dic.blank();
  PrintLine(false).text("Unique Words: ").str(unique).writeTo(dic);
  dic.blank();
  counter.writeList([&dic](std::string_view lines) { dic.raw(lines); });
  dic.close();
  result.records = unique;
  job.finish(result);
  return JobOutcome::Done;
}

JobResult noCommand() {
  JobResult none;
  none.outcome = JobOutcome::NoCommand;
  return none;
}

}  // namespace

std::string DicFileOf(const std::string& inFile) { return StemOf(inFile) + ".DIC"; }

std::string OmitFileIn(const std::string& appPath) {
  return appPath.empty() ? std::string("OMIT.LST") : appPath + "/OMIT.LST";
}

std::optional<Message> OmitListMissing(const std::string& omitFile) {
  if (Exist(omitFile)) return std::nullopt;
  return Message{"No Omit List", "The optional omit list file, " + omitFile + ", does not exist."};
}

JobResult Diction(JobState& state, JobProgress& progress, const DictionParams& params) {
  return RunJob(state, progress, [&](Job& job, JobResult& result) {
    const bool large = params.large;
    AnalysisProgress& panels = PanelsOf(job.progress);
    job.state.gsInFile = params.gsInFile;
    job.state.gsBaseName = StemOf(params.gsInFile);
    const std::string gsDicFile = DicFileOf(params.gsInFile);
    // The list would be written over the file it was made from.
    if (SameFile(params.gsInFile, gsDicFile)) {
      result.message = Message{std::string(kProInputTitle), std::string(kInputIsOutputText)};
      return JobOutcome::Refused;
    }

    OmitList omit;
    if (Exist(params.gsOmitFile)) omit.read(params.gsOmitFile, large);

    const int64_t size = FileSize(params.gsInFile);
    job.state.glLineCount = LineCount(params.gsInFile);
    const int32_t glLineCount = job.state.glLineCount;
    job.start(result, "Generating Diction List", size, glLineCount);
    // The line counter is 16-bit: the loop cannot begin on a longer file.
    if (!large) Narrow16(glLineCount, "the lines Diction reads (glLineCount)");

    const DelimiterSet delims(kDicDelims);
    if (large) {
      // Without limits: the file in large blocks of whole lines, which the counter
      // takes line by line as the loop below would.
      WordCounter counter(omit.lines());
      LineBlocks in(params.gsInFile);
      int32_t n = 0;
      int64_t shown = 0;
      while (n < glLineCount) {
        std::string_view block = in.next();
        if (block.empty()) break;
        n += static_cast<int32_t>(counter.countLines(block.data(), block.size(), static_cast<std::size_t>(glLineCount - n)));
        if (counter.unique() != shown) {
          shown = counter.unique();
          panels.uniqueWords(static_cast<int32_t>(std::min<int64_t>(shown, INT32_MAX)));
        }
        if (job.lineDone(n, glLineCount)) return JobOutcome::Interrupted;
      }
      result.lines = n;
      return writeLargeList(job, result, params, gsDicFile, counter);
    }

    WordTable table(large);
    LineReader in(params.gsInFile);
    std::string line, word;
    int32_t n = 0;
    while (n < glLineCount && in.readLine(line)) {
      ++n;
      forEachLineWord(line, delims, word, [&](const std::string& w) {
        if (!omit.empty() && omit.has(w)) return;
        if (table.count(w)) panels.uniqueWords(table.unique());
      });
      if (job.lineDone(n, glLineCount)) return JobOutcome::Interrupted;
    }
    result.lines = n;

    // Ordering: by falling count; the exchange sequence settles equal counts.
    std::vector<WordRec>& words = table.elements();
    const int32_t unique = table.unique();
    if (large)
      StableSortFrom1(words, unique, [](const WordRec& a, const WordRec& b) { return a.count > b.count; });
    else
      GapExchangeSort(words, unique, [](const WordRec& a, const WordRec& b) { return a.count < b.count; });

    job.outputs.add(gsDicFile);
    TextOut dic(gsDicFile);
    dic.line("Diction List for " + params.gsInFile);
    dic.line(ReportDateLine(params.reportTime));
    dic.blank();
    PrintLine(!large).text("Unique Words: ").str(unique).writeTo(dic);
    dic.blank();
    // A group is written when a lower count follows it; the closing group only when
    // its count is 1, so the lowest group of a list without single words is left out.
    int32_t groupStart = 1;
    for (int32_t p = 1; p <= unique; ++p) {
      if (words[static_cast<std::size_t>(p)].count >= words[static_cast<std::size_t>(p - 1)].count) continue;
      writeGroup(dic, words, groupStart, p - 1, large);
      if (words[static_cast<std::size_t>(p)].count == 1) {
        writeGroup(dic, words, p, unique, large);
        break;
      }
      groupStart = p;
    }
    dic.close();

    result.records = unique;
    job.finish(result);
    return JobOutcome::Done;
  });
}

JobResult DictionCommand(CommandContext& context) {
  const auto* params = context.get<DictionParams>();
  return params ? Diction(context.job, context.progress, *params) : noCommand();
}

}  // namespace zv
