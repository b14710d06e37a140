// The polishing commands on the desktop: each from its menu item and its button, the
// file dialogs' refusals, frmReplaceLabels, the records-per-page box, the interrupt,
// Divide's abandon, and frmCover with its settings.
#include <QAction>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include "forms/frm_cover.h"
#include "forms/frm_renumber.h"
#include "forms/frm_replace_labels.h"
#include "forms/file_dialogs.h"
#include "forms_test_support.h"

using namespace zv::forms;
using namespace zv::forms::test;

namespace {

const QByteArray kPro = "Record - 3\r\n\r\nTI- One|\r\nAU- A^B\r\n\r\nRecord - 1\r\n\r\nTI- Two||\r\n\r\n";

// A main window in a fresh current folder whose file dialogs answer from a list (a
// cancel once it is used up), and a record file s.PRO in it.
struct Polish : WorkDir, MainFixture {
  MessageLog log;
  QStringList answers;
  QStringList asked;  // "open FILTER" or "save FILTER", each time a dialog was shown
  Polish() {
    WriteText(file("s.PRO"), kPro);
    SetFileDialogAnswer([this](const FileDialogRequest& r) {
      asked << (r.mode == FileDialogMode::Open ? QStringLiteral("open ") : QStringLiteral("save ")) +
                   r.nameFilters.join(QStringLiteral(";;"));
      return answers.isEmpty() ? QString() : answers.takeFirst();
    });
  }
  ~Polish() { SetFileDialogAnswer({}); }
  FrmRenumber& form() { return RenumberForm(*frmMain); }
  QString panel(const char* name) { return Child<QLabel>(form(), name)->text(); }
  void menu(const char* name) { Child<QAction>(*frmMain, name)->trigger(); }
  void button(int index) { Child<QToolButton>(*frmMain, QStringLiteral("cmdTB_Polish_%1").arg(index))->click(); }
  void okay() { Child<QPushButton>(form(), "cmdOkay")->click(); }
};

}  // namespace

class TestPolishForms : public QObject {
  Q_OBJECT

 private slots:
  void eachCommandRunsFromItsMenuItemAndItsButton_data() {
    QTest::addColumn<QString>("menu");
    QTest::addColumn<int>("button");
    QTest::addColumn<bool>("named");      // the user names the output
    QTest::addColumn<QString>("output");  // else the output the tool names
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QByteArray>("head");  // how the output begins
    QTest::newRow("renumber") << "mnuPolishRenumber" << 0 << true << "" << "Renumber Record File"
                              << "Renumbered File:" << QByteArray("Record - 1\r\n\r\nTI- One|");
    QTest::newRow("delete") << "mnuPolishDelete" << 1 << true << "" << "Delete Record Labels" << "Renumbered File"
                            << QByteArray("TI- One|\r\nAU- A^B\r\n\r\nTI- Two||");
    QTest::newRow("replace") << "mnuPolishReplace" << 2 << true << "" << "Replace Record Labels"
                             << "Renumbered File" << QByteArray("\r\n\r\nTI- One|");
    QTest::newRow("pagebreaks") << "mnuPolishPage" << 3 << false << "s.BRK" << "Insert Hard Page Breaks"
                                << "Page-broken file:" << QByteArray("Record - 3\r\n\r\nTI- One|\r\nAU- A^B\r\n\r\n\f\r\n");
    QTest::newRow("linebreaks") << "mnuPolishLine" << 4 << false << "s.FMT" << "Remove Hard Line Breaks"
                                << "Reformatted File:" << QByteArray("Record - 3\r\n\r\nTI- One\0\r\nAU- A, B\r\n", 34);
    QTest::newRow("divide") << "mnuPolishDivide" << 5 << false << "s.002" << "Divide Records To Files"
                            << "Output File:" << QByteArray("TI- Two||\r\n\r\n");
    QTest::newRow("undelimit") << "mnuPolishUndelimit" << 6 << true << "" << "Undelimit Dialog Records"
                               << "Output File:" << QByteArray("Record - 3\r\n\r\nTI- One\r\n");
  }

  void eachCommandRunsFromItsMenuItemAndItsButton() {
    QFETCH(QString, menu);
    QFETCH(int, button);
    QFETCH(bool, named);
    QFETCH(QString, output);
    QFETCH(QString, title);
    QFETCH(QString, caption);
    QFETCH(QByteArray, head);
    Polish p;
    ModalLog modal;          // frmReplaceLabels: Replace, in its first mode
    Answers perPage({"1", "1"});  // the records-per-page box
    for (int run = 0; run < 2; ++run) {
      const QString out = named ? p.file(QStringLiteral("out%1.txt").arg(run)) : p.file(output);
      QFile::remove(out);
      p.answers = named ? QStringList{p.file("s.PRO"), out} : QStringList{p.file("s.PRO")};
      if (run == 0)
        p.menu(menu.toLatin1().constData());
      else
        p.button(button);
      // No message but the records-per-page box.
      for (const ShownMessage& m : p.log.messages) QCOMPARE(m.kind, MsgKind::Input);
      QVERIFY(p.answers.isEmpty());
      QVERIFY2(ReadText(out).startsWith(head), ReadText(out).constData());
      QCOMPARE(ReadText(p.file("s.PRO")), kPro);
      // The result waits in frmRenumber for Okay.
      QVERIFY(p.form().isVisible() && !p.frmMain->mainEnabled());
      QCOMPARE(p.form().windowTitle(), title);
      QCOMPARE(p.panel("pnlRenumFile"), caption);
      QCOMPARE(p.panel("pnlUnalteredFileName"), p.file("s.PRO"));
      QVERIFY(p.panel("pnlFileName").endsWith(QFileInfo(out).fileName()));
      QVERIFY(!Child(p.form(), "cmdCancel")->isVisible());
      QVERIFY(Child(p.form(), "cmdOkay")->isEnabled());
      QCOMPARE(Child<QProgressBar>(p.form(), "pnlProgress")->value(), 100);
      p.okay();
      QVERIFY(!p.form().isVisible() && p.frmMain->mainEnabled());
      QCOMPARE(p.panel("pnlFileName"), QString());
    }
    QCOMPARE(modal.dialogs, menu == "mnuPolishReplace" ? QStringList({"frmReplaceLabels", "frmReplaceLabels"})
                                                       : QStringList());
  }

  void theDialogsRefuseInTheToolsWordsAndComeBack() {
    Polish p;
    WriteText(p.file("empty"), "");
    WriteText(p.file("old.txt"), "older\r\n");
    p.answers = {p.file("gone"), p.file("empty"), p.file("s.PRO"), p.file("s.PRO"), p.file("s.PRO"),
                 p.file("old.txt")};  // then a cancel
    p.menu("mnuPolishRenumber");
    QCOMPARE(p.log.said(), (QStringList{"File Open Error: File not found.",
                                        "Zero-Length File: " + p.file("empty") + "\r\n\r\nis a zero-length file.",
                                        "Save File Error: Output file must not be the\r\nsame as the input file.",
                                        "File Save Error: " + p.file("old.txt") +
                                            "\r\n\r\nalready exits and would be overwritten."}));
    for (const ShownMessage& m : p.log.messages) QCOMPARE(m.icon, MsgIcon::Warning);
    // Each refusal brought the open dialog back; the last one was cancelled silently.
    QCOMPARE(p.asked.size(), 7);
    QVERIFY2(p.asked[0].startsWith("open All Files (*);;.PRO Files (*.PRO *.pro);;.ORD Files"), qPrintable(p.asked[0]));
    QVERIFY2(p.asked[3].startsWith("save All Files (*);;.REF Files"), qPrintable(p.asked[3]));
    QVERIFY(p.frmMain->mainEnabled() && !p.form().isVisible());
    QCOMPARE(ReadText(p.file("old.txt")), QByteArray("older\r\n"));

    // The line and page break tools refuse their own extension.
    p.log.messages.clear();
    WriteText(p.file("s.FMT"), kPro);
    p.answers = {p.file("s.FMT")};
    p.menu("mnuPolishLine");
    QCOMPARE(p.log.said(), QStringList{"Open File Error: Input file must not have .FMT extension."});
  }

  void aFormatErrorStopsWithTheStopSignAndRemovesTheOutput() {
    Polish p;
    QByteArray notes;
    for (int i = 0; i < 45; ++i) notes += "note\r\n";
    WriteText(p.file("notes"), notes);
    p.answers = {p.file("notes"), p.file("out")};
    p.button(0);
    QCOMPARE(p.log.said(), QStringList{"File Format Error: This does not appear to be a filtered record file."});
    QCOMPARE(p.log.messages[0].icon, MsgIcon::Critical);
    QVERIFY(!QFileInfo::exists(p.file("out")));
    QVERIFY(!p.form().isVisible() && p.frmMain->mainEnabled());
  }

  void frmReplaceLabelsShowsTheFieldsOfItsMode() {
    Polish p;
    FrmReplaceLabels d(p.frmMain.get());
    d.show();
    auto* single = Child<QLineEdit>(d, "txtSingleReplacement");
    auto* begin = Child<QLineEdit>(d, "txtBeginningMarker");
    auto* end = Child<QLineEdit>(d, "txtEndingMarker");
    QCOMPARE(d.windowTitle(), "Replace Record Labels");
    QCOMPARE(Child<QGroupBox>(d, "")->title(), " Replacement Mode ");
    const auto shown = [&] {
      return QList<bool>{Child(d, "pnlSingleReplacement")->isVisible(), single->isEnabled(),
                         Child(d, "pnlBeginningMarker")->isVisible(), Child(d, "pnlEndingMarker")->isVisible(),
                         begin->isEnabled(), end->isEnabled()};
    };
    QCOMPARE(shown(), (QList<bool>{true, true, false, false, false, false}));
    Child<QRadioButton>(d, "optSurround")->click();
    QCOMPARE(shown(), (QList<bool>{false, false, true, true, true, true}));
    QCOMPARE(d.focusWidget(), begin);
    begin->setText("<r>");
    end->setText("</r>");
    single->setText("typed before");
    // Only the mode's own texts are read.
    const zv::ReplaceLabelsParams params = d.params({"in", "out"});
    QCOMPARE(params.mode, zv::ReplaceMode::Surround);
    QCOMPARE(QString::fromStdString(params.beginMarker + "|" + params.endMarker + "|" + params.replacement), "<r>|</r>|");
    // Return in the beginning marker does nothing; in the ending marker it replaces.
    QTest::keyClick(begin, Qt::Key_Return);
    QVERIFY(d.isVisible());
    QTest::keyClick(end, Qt::Key_Return);
    QVERIFY(!d.isVisible());
    QCOMPARE(d.result(), int(QDialog::Accepted));
    Child<QRadioButton>(d, "optSingle")->click();
    QCOMPARE(shown(), (QList<bool>{false, true, false, false, false, false}));  // the dialog is hidden now
    d.ResetReplaceForm();
    QVERIFY(Child<QRadioButton>(d, "optSingle")->isChecked());
    QVERIFY(begin->text().isEmpty() && end->text().isEmpty() && single->text().isEmpty());
    d.show();
    QTest::keyClick(single, Qt::Key_Return);
    QCOMPARE(d.result(), int(QDialog::Accepted));
  }

  void replaceRunsInTheModeChosenAndItsCancelStartsNothing() {
    Polish p;
    ModalLog modal([](QDialog& d) {
      Child<QRadioButton>(d, "optDouble")->click();
      Child<QLineEdit>(d, "txtBeginningMarker")->setText("<r>");
      Child<QLineEdit>(d, "txtEndingMarker")->setText("</r>");
    });
    p.answers = {p.file("s.PRO"), p.file("out")};
    p.button(2);
    QCOMPARE(ReadText(p.file("out")),
             QByteArray("<r>\r\n\r\nTI- One|\r\nAU- A^B\r\n\r\n</r>\r\n\r\n<r>\r\n\r\nTI- Two||\r\n\r\n</r>\r\n\r\n"));
    p.okay();
    // Cancel: no file dialog, nothing run.
    SetModalRunner([](QDialog& d) {
      Child<QPushButton>(d, "cmdCancel")->click();
      return d.result();
    });
    p.asked.clear();
    p.button(2);
    QVERIFY(p.asked.isEmpty());
    QVERIFY(p.frmMain->mainEnabled() && !p.form().isVisible());
  }

  void theRecordsPerPageBoxAsksAgainUntilItsRulesAreMet() {
    Polish p;
    Answers answers({"0", "00", "100", "1.5", "-3", "1"});
    p.answers = {p.file("s.PRO")};
    p.button(3);
    QCOMPARE(p.log.said(), (QStringList{
                               "Records per Page: How many records per page (1 to 99):",
                               "Zero Input Error: Please choose a number from 1 to 99.",
                               "Records per Page: How many records per page (1 to 99):",
                               "Invalid Number of Records Per Page: The valid range is 1 to 99.",
                               "Records per Page: How many records per page (1 to 99):",
                               "Invalid Number of Records Per Page: The valid range is 1 to 99.",
                               "Records per Page: How many records per page (1 to 99):",
                               "Non-numeric Input Error: Please choose a number from 1 to 99.",
                               "Records per Page: How many records per page (1 to 99):",
                               "Non-numeric Input Error: Please choose a number from 1 to 99.",
                               "Records per Page: How many records per page (1 to 99):",
                           }));
    QVERIFY(ReadText(p.file("s.BRK")).contains("\f\r\nRecord - 1"));
    p.okay();

    // Cancel gives an empty answer, which fails in frmError and removes the older .BRK.
    ModalLog modal;
    p.answers = {p.file("s.PRO")};
    p.button(3);
    QCOMPARE(modal.dialogs, QStringList{"frmError"});
    QCOMPARE(modal.errorTexts, QStringList{"Error number 13\nType mismatch"});
    QVERIFY(!QFileInfo::exists(p.file("s.BRK")));
    QVERIFY(!p.form().isVisible() && p.frmMain->mainEnabled());
  }

  void cancelInterruptsTheJobAndItsOutputGoes() {
    Polish p;
    QByteArray big;
    for (int i = 1; i <= 3000; ++i) big += "Record - " + QByteArray::number(i) + "\r\n\r\ntext\r\n";
    WriteText(p.file("big.PRO"), big);
    QStringList hints;
    // Cancel at the job's first yield; the status line over it on the way.
    QTimer::singleShot(0, &p.form(), [&] {
      QEvent enter(QEvent::Enter);
      QApplication::sendEvent(Child(p.form(), "cmdCancel"), &enter);
      hints << p.frmMain->statusMsg();
      Child<QPushButton>(p.form(), "cmdCancel")->click();
    });
    p.answers = {p.file("big.PRO"), p.file("out")};
    p.menu("mnuPolishRenumber");
    QCOMPARE(hints, QStringList{"Interrupt and abandon this process."});
    QVERIFY(!QFileInfo::exists(p.file("out")));
    QVERIFY(!p.form().isVisible() && p.frmMain->mainEnabled());
    QVERIFY(p.log.messages.isEmpty());
    QCOMPARE(p.frmMain->job().giInterrupt.load(), 0);
  }

  void divideInterruptedKeepsItsFilesAndItsWindow() {
    Polish p;
    ModalLog modal;
    QByteArray big;
    for (int i = 1; i <= 3000; ++i) big += "Record - " + QByteArray::number(i) + "\r\n\r\ntext\r\n";
    WriteText(p.file("big.PRO"), big);
    QTimer::singleShot(0, &p.form(), [&] { Child<QPushButton>(p.form(), "cmdCancel")->click(); });
    p.answers = {p.file("big.PRO")};
    p.button(5);
    QCOMPARE(modal.errorTexts, QStringList{"Error number 13\nType mismatch"});
    QCOMPARE(ReadText(p.file("big.001")), QByteArray("text\r\n"));
    QVERIFY(p.form().isVisible());
    QVERIFY(p.panel("pnlFileName").startsWith("big."));
    // Its Cancel now only closes it.
    Child<QPushButton>(p.form(), "cmdCancel")->click();
    QVERIFY(!p.form().isVisible() && p.frmMain->mainEnabled());
    QVERIFY(QFileInfo::exists(p.file("big.001")));
  }
};

QTEST_MAIN(TestPolishForms)
#include "polish_forms_test.moc"
