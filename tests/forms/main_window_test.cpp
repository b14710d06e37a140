// frmMain built from its tables: menus, toolbars, hints, left bar, keys, Dialog button, other programs.
#include <QMenu>
#include <QMenuBar>
#include <QScopeGuard>
#include <QRadioButton>
#include <QScrollArea>
#include <QTest>
#include <QToolButton>

#include "forms/app_settings.h"
#include "forms/center_form.h"
#include "forms/frm_about.h"
#include "forms/frm_filter.h"
#include "forms/frm_startup.h"
#include "forms/help_window.h"
#include "forms/lock_keys.h"
#include "forms/programs.h"
#include "forms_test_support.h"

using namespace zv::forms;
using namespace zv::forms::test;

namespace {

// The menu tree as MenuRows gives it: indent = level, "-" a separator, the number
// after "=" what the item gives to RunCommand.
QStringList rowsOfTable() {
  QStringList out;
  for (const MenuRow& row : MenuRows()) {
    const QString indent(row.level, QLatin1Char(' '));
    out << indent + (row.action == UiAction::Separator ? QStringLiteral("-") : QString::fromUtf8(row.caption)) +
               (row.number ? "=" + QString::number(row.number) : QString());
  }
  return out;
}

void walk(const QWidget* menu, const QString& indent, QStringList& out) {
  for (const QAction* a : menu->actions()) {
    const int n = a->property("commandNumber").toInt();
    out << indent + (a->isSeparator() ? "-" : a->text()) + (n ? "=" + QString::number(n) : QString());
    if (a->menu()) walk(a->menu(), indent + QLatin1Char(' '), out);
  }
}

// Every toolbar ends in Help and Exit.
const QStringList kHelpAndExit = {"Help", " Read the online documentation for this program.",
                                  "Exit", " Quit Zorvanta."};

}  // namespace

class TestMainWindow : public QObject {
  Q_OBJECT

 private slots:
  void titleAndMenuTree() {
    MainFixture f;
    QCOMPARE(f.frmMain->windowTitle(), QStringLiteral("Zorvanta v3.0 Beta"));
    // Each row of the table in its place of the tree, with its command number.
    QStringList actual;
    walk(f.frmMain->menuBar(), QString(), actual);
    QCOMPARE(actual, rowsOfTable());
  }

  void toolbarCaptionsHintsAndHover() {
    MainFixture f;
    FrmMain& w = *f.frmMain;
    const char* const names[] = {"cmdTB_Filt", "cmdTB_Content", "cmdTB_Polish", "cmdTB_Util"};
    for (int t = 0; t < 4; ++t) {
      QStringList expected;
      for (const ToolbarButton& b : Toolbars()[static_cast<std::size_t>(t)].buttons)
        expected << QString::fromUtf8(b.caption) << QString::fromUtf8(b.hint);
      QStringList actual;
      for (int i = 0; i < Child(w, QString("pnlTB_%1").arg(t))->findChildren<QToolButton*>().size(); ++i) {
        auto* button = Child<QToolButton>(w, QString(names[t]) + "_" + QString::number(i));
        QEvent enter(QEvent::Enter), leave(QEvent::Leave);
        QApplication::sendEvent(button, &enter);
        actual << button->text() << w.statusMsg();
        QCOMPARE(button->palette().color(QPalette::ButtonText), QColor(128, 0, 128));
        QApplication::sendEvent(button, &leave);
        QCOMPARE(button->palette().color(QPalette::ButtonText), QColor(0, 128, 128));
      }
      QCOMPARE(actual, expected);
      QCOMPARE(actual.mid(actual.size() - 4), kHelpAndExit);
    }
    // While the window is disabled its buttons look it: greyed, not in their colour.
    auto* dialog = Child<QToolButton>(w, "cmdTB_Filt_3");
    const QColor disabledText = QApplication::palette().color(QPalette::Disabled, QPalette::ButtonText);
    w.EnableMain(false);
    QVERIFY(!dialog->isEnabled());
    QCOMPARE(dialog->palette().color(QPalette::Disabled, QPalette::ButtonText), disabledText);
    QVERIFY(disabledText != QColor(0, 128, 128));
    w.EnableMain(true);
    // Over the bare form the status line empties.
    auto* pane = Child(w, "pnlPane");
    QMouseEvent move(QEvent::MouseMove, QPointF(5, 5), pane->mapToGlobal(QPointF(5, 5)), Qt::NoButton, Qt::NoButton,
                     Qt::NoModifier);
    QApplication::sendEvent(pane, &move);
    QCOMPARE(w.statusMsg(), QString());
  }

  void ribbonAndLeftBarShowOnePanelAtATime() {
    MainFixture f;
    // Button i of a row shows panel i alone.
    const struct {
      const char* button;
      const char* panel;
      QStringList captions;
    } rows[] = {{"ribTB_%1", "pnlTB_%1", {"Filtering", "Contents", "Polish", "Utilities"}},
                {"pnlOLCap_%1", "pnlOL_%1", {"Toolbars", "Dialog Filtering Options", "Processing Time"}}};
    for (const auto& row : rows) {
      for (int i = static_cast<int>(row.captions.size()) - 1; i >= 0; --i) {
        auto* button = Child<QAbstractButton>(*f.frmMain, QString(row.button).arg(i));
        QCOMPARE(button->text(), row.captions[i]);
        button->click();
        for (int k = 0; k < row.captions.size(); ++k)
          QCOMPARE(Child(*f.frmMain, QString(row.panel).arg(k))->isVisible(), k == i);
      }
    }
  }

  void everyButtonCaptionAndHintFitsFromTheFirstStartOn() {
    QTemporaryDir settings;
    SettingsStore store(settings.filePath("quidlane.ini"));
    const std::unique_ptr<FrmMain> w = StartUp(store);
    const QSize least = w->LeastUsableSize();
    QCOMPARE(w->minimumSize(), least);
    // Not smaller than the old first-start size of 433 x 333 either.
    QVERIFY(least.width() >= 433 && least.height() >= 333);
    QStringList clipped;
    auto check = [&](const QWidget* widget, const QWidget* area, const QString& where) {
      const QRect inArea(widget->mapTo(area, QPoint(0, 0)), widget->size());
      const bool whole = area->rect().contains(inArea) && widget->width() >= widget->sizeHint().width() &&
                         widget->height() >= widget->minimumSizeHint().height();
      if (!whole) clipped << where + ": " + widget->objectName() + " " + widget->property("text").toString();
    };
    for (const QSize size : {QSize(433, 333), QSize(1100, 760)}) {
      w->resize(size);
      QVERIFY(w->width() >= least.width() && w->height() >= least.height());
      const QString at = QStringLiteral("%1x%2").arg(w->width()).arg(w->height());
      for (int t = 0; t < 4; ++t) {
        w->chooseToolbar(t);
        QApplication::processEvents();
        auto* view = Child<QScrollArea>(*w, QString("pnlTB_%1").arg(t))->viewport();
        for (const QToolButton* b : view->findChildren<QToolButton*>()) check(b, view, at);
      }
      for (int p = 0; p < 3; ++p) {
        w->openPanel(p);
        QApplication::processEvents();
        QWidget* bar = Child(*w, "pnlOLBar");
        for (const QWidget* c : bar->findChildren<QWidget*>())
          if (c->isVisible() && (qobject_cast<const QLabel*>(c) || qobject_cast<const QAbstractButton*>(c)))
            check(c, bar, at);
      }
      // The longest hint, the Dialog button's, on the status line.
      const QString hint = Child(*w, "cmdTB_Filt_3")->property("statusHint").toString();
      const QLabel* status = Child<QLabel>(*w, "pnlStatusMsg");
      if (status->contentsRect().width() < status->fontMetrics().horizontalAdvance(hint)) clipped << at + ": the hint";
    }
    QCOMPARE(clipped, QStringList());

    // A maximized close: the next start, made normal, is no smaller than that.
    store.SaveSetting(kWindowSection, "WindowState", "2");
    const std::unique_ptr<FrmMain> maximized = StartUp(store);
    maximized->showNormal();
    QApplication::processEvents();
    QVERIFY(maximized->width() >= least.width() && maximized->height() >= least.height());
  }

  void dialogButtonFollowsOption() {
    MainFixture f;
    MessageLog log;
    FrmMain& w = *f.frmMain;
    const QStringList options{"All online TYPES to one file", "Selected TYPES to one file",
                              "Selected TYPES to separate files", "Dialmailed offline PRINTS", "DialogWeb"};
    for (int i = 0; i < 5; ++i) QCOMPARE(Child<QRadioButton>(w, QString("optDial_%1").arg(i))->text(), options[i]);
    int asked = 0;
    w.frmFilter().setFileChooser([&](const QString&) { ++asked; return QString(); });
    auto* dialog = Child<QToolButton>(w, "cmdTB_Filt_3");
    // Each of the first four options has a filter, which asks for its capture first.
    for (int i = 0; i < 4; ++i) {
      Child<QRadioButton>(w, QString("optDial_%1").arg(i))->setChecked(true);
      dialog->click();
      QCOMPARE(asked, i + 1);
    }
    QVERIFY(log.messages.isEmpty());
    // DialogWeb has no filter at all: a warning, and no dialog.
    Child<QRadioButton>(w, "optDial_4")->setChecked(true);
    dialog->click();
    QCOMPARE(asked, 4);
    QCOMPARE(log.said(), QStringList{QStringLiteral("DIALOG Option Error: The DIALOG filtering button was clicked, "
                                                    "but no DIALOG filtering option is currently selected.")});
    QCOMPARE(log.messages[0].icon, MsgIcon::Warning);
    QVERIFY(w.mainEnabled());
    QVERIFY(!w.frmFilter().isVisible());
  }

  void keysOfTheFileMenu() {
    MainFixture f;
    FrmMain& w = *f.frmMain;
    // While a dialog holds the window, F7 is not its.
    w.EnableMain(false);
    QTest::keyClick(&w, Qt::Key_F7);
    QVERIFY(w.isVisible() && !w.isShutDown());
    w.EnableMain(true);
    w.frmFilter().show();
    QTest::keyClick(Child(w, "pnlPane"), Qt::Key_F7);
    QVERIFY(w.isShutDown());
    QVERIFY(!w.isVisible() && !w.frmFilter().isVisible());
    QCOMPARE(f.store->GetSetting("Working Directory", "LastWorkDir"), QDir::currentPath());

    MainFixture g;
    QTest::keyClick(g.frmMain.get(), Qt::Key_F4, Qt::AltModifier);
    QVERIFY(g.frmMain->isShutDown());
  }

  void helpMenuKeysAndButtons() {
    MainFixture f;
    FrmMain& w = *f.frmMain;
    QVERIFY(ExistingHelpWindow() == nullptr);
    QTest::keyClick(Child(w, "pnlPane"), Qt::Key_F1);
    HelpWindow* help = ExistingHelpWindow();
    QVERIFY(help != nullptr && help->isVisible());
    QCOMPARE(help->currentPage(), QStringLiteral("index.html"));
    help->hide();
    Child<QToolButton>(w, "cmdTB_Util_3")->click();
    QVERIFY(help->isVisible());
    help->hide();
    Child<QAction>(w, "mnuHelpContents")->trigger();
    QVERIFY(help->isVisible());
    help->close();
    ShowHelp(&w, QStringLiteral("command_line.html"));  // one window, reused at any page
    QVERIFY(ExistingHelpWindow() == help && help->isVisible() && help->isWindow());
    QCOMPARE(help->currentPage(), QStringLiteral("command_line.html"));

    QString about;
    ModalLog modal([&](QDialog& d) { about = d.windowTitle() + " | " + Child<QLabel>(d, "lblVersion")->text(); });
    Child<QAction>(w, "mnuHelpAbout")->trigger();
    QCOMPARE(modal.dialogs, QStringList{"frmAbout"});
    QCOMPARE(about, QStringLiteral("About Zorvanta | Version 3.0.0"));
  }

  void otherProgramsMissingAndFound() {
    MainFixture f;
    WorkDir dir;
    MessageLog log;
    const QByteArray path = qgetenv("PATH"), terminal = qgetenv("TERMINAL");
    const auto restore = qScopeGuard([&] {
      qputenv("PATH", path);
      terminal.isNull() ? qunsetenv("TERMINAL") : qputenv("TERMINAL", terminal);
    });
    qputenv("PATH", QFile::encodeName(dir.path()));
    qunsetenv("TERMINAL");
    FrmAbout(nullptr).cmdSysInfoClick();
    f.frmMain->RunCommand(3000);
    // A terminal of the user's choice opens in the current directory.
    WriteText(dir.file("myterm"), "#!/bin/sh\npwd > \"$(pwd)/opened-here\"\n");
    QFile::setPermissions(dir.file("myterm"), QFile::ReadOwner | QFile::ExeOwner);
    qputenv("PATH", QFile::encodeName(dir.path()) + ":" + path);
    qputenv("TERMINAL", "myterm");
    f.frmMain->RunCommand(3000);
    QCOMPARE(log.said(), (QStringList{"Zorvanta: System Information Is Unavailable At This Time",
                                      "Zorvanta: Error 2 executing WinExec function."}));
    QTRY_VERIFY(dir.exists("opened-here"));
  }

  void theTerminalIsTheDesktopsBeforeAnyOther() {
    WorkDir dir;
    const QByteArray path = qgetenv("PATH"), terminal = qgetenv("TERMINAL"), desktop = qgetenv("XDG_CURRENT_DESKTOP");
    const auto restore = qScopeGuard([&] {
      qputenv("PATH", path);
      terminal.isNull() ? qunsetenv("TERMINAL") : qputenv("TERMINAL", terminal);
      desktop.isNull() ? qunsetenv("XDG_CURRENT_DESKTOP") : qputenv("XDG_CURRENT_DESKTOP", desktop);
    });
    auto install = [&](const char* name, const QByteArray& script = "#!/bin/sh\n") {
      WriteText(dir.file(name), script);
      QFile::setPermissions(dir.file(name), QFile::ReadOwner | QFile::ExeOwner);
    };
    qputenv("PATH", QFile::encodeName(dir.path()));
    qunsetenv("TERMINAL");
    install("konsole");
    install("qterminal");
    install("xterm");
    const struct {
      const char* desktop;
      const char* terminal;
    } cases[] = {
        {"", "konsole"},             // no desktop: the first common one
        {"LXQt", "qterminal"},       // the desktop's own
        {"ubuntu:GNOME", "konsole"},  // none of GNOME's installed, and no settings to read
    };
    for (const auto& c : cases) {
      qputenv("XDG_CURRENT_DESKTOP", c.desktop);
      QCOMPARE(TerminalCommand(), QLatin1String(c.terminal));
    }
    // GNOME's setting names the terminal; x-terminal-emulator comes before the common ones.
    install("gsettings", "#!/bin/sh\necho \"'xterm'\"\n");
    qputenv("XDG_CURRENT_DESKTOP", "GNOME");
    QCOMPARE(TerminalCommand(), "xterm");
    qputenv("XDG_CURRENT_DESKTOP", "");
    install("x-terminal-emulator");
    QCOMPARE(TerminalCommand(), "x-terminal-emulator");
    QCOMPARE(DesktopTerminals("ubuntu:GNOME").first(), "kgx");
  }

  void lockKeyPanels() {
    QTemporaryDir leds;
    const QString brightness = leds.filePath("input3::capslock/brightness");
    QDir().mkpath(leds.filePath("input3::capslock"));
    WriteText(brightness, "1\n");
    KeyLocks locks(leds.path().toStdString());
    QVERIFY(locks.readsLeds(LockKey::Caps) && !locks.readsLeds(LockKey::Num));
    // A lit LED is the truth: a press does not flip it, the next look does.
    locks.keyPressed(LockKey::Caps);
    QCOMPARE(locks.panelText(LockKey::Caps), "CAPS");
    WriteText(brightness, "0\n");
    QVERIFY(locks.poll());
    QCOMPARE(locks.panelText(LockKey::Caps), "");
    // Without an LED the presses decide; Insert is the program's own toggle.
    locks.keyPressed(LockKey::Num);
    QCOMPARE(locks.panelText(LockKey::Num), "NUM");
    MainFixture f;
    auto* ins = Child<QLabel>(*f.frmMain, "pnlKeyStatus_3");
    QTest::keyClick(Child(*f.frmMain, "pnlPane"), Qt::Key_Insert);
    QCOMPARE(ins->text(), QStringLiteral("INS"));
    QTest::keyClick(f.frmMain.get(), Qt::Key_Insert);
    QCOMPARE(ins->text(), QString());
  }

  void centerFormArithmetic() {
    // Pane + main + 200 across, strip + main + 750 down; held at 200 and 500 from the
    // near edges and pulled 200 inside the far ones.
    for (const auto& [mainLeft, mainTop, left, top] : {std::array{1000, 2000, 4200, 3650}, {-5000, -2000, 200, 500},
                                                       {24000, 18000, 28800 - 6000 - 200, 21600 - 4000 - 200}}) {
      const zv::FormPlace p = CenterFormPlace({3000, mainLeft, mainTop, 900, 6000, 4000, 28800, 21600});
      QCOMPARE(QPoint(p.left, p.top), QPoint(left, top));
    }
  }
};

QTEST_MAIN(TestMainWindow)
#include "main_window_test.moc"
