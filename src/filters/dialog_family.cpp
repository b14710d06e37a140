// The DIALOG label tests, the end of a record and the .FSC blocks, for every DIALOG filter.
#include "filters/dialog_family.h"

#include "core/byte_scan.h"
#include "core/error.h"
#include "core/text.h"

namespace zv {

namespace {
using sv = std::string_view;
}  // namespace

DialogLine::DialogLine(sv line) : text(line) {
  const auto [q, angles, capitalLs, s] = CountBytes(line, {'?', '>', 'L', '/'});
  queries = q;
  slashes = s;
  if (queries) firstQuery = line.find('?');
  capitalL = capitalLs != 0;
  errorLine = angles >= 3 && Holds(line, ">>>");
}

// The eleven tests in their order; the first that fails decides.
DialogLabel TestDialogLabel(const DialogLine& l) {
  DialogLabel r;
  if (l.slashes != 2) return r;
  const sv line = l.text;
  if (line.front() == '?') return r;                      // 1
  if (l.firstQuery == 1) return r;                        // 2
  if (line.front() != ' ') return r;                      // 3
  if (Blanks(line) > 1) return r;                         // 4
  const std::size_t slash1 = line.find('/');              // iSlash1 - 1
  const sv after1 = line.substr(slash1 + 1);
  const std::size_t slash2 = after1.find('/');            // iSlash2 - 1
  const sv format = after1.substr(0, slash2);
  if (Blanks(format) != 0) return r;                      // 5
  const sv after2 = TrimBlanks(after1.substr(slash2 + 1));  // QPTrim
  const std::size_t blank = after2.find(' ');
  const sv item = after2.substr(0, blank);
  if (InCountTbl(item, "0123456789") != static_cast<int32_t>(item.size())) return r;  // 6
  if (TrimBlanks(line).back() == '/') return r;           // 7
  if (slash1 + 1 > 5) return r;                           // 8
  if (slash2 + 1 > 11) return r;                          // 9
  r.format = format;
  r.test = LabelTest::BadGapOrFormat;
  const int32_t gap = blank == sv::npos ? 0 : Blanks(after2.substr(blank));
  if (gap != 0 && gap != 5) return r;                     // 10
  const std::size_t len = format.size();                  // 11
  if (len == 1 || len == 2 || (len > 2 && (InCount(format, ",") > 0 || Holds(format, "KWIC"))))
    r.test = LabelTest::Label;
  return r;
}

bool DialogEndsRecord(sv line) {
  if (line.starts_with("?") || line.starts_with(" ?")) return true;
  const sv t = TrimBlanks(line);
  return t == "off" || t == "logoff" || t == "LOGOFF" || t == "logoff hold" || t == "LOGOFF HOLD" || t == ">>>";
}

void DialogFsc::beforeRecord(FilterFrame& f, const DialogLine& l) {
  const sv line = l.text;
  // A prompt closes the begin and sets blocks, each with a blank line.
  if (line.starts_with("?")) {
    if (iBeginBlock == -1) {
      iBeginBlock = 0;
      f.fscBlank();
    }
    if (iSetsBlock == -1) {
      iSetsBlock = 0;
      f.fscBlank();
    }
  }

  // The commands that open them, in any case. Every test needs a "?".
  if (l.queries) {
    const std::string u = UCase(line);
    if (u.starts_with("?B") || u.starts_with("? B") || u.starts_with("?BEGIN") || u.starts_with("? BEGIN"))
      iBeginBlock = -1;
    if (u.starts_with("?DS") || u.starts_with("? DS") || Holds(u, "?DISPLAY SETS") || Holds(u, "? DISPLAY SETS"))
      iSetsBlock = -1;
    if ((u.starts_with("?S") || u.starts_with("? S")) && Holds(u, " AND ")) iSetsBlock = -1;
  }

  // An open block copies the line, its command line first.
  if (iBeginBlock == -1 || iSetsBlock == -1) {
    Inc16(iFscLines, kFscLinesLimit, {"input line", f.lInLine});
    f.fscLine(line);
  }

  // A prompt at column 1 or 2 with a logoff word opens the logoff block.
  if (l.firstQuery == 0 || l.firstQuery == 1) {
    bool opens = false;
    if (where_ == LogoffWords::Anywhere) {
      // "off" and "OFF" lie inside every longer word, so they alone decide.
      opens = Holds(line, "off") || Holds(line, "OFF");
    } else {
      for (sv word : {"off", "OFF", "logoff", "LOGOFF", "logoff hold", "LOGOFF HOLD", ">>>"})
        if (line.starts_with(word)) opens = true;
    }
    if (opens) iLogoffBlock = -1;
  }

  // "Logoff:" or ">>>" ends the logoff block; only "Logoff:" is written.
  if ((l.capitalL && Holds(line, "Logoff:")) || l.errorLine) {
    if (iLogoffBlock == -1 && !l.errorLine) {
      Inc16(iFscLines, kFscLinesLimit, {"input line", f.lInLine});
      f.fscLine(line);
      f.fscBlank();
    }
    iLogoffBlock = 0;
  }
}

void DialogFsc::afterRecord(FilterFrame& f, const DialogLine& l) {
  if (iLogoffBlock == -1 && !l.errorLine) {
    Inc16(iFscLines, kFscLinesLimit, {"input line", f.lInLine});
    f.fscLine(l.text);
  }
}

bool CheckTypes(const std::vector<std::string>& types, Message& message) {
  if (types.empty() || types.size() > static_cast<std::size_t>(kMaxTypes)) {
    message = {std::string(kTypeCountTitle), std::string(kTypeCountText)};
    return false;
  }
  for (const std::string& type : types) {
    if (type.empty()) {
      message = {std::string(kNotAllFilledTitle), std::string(kTypeLeftBlankText)};
      return false;
    }
    if (type.size() > kMaxTypeLength) {
      message = {std::string(kTypeTooLongTitle), std::string(kTypeTooLongText)};
      return false;
    }
  }
  return true;
}

void ShowTypeCount(JobProgress& progress, int type, int32_t count) {
  if (auto* types = dynamic_cast<TypeProgress*>(&progress)) types->typeRecordDone(type, count);
}

}  // namespace zv
