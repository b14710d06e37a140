// File > Export Records... and Content > Find Duplicates...: the menu items lead to the
// dialogs, the dialogs to the jobs, the outcomes to the right messages.
#include <QAction>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QtTest>

#include "forms/frm_dedup.h"
#include "forms/frm_export.h"
#include "forms/frm_record_job.h"
#include "forms_test_support.h"

using namespace zv::forms;
using namespace zv::forms::test;

namespace {

const QByteArray kNlm = "Record - 1\r\n\r\nTI  - Peat dams in fens.\r\nAU  - Varga T\r\nSO  - Fen Studies 2020;3:1-9\r\n\r\n"
                        "Record - 2\r\n\r\nTI  - Methane from fens.\r\nAU  - Holm E\r\nSO  - Fen Studies 2021;4:1-9\r\n";
const QByteArray kOvid = "Record - 4\r\n\r\nAuthors\r\nVarga, Tamas.\r\nTitle\r\nPEAT DAMS IN FENS: A FIELD STUDY.\r\n"
                         "Source\r\nFen Studies. 3:1-9, 2020.\r\n";

// Triggers the menu item named `name` of the main window's menu bar.
void choose(FrmMain& w, const char* name) {
  auto* action = w.menuBar()->findChild<QAction*>(QLatin1String(name));
  QVERIFY2(action != nullptr, name);
  action->trigger();
}

}  // namespace

class TestRecordsExport : public QObject {
  Q_OBJECT

 private slots:
  void exportFromTheFileMenuWritesTheChosenFormat() {
    WorkDir dir;
    WriteText(dir.file("nlm.PRO"), kNlm);
    MainFixture f;
    MessageLog log;
    QString suggested;
    ModalLog modal([&](QDialog& d) {
      Child<QLineEdit>(d, "txtRecordFile")->setText(dir.file("nlm.PRO"));
      Child<QRadioButton>(d, "optCslJson")->setChecked(true);
      suggested = Child<QLineEdit>(d, "txtOutput")->text();
    });
    choose(*f.frmMain, "mnuFileExport");
    QCOMPARE(modal.dialogs, QStringList{"frmExport"});
    QCOMPARE(suggested, dir.file("nlm.json"));  // named after the record file, in the format's extension
    QCOMPARE(log.said(), QStringList{"Export Records: 2 records exported to\n" + dir.file("nlm.json")});
    QFile out(dir.file("nlm.json"));
    QVERIFY(out.open(QIODevice::ReadOnly));
    QVERIFY(out.readAll().contains("\"title\":\"Peat dams in fens\""));
    QVERIFY(f.frmMain->mainEnabled());
  }

  void anEmptyFieldKeepsTheDialogAndARefusalIsShown() {
    WorkDir dir;
    MainFixture f;
    {
      MessageLog log;
      ModalLog modal;  // Okay with nothing filled in
      f.frmMain->RunCommand(zv::kExportRecords);
      QCOMPARE(log.said(), QStringList{"Export Records: Choose the record file to export."});
    }
    MessageLog log;
    ModalLog modal([&](QDialog& d) { Child<QLineEdit>(d, "txtRecordFile")->setText(dir.file("gone.PRO")); });
    f.frmMain->RunCommand(zv::kExportRecords);
    QCOMPARE(log.messages.size(), 1);
    QCOMPARE(log.messages[0].icon, MsgIcon::Warning);
    QVERIFY(log.said()[0].startsWith("File Open Error: File not found."));
    QVERIFY(!dir.exists("gone.ris"));
  }

  void findDuplicatesFromTheContentMenuKeepsOneRecordOfEachWork() {
    WorkDir dir;
    WriteText(dir.file("nlm.PRO"), kNlm);
    WriteText(dir.file("ovid.PRO"), kOvid);
    MainFixture f;
    MessageLog log;
    QString output, report;
    ModalLog modal([&](QDialog& d) {
      auto& dialog = static_cast<FrmDedup&>(d);
      dialog.addRecordFile(dir.file("nlm.PRO"));
      dialog.addRecordFile(dir.file("ovid.PRO"));
      output = Child<QLineEdit>(d, "txtOutput")->text();
      report = Child<QLineEdit>(d, "txtReport")->text();
    });
    choose(*f.frmMain, "mnuContentDedup");
    QCOMPARE(modal.dialogs, QStringList{"frmDedup"});
    QCOMPARE(output, dir.file("DEDUP.PRO"));
    QCOMPARE(report, dir.file("DEDUP.TXT"));
    QCOMPARE(log.said(), QStringList{"Find Duplicates: 3 records read, 1 groups of one work, 1 records left out.\n\n"
                                     "2 records kept in\n" + dir.file("DEDUP.PRO") + "\n\nReport:\n" + dir.file("DEDUP.TXT")});
    QFile kept(dir.file("DEDUP.PRO"));
    QVERIFY(kept.open(QIODevice::ReadOnly));
    QCOMPARE(kept.readAll(), kNlm + "\r\n");
  }

  void cancelInTheProgressWindowStopsTheJobAndLeavesNoFile() {
    WorkDir dir;
    QByteArray big;
    for (int k = 1; k <= 20000; ++k) big += "Record - " + QByteArray::number(k) + "\r\n\r\nTI  - Title " + QByteArray::number(k) + "\r\n\r\n";
    WriteText(dir.file("big.PRO"), big);
    MainFixture f;
    MessageLog log;
    ModalLog modal([&](QDialog& d) {
      Child<QLineEdit>(d, "txtRecordFile")->setText(dir.file("big.PRO"));
      // The progress window's Cancel, as soon as the job first yields.
      QTimer::singleShot(0, f.frmMain.get(), [&] {
        auto* job = f.frmMain->findChild<FrmRecordJob*>(QStringLiteral("frmRecordJob"));
        QVERIFY(job != nullptr && job->isVisible());
        Child<QPushButton>(*job, "cmdCancel")->click();
      });
    });
    f.frmMain->RunCommand(zv::kExportRecords);
    QVERIFY(log.messages.isEmpty());  // an interrupt says nothing
    QVERIFY(!dir.exists("big.ris"));
    QCOMPARE(f.frmMain->job().giInterrupt.load(), 0);
    QVERIFY(f.frmMain->mainEnabled());
  }

  void theOutputNameFollowsTheFormatUntilTheUserTypesOne() {
    MainFixture f;
    FrmExport exportDialog(f.frmMain.get());
    exportDialog.setRecordFile(QStringLiteral("/home/searcher/SMITH0412.PRO"));
    FrmDedup dedupDialog(f.frmMain.get());
    dedupDialog.addRecordFile(QStringLiteral("/home/searcher/NLM0412.PRO"));
    dedupDialog.addRecordFile(QStringLiteral("/home/searcher/OVID0412.PRO"));
    QCOMPARE(Child<QLineEdit>(exportDialog, "txtOutput")->text(), QStringLiteral("/home/searcher/SMITH0412.ris"));
    Child<QRadioButton>(exportDialog, "optCsv")->setChecked(true);
    QCOMPARE(Child<QLineEdit>(exportDialog, "txtOutput")->text(), QStringLiteral("/home/searcher/SMITH0412.csv"));
    Child<QLineEdit>(exportDialog, "txtOutput")->setText(QStringLiteral("/tmp/mine.txt"));
    Child<QRadioButton>(exportDialog, "optRis")->setChecked(true);
    QCOMPARE(Child<QLineEdit>(exportDialog, "txtOutput")->text(), QStringLiteral("/tmp/mine.txt"));  // a name of one's own stays
    QCOMPARE(dedupDialog.params().inputs.size(), 2u);
  }
};

QTEST_MAIN(TestRecordsExport)
#include "records_export_test.moc"
