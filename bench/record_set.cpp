// The generated record set: made-up works printed in four services' forms, planted
// duplicates and planted look-alikes, and the truth of which record is which work.
#include "record_set.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <random>

#include "core/text_out.h"

namespace zv::bench {

namespace {

enum Form { kNlm, kOvid, kDialog, kDataStar, kForms };
constexpr std::array<const char*, kForms> kFormFiles{"nlm.PRO", "ovid.PRO", "dialog.PRO", "datastar.PRO"};
constexpr std::array<const char*, 12> kMonths{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                              "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

struct Rng {
  std::mt19937_64 g;
  explicit Rng(uint64_t seed) : g(seed) {}
  uint32_t below(uint32_t n) { return static_cast<uint32_t>(g() % n); }
  double unit() { return static_cast<double>(g() >> 11) * (1.0 / 9007199254740992.0); }
};

// Made-up words of two to four syllables, all different.
std::vector<std::string> makeWords(Rng& r, std::size_t n, int minSyllables, int maxSyllables) {
  static const char* kOnsets[] = {"b", "c", "d", "f", "g", "h", "k", "l", "m", "n", "p", "r", "s", "t", "v",
                                  "br", "ch", "cl", "dr", "fl", "gr", "pl", "pr", "sh", "st", "tr", "th"};
  static const char* kVowels[] = {"a", "e", "i", "o", "u", "ai", "ea", "io", "ou"};
  static const char* kCodas[] = {"", "", "", "n", "r", "s", "l", "m", "t", "x", "nd", "st"};
  std::vector<std::string> out;
  out.reserve(n);
  std::vector<std::string> seen;
  while (out.size() < n) {
    std::string w;
    const int syllables = minSyllables + static_cast<int>(r.below(static_cast<uint32_t>(maxSyllables - minSyllables + 1)));
    for (int s = 0; s < syllables; ++s) {
      w += kOnsets[r.below(std::size(kOnsets))];
      w += kVowels[r.below(std::size(kVowels))];
      if (s + 1 == syllables || r.below(3) == 0) w += kCodas[r.below(std::size(kCodas))];
    }
    out.push_back(std::move(w));
  }
  std::sort(out.begin(), out.end());
  out.erase(std::unique(out.begin(), out.end()), out.end());
  std::shuffle(out.begin(), out.end(), r.g);
  return out;
}

// Draws k with probability proportional to 1 / (k + 10): a few words very common, most rare.
class Skewed {
 public:
  explicit Skewed(std::size_t n) : cdf_(n) {
    double sum = 0;
    for (std::size_t k = 0; k < n; ++k) cdf_[k] = sum += 1.0 / (static_cast<double>(k) + 10.0);
  }
  std::size_t draw(Rng& r) const {
    const double u = r.unit() * cdf_.back();
    return static_cast<std::size_t>(std::lower_bound(cdf_.begin(), cdf_.end(), u) - cdf_.begin());
  }

 private:
  std::vector<double> cdf_;
};

struct Person {
  std::string surname;
  std::string given;  // "Anna B."
  std::string initials;  // "AB"
};

struct Work {
  uint32_t id = 0;
  std::string main;      // the title before its subtitle
  std::string subtitle;  // empty when none
  std::vector<Person> authors;
  std::string journal;
  int year = 0, month = 0, volume = 0, issue = 0, firstPage = 0, lastPage = 0;
  std::string doi;
  uint32_t pmid = 0;
  uint32_t accession = 0;
  std::string abstract;
};

// How a copy differs from the first printing, besides its form.
enum class Change { None, Letter, Word, Case, CutSubtitle };

std::string capitalised(std::string s) {
  if (!s.empty()) s[0] = static_cast<char>(s[0] - 'a' + 'A');
  return s;
}

class Generator {
 public:
  Generator(const std::string& dir, const RecordSetOptions& o, RecordSet& set)
      : dir_(dir), options_(o), set_(set), r_(o.seed), words_(makeWords(r_, 30000, 2, 4)),
        names_(makeWords(r_, 20000, 2, 3)), wordPick_(words_.size()), namePick_(names_.size()) {
    static const char* kStop[] = {"of", "the", "in", "and", "on", "for", "with", "after", "under", "from"};
    stop_.assign(std::begin(kStop), std::end(kStop));
    for (int j = 0; j < 2000; ++j) {
      std::string name = j % 3 == 0 ? "Journal of" : j % 3 == 1 ? "Annals of" : "Reviews in";
      for (int k = 0; k < 1 + j % 3; ++k) name += " " + capitalised(words_[wordPick_.draw(r_)]);
      journals_.push_back(name);
    }
    mixed_.open(dir + "/mixed.PRO");
    for (int f = 0; f < kForms; ++f) forms_[f].open(dir + "/" + kFormFiles[f]);
    set_.mixedPro = dir + "/mixed.PRO";
    for (const char* f : kFormFiles) set_.forms.push_back(dir + "/" + f);
    set_.workOf.assign(kForms, {});
  }

  void run() {
    while (set_.records < options_.records) {
      // Copies come out among the later records, about one record in seven.
      if (!pending_.empty() && r_.unit() < 0.15) {
        const std::size_t i = r_.below(static_cast<uint32_t>(pending_.size()));
        printCopy(pending_[i]);
        pending_[i] = std::move(pending_.back());
        pending_.pop_back();
        continue;
      }
      auto work = std::make_shared<Work>(newWork());
      const int form = static_cast<int>(r_.below(kForms));
      print(*work, form, Change::None, true, true);
      const double u = r_.unit();
      const int copies = u < 0.02 ? 3 : u < 0.17 ? 1 : 0;
      for (int c = 0; c < copies; ++c) pending_.push_back({work, (form + 1 + c) % kForms});
      if (r_.unit() < 0.01) lookAlike(*work, form);
    }
    mixed_.close();
    for (TextOut& f : forms_) f.close();
  }

 private:
  struct Copy {
    std::shared_ptr<Work> work;
    int form;
  };

  std::string word() { return words_[wordPick_.draw(r_)]; }

  std::string phrase(int n) {
    std::string s;
    for (int k = 0; k < n; ++k) {
      if (!s.empty()) s += ' ';
      s += (k > 0 && r_.below(4) == 0) ? stop_[r_.below(static_cast<uint32_t>(stop_.size()))] : word();
    }
    return s;
  }

  Work newWork() {
    Work w;
    w.id = static_cast<uint32_t>(set_.works++);
    w.main = capitalised(phrase(5 + static_cast<int>(r_.below(8))));
    if (r_.below(4) == 0) w.subtitle = phrase(3 + static_cast<int>(r_.below(4)));
    const int people = 1 + static_cast<int>(r_.below(6));
    for (int p = 0; p < people; ++p) {
      Person person;
      person.surname = capitalised(names_[namePick_.draw(r_)]);
      const char second = static_cast<char>('A' + r_.below(26));
      person.given = capitalised(names_[r_.below(static_cast<uint32_t>(names_.size()))]) + " " + second + ".";
      person.initials = std::string(1, person.given[0]) + second;
      w.authors.push_back(person);
    }
    w.journal = journals_[r_.below(static_cast<uint32_t>(journals_.size()))];
    w.year = 1975 + static_cast<int>(r_.below(50));
    w.month = 1 + static_cast<int>(r_.below(12));
    w.volume = 1 + static_cast<int>(r_.below(80));
    w.issue = 1 + static_cast<int>(r_.below(12));
    w.firstPage = 1 + static_cast<int>(r_.below(1500));
    w.lastPage = w.firstPage + 3 + static_cast<int>(r_.below(20));
    if (r_.below(10) < 7) w.doi = "10." + std::to_string(1000 + r_.below(8000)) + "/" + word() + "." + std::to_string(w.id);
    if (r_.below(2) == 0) w.pmid = 10'000'000 + w.id;
    w.accession = 20'000'000 + w.id;
    const int sentences = 1 + static_cast<int>(r_.below(3));
    for (int s = 0; s < sentences; ++s) w.abstract += (s ? " " : "") + capitalised(phrase(10 + static_cast<int>(r_.below(10)))) + ".";
    return w;
  }

  // Different works made to look alike: word order swapped, parts of a series, one
  // title in two years. Same authors, no identifiers in common.
  void lookAlike(const Work& w, int form) {
    const uint32_t kind = r_.below(3);
    Work a = w, b = w;
    a.id = static_cast<uint32_t>(set_.works++);
    b.id = static_cast<uint32_t>(set_.works++);
    a.doi.clear();
    b.doi.clear();
    a.pmid = b.pmid = 0;
    a.subtitle.clear();
    b.subtitle.clear();
    if (kind == 0) {
      const std::string x = word(), y = word(), z = word();
      a.main = "Effects of " + x + " on " + y + " in " + z;
      b.main = "Effects of " + y + " on " + x + " in " + z;
    } else if (kind == 1) {
      a.main = capitalised(phrase(6));
      b.main = a.main + ", part 2";
      a.main += ", part 1";
    } else {
      a.main = b.main = capitalised(phrase(7));
      b.year = a.year + 1;
    }
    a.accession = 20'000'000 + a.id;
    b.accession = 20'000'000 + b.id;
    print(a, (form + 1) % kForms, Change::None, true, true);
    print(b, (form + 2) % kForms, Change::None, true, true);
    ++set_.nearPairs;
  }

  void printCopy(const Copy& c) {
    const uint32_t pick = r_.below(100);
    Change change = pick < 40 ? Change::None : pick < 55 ? Change::Letter : pick < 70 ? Change::Word : pick < 85 ? Change::Case : Change::CutSubtitle;
    if (change == Change::CutSubtitle && c.work->subtitle.empty()) change = Change::None;
    print(*c.work, c.form, change, r_.below(2) == 0, r_.below(2) == 0);
    ++set_.plantedCopies;
  }

  std::string title(const Work& w, Change change) {
    std::string t = w.main;
    if (!w.subtitle.empty() && change != Change::CutSubtitle) t += ": " + w.subtitle;
    if (change == Change::Letter) {
      // A letter inside a longer word, another letter in its place.
      std::size_t at = 0;
      for (int tries = 0; tries < 20; ++tries) {
        at = 1 + r_.below(static_cast<uint32_t>(t.size() - 2));
        if (t[at] >= 'a' && t[at] <= 'z' && t[at - 1] != ' ' && t[at + 1] != ' ' && t[at + 1] != ':') break;
      }
      t[at] = t[at] == 'q' ? 'z' : 'q';
    } else if (change == Change::Word) {
      // A word past the first replaced by another.
      std::vector<std::size_t> starts;
      for (std::size_t i = 1; i < t.size(); ++i)
        if (t[i - 1] == ' ' && t[i] >= 'a' && t[i] <= 'z') starts.push_back(i);
      if (!starts.empty()) {
        const std::size_t s = starts[r_.below(static_cast<uint32_t>(starts.size()))];
        std::size_t e = s;
        while (e < t.size() && t[e] != ' ' && t[e] != ':') ++e;
        t.replace(s, e - s, word());
      }
    } else if (change == Change::Case) {
      for (char& ch : t)
        if (ch >= 'a' && ch <= 'z') ch = static_cast<char>(ch - 'a' + 'A');
    }
    return t;
  }

  // `text` in lines of at most `width`, the first behind `first`, the rest behind `rest`.
  void wrapped(TextOut& out, const std::string& first, const std::string& rest, const std::string& text, std::size_t width) {
    std::string line = first;
    std::size_t at = 0;
    bool any = false;
    while (at < text.size()) {
      std::size_t e = text.find(' ', at);
      if (e == std::string::npos) e = text.size();
      const std::string_view w(text.data() + at, e - at);
      if (any && line.size() + 1 + w.size() > width) {
        emit(out, line);
        line = rest;
        any = false;
      }
      if (any) line += ' ';
      line += w;
      any = true;
      at = e + 1;
    }
    emit(out, line);
  }

  void emit(TextOut& out, std::string_view line) {
    out.line(line);
    mixed_.line(line);
    ++set_.lines;
    set_.bytes += static_cast<int64_t>(line.size()) + 2;
  }

  void print(const Work& w, int form, Change change, bool keepDoi, bool keepPmid) {
    TextOut& out = forms_[form];
    set_.workOf[form].push_back(w.id);
    ++set_.records;
    const std::string label = "Record - " + std::to_string(set_.workOf[form].size());
    out.line(label);
    mixed_.line("Record - " + std::to_string(set_.records));
    set_.lines += 1;
    set_.bytes += static_cast<int64_t>(std::to_string(set_.records).size()) + 11;
    emit(out, "");
    const std::string t = title(w, change);
    const std::string doi = keepDoi ? w.doi : std::string();
    const uint32_t pmid = keepPmid ? w.pmid : 0;
    const std::string pages = std::to_string(w.firstPage) + "-" + std::to_string(w.lastPage);
    switch (form) {
      case kNlm:
        if (pmid) emit(out, "PMID- " + std::to_string(pmid));
        wrapped(out, "TI  - ", "      ", t + ".", 72);
        for (const Person& p : w.authors) emit(out, "AU  - " + p.surname + " " + p.initials);
        emit(out, "SO  - " + w.journal + " " + std::to_string(w.year) + " " + kMonths[w.month - 1] + ";" +
                      std::to_string(w.volume) + "(" + std::to_string(w.issue) + "):" + pages);
        if (!doi.empty()) emit(out, "AID - " + doi + " [doi]");
        wrapped(out, "AB  - ", "      ", w.abstract, 72);
        break;
      case kOvid: {
        emit(out, "Authors");
        std::string people;
        for (const Person& p : w.authors) people += (people.empty() ? "" : "  ") + p.surname + ", " + p.given;
        emit(out, people);
        emit(out, "Title");
        emit(out, t + ".");
        emit(out, "Source");
        emit(out, w.journal + ". " + std::to_string(w.volume) + "(" + std::to_string(w.issue) + "):" + pages + ", " +
                      std::to_string(w.year) + " " + kMonths[w.month - 1] + ".");
        if (!doi.empty()) {
          emit(out, "Digital Object Identifier");
          emit(out, doi);
        }
        emit(out, "Abstract");
        emit(out, w.abstract);
        break;
      }
      case kDialog: {
        emit(out, "DIALOG(R)File 155:BioMed Abstracts");
        emit(out, "(c) format only 2024 Dialog. All rts. reserv.");
        emit(out, "");
        emit(out, std::to_string(w.accession) + (pmid ? "   PMID: " + std::to_string(pmid) : std::string()));
        wrapped(out, "  ", "", t + ".", 72);
        std::string people;
        for (const Person& p : w.authors) people += (people.empty() ? "" : "; ") + p.surname + " " + p.initials;
        emit(out, "  " + people);
        emit(out, "  " + w.journal + " (England)  " + kMonths[w.month - 1] + " " + std::to_string(w.year) + ",  " +
                      std::to_string(w.volume) + " (" + std::to_string(w.issue) + ")  p" + pages);
        if (!doi.empty()) emit(out, "  DOI: " + doi);
        emit(out, "  Document type: Journal Article");
        emit(out, "");
        wrapped(out, "  ", "", w.abstract, 72);
        break;
      }
      case kDataStar: {
        emit(out, "AN  " + std::to_string(w.accession) + " LAKE.");
        std::string people;
        for (const Person& p : w.authors) people += (people.empty() ? "" : ", ") + p.surname + " " + p.initials;
        emit(out, "AU  " + people + ".");
        wrapped(out, "TI  ", "    ", t + ".", 72);
        emit(out, "SO  " + w.journal + ", " + std::to_string(w.year) + ", " + std::to_string(w.volume) + "(" +
                      std::to_string(w.issue) + "), " + pages + ".");
        if (!doi.empty()) emit(out, "DO  " + doi);
        wrapped(out, "AB  ", "    ", w.abstract, 72);
        break;
      }
    }
    emit(out, "");
  }

  std::string dir_;
  RecordSetOptions options_;
  RecordSet& set_;
  Rng r_;
  std::vector<std::string> words_, names_, stop_, journals_;
  Skewed wordPick_, namePick_;
  TextOut mixed_;
  std::array<TextOut, kForms> forms_;
  std::vector<Copy> pending_;
};

}  // namespace

RecordSet WriteRecordSet(const std::string& dir, const RecordSetOptions& options) {
  RecordSet set;
  Generator(dir, options, set).run();
  return set;
}

}  // namespace zv::bench
