// frmCover from its menu item and its button: the settings loaded and saved, the date,
// the three ways of saving, a cancelled dialog, and an error.
#include <QAction>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QRadioButton>
#include <QSettings>
#include <QTest>
#include <QToolButton>

#include "core/settings_file.h"
#include "forms/frm_cover.h"
#include "forms/file_dialogs.h"
#include "forms_test_support.h"
#include "polish/cover.h"

using namespace zv::forms;
using namespace zv::forms::test;

namespace {

// A main window whose file dialogs answer from a list (a cancel once it is used up).
struct Cover : WorkDir, MainFixture {
  MessageLog log;
  QStringList answers;
  int dialogs = 0;
  Cover() {
    SetFileDialogAnswer([this](const FileDialogRequest& r) {
      ++dialogs;
      if (r.nameFilters != DialogNameFilters(zv::kCoverFilter)) qFatal("not the cover's filter");
      return answers.isEmpty() ? QString() : answers.takeFirst();
    });
  }
  ~Cover() { SetFileDialogAnswer({}); }
  FrmCover& form() { return CoverForm(*frmMain); }
  template <class T = QLineEdit>
  T* field(const char* name) { return Child<T>(form(), name); }
  void click(const char* name) { Child<QPushButton>(form(), name)->click(); }
  void choose(const char* name) { Child<QRadioButton>(form(), name)->setChecked(true); }
};

}  // namespace

class TestCoverForm : public QObject {
  Q_OBJECT

 private slots:
  void theMenuAndTheButtonLoadTheSettingsAndShowTheForm() {
    Cover c;
    c.store->SaveSetting("Header/Cover", "ToClient", "True");
    c.store->SaveSetting("Header/Cover", "FromLibrary", "False");
    c.store->SaveSetting("Header/Cover", "SaveSepFile", "True");
    c.store->SaveSetting("Header/Cover", "Memo", "one\r\ntwo");
    c.store->SaveSetting("Header/Cover", "To", "Ada");
    QStringList seen;
    ModalLog modal([&](QDialog& d) {
      QCOMPARE(&d, static_cast<QDialog*>(&c.form()));
      QVERIFY(!c.frmMain->mainEnabled());
      seen << QString::number(Child<QRadioButton>(d, "optClient")->isChecked()) +
                  QString::number(Child<QRadioButton>(d, "optLibrary")->isChecked() ||
                                  Child<QRadioButton>(d, "optSearcher")->isChecked() ||
                                  Child<QRadioButton>(d, "optFirm")->isChecked()) +
                  QString::number(Child<QRadioButton>(d, "optSepFile")->isChecked()) + " " +
                  Child<QLineEdit>(d, "txtTo")->text() + " " +
                  Child<QPlainTextEdit>(d, "txtMemo")->toPlainText().replace('\n', '/');
      QVERIFY(!Child(d, "cmdOkay")->isVisibleTo(&d) && Child(d, "cmdSave")->isVisibleTo(&d));
      QVERIFY(!Child(d, "pnlProgress")->isVisibleTo(&d));
    });
    Child<QAction>(*c.frmMain, "mnuPolishCover")->trigger();
    Child<QToolButton>(*c.frmMain, "cmdTB_Polish_7")->click();
    // No From option holds when the store says False to the one that would.
    QCOMPARE(seen, (QStringList{"101 Ada one/two", "101 Ada one/two"}));
    QVERIFY(c.frmMain->mainEnabled());
  }

  void theDateIsSetOnEveryActivationAndNeverStored() {
    Cover c;
    c.field("txtDate")->setText("typed");
    QEvent activate(QEvent::WindowActivate);
    QApplication::sendEvent(&c.form(), &activate);
    QCOMPARE(c.field("txtDate")->text().toStdString(), zv::TodayCoverDate());
    c.click("cmdSaveIni");
    QCOMPARE(c.store->GetSetting("Header/Cover", "Date", "(none)"), "(none)");
  }

  void saveSettingsWritesEveryChoiceAndTheTrimmedTexts() {
    Cover c;
    c.choose("optClient");
    c.choose("optFirm");
    c.choose("optPrefixWithBreak");
    c.field("txtTo")->setText("  Ada  ");
    c.field("txtJobNo")->setText("J-7");
    c.field<QPlainTextEdit>("txtMemo")->setPlainText("one\ntwo ");
    c.click("cmdSaveIni");
    QStringList stored;
    for (const char* key : {"ToRequester", "ToClient", "FromLibrary", "FromSearcher", "FromFirm", "SavePrefix",
                            "SavePrefixWithBreak", "SaveSepFile", "To", "JobNo", "Memo"})
      stored << c.store->GetSetting("Header/Cover", key, "(none)");
    QCOMPARE(stored, (QStringList{"False", "True", "False", "False", "True", "False", "True", "False", "Ada", "J-7",
                                  "one\r\ntwo"}));
    // The command line reads the same file without the toolkit.
    c.store->sync();
    const zv::SettingsFile file(c.store->fileName().toStdString());
    QCOMPARE(QString::fromStdString(file.value("Header/Cover", "Memo").value_or("")), "one\r\ntwo");
    QCOMPARE(QString::fromStdString(file.value("Header/Cover", "FromFirm").value_or("")), "True");
  }

  void saveWritesThePageAsChosenAndOkayResetsTheForm() {
    Cover c;
    WriteText(c.file("recs.PRO"), "Record - 1\r\n\r\ntext\r\n");
    struct Case {
      const char* option;
      const char* from;
      QStringList answers;
      QByteArray bytes;
    } cases[] = {
        {"optSepFile", "optLibrary", {c.file("a.COV")}, "Requester:  Ada\r\n\r\nSubject:    Rust\r\n\r\n"},
        {"optPrefix", "optSearcher", {c.file("recs.PRO"), c.file("a.COV")},
         "Requester:  Ada\r\n\r\nSubject:    Rust\r\n\r\nRecord - 1\r\n\r\ntext\r\n"},
        {"optPrefixWithBreak", "optFirm", {c.file("recs.PRO"), c.file("a.COV")},
         "Requester:  Ada\r\n\r\nSubject:    Rust\r\n\r\n\f\r\nRecord - 1\r\n\r\ntext\r\n"},
    };
    for (const Case& k : cases) {
      c.choose(k.option);
      c.choose(k.from);
      c.field("txtTo")->setText("Ada");
      c.field("txtSubject")->setText("Rust");
      c.answers = k.answers;
      c.click("cmdSave");
      QVERIFY2(c.log.messages.isEmpty(), qPrintable(c.log.said().join("; ")));
      QCOMPARE(ReadText(c.file("a.COV")), k.bytes);
      QVERIFY(c.answers.isEmpty());
      QVERIFY(Child(c.form(), "cmdOkay")->isVisibleTo(&c.form()));
      for (const char* hidden : {"cmdSave", "cmdCancel", "cmdHelp", "cmdSaveIni"})
        QVERIFY2(!Child(c.form(), hidden)->isVisibleTo(&c.form()), hidden);
      c.click("cmdOkay");
      QVERIFY(c.field("txtTo")->text().isEmpty() && c.field("txtSubject")->text().isEmpty());
      QVERIFY(Child(c.form(), "cmdSave")->isVisibleTo(&c.form()));
      QVERIFY(Child<QRadioButton>(c.form(), k.option)->isChecked());  // the choices stay
      QVERIFY(c.frmMain->mainEnabled());
    }
    QCOMPARE(ReadText(c.file("recs.PRO")), QByteArray("Record - 1\r\n\r\ntext\r\n"));
  }

  void aCancelledDialogOrAnErrorQuitsTheFormAndWritesNothing() {
    Cover c;
    WriteText(c.file("recs.PRO"), "text\r\n");
    c.choose("optPrefix");
    c.field("txtTo")->setText("Ada");
    c.answers = {c.file("recs.PRO")};  // the save dialog is cancelled
    c.click("cmdSave");
    QCOMPARE(c.dialogs, 2);
    QVERIFY(c.log.messages.isEmpty());
    QVERIFY(c.field("txtTo")->text().isEmpty());
    QVERIFY(Child(c.form(), "cmdSave")->isVisibleTo(&c.form()));
    QCOMPARE(QDir(c.path()).entryList(QDir::Files), QStringList{"recs.PRO"});

    // A memo word too long to wrap: error 5 in frmError, no file, the form quits.
    ModalLog modal;
    c.choose("optSepFile");
    c.field<QPlainTextEdit>("txtMemo")->setPlainText(QString(100, 'w'));
    c.answers = {c.file("c.COV")};
    c.click("cmdSave");
    QCOMPARE(modal.errorTexts, QStringList{"Error number 5\nInvalid procedure call or argument"});
    QVERIFY(!QFileInfo::exists(c.file("c.COV")));
    QVERIFY(c.field<QPlainTextEdit>("txtMemo")->toPlainText().isEmpty());
    QVERIFY(c.frmMain->mainEnabled());
  }

  void theStatusLineNamesWhatEachButtonDoes() {
    Cover c;
    QStringList hints;
    for (const char* name : {"cmdCancel", "cmdSave", "cmdSaveIni"}) {
      QEvent enter(QEvent::Enter);
      QApplication::sendEvent(Child(c.form(), name), &enter);
      hints << c.frmMain->statusMsg();
    }
    QCOMPARE(hints, (QStringList{"Quit without saving any header or cover page.",
                                 "Write the header or cover page to disk with the currently selected options.",
                                 "Save current settings of Requester/Client, Library/Searcher/Research Firm, etc."}));
  }
};

QTEST_MAIN(TestCoverForm)
#include "cover_form_test.moc"
