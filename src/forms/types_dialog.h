// What frmPikTypes and frmSepTypes share: the number of types, the type fields, the odometers.
#pragma once

#include <array>
#include <initializer_list>
#include <string>

#include <QDialog>
#include <QHash>
#include <QElapsedTimer>

#include "core/dispatcher.h"
#include "core/job.h"
#include "core/job_state.h"
#include "filters/dialog_family.h"
#include "forms/frm_filter.h"

class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QVBoxLayout;

namespace zv::forms {

class FrmMain;

// A dialog that gathers the types of a DIALOG job and then shows its progress in
// place of frmFilter. Its subclasses lay it out and begin the job.
class TypesDialog : public QDialog, public TypeProgress {
  Q_OBJECT

 public:
  TypesDialog(FrmMain& frmMain, JobState& job, const char* name);

  // Commands 200 and 300: the capture chosen, the fields reset, the dialog shown
  // without modality over a disabled main window.
  void open(const std::string& capture);
  const std::string& capture() const { return capture_; }

  // ResetPikTypes / ResetSepTypes.
  virtual void reset() = 0;
  // Commands 201 and 301: gathers the parameters from the fields and runs the job
  // through frmMain, then shows how it ended.
  virtual void runBegun(int32_t commandNumber) = 0;

  // JobProgress and the types' odometers.
  void ClearStatusPanels() override;
  void jobStarted(const Start& start) override;
  void lineDone(int32_t line, int32_t totalLines) override;
  void recordDone(int32_t record) override;
  void typeRecordDone(int type, int32_t count) override;
  void jobFinished(std::string_view finishTime, std::string_view elapsed) override;
  // The interrupt button within reach for the job.
  virtual void showRunning() = 0;

  // The five type fields' texts, as the filter reads them.
  std::array<std::string, kMaxTypes> typeTexts() const;

 protected:
  // The shared fields; the subclass places them.
  void buildFields(const std::array<const char*, kMaxTypes>& rowCaptions, bool fileFields);
  // Fields 1 to n shown and enabled, the others hidden and disabled, with their rows.
  void showTypes(int n);
  // The fields back to empty and enabled, all shown and tab stops; odometers empty.
  void resetFields();
  // Takes every field out of the tab order for the job.
  void leaveTabOrder();
  // The "00000" map of the filled fields: the first empty one among the first n, or 0.
  int firstBlank(const std::array<QLineEdit*, kMaxTypes>& fields, int n) const;
  int howMany() const;
  void showPanels();
  void hint(QWidget* w, const QString& text);

  // The layout the two dialogs share, top to bottom. layOutFields: the number of types,
  // then the rows of type fields (with the file fields where there are some) and their
  // record odometers under `columnCaptions`, from column 1 on (nullptr: none).
  QVBoxLayout* layOutFields(std::initializer_list<const char*> columnCaptions);
  // A sunken panel a file name is shown in, under its caption.
  QLabel* addFilePanel(QVBoxLayout* layout, const char* caption, const char* name);
  // The line and record odometers under their captions, then the progress bar.
  void addOdometers(QVBoxLayout* layout, const char* lineCaption, const char* recordCaption);
  // The buttons in a centred row.
  void addButtons(QVBoxLayout* layout, std::initializer_list<QPushButton*> buttons);

  // Enter swallowed with the tab warning, a type or file field entered before the
  // number is given, the status hints.
  bool eventFilter(QObject* watched, QEvent* event) override;
  virtual void fileFieldEntered(QLineEdit* /*field*/) {}
  virtual bool fileFieldKey(QLineEdit* /*field*/, QKeyEvent* /*key*/) { return false; }

  FrmMain& frmMain_;
  JobState& job_;
  std::string capture_;
  LineOdometers odometers_;

  QLineEdit* txtHowManyTypes_ = nullptr;
  std::array<QLineEdit*, kMaxTypes> txtType_{};
  std::array<QLineEdit*, kMaxTypes> txtFile_{};  // frmSepTypes only
  std::array<QLabel*, kMaxTypes> pnlType_{};
  std::array<QLabel*, kMaxTypes> pnlTypeOdom_{};
  QPushButton* cmdBegin_ = nullptr;

 private:
  void howManyEdited();
  QHash<QObject*, QString> hints_;
};

// The two dialogs, made on first use as children of frmMain.
TypesDialog& PikTypesForm(FrmMain& frmMain);
TypesDialog& SepTypesForm(FrmMain& frmMain);

// Commands 200 and 300: the capture through the open dialog (without frmFilter), then
// the dialog. Commands 201 and 301, which their Begin buttons give: the job.
void OpenPikTypes(FrmMain& frmMain, const Command& command);
void OpenSepTypes(FrmMain& frmMain, const Command& command);
void BeginTypesJob(FrmMain& frmMain, const Command& command);

// ResetDialogs' share: the types dialogs back to their idle look (those made so far).
void ResetTypesDialogs(FrmMain& frmMain);

// The names of the five type and file fields and of their rows, in order.
inline constexpr std::array<const char*, kMaxTypes> kOrdinals = {"First", "Second", "Third", "Fourth", "Fifth"};

}  // namespace zv::forms
