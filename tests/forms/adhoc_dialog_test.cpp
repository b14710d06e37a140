// frmFltAdHoc: its lists and options, then the ad hoc filter from the menu and the toolbar.
#include <QComboBox>
#include <QRadioButton>
#include <QTest>
#include <QToolButton>

#include "core/input_file.h"
#include "forms/frm_filter.h"
#include "forms_test_support.h"

using namespace zv::forms;
using namespace zv::forms::test;

namespace {

// A main window in a fresh folder holding the marked sample as capture.log; the open
// dialog answers with it and records that it was asked.
struct Run : WorkDir, MainFixture {
  MessageLog log;
  int asked = 0;
  Run() {
    QFile::copy(QStringLiteral(ZV_SAMPLES_DIR "/adhoc_session.log"), file(QStringLiteral("capture.log")));
    frmMain->frmFilter().setFileChooser([this](const QString&) {
      ++asked;
      return file(QStringLiteral("capture.log"));
    });
  }
  QStringList files() const { return QDir(path()).entryList(QDir::Files); }
};

// What the dialog held when it came up, before the test's answer.
struct Seen {
  int bmItems = 0, emItems = 0;
  QStringList bmFirst, emFirst;
  QString bmText, emText;
  bool onlyChecked = false, emEnabled = false, pnlEMEnabled = false;
};

// Answers frmFltAdHoc as the user would: `answer` fills it and presses a button.
struct Answer {
  Seen seen;
  explicit Answer(std::function<void(QDialog&)> answer) {
    SetModalRunner([this, answer](QDialog& d) {
      auto* bm = Child<QComboBox>(d, "cboBM");
      auto* em = Child<QComboBox>(d, "cboEM");
      seen.bmItems = bm->count();
      seen.emItems = em->count();
      for (int i = 0; i < 3 && i < bm->count(); ++i) seen.bmFirst << bm->itemText(i);
      for (int i = 0; i < 2 && i < em->count(); ++i) seen.emFirst << em->itemText(i);
      seen.bmText = bm->currentText();
      seen.emText = em->currentText();
      seen.onlyChecked = Child<QRadioButton>(d, "optBMOnly")->isChecked();
      seen.emEnabled = em->isEnabled();
      seen.pnlEMEnabled = Child(d, "pnlEM")->isEnabled();
      answer(d);
      return d.result();
    });
  }
  ~Answer() { SetModalRunner({}); }
};

void Markers(QDialog& d, const QString& begin, const QString& end) {
  Child<QComboBox>(d, "cboBM")->setEditText(begin);
  if (!end.isNull()) {
    Child<QRadioButton>(d, "optBMandEM")->click();
    Child<QComboBox>(d, "cboEM")->setEditText(end);
  }
  Child<QPushButton>(d, "cmdOkay")->click();
}

QToolButton* AdHocButton(FrmMain& w) {
  for (QToolButton* b : w.findChildren<QToolButton*>())
    if (b->objectName().startsWith(QLatin1String("cmdTB_Filt_")) && b->text() == QLatin1String("Ad Hoc")) return b;
  qFatal("no Ad Hoc button");
}

// Codes 1 to 254 without the blank, the digits and the letters.
constexpr int kCharacterItems = 254 - 1 - 10 - 26 - 26;

}  // namespace

class TestAdHocDialog : public QObject {
  Q_OBJECT

 private slots:
  void fromTheMenuAndTheToolbarWithBothMarkers() {
    QByteArray pro;
    for (bool viaButton : {false, true}) {
      Run r;
      Answer answer([](QDialog& d) { Markers(d, "-begin-", "-end-"); });
      if (viaButton)
        AdHocButton(*r.frmMain)->click();
      else
        Child<QAction>(*r.frmMain, "mnuFilterAdHoc")->trigger();
      const Seen& s = answer.seen;
      QCOMPARE(s.bmItems, 2 + kCharacterItems);
      QCOMPARE(s.emItems, 1 + kCharacterItems);
      QCOMPARE(s.bmFirst, (QStringList{"-begin-", "-text-", QString(QChar(1))}));
      QCOMPARE(s.emFirst, (QStringList{"-end-", QString(QChar(1))}));
      QVERIFY(s.bmText.isEmpty() && s.emText.isEmpty());
      QVERIFY(s.onlyChecked && !s.emEnabled && !s.pnlEMEnabled);

      // The capture after the markers, and the job in frmFilter.
      QCOMPARE(r.asked, 1);
      FrmFilter& filter = r.frmMain->frmFilter();
      QCOMPARE(filter.windowTitle(), "Ad Hoc Filtering");
      QVERIFY2(r.log.messages.isEmpty(), qPrintable(r.log.said().join('\n')));
      QCOMPARE(r.files(), (QStringList{"capture.log", "capture.NDX", "capture.PRO"}));
      QCOMPARE(Child<QLabel>(filter, "pnlRecOdom")->text(), " 3 ");
      QFile f(r.file("capture.PRO"));
      QVERIFY(f.open(QIODevice::ReadOnly));
      const QByteArray made = f.readAll();
      QVERIFY(!made.contains("NORDLINK>"));
      if (viaButton) QCOMPARE(made, pro);
      pro = made;
    }
  }

  void theListsGrowWithEachShowingAndACancelEmptiesThem() {
    Run r;
    {
      Answer answer([](QDialog& d) { Markers(d, "-begin-", QString()); });
      Child<QAction>(*r.frmMain, "mnuFilterAdHoc")->trigger();
      Child<QPushButton>(r.frmMain->frmFilter(), "cmdOkay")->click();
    }
    // Beginning Marker Only: the service lines after each document stay in it.
    QFile f(r.file("capture.PRO"));
    QVERIFY(f.open(QIODevice::ReadOnly));
    QVERIFY(f.readAll().contains("NORDLINK> COST"));
    f.close();
    {
      // Esc does what Cancel does.
      Answer answer([](QDialog& d) { QTest::keyClick(&d, Qt::Key_Escape); });
      Child<QAction>(*r.frmMain, "mnuFilterAdHoc")->trigger();
      // The second showing added every item again, on top.
      QCOMPARE(answer.seen.bmItems, 2 * (2 + kCharacterItems));
      QCOMPARE(answer.seen.bmFirst.first(), "-begin-");
    }
    // Cancelled: no file dialog, nothing written, no interrupt left for the next job.
    QCOMPARE(r.asked, 1);
    QVERIFY(r.log.messages.isEmpty());
    QCOMPARE(r.frmMain->job().giInterrupt.load(), int16_t{0});
    QVERIFY(r.frmMain->mainEnabled());
    auto* form = Child<QDialog>(*r.frmMain, "frmFltAdHoc");
    QCOMPARE(Child<QComboBox>(*form, "cboBM")->count(), 0);
    QCOMPARE(Child<QComboBox>(*form, "cboEM")->count(), 0);
    {
      Answer answer([](QDialog& d) { Markers(d, "-BEGIN-", QString()); });
      Child<QAction>(*r.frmMain, "mnuFilterAdHoc")->trigger();
      QCOMPARE(answer.seen.bmItems, 2 + kCharacterItems);
    }
    // A marker that never matches: the zero-record warning, and no outputs.
    QCOMPARE(r.log.said(), QStringList{"Zero Records: " + Q(zv::kZeroRecordsText)});
    QCOMPARE(r.files(), QStringList{"capture.log"});
  }
};

QTEST_MAIN(TestAdHocDialog)
#include "adhoc_dialog_test.moc"
