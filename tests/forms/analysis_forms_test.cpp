// frmQBF, frmRank, frmSort and frmDiction driven as a user drives them: the Content
// toolbar, the opening, the key rules and messages, the job and its end.
#include <QCheckBox>
#include <QLineEdit>
#include <QProgressBar>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include "analysis/select_record_file.h"
#include "forms/analysis_forms.h"
#include "forms/frm_diction.h"
#include "forms/frm_qbf.h"
#include "forms/frm_rank.h"
#include "forms/frm_sort.h"
#include "forms/file_dialogs.h"
#include "forms_test_support.h"

using namespace zv::forms;
using namespace zv::forms::test;

namespace {

// Four records as a filter writes them.
const QByteArray kPro =
    "Record - 1\r\n\r\nAU - Zweig\r\nTI - The cost of a car\r\n\r\n"
    "Record - 2\r\n\r\nAU - adams\r\nTI - Price lists\r\n\r\n"
    "Record - 3\r\n\r\nAU - Brown\r\nTI - Cost-effective toys\r\n\r\n"
    "Record - 4\r\n\r\nAU - Abel\r\nTI - Car costs\r\n";

// A main window in a fresh folder holding r.PRO; the content tools' open and save
// dialogs answer from lists (Cancel once a list is used up).
struct Tools : WorkDir, MainFixture {
  MessageLog log;
  QStringList opens, saves;
  QStringList asked;  // "open: filters" or "save: filters", each time a dialog came up
  Tools() {
    WriteText(file("r.PRO"), kPro);
    SetFileDialogAnswer([this](const FileDialogRequest& request) {
      const bool open = request.mode == FileDialogMode::Open;
      QStringList& list = open ? opens : saves;
      asked << (open ? "open: " : "save: ") + request.nameFilters.join(";;");
      return list.isEmpty() ? QString() : list.takeFirst();
    });
  }
  ~Tools() { SetFileDialogAnswer({}); }
  void toolbar(int index) { Child<QToolButton>(*frmMain, QStringLiteral("cmdTB_Content_%1").arg(index))->click(); }
  QString text(QObject& form, const char* name) { return Child<QLabel>(form, name)->text(); }
  // Clicks `button` at the job's first yield (the interrupt raised before the job
  // started would be reset by it).
  void clickWhileRunning(QObject& form, const char* button) {
    auto* poke = new QTimer(&form);
    poke->setInterval(0);
    QObject::connect(poke, &QTimer::timeout, poke, [this, &form, button, poke] {
      if (!frmMain->jobRunning()) return;
      Child<QPushButton>(form, button)->click();
      poke->deleteLater();
      poke->stop();
    });
    poke->start();
  }
};

QLineEdit* box(QObject& form, const QString& name) { return Child<QLineEdit>(form, name); }

}  // namespace

class TestAnalysisForms : public QObject {
  Q_OBJECT

 private slots:
  void theContentToolbarOpensEachToolsDialog() {
    Tools t;
    const QString records = ".PRO & .NDX Files (*.PRO *.pro *.NDX *.ndx);;.PRO Files (*.PRO *.pro);;"
                            ".NDX Files (*.NDX *.ndx);;All Files (*)";
    for (int index : {1, 2, 3, 4}) t.toolbar(index);
    QCOMPARE(t.asked.size(), 4);
    for (int i = 0; i < 3; ++i) QCOMPARE(t.asked[i], "open: " + records);
    QVERIFY(t.asked[3].startsWith("open: All Files (*);;.LOG Files (*.log);;.CAP Files (*.cap)"));
    // Every dialog was cancelled: no window, no message, the main window usable.
    QVERIFY(t.log.messages.isEmpty() && t.frmMain->mainEnabled());
    for (const char* name : {"frmQBF", "frmRank", "frmSort", "frmDiction"}) {
      auto* form = t.frmMain->findChild<QWidget*>(name);
      QVERIFY(form == nullptr || !form->isVisible());
    }
  }

  // Before a job, Cancel and the close box (Escape) leave each tool's window the same
  // way: hidden and emptied, the main window usable again.
  void cancelAndEscapeBeforeTheJobLeaveTheTool() {
    const std::pair<int, const char*> tools[] = {{1, "frmQBF"}, {2, "frmRank"}, {3, "frmSort"}};
    for (const auto& [index, name] : tools) {
      for (bool escape : {false, true}) {
        Tools t;
        t.opens = {t.file("r.PRO")};
        t.toolbar(index);
        auto* form = t.frmMain->findChild<QDialog*>(name);
        QVERIFY2(form != nullptr && form->isVisible() && !t.frmMain->mainEnabled(), name);
        if (escape)
          QTest::keyClick(form, Qt::Key_Escape);
        else
          Child<QPushButton>(*form, "cmdCancel")->click();
        QVERIFY2(!form->isVisible() && t.frmMain->mainEnabled(), name);
        QVERIFY2(t.log.messages.isEmpty(), name);
        // Opened again, the form is as new: Okay hidden, the interrupt disabled.
        t.opens = {t.file("r.PRO")};
        t.toolbar(index);
        QVERIFY2(form->isVisible() && !Child(*form, "cmdOkay")->isVisible() && !Child(*form, "cmdCancel2")->isEnabled(),
                 name);
      }
    }
  }

  void theOpeningRefusesWhatIsNoRecordFile() {
    Tools t;
    WriteText(t.file("notes.txt"), kPro);
    WriteText(t.file("one.PRO"), "Record - 1\r\n\r\nONLY\r\n");
    t.opens = {t.file("gone.PRO"), t.file("notes.txt"), t.file("one.PRO")};
    t.toolbar(1);
    QCOMPARE(t.log.said().first(), "File Open Error: File not found.");
    t.log.messages.removeFirst();
    QCOMPARE(t.log.messages.size(), 2);
    QCOMPARE(t.log.messages[0].title, "Not a .PRO or .NDX File");
    QVERIFY(t.log.messages[0].text.contains("The search requires that you specify"));
    QCOMPARE(t.log.messages[0].icon, MsgIcon::Warning);
    // Fewer than two labels: the stop message, and the tool is left.
    QCOMPARE(t.log.messages[1].title, "File Format Error");
    QCOMPARE(t.log.messages[1].icon, MsgIcon::Critical);
    QCOMPARE(t.asked.size(), 3);
    QVERIFY(t.frmMain->mainEnabled());
    QVERIFY(!FrmQBF::Of(*t.frmMain).isVisible());
  }

  void queryByFormKeyRulesAndStatement() {
    Tools t;
    t.opens = {t.file("r.PRO")};
    t.toolbar(1);
    FrmQBF& f = FrmQBF::Of(*t.frmMain);
    QVERIFY(f.isVisible() && !t.frmMain->mainEnabled());
    QCOMPARE(t.text(f, "pnlQueriedFile"), t.file("r.PRO"));
    QVERIFY(QFile::exists(t.file("r.NDX")));  // the .PRO was indexed
    QVERIFY(!Child(f, "cmdOkay")->isVisible() && !Child(f, "cmdCancel2")->isEnabled());

    // Enter: silent in the first box of a nest, a warning in the others.
    QTest::keyClick(box(f, "txt11"), Qt::Key_Return);
    QTest::keyClick(box(f, "txt21"), Qt::Key_Enter);
    QVERIFY(t.log.messages.isEmpty());
    QTest::keyClick(box(f, "txt12"), Qt::Key_Return);
    QCOMPARE(t.log.said(), QStringList{"Field Navigation Error: Use TAB key to advance from this field."});
    // Another box taking the focus while txt11 is empty.
    QFocusEvent focusIn(QEvent::FocusIn, Qt::TabFocusReason);
    QApplication::sendEvent(box(f, "txt22"), &focusIn);
    QCOMPARE(t.log.said().last(), "Key Word Error: The first term of the first\r\nnest cannot be blank.");
    QCOMPARE(t.log.messages.size(), 2);

    // The statement follows every key.
    QTest::keyClicks(box(f, "txt11"), "cost*");
    QCOMPARE(t.text(f, "pnlISS"), "cost*");
    QTest::keyClicks(box(f, "txt12"), "price");
    QTest::keyClicks(box(f, "txt21"), "car");
    QTest::keyClicks(box(f, "txt31"), "toys");
    QCOMPARE(t.text(f, "pnlISS"), "(cost* or price) and car and not toys");
    QApplication::sendEvent(box(f, "txt22"), &focusIn);
    QCOMPARE(t.log.messages.size(), 2);

    // Hints on the status line.
    QEvent enter(QEvent::Enter);
    QApplication::sendEvent(Child(f, "cmdSubmit"), &enter);
    QCOMPARE(t.frmMain->statusMsg(), "Submit the query and have 'hit' records written to a new file.");
    QApplication::sendEvent(box(f, "txt32"), &enter);
    QCOMPARE(t.frmMain->statusMsg(), "The second search term of the NOT nest.");

    // Submit: the input and an existing file are refused, the dialog comes back.
    WriteText(t.file("old.QRY"), "old");
    t.saves = {t.file("r.PRO"), t.file("old.QRY"), t.file("hits.QRY")};
    Child<QPushButton>(f, "cmdSubmit")->click();
    QCOMPARE(t.log.messages.size(), 4);
    QCOMPARE(t.log.messages[2].title, "Save File Error");
    QCOMPARE(t.log.messages[3].text, t.file("old.QRY") + "\r\nalready exits and would be overwritten.");
    QCOMPARE(ReadText(t.file("hits.QRY")),
             QByteArray("Record - 1\r\n\r\nAU - Zweig\r\nTI - The cost of a car\r\n\r\n"
                        "Record - 4\r\n\r\nAU - Abel\r\nTI - Car costs\r\n\r\n"));
    QCOMPARE(t.text(f, "pnlHitRecord"), " 2 ");
    QCOMPARE(t.text(f, "pnlQueryFile"), t.file("hits.QRY"));
    QCOMPARE(Child<QProgressBar>(f, "pnlProgress")->value(), 100);
    QVERIFY(Child(f, "cmdOkay")->isVisible() && !Child(f, "cmdCancel2")->isVisible());
    QVERIFY(!box(f, "txt11")->isEnabled() && !Child(f, "cmdSubmit")->isEnabled());

    Child<QPushButton>(f, "cmdOkay")->click();
    QVERIFY(!f.isVisible() && t.frmMain->mainEnabled());
    QVERIFY(box(f, "txt11")->text().isEmpty() && t.text(f, "pnlISS").isEmpty());
  }

  void queryByFormZeroHitsCancelAndInterrupt() {
    Tools t;
    t.opens = {t.file("r.PRO")};
    t.toolbar(1);
    FrmQBF& f = FrmQBF::Of(*t.frmMain);
    Child<QPushButton>(f, "cmdSubmit")->click();  // txt11 empty
    QCOMPARE(t.log.said(), QStringList{"Key Word Error: The first term of the first\r\nnest cannot be blank."});
    QVERIFY(t.asked.size() == 1);

    QTest::keyClicks(box(f, "txt11"), "nothing");
    t.saves = {t.file("none.QRY")};
    Child<QPushButton>(f, "cmdSubmit")->click();
    QCOMPARE(t.log.messages.last().title, "Zero Hits");
    QVERIFY(!QFile::exists(t.file("none.QRY")));
    QVERIFY(Child(f, "cmdOkay")->isVisible());
    Child<QPushButton>(f, "cmdOkay")->click();

    // The save dialog's cancel loses the terms and closes the form.
    t.opens = {t.file("r.NDX")};
    t.toolbar(1);
    QTest::keyClicks(box(f, "txt11"), "cost");
    Child<QPushButton>(f, "cmdSubmit")->click();
    QVERIFY(!f.isVisible() && t.frmMain->mainEnabled() && box(f, "txt11")->text().isEmpty());

    // Cancel pressed during the query: no .QRY, the form closed.
    t.opens = {t.file("r.NDX")};
    t.toolbar(1);
    QTest::keyClicks(box(f, "txt11"), "cost");
    t.saves = {t.file("stop.QRY")};
    t.clickWhileRunning(f, "cmdCancel2");
    Child<QPushButton>(f, "cmdSubmit")->click();
    QVERIFY(!QFile::exists(t.file("stop.QRY")));
    QVERIFY(!f.isVisible() && t.frmMain->mainEnabled());
    QCOMPARE(t.frmMain->job().giInterrupt.load(), int16_t{0});
  }

  void rankKeyRulesMessagesAndRun() {
    Tools t;
    t.opens = {t.file("r.PRO")};
    t.toolbar(2);
    FrmRank& f = FrmRank::Of(*t.frmMain);
    QVERIFY(f.isVisible());
    QVERIFY(!Child<QCheckBox>(f, "chkNoLimits")->isChecked());
    QLineEdit* term = box(f, "txtRankTerm1");
    QLineEdit* weight = box(f, "txtRankWt1");

    Child<QPushButton>(f, "cmdBegin")->click();
    QCOMPARE(t.log.said().last(),
             "Ranking Term Error: The first term has been left blank.  glExist should be at least one term for ranking.");
    QTest::keyClicks(term, "co st?*");
    QCOMPARE(term->text(), "cost*");  // the blank and "?" were swallowed
    QCOMPARE(t.log.messages[1].title, "Rank Term Error");
    QVERIFY(t.log.messages[1].text.startsWith("The <space> key was pressed."));
    QVERIFY(t.log.messages[2].text.startsWith("The character key just pressed, ?, is one the Rank command uses"));
    Child<QPushButton>(f, "cmdBegin")->click();
    QCOMPARE(t.log.said().last(), "Term Weight Error: The weight for the first term has been left blank.");
    QTest::keyClicks(weight, "2x");
    QTest::keyClick(weight, Qt::Key_Backspace);
    QCOMPARE(weight->text(), "2");
    QCOMPARE(t.log.said().last(), "Term Weight Error: Valid weights are the numerals 0 through 9");
    const int before = static_cast<int>(t.log.messages.size());
    QTest::keyClick(box(f, "txtRankTerm2"), Qt::Key_Return);
    QCOMPARE(t.log.said().last(), "Field Navigation Error: Use TAB key to advance from this field.");
    QTest::keyClicks(box(f, "txtRankTerm2"), "car");
    QTest::keyClicks(box(f, "txtRankWt2"), "5");
    QCOMPARE(static_cast<int>(t.log.messages.size()), before + 1);

    Child<QPushButton>(f, "cmdBegin")->click();
    QCOMPARE(t.text(f, "pnlUnalteredFileName"), " " + t.file("r.PRO"));
    // A .PRO is indexed as the builder names things: from its stem, in the current
    // directory, which the dialog left at the file's folder.
    QCOMPARE(t.text(f, "pnlRankedFileName"), " r.RNK");
    QCOMPARE(t.text(f, "pnlRankTableFileName"), " r.TBL");
    QVERIFY(ReadText(t.file("r.TBL")).startsWith("Rank Table for r.RNK\r\n"));
    QCOMPARE(t.text(f, "pnlOperation"), "Writing Rank Table");
    const QByteArray rnk = ReadText(t.file("r.RNK"));
    // Totals 7 (record 1 from its second byte: cost, car), 0, 2, 7 (car, costs).
    QVERIFY(rnk.indexOf("Record - 1") < rnk.indexOf("Record - 4"));
    QVERIFY(rnk.indexOf("Record - 4") < rnk.indexOf("Record - 3"));
    QVERIFY(rnk.indexOf("Record - 3") < rnk.indexOf("Record - 2"));
    QVERIFY(ReadText(t.file("r.TBL")).contains(" 2    cost*\r\n 5    car\r\n"));
    QVERIFY(Child(f, "cmdOkay")->isVisible() && Child(f, "cmdHelp")->isEnabled());
    Child<QPushButton>(f, "cmdOkay")->click();
    QVERIFY(!f.isVisible() && t.frmMain->mainEnabled() && term->text().isEmpty());
  }

  void sortBeginsOnATag() {
    Tools t;
    t.opens = {t.file("r.PRO")};
    t.toolbar(3);
    FrmSort& f = FrmSort::Of(*t.frmMain);
    QVERIFY(f.isVisible());
    Child<QPushButton>(f, "cmdBegin")->click();
    QCOMPARE(t.log.said(),
             QStringList{"Sorting gsTag Error: The sorting gsTag has been left blank.  This provides no field on which "
                         "to sort."});
    QTest::keyClicks(box(f, "txtSortFieldTag"), "au -");
    Child<QPushButton>(f, "cmdBegin")->click();
    const QByteArray srt = ReadText(t.file("r.SRT"));
    // Abel, Brown, Zweig, adams.
    QVERIFY(srt.indexOf("Record - 4") < srt.indexOf("Record - 3"));
    QVERIFY(srt.indexOf("Record - 3") < srt.indexOf("Record - 1"));
    QVERIFY(srt.indexOf("Record - 1") < srt.indexOf("Record - 2"));
    QCOMPARE(t.text(f, "pnlSortedFileName"), " r.SRT");
    QCOMPARE(t.text(f, "pnlOperation"), "Writing Sorted Records");
    Child<QPushButton>(f, "cmdOkay")->click();
    QVERIFY(!f.isVisible() && t.frmMain->mainEnabled());
  }

  void dictionRunsAndItsLimitsCanBeLifted() {
    Tools t;
    ModalLog modal;
    QByteArray lines;
    for (int i = 0; i < 32768; ++i) lines += "cost price\r\n";
    WriteText(t.file("long.txt"), lines);
    t.opens = {t.file("long.txt")};
    t.toolbar(4);
    FrmDiction& f = FrmDiction::Of(*t.frmMain);
    // No OMIT.LST where the program is: said, and the job runs without one.
    QCOMPARE(t.log.messages.size(), 1);
    QCOMPARE(t.log.messages[0].title, "No Omit List");
    QCOMPARE(modal.errorTexts, QStringList{"Error number 6\nOverflow\nLimit reached: the lines Diction reads "
                                         "(glLineCount) can be at most 32767. It came to 32768."});
    QVERIFY(!f.isVisible() && t.frmMain->mainEnabled() && !QFile::exists(t.file("long.DIC")));

    Child<QCheckBox>(f, "chkNoLimits")->setChecked(true);
    t.opens = {t.file("long.txt")};
    t.toolbar(4);
    QVERIFY(f.isVisible() && !t.frmMain->mainEnabled());
    QCOMPARE(t.text(f, "pnlDicFile"), " " + t.file("long.DIC"));
    QCOMPARE(t.text(f, "pnlWords"), " 2 ");
    QCOMPARE(t.text(f, "pnlLineOdom"), " 32768 ");
    QVERIFY(Child(f, "cmdOkay")->isVisible() && !Child(f, "cmdCancel")->isVisible());
    Child<QPushButton>(f, "cmdOkay")->click();
    QVERIFY(!f.isVisible() && t.frmMain->mainEnabled());
  }
};

QTEST_MAIN(TestAnalysisForms)
#include "analysis_forms_test.moc"
