// File dialogs, the opening of a record file, job panels and hints of the content tools.
#include "forms/analysis_forms.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include "analysis/qbf.h"
#include "core/files.h"
#include "core/input_file.h"
#include "forms/file_dialogs.h"
#include "forms/frm_filter.h"
#include "forms/frm_indexing.h"
#include "forms/frm_main.h"
#include "forms/frm_sift.h"
#include "forms/help_window.h"
#include "forms/messages.h"
#include "forms/panels.h"

namespace zv::forms {

namespace {

// Shows `hint` on entering the widget.
class HintFilter final : public QObject {
 public:
  HintFilter(QObject* parent, FrmMain& frmMain, QString hint)
      : QObject(parent), frmMain_(frmMain), hint_(std::move(hint)) {}
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Enter) frmMain_.setStatusMsg(hint_);
    return QObject::eventFilter(watched, event);
  }

 private:
  FrmMain& frmMain_;
  QString hint_;
};

}  // namespace

std::string ChooseAnalysisFile(QWidget* parent, FileDialogKind kind, std::string_view dialogFilter) {
  const QString path =
      kind == FileDialogKind::Open ? GetOpenFileName(parent, dialogFilter) : GetSaveFileName(parent, dialogFilter);
  if (path.isEmpty()) return {};
  const QFileInfo info(path);
  if (info.dir().exists()) QDir::setCurrent(info.absolutePath());
  return QFile::encodeName(path).toStdString();
}

bool SelectRecordFileDialog(FrmMain& frmMain, int32_t openNumber) {
  // frmIndexing observes the opening job: the index builder's counters, and its Cancel
  // raising the interrupt; it goes away as the job ends, whichever way.
  FrmIndexing& frmIndexing = frmMain.frmSift().indexingForm();
  for (;;) {
    const std::string name = ChooseAnalysisFile(&frmMain, FileDialogKind::Open, kRecordFileDialogFilter);
    if (name.empty()) return false;
    // The dialog takes any name; one that is not there is said so, as the others are.
    if (!Exist(name)) {
      ShowMessage(&frmMain, MsgIcon::Warning, kFileNotFoundTitle, kFileNotFoundText);
      continue;
    }
    const JobResult opened = frmMain.runJob(openNumber, RecordFileName{name}, frmIndexing);
    switch (opened.outcome) {
      case JobOutcome::Done:
        return true;
      case JobOutcome::Refused:
        if (opened.message && opened.message->title == kFileFormatErrorTitle) {
          ShowMessage(&frmMain, MsgIcon::Critical, opened.message->title, opened.message->text);
          return false;
        }
        if (opened.message) ShowMessage(&frmMain, MsgIcon::Warning, opened.message->title, opened.message->text);
        continue;  // back to the dialog
      default:
        frmMain.EnableMain(true);
        return false;
    }
  }
}

void JobPanels::reset() {
  clock_.invalidate();
  record_ = line_ = percent_ = calls_ = 0;
  if (recOdom) recOdom->clear();
  if (lineOdom) lineOdom->clear();
  if (bar) bar->setValue(0);
}

bool JobPanels::lineDone(int32_t line, int32_t total) {
  percent_ = total > 0 ? static_cast<int>(std::min<int64_t>(static_cast<int64_t>(line) * 100 / total, 100)) : 100;
  // Reading the clock on every line would show on a large file: every 256th call.
  if (clock_.isValid() && ((++calls_ & 255) != 1 || clock_.elapsed() < FrmFilter::kRepaintMs)) return false;
  show();
  clock_.start();
  QCoreApplication::processEvents();
  return true;
}

void JobPanels::show() {
  if (recOdom) recOdom->setText(record_ > 0 ? FrmFilter::OdometerText(record_) : QString());
  if (lineOdom) lineOdom->setText(line_ > 0 ? FrmFilter::OdometerText(line_) : QString());
  if (bar) bar->setValue(std::max(0, std::min(percent_, 100)));
}

void SetStatusHint(QWidget* widget, FrmMain& frmMain, const QString& hint) {
  widget->setMouseTracking(true);
  widget->installEventFilter(new HintFilter(widget, frmMain, hint));
}

QCheckBox* NoLimitsCheckBox(QWidget* parent) {
  auto* box = new QCheckBox(QStringLiteral("No size limits"), parent);
  box->setObjectName(QStringLiteral("chkNoLimits"));
  box->setToolTip(QStringLiteral("Lift the limits of 32,767 records, lines and counts and of the word tables; "
                                 "equal keys then keep their file order."));
  return box;
}

AnalysisJobDialog::AnalysisJobDialog(FrmMain& frmMain, const char* name, const char* title)
    : QDialog(&frmMain), frmMain_(frmMain) {
  setObjectName(QLatin1String(name));
  setWindowTitle(QLatin1String(title));
  setModal(false);
  setMouseTracking(true);
}

void AnalysisJobDialog::setButtons(const JobButtons& buttons) {
  buttons_ = buttons;
  connect(buttons_.cmdCancel, &QPushButton::clicked, this, &AnalysisJobDialog::cmdCancelClick);
  connect(buttons_.cmdCancel2, &QPushButton::clicked, this, &AnalysisJobDialog::cmdCancel2Click);
  connect(buttons_.cmdOkay, &QPushButton::clicked, this, [this] { cmdOkayClick(); });
}

void AnalysisJobDialog::cmdCancelClick() {
  frmMain_.ClearStatusPanels();
  ResetForm();
  frmMain_.EnableMain(true);
  frmMain_.activateWindow();
}

void AnalysisJobDialog::cmdCancel2Click() {
  frmMain_.job().giInterrupt = 1;
  frmMain_.ClearStatusPanels();
}

void AnalysisJobDialog::reject() {
  if (buttons_.cmdOkay->isVisible())
    cmdOkayClick();
  else if (buttons_.cmdCancel2->isEnabled())
    cmdCancel2Click();
  else
    cmdCancelClick();
}

void AnalysisJobDialog::ClearStatusPanels() { frmMain_.ClearStatusPanels(); }

void AnalysisJobDialog::jobStarted(const Start& start) {
  frmMain_.showJobStart(QString::number(start.fileSize), Q(start.startTime), QString::number(start.totalLines));
}

JobButtons MakeJobButtons(QWidget* parent, const char* beginName, const char* beginCaption, const QString& helpPage) {
  auto button = [parent](const char* name, const char* caption) {
    QPushButton* b = NamedButton(caption, name, parent);
    b->setAutoDefault(false);
    return b;
  };
  JobButtons b;
  b.cmdBegin = button(beginName, beginCaption);
  b.cmdCancel = button("cmdCancel", "Cancel");
  b.cmdHelp = button("cmdHelp", "Help");
  b.cmdCancel2 = button("cmdCancel2", "Cancel");
  b.cmdOkay = button("cmdOkay", "Okay");
  b.row = CentredRow({b.cmdBegin, b.cmdCancel, b.cmdHelp, b.cmdCancel2, b.cmdOkay});
  QObject::connect(b.cmdHelp, &QPushButton::clicked, parent, [parent, helpPage] { ShowHelp(parent, helpPage); });
  return b;
}

void JobButtons::idle() {
  for (QPushButton* b : {cmdBegin, cmdCancel, cmdHelp}) b->setEnabled(true);
  cmdCancel2->show();
  cmdCancel2->setEnabled(false);
  cmdOkay->hide();
}

void JobButtons::running() {
  for (QPushButton* b : {cmdBegin, cmdCancel, cmdHelp}) b->setEnabled(false);
  cmdCancel2->setEnabled(true);
}

void JobButtons::done() {
  cmdCancel2->hide();
  cmdOkay->show();
  cmdOkay->setEnabled(true);
  cmdOkay->setFocus();
}

}  // namespace zv::forms
