// frmFileView: the file viewer's window, its menus, toolbar and panels around the file
// display, and frmSplit, the dialog of its Split command.
#pragma once

#include <array>
#include <string>

#include <QDialog>
#include <QElapsedTimer>
#include <QMainWindow>

#include "core/dispatcher.h"
#include "core/job.h"
#include "forms/viewer_tables.h"
#include "viewer/file_view.h"

class QFrame;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QToolButton;

namespace zv::forms {

class FileDisplayWidget;
class FrmBigLoad;
class FrmMain;
class FrmOptionsFonts;
class FrmSplit;
class SettingsStore;

// The resize rule of the window, in twips: the background panel fills the inner area
// below its top, and the display keeps its place, its own margins short of the panel's
// foot and of the right edge. A value that would be negative is 400.
struct FileViewLayout {
  int backgroundHeight;
  int displayHeight;
  int displayWidth;
};
FileViewLayout FileViewResize(int innerWidth, int innerHeight, int backgroundTop, int displayLeft, int displayTop);

class FrmFileView : public QMainWindow, public fileview::FileViewHost {
  Q_OBJECT

 public:
  FrmFileView(FrmMain& frmMain, SettingsStore& store);
  ~FrmFileView() override;

  // The viewer of the program: made on first use, hidden (not destroyed) when left,
  // so that its font stays for the next use.
  static FrmFileView& Of(FrmMain& frmMain);

  // Open, as command 2900 does it: the display cleared, the open dialog until a file
  // passes (a zero-length one is refused), the window shown with the file, the main
  // window hidden. A cancel gives the main window back, enabled.
  void Open(const Command& command);

  // What a menu item or a toolbar button does.
  void doAction(ViewerAction action);

  // The open or save dialog with a filter "text|pattern|...": the path chosen, or ""
  // for a cancel. It takes any name; the checks are the viewer's own.
  QString chooseFile(bool save, std::string_view dialogFilter);

  FileDisplayWidget& display() { return *display_; }
  FrmBigLoad& frmBigLoad() { return *frmBigLoad_; }
  FrmSplit& frmSplit() { return *frmSplit_; }
  FrmOptionsFonts& frmOptionsFonts() { return *frmOptionsFonts_; }
  FrmMain& frmMain() { return frmMain_; }
  QLabel* panel(const char* name) const;

  // Split takes the file away from the display while it reads it, and gives it back.
  void releaseFile();
  void restoreFile();

  // FileViewHost.
  std::string inputBox(std::string_view prompt, std::string_view title) override;
  void message(const Message& message) override;

 protected:
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void buildMenus();
  QWidget* buildToolbar();
  QFrame* buildBackground();
  void placeChildren();
  void buttonHover(QToolButton* button, bool entering);

  // The display's events.
  void onLoadComplete();
  void onSearchComplete();
  void onTopIndexChange();
  void hideBigLoad();

  // The commands the window does itself.
  void splitCommand();
  void copyCommand();
  void fontCommand();
  void helpCommand();
  void exitCommand();
  void jumpCommand();
  // The display's file name set to empty, as Open and Exit do (twice, as they do).
  void clearDisplay();

  FrmMain& frmMain_;
  SettingsStore& store_;
  FrmBigLoad* frmBigLoad_ = nullptr;
  FrmSplit* frmSplit_ = nullptr;
  FrmOptionsFonts* frmOptionsFonts_ = nullptr;

  std::string reopenName_;  // the file Split took away
  int64_t reopenTop_ = 1;
  int64_t pendingTop_ = 0;  // its top line, set again once it is indexed

  QWidget* central_ = nullptr;
  QWidget* toolbar_ = nullptr;
  std::array<QToolButton*, 13> cmdTB_{};
  QFrame* pnlBackGround_ = nullptr;
  QWidget* header_ = nullptr;
  FileDisplayWidget* display_ = nullptr;
  QLabel* pnlFileName_ = nullptr;
  QLabel* pnlViewLine_ = nullptr;
  QLabel* lblLineOf_ = nullptr;
  QLabel* pnlLinesInFile_ = nullptr;
};

// frmSplit: the two names, the bar, and Split, OK, Cancel and Help.
class FrmSplit : public QDialog, public JobProgress {
  Q_OBJECT

 public:
  FrmSplit(FrmMain& frmMain, FrmFileView& viewer);

  // Empty names, the bar at 0, Split, Help and Cancel enabled, OK hidden, the focus
  // in the first name.
  void ResetSplitForm();

  // gsSplitFile1 and gsSplitFile2, from the two fields.
  std::string gsSplitFile1() const;
  std::string gsSplitFile2() const;

  // The double click in a field: the save dialog, its name into the field.
  void txtSplitFileDoubleClick(int index);
  void cmdSplitClick();
  void cmdOkayClick();
  void cmdCancelClick();
  void cmdHelpClick();

  // Command 2901: the split of the viewer's file at its selected line, with this form
  // as the job's progress.
  void RunSplit(const Command& command);

  // JobProgress.
  void jobStarted(const Start& start) override;
  void lineDone(int32_t line, int32_t totalLines) override;

 public slots:
  void reject() override;

 protected:
  void showEvent(QShowEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  FrmMain& frmMain_;
  FrmFileView& viewer_;
  QElapsedTimer repaintClock_;
  std::array<QLineEdit*, 2> txtSplitFile_{};
  QProgressBar* pnlProgress_ = nullptr;
  QPushButton* cmdSplit_ = nullptr;
  QPushButton* cmdOkay_ = nullptr;
  QPushButton* cmdCancel_ = nullptr;
  QPushButton* cmdHelp_ = nullptr;
};

// The desktop's commands 2900 and 2901, for the table of commands with their own dialog.
void RunOpenFileView(FrmMain& frmMain, const Command& command);
void RunSplitFile(FrmMain& frmMain, const Command& command);

}  // namespace zv::forms
