// The sifter window as the sifter's logic sees it: named elements, dialogs, messages.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/job.h"
#include "core/job_state.h"
#include "records/sift_state.h"

namespace zv {

// The panels of frmSift that the logic fills. Number captions come with one blank
// before and one behind the digits (" 12 ").
enum class SiftPanel {
  pnlProFileName,      // gsProFile
  pnlTotRecs,          // glRecCount
  pnlRecToView,        // glCurRec
  pnlOrder,            // the position in the order
  pnlKeptFileName,     // keepFile of the record on display
  pnlCurrentKeepFile,  // gsKeepFile
};

enum class MsgIcon { None, Information, Warning, Stop };

// The sifter's commands 1600 to 1611 run through RunCommand with the window, as a
// SiftView*, in the context's parameters; a handler finds the sifter's state in
// `sift`, next to the elements. A context without one answers none of those numbers
// (RunCommand then reports NoCommand).
//
// The state lives with the window for the whole run of the program: the window is
// hidden, not destroyed, when the user leaves the sifter, and gsKeepFile must
// survive that.
//
// Texts handed to the view are the system's own, with CR LF between lines. Messages
// with an empty title take the program's title, as a message box does by default.
class SiftView {
 public:
  SiftState sift;

  // --- dispatch ---------------------------------------------------------------------
  // Runs a command through the program's dispatcher, with this view as its host, and
  // shows frmError when it fails. The logic calls it wherever a step says "run command
  // N" (showing a record is 1602 or 1601, Yes to an exit question 1607 or 1608).
  virtual void RunCommand(int32_t commandNumber) = 0;
  // frmError with its text ("Error number" + gsErrNumber + CR LF + gsErrText), for a
  // failure in a step the window calls directly (filling the keep list, leaving).
  virtual void showErrorForm(std::string_view text) = 0;

  // --- the file dialog (CMDialog1) ------------------------------------------------
  // The open dialog with the given filter ("text|pattern|..."), first entry selected.
  // Returns the chosen path, or nothing when the user cancelled (error 32755). Like the
  // system's dialog, it leaves the current directory at the chosen file's folder.
  virtual std::optional<std::string> chooseFile(std::string_view dialogFilter) = 0;

  // --- txtRecord ----------------------------------------------------------------------
  // Replaces the text with a record's bytes (CR LF line ends as in the .PRO). The
  // caret goes to the start, with nothing selected.
  virtual void setRecordText(std::string_view bytes) = 0;
  // The text as last set; SelStart and SelLength count bytes of it, from 0.
  virtual std::string recordText() const = 0;
  virtual int32_t selStart() const = 0;
  virtual int32_t selLength() const = 0;
  // Selects `length` bytes from `start` and gives txtRecord the focus.
  virtual void selectText(int32_t start, int32_t length) = 0;

  // --- panels -------------------------------------------------------------------------
  virtual void setPanel(SiftPanel panel, std::string_view text) = 0;
  // pnlViewMode: the view's name on its background colour (0xRRGGBB).
  virtual void setViewMode(std::string_view gsSiftView, uint32_t backColor) = 0;
  // pnlPartialDisplay, "Long Record Partially Displayed", shown or hidden.
  virtual void setPartialDisplay(bool visible) = 0;

  // --- pnlKeepList and lstKeepList -------------------------------------------------
  virtual bool keepListVisible() const = 0;
  // Shows or hides pnlKeepList (with the menu's check mark); the list is untouched.
  virtual void showKeepList(bool visible) = 0;
  virtual void clearKeepList() = 0;
  virtual void addKeepListItem(std::string_view text) = 0;

  // --- boxes and dialogs ------------------------------------------------------------
  virtual void message(const Message& message, MsgIcon icon) = 0;
  // A Yes/No question; true for Yes.
  virtual bool askYesNo(const Message& question, MsgIcon icon) = 0;
  // An input box: the text typed, or "" when the user pressed Cancel.
  virtual std::string inputBox(std::string_view prompt, std::string_view title) = 0;
  // frmKeepFile, modal: the text typed (its own key checks applied), or nothing when
  // the user pressed Cancel.
  virtual std::optional<std::string> askKeepFile() = 0;
  // The progress windows of the writers and of BuildIndex, as their jobs' observers.
  virtual JobProgress& frmWriting() = 0;
  virtual JobProgress& frmIndexing() = 0;

  // --- the two windows --------------------------------------------------------------
  // frmSift shown, the main window hidden.
  virtual void showSifter() = 0;
  // The main window shown, enabled and focused; frmSift hidden.
  virtual void hideSifter() = 0;
};

}  // namespace zv
