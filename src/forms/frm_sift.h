// frmSift: the sifter's window, its menus, toolbar and keys, and the view the sifter's
// commands work through.
#pragma once

#include <array>
#include <functional>
#include <vector>

#include <QMainWindow>

#include "forms/sift_tables.h"
#include "records/sift_view.h"

class QFrame;
class QLabel;
class QListWidget;
class QPlainTextEdit;
class QToolButton;

namespace zv::forms {

class FrmIndexing;
class FrmKeepFile;
class FrmMain;
class FrmOptionsFonts;
class FrmWriting;
class SettingsStore;

// The resize rule of the window, in twips: the background panel fills the inner area
// below its top, and the record text keeps its place, 825 above the panel's foot and
// 250 short of the right edge. A value that would be negative is 400.
struct SiftLayout {
  int backgroundHeight;
  int recordHeight;
  int recordWidth;
};
SiftLayout SiftResize(int innerWidth, int innerHeight, int backgroundTop, int recordLeft, int recordTop);

class FrmSift : public QMainWindow, public SiftView {
  Q_OBJECT

 public:
  FrmSift(FrmMain& frmMain, SettingsStore& store);
  ~FrmSift() override;

  // What a menu item, a toolbar button or a window key does. Ignored while a command
  // of the sifter runs, since the writers and the index builder yield to the interface.
  void doAction(SiftAction action);
  bool busy() const { return busy_; }

  // Answers the open dialog instead of showing it: called with the dialog's filters,
  // returns the chosen path, or an empty text for a cancel.
  using FileChooser = std::function<QString(const QString& nameFilters)>;
  void setFileChooser(FileChooser chooser) { chooser_ = std::move(chooser); }

  QPlainTextEdit* txtRecord() const { return txtRecord_; }
  FrmKeepFile& frmKeepFile() { return *frmKeepFile_; }
  FrmOptionsFonts& frmOptionsFonts() { return *frmOptionsFonts_; }
  FrmWriting& writingForm() { return *frmWriting_; }
  FrmIndexing& indexingForm() { return *frmIndexing_; }

  // SiftView.
  void RunCommand(int32_t commandNumber) override;
  void showErrorForm(std::string_view text) override;
  std::optional<std::string> chooseFile(std::string_view dialogFilter) override;
  void setRecordText(std::string_view bytes) override;
  std::string recordText() const override { return recordBytes_; }
  int32_t selStart() const override;
  int32_t selLength() const override;
  void selectText(int32_t start, int32_t length) override;
  void setPanel(SiftPanel panel, std::string_view text) override;
  void setViewMode(std::string_view gsSiftView, uint32_t backColor) override;
  void setPartialDisplay(bool visible) override;
  bool keepListVisible() const override;
  void showKeepList(bool visible) override;
  void clearKeepList() override;
  void addKeepListItem(std::string_view text) override;
  void message(const Message& message, zv::MsgIcon icon) override;
  bool askYesNo(const Message& question, zv::MsgIcon icon) override;
  std::string inputBox(std::string_view prompt, std::string_view title) override;
  std::optional<std::string> askKeepFile() override;
  JobProgress& frmWriting() override;
  JobProgress& frmIndexing() override;
  void showSifter() override;
  void hideSifter() override;

 protected:
  void closeEvent(QCloseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void buildMenus();
  QWidget* buildToolbar();
  QFrame* buildBackground();
  void placeChildren();
  bool handleKey(QWidget* target, QKeyEvent* key);
  void buttonHover(QToolButton* button, bool entering);
  // Runs a step of the sifter that the window calls itself; a failure goes to frmError.
  void step(const std::function<void()>& run);
  int textPosition(int32_t byteOffset) const;

  // The commands the window does itself.
  void copyCommand();
  void helpCommand();
  void fontCommand();

  FrmMain& frmMain_;
  SettingsStore& store_;
  FileChooser chooser_;
  bool busy_ = false;
  FrmKeepFile* frmKeepFile_ = nullptr;
  FrmOptionsFonts* frmOptionsFonts_ = nullptr;
  FrmWriting* frmWriting_ = nullptr;
  FrmIndexing* frmIndexing_ = nullptr;

  // The record's bytes as set, and for each character of the text on display the
  // offset of its byte (a CR LF shows as one line break), with the length at the end.
  std::string recordBytes_;
  std::vector<int32_t> byteOfChar_{0};

  QWidget* central_ = nullptr;
  QWidget* toolbar_ = nullptr;
  std::array<QToolButton*, 14> cmdTB_{};
  QFrame* pnlBackground_ = nullptr;
  QWidget* header_ = nullptr;
  QWidget* footer_ = nullptr;
  QPlainTextEdit* txtRecord_ = nullptr;
  QLabel* pnlProFileName_ = nullptr;
  QLabel* pnlRecToView_ = nullptr;
  QLabel* pnlTotRecs_ = nullptr;
  QLabel* pnlOrder_ = nullptr;
  QLabel* pnlKeptFileName_ = nullptr;
  QLabel* pnlCurrentKeepFile_ = nullptr;
  QLabel* pnlViewMode_ = nullptr;
  QLabel* pnlPartialDisplay_ = nullptr;
  QFrame* pnlKeepList_ = nullptr;
  QListWidget* lstKeepList_ = nullptr;
  QAction* mnuKeepList_ = nullptr;
};

}  // namespace zv::forms
