// frmMain: the command centre, with its menus, toolbars, left bar and status line.
#pragma once

#include <any>
#include <array>
#include <cstdint>

#include <QMainWindow>
#include <QTimer>

#include "core/job.h"
#include "core/job_state.h"
#include "forms/lock_keys.h"
#include "forms/main_tables.h"

class QLabel;
class QRadioButton;
class QToolButton;

namespace zv::forms {

class FrmError;
class FrmFilter;
class FrmSettings;
class FrmSift;
class SettingsStore;

class FrmMain : public QMainWindow {
  Q_OBJECT

 public:
  explicit FrmMain(SettingsStore& store, QWidget* parent = nullptr);
  ~FrmMain() override;

  // The least size at which every toolbar button, every caption of the left bar and
  // the longest status hint show whole; the window never goes below it.
  QSize LeastUsableSize() const;

  // The end of start-up: lock panels filled, splash hidden, the window shown.
  void FormLoad(QWidget* frmStartup);

  // The one dispatcher of menu and toolbars: the core's tools by their number, the
  // terminal (3000) and shutdown (3010). The sifter's numbers go to frmSift, their host. Errors end in frmError, the zero-record
  // warning and the interrupt as the filter frame leaves them.
  void RunCommand(int32_t commandNumber);

  // What a menu item or toolbar button does.
  void doAction(UiAction action, int32_t number);

  // "Disabling" frmMain keeps its own child windows (frmFilter above all) usable:
  // the menus, the panes and the keys are switched off, not the window.
  void EnableMain(bool enabled);
  bool mainEnabled() const { return mainEnabled_; }
  bool jobRunning() const { return jobRunning_; }
  bool isShutDown() const { return shutDown_; }

  void setStatusMsg(const QString& text);
  QString statusMsg() const;

  // The "Processing Time" panels.
  void ClearStatusPanels();
  void showJobStart(const QString& fileSize, const QString& startTime, const QString& fileLines);
  void showJobFinish(const QString& finishTime, const QString& elapsed);

  // ResetDialogs: the job dialogs back to their idle look.
  void ResetDialogs();

  // ribTB(i): shows toolbar i alone. pnlOLCap(i): opens panel i of the left bar.
  void chooseToolbar(int index);
  void openPanel(int index);
  int openPanelIndex() const { return openPanel_; }

  void showErrorForm(const QString& text);

  // Runs a command on the parameters its dialog gathered, with `progress` (the tool's
  // window) as its observer: jobRunning while it runs, the wait cursor restored, and a
  // failure shown in frmError. What else the result says is the caller's to show.
  JobResult runJob(int32_t commandNumber, std::any params, JobProgress& progress);
  // Runs a filter whose capture frmFilter's GetInputFile has chosen, with frmFilter as
  // its window, and hands over its result there: the names and OK when done, the
  // warning of a refusal or of zero records, frmError for a failure.
  void runFilterJob(int32_t commandNumber, std::any params, const std::string& capture);

  JobState& job() { return job_; }
  SettingsStore& store() { return store_; }
  FrmFilter& frmFilter() { return *frmFilter_; }
  FrmSettings& frmSettings() { return *frmSettings_; }
  FrmSift& frmSift() { return *frmSift_; }
  KeyLocks& keyLocks() { return keyLocks_; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* buildToolbarStrip();
  QWidget* buildLeftBar();
  QWidget* buildPane();
  void buildMenus();
  void buildStatusBar();
  void decorateToolButton(QToolButton* button, const QString& hint);

  void dialogButton();
  void dosWindow();
  void shutdownSteps();
  void Shutdown();
  void fileMenuPosition(int position);
  bool handleKey(QObject* watched, QKeyEvent* key);
  void KeyStat1_Change(int index);
  void tick();

  SettingsStore& store_;
  JobState job_;
  FrmFilter* frmFilter_ = nullptr;
  FrmSettings* frmSettings_ = nullptr;
  FrmError* frmError_ = nullptr;
  FrmSift* frmSift_ = nullptr;
  KeyLocks keyLocks_;
  QTimer timer1_;

  bool mainEnabled_ = true;
  bool jobRunning_ = false;
  bool shutDown_ = false;
  int openPanel_ = 0;

  QLabel* pnlStatusMsg_ = nullptr;
  QLabel* pnlTime_ = nullptr;
  std::array<QLabel*, 4> pnlKeyStatus_{};
  std::array<QWidget*, 4> pnlTB_{};
  std::array<QWidget*, 3> pnlOL_{};
  std::array<QRadioButton*, 5> optDial_{};
  QLabel* pnlStartTime_ = nullptr;
  QLabel* pnlFinishTime_ = nullptr;
  QLabel* pnlElapsed_ = nullptr;
  QLabel* pnlFileSize_ = nullptr;
  QLabel* pnlFileLines_ = nullptr;
};

}  // namespace zv::forms
