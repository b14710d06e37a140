// What the duplicate finder keeps of each record: identifiers, normalised title, year
// and first author, small enough for millions of records.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "records/citation.h"

namespace zv {

// A title brought to the form in which two printings of it compare equal: accents
// folded ("é" and "e"), capitals made small, punctuation a word break, apostrophes
// dropped ("otter's" is "otters"), "&" read as "and", and a leading "the", "a" or "an"
// dropped. Words are joined by one blank. `mainWords` is the count of words before the
// first subtitle mark (":", " - ", ". ", "? ", "; "), or all of them when there is none.
std::string NormalTitle(std::string_view title, std::size_t* mainWords = nullptr);

// A surname folded the same way, letters only: "Okafor-Reyes" is "okaforreyes".
std::string NormalSurname(std::string_view family);

// A DOI without its "doi:" or resolver prefix, in small letters.
std::string NormalDoi(std::string_view doi);

uint64_t HashText(std::string_view text);

struct WorkKeys {
  uint64_t doi = 0;        // hashes; 0 when the record has none
  uint64_t pmid = 0;
  uint64_t title = 0;      // of the normal title
  uint64_t mainTitle = 0;  // of its words before a subtitle; 0 when it has none or under 3 words
  uint64_t surname = 0;
  uint64_t titleAt = 0;    // the normal title in WorkSet::titles
  uint32_t titleLength = 0;
  uint32_t wordsAt = 0;    // its words' hashes in WorkSet::words
  uint16_t wordCount = 0;
  int16_t year = 0;
};

// The keys of every record read, in the order read.
class WorkSet {
 public:
  void add(const Citation& citation);
  // Adds the keys of another set behind these (the sets of batches, put together in order).
  void append(const WorkSet& other);
  void reserve(std::size_t records);

  std::size_t size() const { return works_.size(); }
  const WorkKeys& operator[](std::size_t i) const { return works_[i]; }
  std::string_view title(std::size_t i) const {
    return std::string_view(titles_).substr(works_[i].titleAt, works_[i].titleLength);
  }
  const uint32_t* words(std::size_t i) const { return words_.data() + works_[i].wordsAt; }
  std::size_t bytes() const;

 private:
  std::vector<WorkKeys> works_;
  std::vector<uint32_t> words_;
  std::string titles_;
  std::string scratch_, folded_;
  std::vector<std::size_t> marks_;
};

}  // namespace zv
