// modFormat: hard line breaks taken out of TAGed DIALOG records (.FMT), and hard page
// breaks put between records (.BRK).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/error.h"
#include "core/job.h"
#include "core/job_state.h"
#include "polish/polish_files.h"

namespace zv {

inline constexpr std::string_view kLineBreaksTitle = "Remove Hard Line Breaks";
inline constexpr std::string_view kPageBreaksTitle = "Insert Hard Page Breaks";
inline constexpr std::string_view kNotTaggedText = "This file does not appear to contain TAGed Dialog records.";

// The checks of the open dialog's answer for the tool that makes `ext` (".FMT" or
// ".BRK"): the file is there, not empty, and its path holds no `ext` (a case-sensitive
// search of the whole path).
[[nodiscard]] std::optional<Message> CheckBreaksInput(const std::string& inFile, std::string_view ext);

// RemoveLineBreaks: BASE.FMT (the input's whole path + ".FMT" when it has no "."),
// replaced if it exists, with each tagged field or paragraph on one line, blanks
// folded, and the delimiters "|", "^", "_" turned into separators. A paragraph that
// nothing follows is lost. Refuses an input whose path holds ".FMT", and at line 40 a
// file without a label or without a tagged line.
JobResult RemoveLineBreaks(JobState& state, JobProgress& progress, const PolishInput& input);

// What the records-per-page input box asks and how an answer fares.
inline constexpr std::string_view kPerPagePrompt = "How many records per page (1 to 99):";
inline constexpr std::string_view kPerPageTitle = "Records per Page";

struct PerPageAnswer {
  enum class Kind {
    Accepted,  // perPage holds N, 1 to 99
    AskAgain,  // `message` says why; the box comes back
    Error,     // the answer does not convert to a 16-bit number (empty, too large):
               // `error` goes through the job's trap
  };
  Kind kind = Kind::Accepted;
  int16_t perPage = 0;
  Message message;
  std::optional<ZvError> error;
};

// The input box's rules, in their order: a character that is no digit ("1.5", "-3")
// is non-numeric; "0" alone has its own title; then the conversion, which an empty
// answer (Cancel) or one past 32,767 fails; then the range, which "00" and "100" miss.
PerPageAnswer CheckRecordsPerPage(std::string_view answer);

// What a front end gathers for InsertPageBreaks: the file and the answer as typed.
struct PageBreaksParams {
  std::string inFile;
  std::string answer;
};

// InsertPageBreaks: BASE.BRK, replaced if it exists: a copy of the input, cleaned, with
// a line of one form feed above every line that holds "Record - " and is the N + 1th
// of its page (records N + 1, 2N + 1...). Refuses an input whose path holds ".BRK", an
// answer the box would ask again for, and at line 40 a file without a label; an answer
// that does not convert fails the job (error 13 or 6) and removes BASE.BRK.
JobResult InsertPageBreaks(JobState& state, JobProgress& progress, const PageBreaksParams& params);

}  // namespace zv
