// Takes the documentation's screenshots: frmMain idle, frmFilter after a DIALOG run,
// frmMain's timing panels after it, the sifter on a record with its keep list, the
// About box, a message box and a first start. Usage: zv_forms_screenshots OUTPUT_DIR
// under xvfb-run; with a window manager running in that display (twm will do), the
// message box is taken with its title bar.
#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTest>

#include "forms/frm_about.h"
#include "forms/frm_filter.h"
#include "forms/frm_sift.h"
#include "forms/frm_startup.h"
#include "forms_test_support.h"

using namespace zv::forms;
using namespace zv::forms::test;

namespace {

void save(QWidget& w, const QString& dir, const QString& name) {
  QTest::qWait(200);
  if (!w.grab().save(QDir(dir).filePath(name))) qFatal("cannot save %s", qPrintable(name));
}

// The window as the screen shows it, with the frame and title bar a window manager
// put around it.
void saveFramed(QWidget& w, const QString& dir, const QString& name) {
  QTest::qWait(400);
  // A window manager that does not tell the frame's extents (twm) still draws one:
  // take a title bar's height above the window and a border around it.
  QRect frame = w.frameGeometry();
  if (frame == w.geometry()) frame.adjust(-4, -26, 4, 4);
  const QPixmap shot = w.screen()->grabWindow(0, frame.x(), frame.y(), frame.width(), frame.height());
  if (!shot.save(QDir(dir).filePath(name))) qFatal("cannot save %s", qPrintable(name));
}

}  // namespace

int main(int argc, char* argv[]) {
  QApplication app(argc, argv);
  if (argc < 2) qFatal("usage: zv_forms_screenshots OUTPUT_DIR");
  const QString out = QDir(QString::fromLocal8Bit(argv[1])).absolutePath();
  QDir().mkpath(out);

  WorkDir work;
  MainFixture f;
  FrmMain& w = *f.frmMain;
  w.resize(860, 520);
  w.move(40, 40);
  w.setStatusMsg(QStringLiteral(" Clean up searches of Dialog, using option in Dialog Filtering Options panel above."));
  save(w, out, QStringLiteral("main_window.png"));

  const QString capture = CopySample(work, QStringLiteral("session.log"));
  w.frmFilter().setFileChooser([capture](const QString&) { return capture; });
  w.doAction(UiAction::Filter, 100);
  save(w.frmFilter(), out, QStringLiteral("filter_after_run.png"));

  w.frmFilter().findChild<QPushButton*>(QStringLiteral("cmdOkay"))->click();
  w.openPanel(2);
  w.chooseToolbar(2);
  w.setStatusMsg(QString());
  save(w, out, QStringLiteral("main_window_processing_time.png"));

  // The sifter on the second record of the run's .PRO, with the keep list shown.
  FrmSift& sift = w.frmSift();
  sift.setFileChooser([&work](const QString&) { return work.file(QStringLiteral("session.PRO")); });
  sift.resize(860, 600);
  sift.move(40, 40);
  w.RunCommand(1600);
  {
    // Record 2 kept to a keep file (which moves on to record 3), then back to it.
    ModalLog keepFile([&out](QDialog& d) {
      d.findChild<QLineEdit*>(QStringLiteral("txtKeepFile"))->setText(QStringLiteral("wetland.kep"));
      d.adjustSize();
      save(d, out, QStringLiteral("sifter_keep_file.png"));
    });
    sift.doAction(SiftAction::Next);
    sift.doAction(SiftAction::Keep);
    sift.doAction(SiftAction::Previous);
    sift.doAction(SiftAction::KeepList);
  }
  save(sift, out, QStringLiteral("sifter.png"));
  sift.doAction(SiftAction::KeepList);
  sift.doAction(SiftAction::OrderToggle);
  save(sift, out, QStringLiteral("sifter_ord_view.png"));
  sift.doAction(SiftAction::OrderToggle);
  sift.sift.giSiftKeepFlag = 0;  // leave without the question
  sift.doAction(SiftAction::Exit);

  FrmAbout about(&w);
  about.show();
  save(about, out, QStringLiteral("about.png"));
  about.hide();

  // A message box whose text is shorter than its title.
  const std::unique_ptr<QMessageBox> box =
      MakeMessageBox(&w, MsgIcon::Warning, QStringLiteral("File Open Error"), QStringLiteral("File not found."),
                     QMessageBox::Ok);
  box->show();
  saveFramed(*box, out, QStringLiteral("message_box.png"));
  box->hide();

  // A first start: no settings, so the window has the old default size.
  QTemporaryDir settings;
  SettingsStore store(settings.filePath(QStringLiteral("quidlane.ini")));
  const std::unique_ptr<FrmMain> first = StartUp(store);
  save(*first, out, QStringLiteral("first_start.png"));
  return 0;
}
