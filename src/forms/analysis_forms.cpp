// File dialogs, the opening of a record file, job panels and hints of the content tools.
#include "forms/analysis_forms.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QLabel>
#include <QProgressBar>

#include "analysis/qbf.h"
#include "core/files.h"
#include "core/input_file.h"
#include "forms/file_dialogs.h"
#include "forms/frm_filter.h"
#include "forms/frm_indexing.h"
#include "forms/frm_main.h"
#include "forms/frm_sift.h"
#include "forms/messages.h"

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

}  // namespace zv::forms
