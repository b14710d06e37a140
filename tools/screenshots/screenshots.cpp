// Takes the documentation's screenshots: frmMain idle, frmFilter after a DIALOG run,
// frmMain's timing panels after it, the sifter on a record with its keep list, the
// content tools after their jobs, the About box, a message box, the DIALOG types
// dialogs after a run, the ad hoc markers and a first start. Usage:
// zv_forms_screenshots OUTPUT_DIR under xvfb-run; with a window manager running in
// that display (twm will do), the message box is taken with its title bar.
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QRadioButton>
#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTest>

#include "forms/analysis_forms.h"
#include "forms/file_dialogs.h"
#include "forms/frm_about.h"
#include "forms/frm_diction.h"
#include "forms/frm_qbf.h"
#include "forms/frm_rank.h"
#include "forms/frm_sort.h"
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

  // The content tools on the run's .PRO, each after its job.
  {
    const QString pro = work.file(QStringLiteral("session.PRO"));
    QStringList saves{work.file(QStringLiteral("wetland.QRY"))};
    SetFileDialogAnswer([&](const FileDialogRequest& request) {
      return request.mode == FileDialogMode::Save ? saves.value(0) : pro;
    });
    MessageLog quiet;  // Diction's note that there is no omit list
    w.RunCommand(1700);
    FrmQBF& qbf = FrmQBF::Of(w);
    const char* terms[][2] = {{"txt11", "peat*"}, {"txt12", "bog*"}, {"txt21", "water"}, {"txt31", "grazing"}};
    for (const auto& [box, term] : terms) QTest::keyClicks(qbf.findChild<QLineEdit*>(QLatin1String(box)), QLatin1String(term));
    qbf.cmdSubmitClick();
    save(qbf, out, QStringLiteral("query_by_form.png"));
    qbf.findChild<QPushButton*>(QStringLiteral("cmdOkay"))->click();

    w.RunCommand(1800);
    FrmRank& rank = FrmRank::Of(w);
    const char* rankBoxes[][2] = {{"txtRankTerm1", "peat*"}, {"txtRankWt1", "3"}, {"txtRankTerm2", "methane"},
                                  {"txtRankWt2", "5"},       {"txtRankTerm3", "water"}, {"txtRankWt3", "1"}};
    for (const auto& [box, text] : rankBoxes) QTest::keyClicks(rank.findChild<QLineEdit*>(QLatin1String(box)), QLatin1String(text));
    rank.cmdBeginClick();
    save(rank, out, QStringLiteral("rank.png"));
    rank.findChild<QPushButton*>(QStringLiteral("cmdOkay"))->click();

    w.RunCommand(1900);
    FrmSort& sortForm = FrmSort::Of(w);
    QTest::keyClicks(sortForm.findChild<QLineEdit*>(QStringLiteral("txtSortFieldTag")), QStringLiteral("  Languages:"));
    sortForm.cmdBeginClick();
    save(sortForm, out, QStringLiteral("sort.png"));
    sortForm.findChild<QPushButton*>(QStringLiteral("cmdOkay"))->click();

    w.RunCommand(2100);
    save(FrmDiction::Of(w), out, QStringLiteral("diction.png"));
    FrmDiction::Of(w).findChild<QPushButton*>(QStringLiteral("cmdOkay"))->click();
    SetFileDialogAnswer({});
  }

  FrmAbout about(&w);
  about.show();
  save(about, out, QStringLiteral("about.png"));
  about.hide();

  // The DIALOG types dialogs after a run on the types sample, and the ad hoc markers.
  {
    const QString types = work.file(QStringLiteral("types.log"));
    QFile::copy(QStringLiteral(ZV_SAMPLES_DIR "/dialog_types_session.log"), types);
    w.frmFilter().setFileChooser([types](const QString&) { return types; });
    const auto type = [](QDialog& d, const char* field, const char* text) {
      auto* edit = d.findChild<QLineEdit*>(QLatin1String(field));
      edit->setFocus();
      QTest::keyClicks(edit, QLatin1String(text));
    };
    w.doAction(UiAction::Filter, 200);
    auto* pik = w.findChild<QDialog*>(QStringLiteral("frmPikTypes"));
    type(*pik, "txtHowManyTypes", "2");
    type(*pik, "txtFirstType", "3,ab");
    type(*pik, "txtSecondType", "kwic");
    pik->findChild<QPushButton*>(QStringLiteral("cmdBegin"))->click();
    save(*pik, out, QStringLiteral("pik_types_after_run.png"));
    pik->findChild<QPushButton*>(QStringLiteral("cmdOkay"))->click();

    w.doAction(UiAction::Filter, 300);
    auto* sep = w.findChild<QDialog*>(QStringLiteral("frmSepTypes"));
    type(*sep, "txtHowManyTypes", "3");
    type(*sep, "txtFirstType", "3,ab");
    type(*sep, "txtSecondType", "5");
    type(*sep, "txtThirdType", "kwic");
    type(*sep, "txtFirstFile", "abstracts");
    type(*sep, "txtSecondFile", "fulltext");
    type(*sep, "txtThirdFile", "kwic");
    sep->findChild<QPushButton*>(QStringLiteral("cmdBegin"))->click();
    save(*sep, out, QStringLiteral("sep_types_after_run.png"));
    sep->findChild<QPushButton*>(QStringLiteral("cmdOkay"))->click();

    SetModalRunner([&out](QDialog& d) {
      d.findChild<QRadioButton*>(QStringLiteral("optBMandEM"))->click();
      d.findChild<QComboBox*>(QStringLiteral("cboBM"))->setEditText(QStringLiteral("-begin-"));
      d.findChild<QComboBox*>(QStringLiteral("cboEM"))->setEditText(QStringLiteral("-end-"));
      d.show();
      save(d, out, QStringLiteral("adhoc_markers.png"));
      d.findChild<QPushButton*>(QStringLiteral("cmdCancel"))->click();
      return static_cast<int>(QDialog::Rejected);
    });
    w.doAction(UiAction::Filter, 1);
    SetModalRunner({});
  }

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
