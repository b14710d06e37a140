// modCover: a header or cover page, in front of a file (with or without a page break)
// or as a file of its own, and the form's settings under "Header/Cover".
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/job.h"
#include "core/job_state.h"
#include "core/text_out.h"

namespace zv {

enum class ToLabel : uint8_t { None, Requester, Client };
enum class FromLabel : uint8_t { None, Library, Searcher, Firm };
enum class SaveMode : uint8_t { None, Prefix, PrefixWithBreak, SepFile };

// The two layouts: command 3200 (library or searcher) and 3210 (research firm).
enum class CoverLayout : uint8_t { Library, Firm };

// What frmCover holds. Each group of choices is exclusive, but may have none set
// (the settings store can say False to both To options); a missing label is left out.
struct CoverFields {
  ToLabel toLabel = ToLabel::Requester;
  FromLabel fromLabel = FromLabel::Library;
  SaveMode saveMode = SaveMode::Prefix;
  std::string to;
  std::string from1, from2, from3;
  std::string subject;
  std::string date;
  std::string jobNo;
  std::string database;  // several lines: the user's line ends stay in it as CR LF
  std::string memo;
};

// The layout the Save button runs: the firm's for "Research Firm", else the library's.
CoverLayout LayoutOf(const CoverFields& fields);

// The page, line by line. A field is present when its text, trimmed, is not empty;
// the text written is untrimmed. Labels stand at column 1 and texts at column 13; the
// date and the job number share a line; the database and memo go through WordWrap at
// width 70 behind three blanks (a word longer than 70 characters fails with error 5).
void WriteCoverPage(TextOut& out, const CoverFields& fields, CoverLayout layout);

// What a front end gathers for commands 3200 and 3210: the page's fields, the file
// that gets the page in front (Prefix modes) and the file written.
struct CoverParams {
  CoverFields fields;
  std::string inFile;
  std::string outFile;
};

inline constexpr std::string_view kCoverTitle = "Header/Cover";
// The file dialogs' filter: .COV is only the first kind offered; no extension is added.
inline constexpr std::string_view kCoverFilter =
    "All Files (*.*)|*.*|.COV Files|*.cov|.PRO Files|*.PRO|.KEP Files|*.kep|.ORD Files|*.ord|.QRY Files|*.QRY|"
    ".RNK Files|*.rnk|.SRT Files|*.srt|.REN Files|*.ren|.BRK Files|*.brk|.FMT Files|*.fmt|";

// Writes the page as fields.saveMode says. Prefix modes: the page goes to the output's
// base name + ".TMP", then to the output, then (with a break) a line holding a form
// feed, then every line of the input. Separate File: the page alone. The output is
// replaced without a question; the input must be there and not be the output. With no
// save mode chosen nothing is written.
JobResult SaveCoverPage(JobState& state, JobProgress& progress, const CoverParams& params, CoverLayout layout);

// The current date as the form shows it, "mmmm d, yyyy": "November 3, 2026".
std::string CoverDateText(int year, unsigned month, unsigned day);
std::string TodayCoverDate();

// The text of a box of several lines as the form holds it: every line end CR LF.
std::string BoxText(std::string_view typed);

}  // namespace zv
