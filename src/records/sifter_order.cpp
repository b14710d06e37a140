// Order (1606), Order Toggle, Write Order (1608), and the order array itself.
#include "records/record_writers.h"
#include "records/record_file.h"
#include "records/sift_common.h"

namespace zv {

using sift::NumberCaption;
using sift::NumberText;

std::vector<int32_t> IdentityOrder(int32_t count) {
  std::vector<int32_t> order(static_cast<std::size_t>(count) + 2, 0);
  for (int32_t p = 1; p <= count; ++p) order[static_cast<std::size_t>(p)] = p;
  return order;
}

int32_t PositionOf(const std::vector<int32_t>& glOrder, int32_t count, int32_t record) {
  for (int32_t p = 1; p <= count; ++p)
    if (glOrder.at(static_cast<std::size_t>(p)) == record) return p;
  return 0;
}

void MoveInOrder(std::vector<int32_t>& glOrder, int32_t count, int32_t record, int32_t target) {
  auto at = [&](int32_t i) -> int32_t& { return glOrder.at(static_cast<std::size_t>(i)); };
  // Out of its place: the records behind it move up one, the spare slot's 0 with them.
  if (const int32_t p = PositionOf(glOrder, count, record); p != 0)
    for (int32_t i = p; i <= count; ++i) at(i) = at(i + 1);
  // Into the target: the records from there on move down one.
  for (int32_t i = count + 1; i >= target + 1; --i) at(i) = at(i - 1);
  at(target) = record;
}

JobResult Order(CommandContext& context) {
  return sift::RunSiftCommand(context, [&](JobState& /*job*/, SiftView& view) {
    SiftState& s = view.sift;
    const std::string answer = view.inputBox("lOrder: (1 to" + NumberText(s.glRecCount) + ")", "Reorder Records");
    if (answer.empty()) return JobOutcome::Done;
    const int32_t target = ToLong(answer);
    if (target > s.glRecCount) {
      view.message({"Reordering Error", "There aren't that many records."}, MsgIcon::Warning);
      return JobOutcome::Done;
    }
    if (target < 1) {
      view.message({"Reordering Error", "Numbers less than 1 not valid."}, MsgIcon::Warning);
      return JobOutcome::Done;
    }
    MoveInOrder(s.glOrder, s.glRecCount, s.glCurRec, target);
    view.setPanel(SiftPanel::pnlOrder, NumberCaption(PositionOf(s.glOrder, s.glRecCount, s.glCurRec)));
    s.giSiftOrderFlag = 1;  // also when nothing moved
    return JobOutcome::Done;
  });
}

void OrderMenu(JobState& /*job*/, SiftView& view) {
  if (view.sift.ordView()) {
    view.message({"Command Not Available", "This command not available in .ORD View"}, MsgIcon::Warning);
    return;
  }
  view.RunCommand(kOrder);
}

void OrderToggle(JobState& /*job*/, SiftView& view) {
  SiftState& s = view.sift;
  if (!s.ordView()) {
    s.gsSiftView = kOrdView;
    view.setViewMode(kOrdView, kOrdViewColor);
    s.glCurRec = PositionOf(s.glOrder, s.glRecCount, s.glCurRec);
  } else {
    s.gsSiftView = kProView;
    view.setViewMode(kProView, kProViewColor);
    s.glCurRec = s.glCurRec >= 0 && static_cast<std::size_t>(s.glCurRec) < s.glOrder.size()
                     ? s.glOrder[static_cast<std::size_t>(s.glCurRec)]
                     : 0;
  }
  view.setPanel(SiftPanel::pnlRecToView, NumberCaption(s.glCurRec));
}

JobResult SiftWriteOrder(CommandContext& context) {
  return sift::RunSiftCommand(context, [&](JobState& job, SiftView& view) {
    SiftState& s = view.sift;
    const JobResult written = WriteOrder(
        job, view.frmWriting(), {job.gsProFile, job.gsIndexFile, job.outputPath(job.gsBaseName + ".ORD"), s.glOrder, s.glRecCount});
    if (written.error) throw *written.error;
    if (!written.done()) return written.outcome;
    s.giSiftOrderFlag = 0;
    return JobOutcome::Done;
  });
}

}  // namespace zv
