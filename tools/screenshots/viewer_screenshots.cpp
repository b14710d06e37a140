// Takes the file viewer's screenshots: a record file at its second record, the Split
// dialog over it, and a capture of a gigabyte at its bottom, written under /tmp and
// deleted again. Usage: zv_viewer_screenshots OUTPUT_DIR (under xvfb-run).
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QTest>

#include "forms/file_dialogs.h"
#include "forms/file_display_widget.h"
#include "forms/frm_file_view.h"
#include "forms/frm_filter.h"
#include "forms_test_support.h"

using namespace zv::forms;
using namespace zv::forms::test;

namespace {

void save(QWidget& w, const QString& dir, const QString& name) {
  QTest::qWait(200);
  if (!w.grab().save(QDir(dir).filePath(name))) qFatal("cannot save %s", qPrintable(name));
}

// The DIALOG sample, over and over, to `bytes` or a little more.
void writeBigCapture(const QString& path, qint64 bytes) {
  QFile sample(QStringLiteral(ZV_SAMPLES_DIR "/dialog_session.log"));
  if (!sample.open(QIODevice::ReadOnly)) qFatal("no sample capture");
  const QByteArray block = sample.readAll().repeated(512);
  QFile out(path);
  if (!out.open(QIODevice::WriteOnly)) qFatal("cannot write %s", qPrintable(path));
  for (qint64 written = 0; written < bytes; written += block.size())
    if (out.write(block) != block.size()) qFatal("cannot write %s", qPrintable(path));
}

}  // namespace

int main(int argc, char* argv[]) {
  QApplication app(argc, argv);
  if (argc < 2) qFatal("usage: zv_viewer_screenshots OUTPUT_DIR");
  const QString out = QDir(QString::fromLocal8Bit(argv[1])).absolutePath();
  QDir().mkpath(out);

  WorkDir work;
  MainFixture f;
  FrmMain& w = *f.frmMain;
  w.resize(860, 520);
  w.move(40, 40);

  // A record file from the DIALOG filter, at its second record by the stepper.
  const QString capture = CopySample(work, QStringLiteral("session.log"));
  w.frmFilter().setFileChooser([capture](const QString&) { return capture; });
  w.doAction(UiAction::Filter, 100);
  w.frmFilter().findChild<QPushButton*>(QStringLiteral("cmdOkay"))->click();

  FrmFileView& viewer = FrmFileView::Of(w);
  viewer.resize(860, 600);
  viewer.move(40, 40);
  QString next = work.file(QStringLiteral("session.PRO"));
  SetFileDialogAnswer([&next](const FileDialogRequest&) { return next; });
  w.RunCommand(2900);
  viewer.display().display().waitForLoad();
  QTest::qWait(100);
  viewer.doAction(ViewerAction::RecordStepper);
  viewer.doAction(ViewerAction::RecordStepper);
  save(viewer, out, QStringLiteral("viewer.png"));

  // Split at the second record's label.
  viewer.display().selectLine(viewer.display().display().selLine());
  viewer.doAction(ViewerAction::Split);
  FrmSplit& split = viewer.frmSplit();
  split.findChild<QLineEdit*>(QStringLiteral("txtSplitFile1"))->setText(work.file(QStringLiteral("first.pro")));
  split.findChild<QLineEdit*>(QStringLiteral("txtSplitFile2"))->setText(work.file(QStringLiteral("second.pro")));
  save(split, out, QStringLiteral("viewer_split.png"));
  split.findChild<QPushButton*>(QStringLiteral("cmdCancel"))->click();

  // A capture of a gigabyte, at its bottom.
  const QString big = QStringLiteral("/tmp/zv_viewer_screenshot_capture.log");
  writeBigCapture(big, qint64{1} << 30);
  next = big;
  viewer.doAction(ViewerAction::Open);
  save(viewer, out, QStringLiteral("viewer_1gb_loading.png"));
  viewer.display().display().waitForLoad();
  QTest::qWait(100);
  viewer.doAction(ViewerAction::Bottom);
  save(viewer, out, QStringLiteral("viewer_1gb_capture.png"));
  viewer.doAction(ViewerAction::Exit);
  QFile::remove(big);
  return 0;
}
