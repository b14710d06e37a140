// Diction without limits counts with a hashed table in large blocks of text; within
// the limits its list must be the same bytes as the list the table searched in order
// makes. And the byte-set masks the counter cuts words with, and its sort of words.
#include "analysis/word_count.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>

#include "analysis/line_blocks.h"
#include "analysis/word_list.h"

#include "analysis/analysis_common.h"
#include "analysis/diction.h"
#include "analysis_test_support.h"

namespace zv {
namespace {

using test::FileExists;
using test::ReadFile;
using test::TempDir;
using test::WriteFile;

// Text with what Diction's counting must get right: hyphen runs, label lines,
// question marks, case, tabs, NUL bytes, words of 35 characters and longer ones that
// begin with them, every line end, and a last line without one.
std::string DictionText(std::mt19937& random, int lines) {
  const std::string stem35(35, 'q');
  const std::string pieces[] = {"cost",      "COST",        "Cost-benefit", "cost--benefit", "a---b",    "----",
                                "well-known", "why?",       "Record - 7",   "Record -- 7",   "Record --- 7", " ",
                                "  ",        ",",           ".",            "\t",            std::string(1, '\0'),
                                stem35,      stem35 + "x",  stem35 + "yz",  "QQQ",           "-",        "x"};
  static const char* ends[] = {"\r\n", "\n", "\r"};
  std::string text;
  for (int i = 0; i < lines; ++i) {
    for (int j = 0, n = static_cast<int>(random() % 9); j < n; ++j) text += pieces[random() % std::size(pieces)];
    if (i + 1 < lines || random() % 2) text += ends[random() % 3];
  }
  return text;
}

// The list, and after it the lines read and the unique words the job reported.
std::string ListOf(const TempDir& dir, const std::string& text, bool large) {
  WriteFile(dir.file("words.txt"), text);
  JobState job;
  const JobResult r =
      Diction(job, NoProgress(), DictionParams{dir.file("words.txt"), dir.file("OMIT.LST"), large, 1'700'000'000});
  EXPECT_EQ(r.outcome, JobOutcome::Done);
  return (FileExists(dir.file("words.DIC")) ? ReadFile(dir.file("words.DIC")) : "<none>") + "|lines " +
         std::to_string(r.lines) + "|words " + std::to_string(r.records);
}

TEST(DictionWithoutLimits, ListsWhatTheTableSearchedInOrderLists) {
  std::mt19937 random(3);
  const std::string stem35(35, 'q');
  const std::string omits[] = {"", "cost\r\nwhy\r\n", "qqq\r\n" + stem35 + "x\r\n" + stem35 + "\r\n", "\r\nCOST\r\n"};
  for (int round = 0; round < 60; ++round) {
    TempDir dir;
    const std::string& omit = omits[round % std::size(omits)];
    if (!omit.empty()) WriteFile(dir.file("OMIT.LST"), omit);
    const std::string text = DictionText(random, 1 + static_cast<int>(random() % 40));
    const std::string exact = ListOf(dir, text, false);
    EXPECT_EQ(ListOf(dir, text, true), exact) << "round " << round << ":\n" << text;
  }
}

TEST(DictionWithoutLimits, ALongWordSeenFirstCarriesTheCountOfItsStem) {
  // The stem's element is the long word's when that came first: 1 + 2, and the other
  // long word stands alone; the other way round the stem counts only itself.
  const std::string stem(35, 'q');
  struct Case {
    std::string text;
    std::string body;
  } cases[] = {
      {stem + "x " + stem + " " + stem + "y " + stem + " z z z z",
       " 4      z\r\n 3      " + stem + "\r\n 1      " + stem + "\r\n"},
      {stem + " " + stem + "x " + stem + " z z z z", " 4      z\r\n 2      " + stem + "\r\n 1      " + stem + "\r\n"},
  };
  for (const Case& c : cases) {
    TempDir dir;
    const std::string list = ListOf(dir, c.text + "\r\n", true);
    EXPECT_EQ(list.substr(list.find("\r\n\r\n", list.find("Unique")) + 4), c.body + "|lines 1|words 3");
    EXPECT_EQ(ListOf(dir, c.text + "\r\n", false), list);
  }
}

// A larger text: thousands of distinct words (the table grows, words held in their
// slots and longer ones side by side), lines past the 64 KB pieces the counter cuts
// the text into and one line longer than a piece, hyphen runs and label words across
// the 64-byte steps of its scan, bytes above 127, NUL and tab inside words.
std::string LargerText(std::mt19937& random) {
  const std::string stem35(35, 'q');
  std::vector<std::string> pool;
  for (int i = 0; i < 2500; ++i) {
    std::string w;
    const int len = 1 + static_cast<int>(random() % 16);
    for (int k = 0; k < len; ++k) {
      const auto r = static_cast<unsigned>(random() % 40);
      w += r < 26 ? static_cast<char>((random() % 3 ? 'a' : 'A') + r) : r < 36 ? static_cast<char>('0' + r - 26)
           : r == 36 ? '\xE9' : r == 37 ? '-' : r == 38 ? '\t' : '\0';
    }
    pool.push_back(w);
  }
  const std::string odd[] = {"cost--benefit", "a---b", "----", "-----", "x-", "-y", "Record - 7", "Record -- 7",
                             "Record--- 7",   "x -- Record y", "record - 5", "RECORD - 5", "why?", ",", ".",
                             stem35,          stem35 + "x",    stem35 + "yz", std::string(11, 'k'), std::string(12, 'k'),
                             " - ",           "--Print"};
  static const char* ends[] = {"\r\n", "\n", "\r"};
  std::string text;
  for (int line = 0; line < 2600; ++line) {
    const int words = line == 1300 ? 9000 : static_cast<int>(random() % 14);
    for (int j = 0; j < words; ++j) {
      const auto r = static_cast<unsigned>(random() % 100);
      if (r < 40)
        text += pool[random() % 60];  // a few common words
      else if (r < 80)
        text += pool[random() % pool.size()];
      else if (r < 90)
        text += odd[random() % std::size(odd)];
      else
        text += std::to_string(random() % 3000);
      text += random() % 7 ? " " : random() % 2 ? "--" : ", ";
    }
    text += ends[random() % 3];
  }
  return text + pool[0];  // the last line without its end
}

TEST(DictionWithoutLimits, ListsWhatTheTableSearchedInOrderListsOnLargerTexts) {
  std::mt19937 random(41);
  const std::string omits[] = {"", "cost\r\n" + std::string(12, 'k') + "\r\n" + std::string(35, 'q') + "x\r\n"};
  for (int round = 0; round < 4; ++round) {
    TempDir dir;
    const std::string& omit = omits[round % std::size(omits)];
    if (!omit.empty()) WriteFile(dir.file("OMIT.LST"), omit);
    const std::string text = LargerText(random);
    ASSERT_GT(text.size(), std::size_t{3} << 16);
    const std::string exact = ListOf(dir, text, false);
    ASSERT_NE(exact.find("Unique Words:  "), std::string::npos);
    EXPECT_EQ(ListOf(dir, text, true), exact) << "round " << round;
  }
}

TEST(DictionWithoutLimits, ATextEndingAtA64ByteStepOrHeldByASeparatePieceCountsTheSame) {
  // Texts of 63 to 129 bytes ending in a word, a hyphen or a line end, fed to the
  // counter with exactly the 64 bytes it may read after them.
  std::mt19937 random(5);
  for (std::size_t size = 63; size <= 129; ++size) {
    for (const char* tail : {"w", "-", "--", "\r"}) {
      std::string text;
      while (text.size() + std::strlen(tail) < size) text += random() % 5 ? static_cast<char>('a' + random() % 3) : ' ';
      text += tail;
      auto listOf = [&](std::size_t cut) {
        WordCounter counter({});
        std::string whole = text.substr(0, cut) + std::string(64, '-');
        counter.countLines(whole.data(), cut, 10);
        if (cut < text.size()) {
          std::string rest = text.substr(cut) + std::string(64, '-');
          counter.countLines(rest.data(), text.size() - cut, 10);
        }
        std::string list = std::to_string(counter.unique()) + "|";
        counter.writeList([&list](std::string_view part) { list += part; });
        return list;
      };
      TempDir dir;
      const std::string exact = ListOf(dir, text, false);
      const std::string whole = listOf(text.size());
      EXPECT_EQ(exact.substr(exact.find("\r\n\r\n", exact.find("Unique")) + 4),
                whole.substr(whole.find('|') + 1) + "|lines 1|words " + whole.substr(0, whole.find('|')))
          << size << " " << tail;
      // Cut after a blank: the same words in two calls.
      const std::size_t blank = text.find(' ', 20);
      if (blank != std::string::npos) {
        EXPECT_EQ(listOf(blank + 1), whole) << size << " " << tail;
      }
    }
  }
}

TEST(DictionWithoutLimits, CountsNoMoreLinesThanAsked) {
  // The lines after the last one asked for are not read, however their ends and the
  // 64 KB pieces fall.
  std::mt19937 random(12);
  static const char* ends[] = {"\r\n", "\n", "\r"};
  for (const std::size_t width : {std::size_t{9}, std::size_t{70000}}) {
    std::vector<std::string> lines;
    for (int i = 0; i < 7; ++i) {
      std::string line;
      while (line.size() < width) line += "w" + std::to_string(random() % 50) + (random() % 4 ? " " : "--");
      lines.push_back(line + ends[random() % 3]);
    }
    lines.back().resize(lines.back().find_last_not_of("\r\n") + 1);  // the last without its end
    auto listOf = [](const std::string& text, std::size_t most, std::size_t& counted) {
      WordCounter counter({});
      const std::string padded = text + std::string(64, 'x');
      counted = counter.countLines(padded.data(), text.size(), most);
      std::string list;
      counter.writeList([&list](std::string_view part) { list += part; });
      return std::to_string(counter.unique()) + "|" + list;
    };
    std::string all;
    for (const std::string& line : lines) all += line;
    for (std::size_t most = 0; most <= lines.size() + 1; ++most) {
      std::string first;
      for (std::size_t i = 0; i < std::min(most, lines.size()); ++i) first += lines[i];
      std::size_t counted = 0, whole = 0;
      const std::string got = listOf(all, most, counted);
      EXPECT_EQ(got, listOf(first, lines.size(), whole)) << width << " " << most;
      EXPECT_EQ(counted, std::min(most, lines.size())) << width << " " << most;
      EXPECT_EQ(whole, std::min(most, lines.size())) << width << " " << most;
    }
  }
}

// A text of known counts, longer than a read block: counts far past 16 bits (of a word
// held in its slot and of a longer one), omitted words of both kinds, label lines,
// words cut by "--" and by the delimiters, in any case, shuffled over lines of every
// end. The list is made from the counts, not from the counter.
TEST(DictionWithoutLimits, CountsPastSixteenBitsOverManyReadBlocks) {
  struct Word {
    std::string spelled;  // as the text has it, before its case is mixed
    int count;
  };
  std::vector<Word> words = {{"the", 700'000}, {"big", 70'000}, {"abcdefghijklmnop", 65'537},
                             {"of", 400'000},  {"omittedwords", 5}, {"x", 65'535}};
  for (int i = 0; i < 3000; ++i) words.push_back({"w" + std::to_string(i), 2 + i % 50});
  for (int i = 0; i < 100; ++i) words.push_back({"s" + std::to_string(i) + "-" + std::to_string(i * 7), 1});
  std::vector<const Word*> tokens;
  for (const Word& w : words) tokens.insert(tokens.end(), static_cast<std::size_t>(w.count), &w);
  std::mt19937 random(77);
  std::shuffle(tokens.begin(), tokens.end(), random);

  static const char* seps[] = {" ", "--", ", ", ".", " -- ", "; "};
  static const char* ends[] = {"\r\n", "\n", "\r"};
  std::string text;
  std::size_t lines = 0;
  for (std::size_t t = 0; t < tokens.size(); ++lines) {
    if (random() % 500 == 0) {
      text += "Record - " + std::to_string(t) + " the big w1\r\n";  // no words
      ++lines;
    }
    for (auto n = 1 + random() % 20; n > 0 && t < tokens.size(); --n, ++t) {
      std::string w = tokens[t]->spelled;
      if (random() % 4 == 0) w[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(w[0])));
      text += w + seps[random() % std::size(seps)];
    }
    text += ends[random() % std::size(ends)];
  }
  ASSERT_GT(text.size(), LineBlocks::kBlock);

  // Falling count, then the word's bytes; every group is written, as the last one's
  // count is 1.
  std::vector<const Word*> listed;
  for (const Word& w : words)
    if (w.spelled != "of" && w.spelled != "omittedwords") listed.push_back(&w);
  std::sort(listed.begin(), listed.end(), [](const Word* a, const Word* b) {
    return a->count != b->count ? a->count > b->count : a->spelled < b->spelled;
  });
  std::string body;
  for (const Word* w : listed) {
    std::string count = " " + std::to_string(w->count) + " ";
    count.resize(std::max<std::size_t>(count.size(), 8), ' ');
    body += count + w->spelled + "\r\n";
  }

  TempDir dir;
  WriteFile(dir.file("OMIT.LST"), "of\r\nomittedwords\r\nOf\r\n");
  const std::string list = ListOf(dir, text, true);
  const std::string unique = "Unique Words:  " + std::to_string(listed.size()) + "\r\n\r\n";
  ASSERT_NE(list.find(unique), std::string::npos) << list.substr(0, 200);
  const std::string got = list.substr(list.find(unique) + unique.size());
  EXPECT_EQ(got.substr(0, 60), body.substr(0, 60));
  EXPECT_EQ(got, body + "|lines " + std::to_string(lines) + "|words " + std::to_string(listed.size()));
}

TEST(WordKeys, SortAsTheirWordsDo) {
  std::mt19937 random(8);
  const unsigned char alphabets[][4] = {{'0', '1', '9', '-'}, {0, 1, 0xFF, 'a'}};
  for (std::size_t n : {0, 1, 47, 48, 49, 300, 5000, 60000}) {
    for (const auto& alphabet : alphabets) {
      std::vector<std::string> words;
      std::vector<WordKey> keys, scratch(n);
      for (std::size_t i = 0; i < n; ++i) {
        std::string w;
        for (auto len = static_cast<unsigned>(1 + random() % 11), k = 0u; k < len; ++k) w += static_cast<char>(alphabet[random() % 4]);
        words.push_back(w);
        keys.push_back(WordKey::of(w.data(), w.size()));
      }
      SortWordKeys(keys.data(), scratch.data(), n);
      std::sort(words.begin(), words.end());
      std::vector<std::string> spelled;
      for (const WordKey& k : keys) {
        char out[16];
        spelled.emplace_back(out, k.spell(out));
      }
      EXPECT_EQ(spelled, words) << n;
    }
  }
  // A word longer than eleven bytes sorts after the words it begins with.
  const std::string longer = "abcdefghijkl";
  EXPECT_LT(WordKey::of("abcdefghijk", 11), WordKey::of(longer.data(), longer.size()));
  EXPECT_LT(WordKey::of(longer.data(), longer.size()), WordKey::of("abcdefghijl", 11));
}

TEST(ScanText, TheWidePassMarksWhatTheBytewiseOneMarks) {
  // Texts of 0 to 300 bytes full of what the pass looks for, each scanned into a fresh
  // result by the wide pass and into one reused result byte by byte, which must
  // forget the piece before.
  std::mt19937 random(21);
  const std::string alphabet = std::string("aZ-- \r\n\r-?.,\t") + '\0' + "\xC9\xFF" + "Q9";
  TextScan reused;
  for (std::size_t n = 0; n <= 300; ++n) {
    for (int round = 0; round < 3; ++round) {
      std::string text;
      for (std::size_t i = 0; i < n + 64; ++i) text += alphabet[random() % alphabet.size()];
      TextScan wide;
      ScanText(text.data(), n, wide);
      ScanTextBytewise(text.data(), n, reused);
      const std::size_t masks = (n + 63) / 64 + 1;
      const std::string at = "n " + std::to_string(n) + " round " + std::to_string(round);
      EXPECT_EQ(std::vector<uint64_t>(wide.ends.begin(), wide.ends.begin() + masks),
                std::vector<uint64_t>(reused.ends.begin(), reused.ends.begin() + masks)) << at;
      EXPECT_EQ(std::vector<uint64_t>(wide.lineEnds.begin(), wide.lineEnds.begin() + masks),
                std::vector<uint64_t>(reused.lineEnds.begin(), reused.lineEnds.begin() + masks)) << at;
      EXPECT_EQ(wide.hyphens, reused.hyphens) << at;
      EXPECT_EQ(std::string(wide.lower.data(), n), std::string(reused.lower.data(), n)) << at;
      EXPECT_EQ(wide.lines, reused.lines) << at;
    }
  }
}

TEST(ByteSetMasks, TheHalvesOfAByteTellWhetherItIsInTheSet) {
  // Sets whose high halves fall into at most eight classes of low halves have the two
  // tables, and these find exactly the set's bytes; every set answers byte by byte.
  struct Case {
    const char* name;
    bool (*in)(int c);
    bool tables;
  } cases[] = {
      {"word ends", [](int c) { return DictionWordEnds().has(static_cast<unsigned char>(c)); }, true},
      {"eight classes", [](int c) { return (c & 15) == ((c >> 4) & 7); }, true},
      {"sixteen classes", [](int c) { return (c & 15) == (c >> 4); }, false},
      {"none", [](int) { return false; }, true},
  };
  const DelimiterSet delims(kDicDelims);
  for (int c = 0; c < 256; ++c)
    EXPECT_EQ(DictionWordEnds().has(static_cast<unsigned char>(c)), delims.has(static_cast<char>(c)) || c == '\r' || c == '\n') << c;
  for (const Case& k : cases) {
    std::array<bool, 256> in{};
    for (int c = 0; c < 256; ++c) in[static_cast<std::size_t>(c)] = k.in(c);
    const ByteSetMasks set(in);
    ASSERT_EQ(set.nibbles(), k.tables) << k.name;
    for (int c = 0; c < 256; ++c) {
      const auto u = static_cast<unsigned char>(c);
      EXPECT_EQ(set.has(u), in[u]) << k.name << " " << c;
      if (k.tables) {
        EXPECT_EQ((set.lowTable()[u & 15] & set.highTable()[u >> 4]) != 0, in[u]) << k.name << " " << c;
      }
    }
  }
}

}  // namespace
}  // namespace zv
