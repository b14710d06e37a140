// Grouping duplicates: sorted keys for the exact rules, min-hash buckets for the near
// titles, a union-find over the records.
#include "records/duplicates.h"

#include <algorithm>
#include <array>

namespace zv {

namespace {

// Min-hashes of a title's words: kBands buckets of kRows hashes each. Two titles
// whose word sets have a Jaccard similarity s share a bucket with probability
// 1 - (1 - s^2)^10: 0.99 at s = 0.6 (one word of five changed), 0.94 at 0.5.
constexpr int kBands = 10;
constexpr int kRows = 2;
// Records of one bucket compared at most: a bucket this full is a common title's,
// found by the exact rules already.
constexpr std::size_t kBucketCap = 32;
constexpr std::size_t kPollEvery = 1 << 16;

uint64_t mix(uint64_t x) {
  x ^= x >> 30;
  x *= 0xbf58476d1ce4e5b9ULL;
  x ^= x >> 27;
  x *= 0x94d049bb133111ebULL;
  x ^= x >> 31;
  return x;
}

uint64_t combine(uint64_t a, uint64_t b) { return mix(a ^ (b + 0x9e3779b97f4a7c15ULL + (a << 6) + (a >> 2))); }

class UnionFind {
 public:
  explicit UnionFind(std::size_t n) : parent_(n), size_(n, 1) {
    for (std::size_t i = 0; i < n; ++i) parent_[i] = static_cast<uint32_t>(i);
  }
  uint32_t find(uint32_t x) {
    while (parent_[x] != x) {
      parent_[x] = parent_[parent_[x]];
      x = parent_[x];
    }
    return x;
  }
  bool unite(uint32_t a, uint32_t b) {
    a = find(a);
    b = find(b);
    if (a == b) return false;
    if (size_[a] < size_[b]) std::swap(a, b);
    parent_[b] = a;
    size_[a] += size_[b];
    return true;
  }

 private:
  std::vector<uint32_t> parent_;
  std::vector<uint32_t> size_;
};

struct Entry {
  uint64_t key;
  uint32_t record;
  uint32_t flag;  // what the entry stands for, by rule
};

// Sorts entries by key, entries of one key keeping their order (that of the records):
// four passes of a 16-bit radix, a few times faster than a comparison sort here.
void sortByKey(std::vector<Entry>& entries, std::vector<Entry>& scratch) {
  scratch.resize(entries.size());
  std::vector<uint32_t> count(1 << 16);
  for (int shift = 0; shift < 64; shift += 16) {
    std::fill(count.begin(), count.end(), 0);
    for (const Entry& e : entries) ++count[(e.key >> shift) & 0xFFFF];
    uint32_t sum = 0;
    for (uint32_t& c : count) {
      const uint32_t n = c;
      c = sum;
      sum += n;
    }
    for (const Entry& e : entries) scratch[count[(e.key >> shift) & 0xFFFF]++] = e;
    entries.swap(scratch);
  }
}

std::string_view wordAt(std::string_view text, std::size_t& at) {
  const std::size_t e = std::min(text.find(' ', at), text.size());
  const std::string_view w = text.substr(at, e - at);
  at = e + 1;
  return w;
}

// "12", "2nd", "iv": the words that number a part.
bool numberWord(std::string_view w) {
  for (char c : w)
    if (c >= '0' && c <= '9') return true;
  if (w.empty() || w.size() > 4) return false;
  for (char c : w)
    if (c != 'i' && c != 'v' && c != 'x') return false;
  return true;
}

// One letter added, dropped, changed, or two neighbours swapped.
bool oneSlipApart(std::string_view a, std::string_view b) {
  if (a.size() < 3 || b.size() < 3) return false;
  if (a.size() > b.size()) std::swap(a, b);
  if (b.size() - a.size() > 1) return false;
  std::size_t i = 0;
  while (i < a.size() && a[i] == b[i]) ++i;
  if (a.size() == b.size()) {
    if (a.substr(i + 1) == b.substr(i + 1)) return true;
    return i + 1 < a.size() && a[i] == b[i + 1] && a[i + 1] == b[i] && a.substr(i + 2) == b.substr(i + 2);
  }
  return a.substr(i) == b.substr(i + 1);
}

class Grouper {
 public:
  Grouper(const WorkSet& works, const std::function<bool()>& interrupted)
      : works_(works), interrupted_(interrupted), uf_(works.size()) {}

  std::optional<Grouping> run() {
    if (!identifiers() || !titles() || !cutSubtitles() || !nearTitles()) return std::nullopt;
    Grouping g;
    const std::size_t n = works_.size();
    g.first.assign(n, 0);
    std::vector<uint32_t> firstOfRoot(n, UINT32_MAX);
    std::vector<bool> counted(n, false);
    for (uint32_t i = 0; i < n; ++i) {
      const uint32_t r = uf_.find(i);
      if (firstOfRoot[r] == UINT32_MAX) {
        firstOfRoot[r] = i;
      } else {
        ++g.duplicates;
        if (!counted[r]) {
          counted[r] = true;
          ++g.groups;
        }
      }
      g.first[i] = firstOfRoot[r];
    }
    g.links = std::move(links_);
    return g;
  }

 private:
  bool poll(std::size_t i) { return (i % kPollEvery) != 0 || !interrupted_(); }

  // Records whose DOIs or PMIDs both stand and differ are different works.
  bool conflict(uint32_t a, uint32_t b) const {
    const WorkKeys& x = works_[a];
    const WorkKeys& y = works_[b];
    return (x.doi != 0 && y.doi != 0 && x.doi != y.doi) || (x.pmid != 0 && y.pmid != 0 && x.pmid != y.pmid);
  }

  void link(uint32_t a, uint32_t b, MatchReason reason, float similarity = 1) {
    if (uf_.unite(a, b)) links_.push_back({std::min(a, b), std::max(a, b), reason, similarity});
  }

  // Runs of equal keys, in order.
  template <class Visit>
  bool runs(std::vector<Entry>& entries, Visit&& visit) {
    sortByKey(entries, scratch_);
    for (std::size_t i = 0; i < entries.size();) {
      std::size_t e = i + 1;
      while (e < entries.size() && entries[e].key == entries[i].key) ++e;
      if (e - i > 1) visit(entries.data() + i, e - i);
      if (!poll(i)) return false;
      i = e;
    }
    return true;
  }

  bool identifiers() {
    std::vector<Entry> entries;
    entries.reserve(works_.size());
    for (int pass = 0; pass < 2; ++pass) {
      entries.clear();
      for (uint32_t i = 0; i < works_.size(); ++i) {
        const uint64_t key = pass == 0 ? works_[i].doi : works_[i].pmid;
        if (key != 0) entries.push_back({key, i, 0});
      }
      const MatchReason reason = pass == 0 ? MatchReason::Doi : MatchReason::Pmid;
      if (!runs(entries, [&](const Entry* run, std::size_t n) {
            for (std::size_t k = 1; k < n; ++k) link(run[0].record, run[k].record, reason);
          }))
        return false;
    }
    return true;
  }

  static bool complete(const WorkKeys& w) { return w.year != 0 && w.surname != 0; }
  bool compatible(uint32_t a, uint32_t b) const {
    const WorkKeys& x = works_[a];
    const WorkKeys& y = works_[b];
    return (x.year == 0 || y.year == 0 || x.year == y.year) && (x.surname == 0 || y.surname == 0 || x.surname == y.surname) &&
           !conflict(a, b);
  }

  // The same normal title: with the same year and author, and, for a record that
  // lacks one of them, the one group its title leaves it.
  bool titles() {
    std::vector<Entry> entries;
    entries.reserve(works_.size());
    for (uint32_t i = 0; i < works_.size(); ++i)
      if (works_[i].title != 0) entries.push_back({works_[i].title, i, 0});
    return runs(entries, [&](const Entry* run, std::size_t n) {
      n = std::min(n, kBucketCap * 4);
      for (std::size_t a = 0; a < n; ++a) {
        const uint32_t x = run[a].record;
        if (!complete(works_[x])) continue;
        for (std::size_t b = a + 1; b < n; ++b) {
          const uint32_t y = run[b].record;
          if (complete(works_[y]) && works_[x].year == works_[y].year && works_[x].surname == works_[y].surname &&
              !conflict(x, y))
            link(x, y, MatchReason::SameTitle);
        }
      }
      for (std::size_t a = 0; a < n; ++a) {
        const uint32_t x = run[a].record;
        if (complete(works_[x]) || works_[x].wordCount < kTitleOnlyWords) continue;
        uint32_t only = UINT32_MAX, partner = 0;
        bool ambiguous = false;
        for (std::size_t b = 0; b < n && !ambiguous; ++b) {
          const uint32_t y = run[b].record;
          if (y == x || !compatible(x, y)) continue;
          const uint32_t root = uf_.find(y);
          if (only == UINT32_MAX) {
            only = root;
            partner = y;
          } else if (root != only) {
            ambiguous = true;
          }
        }
        if (!ambiguous && only != UINT32_MAX) link(partner, x, MatchReason::TitleOnly);
      }
    });
  }

  // "Title: subtitle" and "Title", with the same year and author.
  bool cutSubtitles() {
    std::vector<Entry> entries;
    entries.reserve(works_.size() + works_.size() / 4);
    for (uint32_t i = 0; i < works_.size(); ++i) {
      const WorkKeys& w = works_[i];
      const uint64_t person = combine(static_cast<uint64_t>(w.year) + 1, w.surname);
      if (w.title != 0) entries.push_back({combine(w.title, person), i, 0});
      if (w.mainTitle != 0) entries.push_back({combine(w.mainTitle, person), i, 1});
    }
    return runs(entries, [&](const Entry* run, std::size_t n) {
      const Entry* whole = nullptr;
      for (std::size_t k = 0; k < n && whole == nullptr; ++k)
        if (run[k].flag == 0) whole = run + k;
      if (whole == nullptr) return;
      for (std::size_t k = 0; k < n; ++k)
        if (run[k].flag == 1 && !conflict(whole->record, run[k].record))
          link(whole->record, run[k].record, MatchReason::CutSubtitle);
    });
  }

  // Near titles: candidates from min-hash buckets keyed with the year and the author,
  // each candidate pair measured by TitleSimilarity.
  bool nearTitles() {
    std::vector<Entry> entries;
    entries.reserve(works_.size());
    std::array<uint64_t, kBands * kRows> seeds{};
    for (std::size_t t = 0; t < seeds.size(); ++t) seeds[t] = mix(0x5eed0000 + t);
    for (int band = 0; band < kBands; ++band) {
      entries.clear();
      for (uint32_t i = 0; i < works_.size(); ++i) {
        const WorkKeys& w = works_[i];
        if (w.wordCount < 2) continue;
        const uint32_t* words = works_.words(i);
        uint64_t key = combine(static_cast<uint64_t>(w.year) + 1, w.surname);
        for (int r = 0; r < kRows; ++r) {
          const uint64_t seed = seeds[static_cast<std::size_t>(band * kRows + r)];
          uint64_t least = UINT64_MAX;
          for (uint16_t k = 0; k < w.wordCount; ++k) least = std::min(least, mix(words[k] ^ seed));
          key = combine(key, least);
        }
        entries.push_back({key, i, 0});
        if (!poll(i + 1)) return false;
      }
      if (!runs(entries, [&](const Entry* run, std::size_t n) {
            n = std::min(n, kBucketCap);
            for (std::size_t a = 0; a < n; ++a)
              for (std::size_t b = a + 1; b < n; ++b) {
                const uint32_t x = run[a].record, y = run[b].record;
                if (uf_.find(x) == uf_.find(y) || conflict(x, y)) continue;
                const double s = TitleSimilarity(works_.title(x), works_.title(y));
                if (s >= kSimilarTitle) link(x, y, MatchReason::SimilarTitle, static_cast<float>(s));
              }
          }))
        return false;
    }
    return true;
  }

  const WorkSet& works_;
  const std::function<bool()>& interrupted_;
  UnionFind uf_;
  std::vector<DuplicateLink> links_;
  std::vector<Entry> scratch_;
};

}  // namespace

std::string_view ReasonText(MatchReason reason) {
  switch (reason) {
    case MatchReason::Doi: return "same DOI";
    case MatchReason::Pmid: return "same PMID";
    case MatchReason::SameTitle: return "same title, year and first author";
    case MatchReason::CutSubtitle: return "same title without its subtitle, same year and first author";
    case MatchReason::SimilarTitle: return "near-identical title, same year and first author";
    case MatchReason::TitleOnly: return "same title; year or author missing, nothing contradicting";
  }
  return "";
}

double TitleSimilarity(std::string_view a, std::string_view b) {
  std::array<std::string_view, 64> wa{}, wb{};
  std::size_t na = 0, nb = 0;
  for (std::size_t at = 0; at < a.size() && na < wa.size();) wa[na++] = wordAt(a, at);
  for (std::size_t at = 0; at < b.size() && nb < wb.size();) wb[nb++] = wordAt(b, at);
  if (na == 0 || nb == 0) return na == nb ? 1.0 : 0.0;
  // The numbers of the two titles must be the same, in the same order.
  {
    std::size_t i = 0, j = 0;
    for (;;) {
      while (i < na && !numberWord(wa[i])) ++i;
      while (j < nb && !numberWord(wb[j])) ++j;
      if (i == na || j == nb) {
        if (i != na || j != nb) return 0.0;
        break;
      }
      if (wa[i] != wb[j]) return 0.0;
      ++i;
      ++j;
    }
  }
  // Word edit distance in halves, one row at a time.
  std::array<int, 65> prev{}, cur{};
  for (std::size_t j = 0; j <= nb; ++j) prev[j] = static_cast<int>(2 * j);
  for (std::size_t i = 1; i <= na; ++i) {
    cur[0] = static_cast<int>(2 * i);
    for (std::size_t j = 1; j <= nb; ++j) {
      const int replace = wa[i - 1] == wb[j - 1] ? 0 : oneSlipApart(wa[i - 1], wb[j - 1]) ? 1 : 2;
      cur[j] = std::min({prev[j] + 2, cur[j - 1] + 2, prev[j - 1] + replace});
    }
    prev = cur;
  }
  return 1.0 - static_cast<double>(prev[nb]) / (2.0 * static_cast<double>(std::max(na, nb)));
}

std::optional<Grouping> GroupDuplicates(const WorkSet& works, const std::function<bool()>& interrupted) {
  return Grouper(works, interrupted).run();
}

}  // namespace zv
