// Showing a record (1601, 1602), moving between records, Jump, Find Text, Repeat Search.
#include <limits>

#include "records/record_file.h"
#include "records/sift_common.h"

namespace zv {

namespace {

using sift::NumberCaption;
using sift::NumberText;

void showRecord(JobState& job, SiftView& view, bool ordView) {
  SiftState& s = view.sift;
  if (s.glCurRec < 1) s.glCurRec = 1;
  const int32_t k = ordView ? s.glOrder.at(static_cast<std::size_t>(s.glCurRec)) : s.glCurRec;
  job.gIndexRec = GetIndexRec(job.gsIndexFile, k);
  // The order view counts a record's lines in 16 bits.
  if (ordView && RecordLineCount(job.gIndexRec) > std::numeric_limits<int16_t>::max())
    ThrowOverflow(LimitReason("the lines of a record shown in .ORD View", std::numeric_limits<int16_t>::max()) +
                  " Record " + std::to_string(k) + " has " + std::to_string(RecordLineCount(job.gIndexRec)) + ".");
  DisplayBlock block;
  {
    RecordReader pro(job.gsProFile);
    block = pro.readDisplay(k, job.gIndexRec);
  }
  view.setPartialDisplay(block.partial);
  view.setRecordText(block.bytes);
  view.setPanel(SiftPanel::pnlKeptFileName, job.gIndexRec.keepFileName());
  view.setPanel(SiftPanel::pnlRecToView, NumberCaption(s.glCurRec));
  const int32_t position = ordView ? s.glCurRec : PositionOf(s.glOrder, s.glRecCount, s.glCurRec);
  view.setPanel(SiftPanel::pnlOrder, NumberCaption(position));
}

// Searches txtRecord from behind its selection; says `notFound` when there is no hit.
void searchRecord(SiftView& view, const std::string& notFound) {
  const std::string text = view.recordText();
  const std::string& sought = view.sift.gsSearchText;
  const int64_t from = static_cast<int64_t>(view.selStart()) + view.selLength();
  const std::size_t hit = from < 0 || static_cast<std::size_t>(from) > text.size()
                              ? std::string::npos
                              : text.find(sought, static_cast<std::size_t>(from));
  if (hit == std::string::npos) {
    view.message({"", notFound}, MsgIcon::None);
    return;
  }
  view.selectText(static_cast<int32_t>(hit), static_cast<int32_t>(sought.size()));
}

const Message kNullSearch{"Null Search Text", "The search text is null."};

}  // namespace

JobResult ShowOrdRecord(CommandContext& context) {
  return sift::RunSiftCommand(context, [&](JobState& job, SiftView& view) {
    showRecord(job, view, true);
    return JobOutcome::Done;
  });
}

JobResult ShowProRecord(CommandContext& context) {
  return sift::RunSiftCommand(context, [&](JobState& job, SiftView& view) {
    showRecord(job, view, false);
    return JobOutcome::Done;
  });
}

void SiftNext(JobState& /*job*/, SiftView& view) {
  SiftState& s = view.sift;
  if (s.glCurRec >= s.glRecCount) {
    s.glCurRec = s.glRecCount;
    view.message({"Last Record", "You have reached the last record."}, MsgIcon::Information);
    return;
  }
  ++s.glCurRec;
  sift::ShowCurrent(view);
}

void SiftPrevious(JobState& /*job*/, SiftView& view) {
  SiftState& s = view.sift;
  if (s.glCurRec <= 1) {
    s.glCurRec = 1;
    view.message({"First Record", "You have reached the first record."}, MsgIcon::Information);
    return;
  }
  --s.glCurRec;
  sift::ShowCurrent(view);
}

void SiftFirst(JobState& /*job*/, SiftView& view) {
  view.sift.glCurRec = 1;
  sift::ShowCurrent(view);
}

void SiftLast(JobState& /*job*/, SiftView& view) {
  SiftState& s = view.sift;
  if (s.glCurRec >= s.glRecCount) return;
  s.glCurRec = s.glRecCount;
  sift::ShowCurrent(view);
}

JobResult Jump(CommandContext& context) {
  return sift::RunSiftCommand(context, [&](JobState& /*job*/, SiftView& view) {
    SiftState& s = view.sift;
    const std::string answer =
        view.inputBox("Jump to what record?\r\n\r\n(1 to" + NumberText(s.glRecCount) + ")", "Jump to Record");
    if (answer.empty()) return JobOutcome::Done;
    const int32_t wanted = ToLong(answer);
    if (wanted > s.glRecCount) {
      view.message({"Jump Error", "There aren't that many records."}, MsgIcon::Warning);
    } else if (wanted < 1) {
      view.message({"Jump Error", "Numbers less than 1 not valid."}, MsgIcon::Warning);
    } else if (wanted != s.glCurRec) {
      s.glCurRec = wanted;
      sift::ShowCurrent(view);
    }
    return JobOutcome::Done;
  });
}

JobResult FindText(CommandContext& context) {
  return sift::RunSiftCommand(context, [&](JobState& /*job*/, SiftView& view) {
    const std::string answer = view.inputBox("Search text:", "Find Text");
    if (answer.empty()) {
      view.message(kNullSearch, MsgIcon::Warning);
      return JobOutcome::Done;
    }
    view.sift.gsSearchText = answer;
    searchRecord(view, "Search text not iFound.");
    return JobOutcome::Done;
  });
}

JobResult RepeatSearch(CommandContext& context) {
  return sift::RunSiftCommand(context, [&](JobState& /*job*/, SiftView& view) {
    if (view.sift.gsSearchText.empty()) {
      view.message(kNullSearch, MsgIcon::Warning);
      return JobOutcome::Done;
    }
    searchRecord(view, "No further occurences of search text.");
    return JobOutcome::Done;
  });
}

}  // namespace zv
