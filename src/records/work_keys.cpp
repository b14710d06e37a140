// Normal forms of titles, surnames and DOIs, and the keys kept of each record.
#include "records/work_keys.h"

#include <algorithm>
#include <array>

#include "records/utf8_text.h"

namespace zv {

namespace {

// Latin letters U+00C0 to U+017F without their accents, in small letters.
constexpr std::array<const char*, 192> kFolded{
    "a","a","a","a","a","a","ae","c","e","e","e","e","i","i","i","i","d","n","o","o","o","o","o","","o",
    "u","u","u","u","y","th","ss","a","a","a","a","a","a","ae","c","e","e","e","e","i","i","i","i","d",
    "n","o","o","o","o","o","","o","u","u","u","u","y","th","y","a","a","a","a","a","a","c","c","c","c",
    "c","c","c","c","d","d","d","d","e","e","e","e","e","e","e","e","e","e","g","g","g","g","g","g","g",
    "g","h","h","h","h","i","i","i","i","i","i","i","i","i","i","ij","ij","j","j","k","k","k","l","l",
    "l","l","l","l","l","l","l","l","n","n","n","n","n","n","n","n","n","o","o","o","o","o","o","oe","oe",
    "r","r","r","r","r","r","s","s","s","s","s","s","s","s","t","t","t","t","t","t","u","u","u","u","u",
    "u","u","u","u","u","u","u","w","w","y","y","y","z","z","z","z","z","z","s",
};

// Folds `text` into `out`: letters and digits in small ASCII letters, every other
// character a blank (apostrophes and letters without a folding vanish), "&" " and ".
// `marks` gets the positions in `out` of subtitle marks.
void fold(std::string_view text, std::string& out, std::vector<std::size_t>* marks) {
  out.clear();
  std::size_t i = 0;
  while (i < text.size()) {
    const auto b = static_cast<unsigned char>(text[i]);
    if (b < 0x80) {
      ++i;
      if ((b >= 'a' && b <= 'z') || (b >= '0' && b <= '9')) {
        out += static_cast<char>(b);
      } else if (b >= 'A' && b <= 'Z') {
        out += static_cast<char>(b - 'A' + 'a');
      } else if (b == '\'') {
        // otter's, O'Brien: one word
      } else if (b == '&') {
        out += " and ";
      } else {
        // ":" always marks a subtitle; "-", ".", "?", ";" when a blank follows.
        const bool blankAfter = i >= text.size() || text[i] == ' ';
        if (marks != nullptr && (b == ':' || ((b == '.' || b == '?' || b == ';' || b == '-') && blankAfter) ||
                                 (b == '-' && i >= 2 && text[i - 2] == ' ')))
          marks->push_back(out.size());
        out += ' ';
      }
      continue;
    }
    const char32_t c = NextChar(text, i);
    if (c >= 0xC0 && c < 0x180) {
      out += kFolded[c - 0xC0];
    } else if (c == 0x2019 || c == 0x2018) {
      // curly apostrophes, as the straight one
    } else {
      out += ' ';
    }
  }
}

// Joins the words of `folded` with one blank into `out`, dropping a leading article;
// returns the number of words before the first mark.
std::size_t words(const std::string& folded, const std::vector<std::size_t>& marks, std::string& out) {
  out.clear();
  std::size_t count = 0, mainWords = 0, mark = 0;
  bool mainDone = marks.empty();
  std::size_t i = 0;
  while (i < folded.size()) {
    while (i < folded.size() && folded[i] == ' ') ++i;
    if (!mainDone && mark < marks.size() && marks[mark] <= i && count > 0) {
      mainWords = count;
      mainDone = true;
    }
    std::size_t e = i;
    while (e < folded.size() && folded[e] != ' ') ++e;
    if (e == i) break;
    const std::string_view w(folded.data() + i, e - i);
    if (count == 0 && out.empty() && (w == "the" || w == "a" || w == "an")) {
      i = e;
      continue;
    }
    if (!out.empty()) out += ' ';
    out += w;
    ++count;
    i = e;
  }
  return mainDone && mainWords > 0 ? mainWords : count;
}

uint64_t mix(uint64_t x) {
  x ^= x >> 30;
  x *= 0xbf58476d1ce4e5b9ULL;
  x ^= x >> 27;
  x *= 0x94d049bb133111ebULL;
  x ^= x >> 31;
  return x;
}

}  // namespace

uint64_t HashText(std::string_view text) {
  uint64_t h = 0xcbf29ce484222325ULL;
  for (char c : text) {
    h ^= static_cast<unsigned char>(c);
    h *= 0x100000001b3ULL;
  }
  h = mix(h);
  return h == 0 ? 1 : h;
}

std::string NormalTitle(std::string_view title, std::size_t* mainWords) {
  std::string folded, out;
  std::vector<std::size_t> marks;
  fold(title, folded, &marks);
  const std::size_t main = words(folded, marks, out);
  if (mainWords != nullptr) *mainWords = main;
  return out;
}

std::string NormalSurname(std::string_view family) {
  std::string folded, out;
  fold(family, folded, nullptr);
  for (char c : folded)
    if (c != ' ') out += c;
  return out;
}

std::string NormalDoi(std::string_view doi) {
  std::string out;
  for (char c : doi) out += (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
  for (std::string_view prefix : {"https://doi.org/", "http://doi.org/", "https://dx.doi.org/", "http://dx.doi.org/", "doi:"})
    if (out.starts_with(prefix)) out.erase(0, prefix.size());
  return out;
}

void WorkSet::reserve(std::size_t records) {
  works_.reserve(records);
  words_.reserve(records * 10);
  titles_.reserve(records * 64);
}

void WorkSet::add(const Citation& c) {
  WorkKeys k;
  if (!c.doi.empty()) k.doi = HashText(NormalDoi(c.doi));
  if (!c.pmid.empty()) k.pmid = HashText(c.pmid);
  if (!c.authors.empty()) {
    const std::string s = NormalSurname(c.authors.front().family);
    if (!s.empty()) k.surname = HashText(s);
  }
  k.year = static_cast<int16_t>(c.date.year);
  marks_.clear();
  fold(c.title, folded_, &marks_);
  const std::size_t mainWords = zv::words(folded_, marks_, scratch_);
  k.titleAt = titles_.size();
  k.titleLength = static_cast<uint32_t>(scratch_.size());
  titles_ += scratch_;
  k.wordsAt = static_cast<uint32_t>(words_.size());
  std::size_t i = 0, n = 0;
  uint64_t mainHash = 0;
  while (i < scratch_.size()) {
    std::size_t e = scratch_.find(' ', i);
    if (e == std::string::npos) e = scratch_.size();
    words_.push_back(static_cast<uint32_t>(HashText(std::string_view(scratch_).substr(i, e - i))));
    if (++n == mainWords && e < scratch_.size()) mainHash = HashText(std::string_view(scratch_).substr(0, e));
    i = e + 1;
  }
  k.wordCount = static_cast<uint16_t>(std::min<std::size_t>(n, 0xFFFF));
  if (!scratch_.empty()) k.title = HashText(scratch_);
  if (mainWords >= 3 && mainHash != 0) k.mainTitle = mainHash;
  works_.push_back(k);
}

void WorkSet::append(const WorkSet& other) {
  const uint64_t titlesAt = titles_.size();
  const auto wordsAt = static_cast<uint32_t>(words_.size());
  for (WorkKeys k : other.works_) {
    k.titleAt += titlesAt;
    k.wordsAt += wordsAt;
    works_.push_back(k);
  }
  words_.insert(words_.end(), other.words_.begin(), other.words_.end());
  titles_ += other.titles_;
}

std::size_t WorkSet::bytes() const {
  return works_.capacity() * sizeof(WorkKeys) + words_.capacity() * sizeof(uint32_t) + titles_.capacity();
}

}  // namespace zv
