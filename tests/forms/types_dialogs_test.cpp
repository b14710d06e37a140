// frmPikTypes and frmSepTypes: key rules, messages, hints, the job they run and every way out.
#include <QLineEdit>
#include <QProgressBar>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include "filters/dialog_family.h"
#include "forms/frm_filter.h"
#include "forms/version_record.h"
#include "forms_test_support.h"

using namespace zv::forms;
using namespace zv::forms::test;

namespace {

// A main window in a fresh folder holding the types sample as session.log; the open
// dialog answers with it once, then cancels.
struct Run : WorkDir, MainFixture {
  MessageLog log;
  QStringList asked;
  Run() {
    QFile sample(QStringLiteral(ZV_SAMPLES_DIR "/dialog_types_session.log"));
    if (!sample.open(QIODevice::ReadOnly)) qFatal("no sample");
    WriteText(file(QStringLiteral("session.log")), sample.readAll());
    frmMain->frmFilter().setFileChooser([this](const QString& filters) {
      asked << filters;
      return asked.size() == 1 ? file(QStringLiteral("session.log")) : QString();
    });
  }
  QDialog& form(const char* name) { return *Child<QDialog>(*frmMain, QLatin1String(name)); }
  QStringList files() const { return QDir(path()).entryList(QDir::Files); }
};

QLineEdit* Field(QObject& form, const QString& name) { return Child<QLineEdit>(form, name); }

void Type(QObject& form, const QString& name, const QString& text) {
  QLineEdit* field = Field(form, name);
  field->setFocus();
  QTest::keyClicks(field, text);
}

// Gives a field the focus as a click or Tab would, in the active dialog.
void Enter(QDialog& form, const char* name) {
  form.activateWindow();
  QVERIFY(QTest::qWaitForWindowActive(&form));
  Field(form, QLatin1String(name))->setFocus(Qt::TabFocusReason);
}

QString Text(QObject& form, const char* name) { return Child<QLabel>(form, QLatin1String(name))->text(); }

QToolButton* DialogButton(FrmMain& w) {
  for (QToolButton* b : w.findChildren<QToolButton*>())
    if (b->objectName().startsWith(QLatin1String("cmdTB_Filt_")) && b->text() == QLatin1String("Dialog")) return b;
  qFatal("no Dialog button");
}

QString Hint(FrmMain& w, QWidget* over) {
  QEvent enter(QEvent::Enter);
  QApplication::sendEvent(over, &enter);
  return w.statusMsg();
}

}  // namespace

class TestTypesDialogs : public QObject {
  Q_OBJECT

 private slots:
  void theMenuItemAndTheDialogButtonOpenTheirDialogs() {
    const struct {
      const char* menu;
      int option;
      const char* form;
      const char* title;
    } cases[] = {{"mnuFilterDialogPik", 1, "frmPikTypes", "Specified Dialog Types to One File"},
                 {"mnuFilterDialogSep", 2, "frmSepTypes", "Specified DIALOG Types to Separate Files"}};
    for (const auto& c : cases) {
      for (bool viaButton : {false, true}) {
        Run r;
        if (viaButton) {
          Child<QRadioButton>(*r.frmMain, QStringLiteral("optDial_%1").arg(c.option))->setChecked(true);
          DialogButton(*r.frmMain)->click();
        } else {
          Child<QAction>(*r.frmMain, QLatin1String(c.menu))->trigger();
        }
        // The capture first, through the filters' open dialog; frmFilter stays hidden.
        QCOMPARE(r.asked.size(), 1);
        QDialog& form = r.form(c.form);
        QVERIFY2(form.isVisible(), c.menu);
        QCOMPARE(form.windowTitle(), QLatin1String(c.title));
        QVERIFY(!r.frmMain->frmFilter().isVisible());
        QVERIFY(!r.frmMain->mainEnabled());
        QVERIFY(r.log.messages.isEmpty());
        QCOMPARE(r.files(), QStringList{"session.log"});
      }
    }
    // A cancelled open dialog shows no dialog.
    Run r;
    r.asked << QString();
    Child<QAction>(*r.frmMain, "mnuFilterDialogPik")->trigger();
    QVERIFY(r.frmMain->findChild<QDialog*>("frmPikTypes") == nullptr || !r.form("frmPikTypes").isVisible());
    QVERIFY(r.frmMain->mainEnabled());
  }

  void theNumberOfTypesAndTheTypeFieldsKeyRules() {
    for (const char* name : {"mnuFilterDialogPik", "mnuFilterDialogSep"}) {
      Run r;
      Child<QAction>(*r.frmMain, QLatin1String(name))->trigger();
      QDialog& form = r.form(name == QLatin1String("mnuFilterDialogPik") ? "frmPikTypes" : "frmSepTypes");

      // Entering a type field before the number is given sends the focus back.
      Enter(form, "txtSecondType");
      QCOMPARE(r.log.said(), QStringList{"Sequence Error: It is necessary to specify the number of types \r\n"
                                         "before going on to which types they are."});
      QVERIFY(Field(form, "txtHowManyTypes")->hasFocus());
      r.log.messages.clear();

      for (const char* wrong : {"0", "x"}) {
        Type(form, "txtHowManyTypes", QLatin1String(wrong));
        QCOMPARE(Field(form, "txtHowManyTypes")->text(), QString());
      }
      Type(form, "txtHowManyTypes", "7");
      QCOMPARE(r.log.said(), (QStringList{"Zero or Non-numeric Input Error: Please choose a number from 1 to 5.",
                                          "Zero or Non-numeric Input Error: Please choose a number from 1 to 5.",
                                          "Invalid Number of Types: Valid number of types ranges from 1 to 5."}));
      QCOMPARE(r.log.messages[2].icon, MsgIcon::Warning);
      QCOMPARE(Field(form, "txtHowManyTypes")->text(), QString());
      r.log.messages.clear();

      // Two types: their rows shown, the others hidden with their odometers.
      Type(form, "txtHowManyTypes", "2");
      for (const char* row : {"First", "Second"}) {
        QVERIFY(Field(form, QStringLiteral("txt%1Type").arg(row))->isVisibleTo(&form));
        QVERIFY(Child(form, QStringLiteral("pnl%1TypeOdom").arg(row))->isVisibleTo(&form));
      }
      for (const char* row : {"Third", "Fourth", "Fifth"}) {
        QVERIFY(!Field(form, QStringLiteral("txt%1Type").arg(row))->isVisibleTo(&form));
        QVERIFY(!Field(form, QStringLiteral("txt%1Type").arg(row))->isEnabled());
        QVERIFY(!Child(form, QStringLiteral("pnl%1Type").arg(row))->isVisibleTo(&form));
        QVERIFY(!Child(form, QStringLiteral("pnl%1TypeOdom").arg(row))->isVisibleTo(&form));
      }

      // Types come out in capitals, ten characters at most; Enter is swallowed.
      Type(form, "txtFirstType", "3,ab");
      QCOMPARE(r.frmMain->statusMsg(), " Up to ten characters specifying a Dialog online type, e.g. '3,AB'.");
      QTest::keyClick(Field(form, "txtFirstType"), Qt::Key_Return);
      Type(form, "txtSecondType", "kwic,abcdefg");
      QCOMPARE(Field(form, "txtFirstType")->text(), "3,AB");
      QCOMPARE(Field(form, "txtSecondType")->text(), "KWIC,ABCDE");
      QCOMPARE(r.log.said(), QStringList{"Field Navigation Error: Use TAB key to advance from this field."});
      QCOMPARE(Hint(*r.frmMain, Field(form, "txtThirdType")),
               "Up to ten characters specifying a Dialog online type, e.g. '3,AB'.");
    }
  }

  void pikTypesBeginsOnlyWithAllTypesAndShowsTheResult() {
    Run r;
    Child<QAction>(*r.frmMain, "mnuFilterDialogPik")->trigger();
    QDialog& form = r.form("frmPikTypes");
    QEvent activate(QEvent::WindowActivate);
    QApplication::sendEvent(&form, &activate);
    QCOMPARE(r.frmMain->statusMsg(), " Choose which Dialog online TYPES to include in a cleaned-up file.");
    QCOMPARE(Hint(*r.frmMain, Child(form, "cmdBegin")), "When number of types specified filled in, begin filtering.");
    QCOMPARE(Hint(*r.frmMain, Child(form, "cmdCancel_0")), "Abandon this filtering.");

    auto begin = [&] { Child<QPushButton>(form, "cmdBegin")->click(); };
    begin();
    Type(form, "txtHowManyTypes", "2");
    Type(form, "txtFirstType", "kwic");
    begin();
    QCOMPARE(r.log.said(),
             (QStringList{"Sequence Error: It is necessary to specify the number of types before beginning filtering.",
                          "Not All Types Filled Error: One of the types has been left blank.  For this filtering to "
                          "work properly, it is necessary to fill as many of the types as the number specified."}));
    QCOMPARE(r.files(), QStringList{"session.log"});
    r.log.messages.clear();

    Type(form, "txtSecondType", "3,ab");
    begin();
    QVERIFY2(r.log.messages.isEmpty(), qPrintable(r.log.said().join('\n')));
    QCOMPARE(r.files(), (QStringList{"session.FSC", "session.log", "session.NDX", "session.PRO"}));
    QCOMPARE(Text(form, "pnlInFile"), " " + r.file("session.log"));
    QCOMPARE(Text(form, "pnlProFile"), QStringLiteral(" session.PRO"));
    QCOMPARE(Text(form, "pnlIndexFile"), QStringLiteral(" session.NDX"));
    QCOMPARE(Text(form, "pnlFirstTypeOdom"), " 3 ");   // KWIC: two, and 2/5/6 under the second again
    QCOMPARE(Text(form, "pnlSecondTypeOdom"), " 3 ");  // 3,AB
    QCOMPARE(Text(form, "pnlRecOdom"), " 10 ");        // every label of the capture
    QCOMPARE(Child<QProgressBar>(form, "pnlProgress")->value(), 100);
    QVERIFY(Child(form, "cmdOkay")->isEnabled() && !Child(form, "cmdCancel_1")->isEnabled());
    QVERIFY(!Child(form, "cmdBegin")->isEnabled() && !r.frmMain->mainEnabled());
    QVERIFY(!Text(*r.frmMain, "pnlElapsed").isEmpty());

    Child<QPushButton>(form, "cmdOkay")->click();
    QVERIFY(!form.isVisible() && r.frmMain->mainEnabled());
    QCOMPARE(Field(form, "txtFirstType")->text(), QString());
    QCOMPARE(Text(form, "pnlFirstTypeOdom"), QString());
  }

  void pikTypesZeroRecordsInterruptAndCancel() {
    {
      Run r;
      Child<QAction>(*r.frmMain, "mnuFilterDialogPik")->trigger();
      QDialog& form = r.form("frmPikTypes");
      Type(form, "txtHowManyTypes", "1");
      Type(form, "txtFirstType", "9");
      Child<QPushButton>(form, "cmdBegin")->click();
      QCOMPARE(r.log.said(), QStringList{"Zero Records: The filter has recognized no records\nof types you specified.  "
                                         "This can happen\nwhen no records of the specified types\nare present in the "
                                         "file, by choosing the\nwrong filter or with Dialog records\nretrieved by "
                                         "accession number."});
      // The dialog stays, reset, over an enabled main window.
      QVERIFY(form.isVisible() && r.frmMain->mainEnabled());
      QCOMPARE(Field(form, "txtHowManyTypes")->text(), QString());
      QVERIFY(Child(form, "cmdBegin")->isEnabled());
      QCOMPARE(r.files(), QStringList{"session.log"});
    }
    {
      Run r;
      WriteText(r.file("session.WRK"), "bookmarks\r\n");
      Child<QAction>(*r.frmMain, "mnuFilterDialogPik")->trigger();
      QDialog& form = r.form("frmPikTypes");
      Type(form, "txtHowManyTypes", "1");
      Type(form, "txtFirstType", "5");
      QTimer::singleShot(0, &form, [&form] { Child<QPushButton>(form, "cmdCancel_1")->click(); });
      Child<QPushButton>(form, "cmdBegin")->click();
      QCOMPARE(r.files(), QStringList{"session.log"});
      QVERIFY(!form.isVisible() && r.frmMain->mainEnabled() && r.log.messages.isEmpty());
      QCOMPARE(r.frmMain->job().giInterrupt.load(), int16_t{0});
    }
    {
      Run r;
      Child<QAction>(*r.frmMain, "mnuFilterDialogPik")->trigger();
      QDialog& form = r.form("frmPikTypes");
      Type(form, "txtHowManyTypes", "1");
      Child<QPushButton>(form, "cmdCancel_0")->click();
      QVERIFY(!form.isVisible() && r.frmMain->mainEnabled());
      QCOMPARE(r.files(), QStringList{"session.log"});
    }
  }

  void sepTypesFileFieldRules() {
    Run r;
    Child<QAction>(*r.frmMain, "mnuFilterDialogSep")->trigger();
    QDialog& form = r.form("frmSepTypes");
    Enter(form, "txtFirstFile");
    QCOMPARE(r.log.said(),
             QStringList{"Sequence Error: It is necessary to specify the number of types before naming files for them."});
    QVERIFY(Field(form, "txtHowManyTypes")->hasFocus());
    r.log.messages.clear();

    QCOMPARE(Hint(*r.frmMain, Field(form, "txtHowManyTypes")), "Choose to recognize from 1 to 5 Dialog online types.");
    QCOMPARE(Hint(*r.frmMain, Field(form, "txtFirstFile")),
             "The gsBaseName (up to 8 characters) of the file for the adjacent type.");
    QCOMPARE(Hint(*r.frmMain, Child(form, "cmdBegin")),
             "When all of the specified number of types and files are filled in, begin this filtering.");
    QCOMPARE(Hint(*r.frmMain, Child(form, "cmdCancel")), "Abandon this filtering.");
    QCOMPARE(Hint(*r.frmMain, Child(form, "cmdCancel2")), "Interrupt and abandon this filtering.");

    Type(form, "txtHowManyTypes", "1");
    Type(form, "txtFirstFile", "a*b?c");
    QCOMPARE(Field(form, "txtFirstFile")->text(), "abc");
    QCOMPARE(r.log.messages.size(), 2);
    QCOMPARE(r.log.messages[0].text, "* is not a valid character in a file name");
    QCOMPARE(r.log.messages[0].icon, MsgIcon::None);
    QCOMPARE(r.log.messages[0].title, QLatin1String(AppVersion().title));
    QCOMPARE(r.log.messages[1].text, "? is not a valid character in a file name");
    QCOMPARE(r.frmMain->statusMsg(), "The base file name of the file for the adjacent type.");
    QTest::keyClick(Field(form, "txtFirstFile"), Qt::Key_Return);
    QCOMPARE(r.log.messages[2].title, "Field Navigation Error");
    r.log.messages.clear();

    // Past 250 characters the field is cut back with a warning.
    Field(form, "txtFirstFile")->clear();
    Type(form, "txtFirstFile", QString(251, QLatin1Char('n')));
    QCOMPARE(r.log.said(), QStringList{"File Specification Error: Your file name now has over 250 characters."});
    QCOMPARE(Field(form, "txtFirstFile")->text().size(), 250);
  }

  void sepTypesBeginsOnlyWithDistinctFilesAndShowsTheResult() {
    Run r;
    Child<QAction>(*r.frmMain, "mnuFilterDialogSep")->trigger();
    QDialog& form = r.form("frmSepTypes");
    auto begin = [&] { Child<QPushButton>(form, "cmdBegin")->click(); };
    begin();
    Type(form, "txtHowManyTypes", "3");
    Type(form, "txtFirstType", "3");
    Type(form, "txtSecondType", "8");
    Type(form, "txtThirdType", "9");
    Type(form, "txtFirstFile", "threes");
    begin();
    Type(form, "txtSecondFile", "threes");
    Type(form, "txtThirdFile", "nines");
    begin();
    QCOMPARE(r.log.said(),
             (QStringList{"Sequence Error: It is necessary to specify the number of types before attempting this "
                          "filtering process.",
                          "Not All Types Filled Error: One of the files has been left blank.  For this filtering to "
                          "work properly, it is necessary to fill as many of the filenames as the number of types "
                          "specified.",
                          "File Specification Error: Two of the types have been given the same file.  For this "
                          "filtering to work properly, each type must have a file of its own."}));
    QCOMPARE(Field(form, "txtSecondFile")->text(), "threes");  // nothing added to a refused name
    QCOMPARE(r.files(), QStringList{"session.log"});
    r.log.messages.clear();

    Field(form, "txtSecondFile")->clear();
    Type(form, "txtSecondFile", "eights");
    begin();
    QVERIFY2(r.log.messages.isEmpty(), qPrintable(r.log.said().join('\n')));
    QCOMPARE(Field(form, "txtFirstFile")->text(), "threes.PRO");
    QCOMPARE(r.files(), (QStringList{"eights.NDX", "eights.PRO", "session.FSC", "session.log", "threes.NDX",
                                     "threes.PRO"}));  // nines had no record
    QCOMPARE(Text(form, "pnlUnalteredFileName"), " " + r.file("session.log"));
    QCOMPARE(Text(form, "pnlFirstTypeOdom"), " 2 ");
    QCOMPARE(Text(form, "pnlSecondTypeOdom"), " 2 ");  // 8, and the 3,AB record right behind it
    QCOMPARE(Text(form, "pnlThirdTypeOdom"), QString());
    QCOMPARE(Text(form, "pnlRecOdom"), " 10 ");
    QVERIFY(Child(form, "cmdOkay")->isVisible() && !Child(form, "cmdCancel2")->isVisible());
    Child<QPushButton>(form, "cmdOkay")->click();
    QVERIFY(!form.isVisible() && r.frmMain->mainEnabled());
    QCOMPARE(Field(form, "txtFirstFile")->text(), QString());
  }

  void sepTypesZeroRecordsAndInterruptLeaveNothing() {
    for (bool interrupt : {false, true}) {
      Run r;
      Child<QAction>(*r.frmMain, "mnuFilterDialogSep")->trigger();
      QDialog& form = r.form("frmSepTypes");
      Type(form, "txtHowManyTypes", "2");
      Type(form, "txtFirstType", interrupt ? "5" : "9");
      Type(form, "txtSecondType", "3,K");
      Type(form, "txtFirstFile", "a");
      Type(form, "txtSecondFile", "b");
      if (interrupt) QTimer::singleShot(0, &form, [&form] { Child<QPushButton>(form, "cmdCancel2")->click(); });
      Child<QPushButton>(form, "cmdBegin")->click();
      QCOMPARE(r.log.said(), interrupt ? QStringList() : QStringList{"Zero Records: " + zv::forms::Q(zv::kNoTypesText)});
      QCOMPARE(r.files(), QStringList{"session.log"});
      QVERIFY(!form.isVisible() && r.frmMain->mainEnabled());
    }
  }

  void dialmailFromItsMenuItemAndTheDialogButton() {
    for (bool viaButton : {false, true}) {
      Run r;
      QFile::remove(r.file("session.log"));
      QFile::copy(QStringLiteral(ZV_SAMPLES_DIR "/dialmail_session.log"), r.file("session.log"));
      if (viaButton) {
        Child<QRadioButton>(*r.frmMain, "optDial_3")->setChecked(true);
        DialogButton(*r.frmMain)->click();
      } else {
        Child<QAction>(*r.frmMain, "mnuFilterDialmail")->trigger();
      }
      FrmFilter& filter = r.frmMain->frmFilter();
      QCOMPARE(filter.windowTitle(), "Filtering DIALMAILed Offline Prints");
      QCOMPARE(r.files(), (QStringList{"session.FSC", "session.log", "session.NDX", "session.PRO"}));
      QCOMPARE(Text(filter, "pnlRecOdom"), " 4 ");
      QCOMPARE(Text(filter, "pnlProFile"), " session.PRO");
    }
  }
};

QTEST_MAIN(TestTypesDialogs)
#include "types_dialogs_test.moc"
