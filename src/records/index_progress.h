// What BuildIndex and the sifter's writers show while they run: frmIndexing, frmWriting.
#pragma once

#include <cstdint>
#include <string_view>

namespace zv {

// frmIndexing and the main window's timing panels while BuildIndex runs. Every call
// has a do-nothing default, so a host shows only what it has.
class IndexProgress {
 public:
  virtual ~IndexProgress() = default;

  // frmIndexing comes up with both counters blank and the main window disabled; the
  // main window's status panels are cleared, then pnlFileSize and pnlStartTime filled.
  virtual void indexingStarted(std::string_view /*fileSize*/, std::string_view /*startTime*/) {}
  // pnlLineOdom, once for every line of the .PRO. This is BuildIndex's yield:
  // frmIndexing's cmdCancel sets JobState::giInterrupt to 1 (and clears the status
  // panels) here, and BuildIndex looks at the flag right after the call.
  virtual void indexLine(int32_t /*lineNumber*/) {}
  // pnlRecOdom, when a label was found.
  virtual void indexRecord(int32_t /*recordCount*/) {}
  // After a build that succeeded: pnlFinishTime and pnlElapsed of the main window.
  virtual void indexingFinished(std::string_view /*finishTime*/, std::string_view /*elapsed*/) {}
  // On every way out: the main window enabled, frmIndexing hidden, the main window
  // given the focus.
  virtual void indexingClosed() {}
};

inline constexpr std::string_view kWritingKeptCaption = "Writing Kept Records";
inline constexpr std::string_view kWritingOrderCaption = "Writing Reordered Records";

// frmWriting while kept or reordered records are written. It has no button: the
// writing cannot be cancelled from the window.
class WritingProgress {
 public:
  virtual ~WritingProgress() = default;

  // The caption is set and the form shown.
  virtual void writingStarted(std::string_view /*caption*/) {}
  // pnlRecord: the written count (kept records) or the record number (order).
  virtual void writingRecord(int32_t /*n*/) {}
  // pnlFile: the file being written.
  virtual void writingFile(std::string_view /*name*/) {}
  // pnlLine, for each line written: also the writers' yield to the interface. A host
  // may throw here to abandon the writing (the command line does on Ctrl-C); what was
  // written is then taken back.
  virtual void writingLine(int32_t /*n*/) {}
  // The form hidden, its caption back to "Writing Kept Records", the normal pointer.
  virtual void writingEnded() {}
};

}  // namespace zv
