// frmMain against its tables: menus, toolbars, hints, left bar, keys, Dialog button.
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QToolButton>

#include "forms/center_form.h"
#include "forms/frm_about.h"
#include "forms/frm_filter.h"
#include "forms/help_window.h"
#include "forms/lock_keys.h"
#include "forms_test_support.h"

using namespace zv::forms;
using namespace zv::forms::test;

namespace {

// The menu tree as the program's users know it: indent = depth, "-" a separator,
// the number after "=" what the item gives to RunCommand.
const char* const kExpectedMenus[] = {
    "&File",
    " &View=2900", " &DOS=3000", " -", " E&xit=3010",
    "Fil&ter",
    " BRS ..=500", " DataStar=600", " DIALOG",
    "  &All Types to One File=100", "  Specified Types to &One File=200",
    "  Specfied Types to &Separate Files=300", "  -", "  DIAL&MAILed Prints to One File=400",
    " DJN/R //Text=800", " Nat'l Lib of Med=900", " Orbit/Questel=1100", " Ovid=1200", " STN=1300",
    " -", " Ad Hoc=1",
    "&Content",
    " &Sift=1600", " &Query by Form=1700", " &Rank=1800", " S&ort=1900", " -", " &Diction=2100",
    "&Polish",
    " &Label Changes", "  Re&number=2400", "  Dele&te=2500", "  Re&place=2600",
    " Breaks", "  Pa&ge=2800", "  &Line in TAGed=2700",
    " D&ivide=2200", " &Undelimit=2300", " -", " &Header / Cover Page=3230",
    "&Settings", " Startup &Directory",
    "&Help", " &Contents", " &About",
};

void walk(const QMenu* menu, int depth, QStringList& out) {
  for (const QAction* a : menu->actions()) {
    const QString indent(depth, QLatin1Char(' '));
    if (a->isSeparator()) {
      out << indent + QLatin1Char('-');
    } else if (a->menu() != nullptr) {
      out << indent + a->text();
      walk(a->menu(), depth + 1, out);
    } else {
      const int n = a->property("commandNumber").toInt();
      out << indent + a->text() + (n != 0 ? QStringLiteral("=%1").arg(n) : QString());
    }
  }
}

struct ExpectedButton {
  const char* caption;
  const char* hint;
};

const QList<QList<ExpectedButton>> kExpectedToolbars = {
    {{"Ad Hoc", " Clean up unsupported files after marking records."},
     {"BRS", " Clean up searches of Ovid when BRS .. (dot dot) mode was used."},
     {"DataStar", " Clean up searches of DataStar."},
     {"Dialog", " Clean up searches of Dialog, using option in Dialog Filtering Options panel above."},
     {"DJN/R", " Clean up searches of Dow Jones News/Retrieval //TEXT."},
     {"NLM", " Clean up searches of National Library of Medicine."},
     {"Orbit", " Clean up searches of Orbit/Questel."},
     {"Ovid", " Clean up searches of Ovid."},
     {"STN", " Clean up searches of STN."},
     {"Help", " Read the online documentation for this program."},
     {"Exit", " Quit Zorvanta."}},
    {{"Sift", " View filtered records, write 'keepers' to new files, reorder records."},
     {"Query", " Apply Query by Form (QBF) to a filtered record file."},
     {"Rank", " Order filtered records by weighted terms."},
     {"Sort", " Alphabetize filtered records on a field tagged at left margin."},
     {"Diction", " Generate list of words in order of frequency (except words in OMIT.LST)."},
     {"Help", " Read the online documentation for this program."},
     {"Exit", " Quit Zorvanta."}},
    {{"Renum", " Change 'Record - N' style labels to numerical order after Sift, Query, Rank, Sort."},
     {"Delete", " Remove record labels from a filtered record file."},
     {"Replace", " Replace 'Record - N' style labels with markers or labels of your own."},
     {"Pg Brks", " Insert hard page breaks every N number of records, for printing."},
     {"Ln Brks", " Remove hard carriage returns within fields of Dialog TAGed/delimited records."},
     {"Divide", " Separate filtered records into a series of files, one record to a file."},
     {"Undelimit", " Remove vertical bar field and record delimiters from Dialog TAGed records."},
     {"Header", " Create a file header or cover sheet with date, subject, etc."},
     {"Help", " Read the online documentation for this program."},
     {"Exit", " Quit Zorvanta."}},
    {{"Viewer", " View files (with no editing or processing)."},
     {"DOS", " Open a DOS window where multiple DOS commands can be performed."},
     {"Settings", " Configure working directory."},
     {"Help", " Read the online documentation for this program."},
     {"Exit", " Quit Zorvanta."}},
};

const char* const kToolbarNames[] = {"cmdTB_Filt", "cmdTB_Content", "cmdTB_Polish", "cmdTB_Util"};

}  // namespace

class TestMainWindow : public QObject {
  Q_OBJECT

 private slots:
  void titleAndMenuTree() {
    MainFixture f;
    QCOMPARE(f.frmMain->windowTitle(), QStringLiteral("Zorvanta v3.0 Beta"));
    QStringList actual;
    for (const QAction* top : f.frmMain->menuBar()->actions()) {
      actual << top->text();
      walk(top->menu(), 1, actual);
    }
    QStringList expected;
    for (const char* row : kExpectedMenus) expected << QLatin1String(row);
    QCOMPARE(actual, expected);
  }

  void toolbarCaptionsAndHints() {
    MainFixture f;
    FrmMain& w = *f.frmMain;
    for (int t = 0; t < 4; ++t) {
      const QList<ExpectedButton>& expected = kExpectedToolbars[t];
      const auto* panel = Child<QWidget>(w, QStringLiteral("pnlTB_%1").arg(t));
      QCOMPARE(panel->findChildren<QToolButton*>().size(), expected.size());
      for (int i = 0; i < expected.size(); ++i) {
        auto* button = Child<QToolButton>(w, QStringLiteral("%1_%2").arg(QLatin1String(kToolbarNames[t])).arg(i));
        QVERIFY2(button != nullptr, kToolbarNames[t]);
        QCOMPARE(button->text(), QLatin1String(expected[i].caption));
        w.setStatusMsg(QString());
        QEvent enter(QEvent::Enter);
        QApplication::sendEvent(button, &enter);
        QCOMPARE(w.statusMsg(), QLatin1String(expected[i].hint));
        QCOMPARE(button->palette().color(QPalette::ButtonText), QColor(128, 0, 128));
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(button, &leave);
        QCOMPARE(button->palette().color(QPalette::ButtonText), QColor(0, 128, 128));
      }
    }
  }

  void ribbonShowsOneToolbarAtATime() {
    MainFixture f;
    FrmMain& w = *f.frmMain;
    const QStringList ribs{QStringLiteral("Filtering"), QStringLiteral("Contents"), QStringLiteral("Polish"),
                           QStringLiteral("Utilities")};
    for (int i : {2, 0, 3, 1}) {
      auto* rib = Child<QToolButton>(w, QStringLiteral("ribTB_%1").arg(i));
      QCOMPARE(rib->text(), ribs[i]);
      rib->click();
      for (int k = 0; k < 4; ++k)
        QCOMPARE(Child<QWidget>(w, QStringLiteral("pnlTB_%1").arg(k))->isVisible(), k == i);
    }
  }

  void leftBarPanels() {
    MainFixture f;
    FrmMain& w = *f.frmMain;
    const QStringList caps{QStringLiteral("Toolbars"), QStringLiteral("Dialog Filtering Options"),
                           QStringLiteral("Processing Time")};
    const QStringList options{QStringLiteral("All online TYPES to one file"), QStringLiteral("Selected TYPES to one file"),
                              QStringLiteral("Selected TYPES to separate files"),
                              QStringLiteral("Dialmailed offline PRINTS"), QStringLiteral("DialogWeb")};
    for (int i = 0; i < 5; ++i)
      QCOMPARE(Child<QRadioButton>(w, QStringLiteral("optDial_%1").arg(i))->text(), options[i]);
    for (int i : {2, 1, 0}) {
      auto* cap = Child<QPushButton>(w, QStringLiteral("pnlOLCap_%1").arg(i));
      QCOMPARE(cap->text(), caps[i]);
      cap->click();
      QCOMPARE(w.openPanelIndex(), i);
      for (int k = 0; k < 3; ++k) QCOMPARE(Child<QWidget>(w, QStringLiteral("pnlOL_%1").arg(k))->isVisible(), k == i);
    }
    // The captions of the timing panels stand beside them.
    const auto* times = Child<QWidget>(w, QStringLiteral("pnlOL_2"));
    QStringList texts;
    for (const QLabel* l : times->findChildren<QLabel*>())
      if (l->objectName().isEmpty()) texts << l->text();
    QCOMPARE(texts, (QStringList{QStringLiteral("Started:"), QStringLiteral("Finished:"), QStringLiteral("Elapsed:"),
                                 QStringLiteral("File Size:"), QStringLiteral("File Lines:")}));
  }

  void dialogWebHasNoFilter() {
    MainFixture f;
    MessageLog log;
    FrmMain& w = *f.frmMain;
    w.frmFilter().setFileChooser([](const QString&) -> QString { qFatal("no dialog expected"); });
    Child<QRadioButton>(w, QStringLiteral("optDial_4"))->setChecked(true);
    Child<QToolButton>(w, QStringLiteral("cmdTB_Filt_3"))->click();
    QCOMPARE(log.messages.size(), 1);
    QCOMPARE(log.messages[0].title, QStringLiteral("DIALOG Option Error"));
    QCOMPARE(log.messages[0].text,
             QStringLiteral("The DIALOG filtering button was clicked, but no DIALOG filtering option is currently selected."));
    QCOMPARE(log.messages[0].icon, MsgIcon::Warning);
    QVERIFY(w.mainEnabled());
    QVERIFY(!w.frmFilter().isVisible());
  }

  void dialogButtonFollowsOption() {
    MainFixture f;
    MessageLog log;
    FrmMain& w = *f.frmMain;
    int asked = 0;
    w.frmFilter().setFileChooser([&](const QString&) {
      ++asked;
      return QString();
    });
    // All types has a filter, so its dialog comes; the others have no tool yet and do nothing.
    Child<QToolButton>(w, QStringLiteral("cmdTB_Filt_3"))->click();
    QCOMPARE(asked, 1);
    Child<QRadioButton>(w, QStringLiteral("optDial_2"))->setChecked(true);
    Child<QToolButton>(w, QStringLiteral("cmdTB_Filt_3"))->click();
    QCOMPARE(asked, 1);
    QVERIFY(log.messages.isEmpty());
    QVERIFY(w.mainEnabled());
  }

  void keysOfTheFileMenu() {
    MainFixture f;
    FrmMain& w = *f.frmMain;
    // Ctrl+F1 and F9 name the separator: nothing happens.
    QTest::keyClick(&w, Qt::Key_F9);
    QTest::keyClick(&w, Qt::Key_F1, Qt::ControlModifier);
    QVERIFY(w.isVisible());
    QVERIFY(!w.isShutDown());
    // While a dialog holds the window disabled, F7 is not the main window's.
    w.EnableMain(false);
    QTest::keyClick(&w, Qt::Key_F7);
    QVERIFY(!w.isShutDown());
    w.EnableMain(true);
    w.frmFilter().show();
    QTest::keyClick(Child<QWidget>(w, QStringLiteral("pnlPane")), Qt::Key_F7);
    QVERIFY(w.isShutDown());
    QVERIFY(!w.isVisible());
    QVERIFY(!w.frmFilter().isVisible());
    QCOMPARE(f.store->GetSetting(QStringLiteral("Working Directory"), QStringLiteral("LastWorkDir")), QDir::currentPath());
  }

  void altF4Exits() {
    MainFixture f;
    QTest::keyClick(f.frmMain.get(), Qt::Key_F4, Qt::AltModifier);
    QVERIFY(f.frmMain->isShutDown());
  }

  void helpKeysAndButtonsOpenTheManual() {
    MainFixture f;
    FrmMain& w = *f.frmMain;
    QVERIFY(ExistingHelpWindow() == nullptr);
    QTest::keyClick(Child<QWidget>(w, QStringLiteral("pnlPane")), Qt::Key_F1);
    HelpWindow* help = ExistingHelpWindow();
    QVERIFY(help != nullptr && help->isVisible());
    QCOMPARE(help->currentPage(), QStringLiteral("index.html"));
    help->hide();
    Child<QToolButton>(w, QStringLiteral("cmdTB_Util_3"))->click();
    QVERIFY(help->isVisible());
    help->hide();
    w.findChild<QAction*>(QStringLiteral("mnuHelpContents"))->trigger();
    QVERIFY(help->isVisible());
    QCOMPARE(ExistingHelpWindow(), help);
  }

  void statusLineEmptiesOverTheBareForm() {
    MainFixture f;
    FrmMain& w = *f.frmMain;
    w.setStatusMsg(QStringLiteral(" hint"));
    auto* pane = Child<QWidget>(w, QStringLiteral("pnlPane"));
    QMouseEvent move(QEvent::MouseMove, QPointF(5, 5), pane->mapToGlobal(QPointF(5, 5)), Qt::NoButton, Qt::NoButton,
                     Qt::NoModifier);
    QApplication::sendEvent(pane, &move);
    QCOMPARE(w.statusMsg(), QString());
  }

  void aboutBoxFromTheVersionRecord() {
    MainFixture f;
    QString title, version, disclaimer;
    ModalLog modal([&](QDialog& d) {
      title = d.windowTitle();
      version = Child<QLabel>(d, QStringLiteral("lblVersion"))->text();
      disclaimer = Child<QLabel>(d, QStringLiteral("lblDisclaimer"))->text();
    });
    f.frmMain->findChild<QAction*>(QStringLiteral("mnuHelpAbout"))->trigger();
    QCOMPARE(modal.dialogs, QStringList{QStringLiteral("frmAbout")});
    QCOMPARE(title, QStringLiteral("About Zorvanta"));
    QCOMPARE(version, QStringLiteral("Version 3.0.0"));
    QCOMPARE(disclaimer, FrmAbout::DisclaimerText());
    QVERIFY(disclaimer.contains(QLatin1Char(' ')));
  }

  void systemInfoUnavailable() {
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", "/nonexistent");
    MessageLog log;
    FrmAbout about(nullptr);
    about.cmdSysInfoClick();
    qputenv("PATH", path);
    QCOMPARE(log.messages.size(), 1);
    QCOMPARE(log.messages[0].text, QStringLiteral("System Information Is Unavailable At This Time"));
  }

  void dosWindowFailureAndStart() {
    MainFixture f;
    WorkDir dir;
    const QByteArray path = qgetenv("PATH");
    const QByteArray terminal = qgetenv("TERMINAL");
    {
      MessageLog log;
      qputenv("PATH", QFile::encodeName(dir.path()));
      qunsetenv("TERMINAL");
      f.frmMain->RunCommand(3000);
      QCOMPARE(log.messages.size(), 1);
      QCOMPARE(log.messages[0].text, QStringLiteral("Error 2 executing WinExec function."));
    }
    {
      // A terminal of the user's choice opens in the current directory.
      MessageLog log;
      const QString script = dir.file(QStringLiteral("myterm"));
      WriteText(script, "#!/bin/sh\npwd > \"$(pwd)/opened-here\"\n");
      QFile::setPermissions(script, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
      qputenv("PATH", QFile::encodeName(dir.path()) + ":" + path);
      qputenv("TERMINAL", "myterm");
      f.frmMain->RunCommand(3000);
      QVERIFY(log.messages.isEmpty());
      QTRY_VERIFY(dir.exists(QStringLiteral("opened-here")));
    }
    qputenv("PATH", path);
    if (terminal.isEmpty()) qunsetenv("TERMINAL"); else qputenv("TERMINAL", terminal);
  }

  void lockKeyPanels() {
    QTemporaryDir leds;
    QDir(leds.path()).mkpath(QStringLiteral("input3::capslock"));
    WriteText(leds.filePath(QStringLiteral("input3::capslock/brightness")), "1\n");
    KeyLocks locks(leds.path().toStdString());
    QVERIFY(locks.readsLeds(LockKey::Caps));
    QVERIFY(!locks.readsLeds(LockKey::Num));
    QCOMPARE(locks.panelText(LockKey::Caps), std::string("CAPS"));
    // A lit LED is the truth: a press does not flip it, the next look does.
    locks.keyPressed(LockKey::Caps);
    QVERIFY(locks.isOn(LockKey::Caps));
    WriteText(leds.filePath(QStringLiteral("input3::capslock/brightness")), "0\n");
    QVERIFY(locks.poll());
    QCOMPARE(locks.panelText(LockKey::Caps), std::string());
    // Without an LED the presses decide.
    locks.keyPressed(LockKey::Num);
    QCOMPARE(locks.panelText(LockKey::Num), std::string("NUM"));

    MainFixture f;
    auto* ins = Child<QLabel>(*f.frmMain, QStringLiteral("pnlKeyStatus_3"));
    QCOMPARE(ins->text(), QString());
    QTest::keyClick(Child<QWidget>(*f.frmMain, QStringLiteral("pnlPane")), Qt::Key_Insert);
    QCOMPARE(ins->text(), QStringLiteral("INS"));
    QTest::keyClick(f.frmMain.get(), Qt::Key_Insert);
    QCOMPARE(ins->text(), QString());
  }

  void centerFormArithmetic() {
    CenterFormInputs in{3000, 1000, 2000, 900, 6000, 4000, 28800, 21600};
    zv::FormPlace p = CenterFormPlace(in);
    QCOMPARE(p.left, 4200);  // pane + main + 200
    QCOMPARE(p.top, 3650);   // strip + main + 750
    in.mainLeft = -5000;     // off the left edge: held at 200
    in.mainTop = -2000;      // above the top: held at 500
    p = CenterFormPlace(in);
    QCOMPARE(p.left, 200);
    QCOMPARE(p.top, 500);
    in.mainLeft = 24000;  // would pass the right edge: 200 inside it
    in.mainTop = 18000;
    p = CenterFormPlace(in);
    QCOMPARE(p.left, 28800 - 6000 - 200);
    QCOMPARE(p.top, 21600 - 4000 - 200);
  }

  void openDialogFilters() {
    const QStringList filters =
        FrmFilter::NameFilters("All Files (*.*)|*.*|.REF Files|*.REF|.LOG Files|*.LOG|.CAP Files|*.CAP|");
    QCOMPARE(filters, (QStringList{QStringLiteral("All Files (*)"), QStringLiteral(".REF Files (*.REF *.ref)"),
                                   QStringLiteral(".LOG Files (*.LOG *.log)"), QStringLiteral(".CAP Files (*.CAP *.cap)")}));
    QCOMPARE(FrmFilter::OdometerText(42), QStringLiteral(" 42 "));
  }
};

QTEST_MAIN(TestMainWindow)
#include "main_window_test.moc"
