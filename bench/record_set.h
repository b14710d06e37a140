// A generated set of records in four services' forms, with planted duplicates whose
// truth is known, for the export and duplicate benchmarks.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zv::bench {

struct RecordSetOptions {
  int64_t records = 1'000'000;  // records written, duplicates included
  uint64_t seed = 20240101;
};

// What was written, and which work each record is a printing of.
struct RecordSet {
  std::string mixedPro;            // every record, in the order made, one file
  std::vector<std::string> forms;  // the same records, one file per form
  // For each form's file, the work of each record, by the record's label (from 1).
  std::vector<std::vector<uint32_t>> workOf;
  int64_t records = 0;
  int64_t works = 0;
  int64_t plantedCopies = 0;       // records that print a work printed before
  int64_t nearPairs = 0;           // pairs of different works planted to look alike
  int64_t bytes = 0;               // of the mixed file
  int64_t lines = 0;               // of the mixed file
};

// Writes the files into `dir`: "mixed.PRO" and "nlm.PRO", "ovid.PRO", "dialog.PRO",
// "datastar.PRO". The works have titles of 5 to 14 words from a vocabulary of made-up
// words of skewed frequency, some with subtitles, one to six authors, a journal,
// year, volume, issue and pages, most a DOI, some a PMID. About one work in six is
// printed again (one in fifty twice more) in another service's form, with its
// identifiers dropped at random and its title as printed or with a letter, a word or
// its case changed or its subtitle cut. Pairs of different works that look alike are
// planted too: "Effects of A on B" and "Effects of B on A", "part 1" and "part 2", one
// title in two years, by the same authors. The same options always give the same bytes.
RecordSet WriteRecordSet(const std::string& dir, const RecordSetOptions& options);

}  // namespace zv::bench
