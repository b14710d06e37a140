// Finding the records that are the same work, without comparing every pair.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "records/work_keys.h"

namespace zv {

// Why two records were taken for the same work.
enum class MatchReason : uint8_t {
  Doi,           // the same DOI
  Pmid,          // the same PMID
  SameTitle,     // the same normal title, year and first author
  CutSubtitle,   // one title is the other without its subtitle; same year and first author
  SimilarTitle,  // near-identical titles (a letter or a word changed); same year and first author
  TitleOnly,     // the same long title, where one record lacks the year or the author
};
std::string_view ReasonText(MatchReason reason);

// Titles at least this similar are near-identical (see TitleSimilarity).
inline constexpr double kSimilarTitle = 0.8;
// A title at least this many words long is taken as the same work's when a record
// lacks its year or author and nothing contradicts it.
inline constexpr uint16_t kTitleOnlyWords = 6;

// How alike two normal titles are, from 0 to 1: one less the word edit distance over
// the longer title's word count, where inserting, deleting or replacing a word costs
// 1 and replacing a word by one a letter away (a typing slip) costs 0.5. Word order
// counts, so "effects of x on y" and "effects of y on x" stand at 0.6. Titles whose
// numbers differ ("part 1", "part 2"; roman numerals too) are 0: they are parts of a
// series, not printings of one work.
double TitleSimilarity(std::string_view a, std::string_view b);

struct DuplicateLink {
  uint32_t a = 0;  // the two records, by their place in the WorkSet
  uint32_t b = 0;
  MatchReason reason = MatchReason::Doi;
  float similarity = 1;  // for SimilarTitle
};

struct Grouping {
  // For each record, the first record of its group (itself when it stands alone).
  std::vector<uint32_t> first;
  // The pairs that put records together, one for each record joined to a group.
  std::vector<DuplicateLink> links;
  uint32_t groups = 0;      // groups of two or more records
  uint32_t duplicates = 0;  // records that are not the first of their group
};

// Groups the records. Records are joined by the same DOI or PMID; by the same normal
// title, year and first author's surname; by a title that is the other's without its
// subtitle, same year and surname; by near-identical titles, same year and surname,
// found through min-hashes of their words in locality-sensitive buckets; and by the
// same title of kTitleOnlyWords or more words where one record lacks a year or an
// author and the other records of that title leave only one group to join. Two
// records whose DOIs or PMIDs differ are never joined by their titles. Candidates come
// from sorted keys and buckets only; no two records are compared unless they share
// one. Nothing when `interrupted` returned true (it is asked now and then).
std::optional<Grouping> GroupDuplicates(const WorkSet& works, const std::function<bool()>& interrupted);

}  // namespace zv
