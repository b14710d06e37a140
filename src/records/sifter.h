// The sifter: its commands (run through RunCommand) and the steps the window calls.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "core/dispatcher.h"
#include "core/job_state.h"
#include "records/sift_view.h"

namespace zv {

// The sifter's command numbers.
inline constexpr int32_t kOpenSifter = 1600;
inline constexpr int32_t kShowOrdRecord = 1601;
inline constexpr int32_t kShowProRecord = 1602;
inline constexpr int32_t kKeep = 1603;
inline constexpr int32_t kKeepExpress = 1604;
inline constexpr int32_t kUnkeep = 1605;
inline constexpr int32_t kOrder = 1606;
inline constexpr int32_t kWriteKept = 1607;
inline constexpr int32_t kWriteOrder = 1608;
inline constexpr int32_t kJump = 1609;
inline constexpr int32_t kFindText = 1610;
inline constexpr int32_t kRepeatSearch = 1611;

// The file dialog's filter of OpenSifter.
inline constexpr std::string_view kSiftDialogFilter =
    ".PRO & .NDX Files|*.PRO;*.NDX|.PRO Files|*.PRO|.NDX Files|*.NDX|All Files (*.*)|*.*|";

// --- commands: handlers of the rows 1600 to 1611 -------------------------------------
// Each answers NoCommand when the context holds no SiftView*. A failure runs the general
// error path (gsErrNumber and gsErrText set, ResetSifter) and is thrown on to
// RunCommand, which reports it.

// 1600: the dialog, the checks of the chosen name, BuildIndex for a .PRO, the count,
// the order, the .WRK for a chosen .NDX, then the window with record glCurRec.
// Cancelled when the dialog was cancelled or BuildIndex did not build.
JobResult OpenSifter(CommandContext& context);
JobResult ShowOrdRecord(CommandContext& context);  // 1601
JobResult ShowProRecord(CommandContext& context);  // 1602
JobResult Keep(CommandContext& context);           // 1603
JobResult KeepExpress(CommandContext& context);    // 1604
JobResult Unkeep(CommandContext& context);         // 1605
JobResult Order(CommandContext& context);          // 1606
JobResult SiftWriteKept(CommandContext& context);  // 1607
JobResult SiftWriteOrder(CommandContext& context); // 1608
JobResult Jump(CommandContext& context);           // 1609
JobResult FindText(CommandContext& context);       // 1610
JobResult RepeatSearch(CommandContext& context);   // 1611

// --- steps the window calls directly ---------------------------------------------------
// Navigation. Showing a record goes through view.RunCommand (1602 in .PRO View, 1601
// in .ORD View), which reports its own failures.
void SiftNext(JobState& job, SiftView& view);
void SiftPrevious(JobState& job, SiftView& view);
void SiftFirst(JobState& job, SiftView& view);
void SiftLast(JobState& job, SiftView& view);

// Keep List menu command: fills and shows the list when hidden, hides and clears it
// when shown.
void ToggleKeepList(JobState& job, SiftView& view);
// Refills lstKeepList with the numbers of the marked records.
void FillKeepList(JobState& job, SiftView& view);

// Order menu command: refused in .ORD View ("This command not available in .ORD View",
// "Command Not Available"), else command 1606.
void OrderMenu(JobState& job, SiftView& view);
// Order Toggle: switches views without reloading the text.
void OrderToggle(JobState& job, SiftView& view);

// Exit Sifter, and the closing of the window: the keep list hidden, the two
// "Oversight" questions, marks cleared, the .WRK written or deleted, back to the main
// window.
void LeaveSifter(JobState& job, SiftView& view);

// The reset of the general error path: glOrder freed, every mark in the index
// cleared, pnlCurrentKeepFile blank, ".PRO View" on white, back to the main window.
// Asks nothing and writes no .WRK. Never throws.
void ResetSifter(JobState& job, SiftView& view) noexcept;

// --- pieces shared with the command line -------------------------------------------

// glOrder for `count` records: slots 1 to count hold 1 to count; slot 0 and the spare
// slot count + 1 hold 0.
std::vector<int32_t> IdentityOrder(int32_t count);
// The first position p from 1 to count with glOrder[p] == record, or 0.
int32_t PositionOf(const std::vector<int32_t>& glOrder, int32_t count, int32_t record);
// Order's move: takes `record` out of the order and puts it at position `target`
// (1 to count), shifting the others.
void MoveInOrder(std::vector<int32_t>& glOrder, int32_t count, int32_t record, int32_t target);

}  // namespace zv
