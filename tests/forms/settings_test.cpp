// The settings store at start and stop, and frmSettings, on a store in a temporary file.
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include "forms/app_settings.h"
#include "forms/frm_settings.h"
#include "forms/frm_startup.h"
#include "forms_test_support.h"

using namespace zv::forms;
using namespace zv::forms::test;

namespace {

const QString kWin = QStringLiteral("Window Position");
const QString kDir = QStringLiteral("Working Directory");

// A store of its own in a temporary folder.
struct Store {
  QTemporaryDir dir;
  SettingsStore store{dir.filePath(QStringLiteral("quidlane.ini"))};
};

}  // namespace

class TestSettings : public QObject {
  Q_OBJECT

 private slots:
  void firstStartTakesTheDefaults() {
    WorkDir here;
    Store s;
    ModalLog modal;
    const std::unique_ptr<FrmMain> w = StartUp(s.store);
    QVERIFY(modal.dialogs.isEmpty());
    QVERIFY(w->isVisible());
    QVERIFY(!w->isMaximized());
    // 6500 x 5000 twips at 500, 1500: fifteen twips to the pixel.
    QCOMPARE(w->size(), QSize(433, 333));
    QCOMPARE(w->pos(), QPoint(33, 100));
    QCOMPARE(QDir::currentPath(), QDir(here.path()).canonicalPath());
    QVERIFY(Child<QRadioButton>(*w, QStringLiteral("optLastDir"))->isChecked());
  }

  void unreadableKeysGiveTheDefault() {
    Store s;
    s.store.SaveSetting(kWin, QStringLiteral("Height"), QStringLiteral("tall"));
    s.store.SaveSetting(kWin, QStringLiteral("Width"), QStringLiteral(" 7200 "));
    s.store.SaveSetting(kDir, QStringLiteral("UserOverride"), QStringLiteral("-1"));
    const WindowPosition p = ReadWindowPosition(s.store);
    QCOMPARE(p.height, 5000);
    QCOMPARE(p.width, 7200);
    QVERIFY(ReadWorkingDirectory(s.store).userOverride);
  }

  void shutdownSavesAndTheNextStartRestores() {
    WorkDir here;
    Store s;
    {
      const std::unique_ptr<FrmMain> w = StartUp(s.store);
      w->resize(700, 500);
      w->move(120, 90);
      w->RunCommand(3010);
      QVERIFY(!w->isVisible());
    }
    QCOMPARE(s.store.GetSetting(kWin, QStringLiteral("WindowState")), QStringLiteral("0"));
    QCOMPARE(s.store.GetSetting(kWin, QStringLiteral("Width")), QStringLiteral("10500"));
    QCOMPARE(s.store.GetSetting(kWin, QStringLiteral("Height")), QStringLiteral("7500"));
    QCOMPARE(s.store.GetSetting(kWin, QStringLiteral("Left")), QStringLiteral("1800"));
    QCOMPARE(s.store.GetSetting(kWin, QStringLiteral("Top")), QStringLiteral("1350"));
    QCOMPARE(s.store.GetSetting(kDir, QStringLiteral("LastWorkDir")), QDir::currentPath());

    // The next start, from elsewhere, comes back to the same place and folder.
    const QString saved = QDir::currentPath();
    QDir::setCurrent(QDir::rootPath());
    const std::unique_ptr<FrmMain> again = StartUp(s.store);
    QCOMPARE(again->size(), QSize(700, 500));
    QCOMPARE(again->pos(), QPoint(120, 90));
    QCOMPARE(QDir::currentPath(), saved);
  }

  void largeScreensStayInSixteenBits() {
    Store s;
    const std::unique_ptr<FrmMain> w = StartUp(s.store);
    w->resize(2600, 400);
    QCOMPARE(CurrentWindowPosition(*w).width, 32767);
  }

  void aMaximizedWindowTakesOnlyItsState() {
    WorkDir here;
    Store s;
    s.store.SaveSetting(kWin, QStringLiteral("WindowState"), QStringLiteral("2"));
    s.store.SaveSetting(kWin, QStringLiteral("Width"), QStringLiteral("4500"));
    s.store.SaveSetting(kWin, QStringLiteral("Height"), QStringLiteral("3000"));
    const std::unique_ptr<FrmMain> w = StartUp(s.store);
    QVERIFY(w->windowState().testFlag(Qt::WindowMaximized));
    QVERIFY(w->normalGeometry().size() != QSize(300, 200));
  }

  void startupFolderChoice() {
    WorkDir here;
    QTemporaryDir last, user;
    const QString lastPath = QDir(last.path()).canonicalPath();
    const QString userPath = QDir(user.path()).canonicalPath();
    struct Case {
      QString userWorkDir;
      const char* override_;
      QString expected;
    };
    const QList<Case> cases{
        {userPath, "True", userPath},
        {QString(), "True", lastPath},  // an empty choice falls back on the last folder
        {userPath, "False", lastPath},  // kept, and read by nobody
    };
    for (const Case& c : cases) {
      Store s;
      s.store.SaveSetting(kDir, QStringLiteral("LastWorkDir"), lastPath);
      s.store.SaveSetting(kDir, QStringLiteral("UserWorkDir"), c.userWorkDir);
      s.store.SaveSetting(kDir, QStringLiteral("UserOverride"), QLatin1String(c.override_));
      QDir::setCurrent(here.path());
      const std::unique_ptr<FrmMain> w = StartUp(s.store);
      QCOMPARE(QDir::currentPath(), c.expected);
      QCOMPARE(Child<QRadioButton>(*w, QStringLiteral("optUserOverride"))->isChecked(),
               QLatin1String(c.override_) == QLatin1String("True"));
    }
  }

  void aVanishedFolderIsReported() {
    WorkDir here;
    Store s;
    s.store.SaveSetting(kDir, QStringLiteral("LastWorkDir"), here.file(QStringLiteral("gone")));
    s.store.SaveSetting(kDir, QStringLiteral("UserOverride"), QStringLiteral("True"));
    ModalLog modal;
    const std::unique_ptr<FrmMain> w = StartUp(s.store);
    QCOMPARE(modal.errorTexts, QStringList{QStringLiteral("Error number 76\nPath not found")});
    QVERIFY(w->isVisible());
    QVERIFY(w->mainEnabled());
    QCOMPARE(QDir::currentPath(), QDir(here.path()).canonicalPath());
    // The load ended at the error: the dialog's option was not set from the store.
    QVERIFY(!Child<QRadioButton>(*w, QStringLiteral("optUserOverride"))->isChecked());
  }

  void settingsDialogSavesOrLeavesTheStore() {
    WorkDir here;
    MainFixture f;
    FrmMain& w = *f.frmMain;
    QTemporaryDir chosen;
    w.doAction(UiAction::Settings, 0);
    FrmSettings& form = w.frmSettings();
    QVERIFY(form.isVisible());
    QVERIFY(!w.mainEnabled());
    auto* txt = Child<QLineEdit>(form, QStringLiteral("txtWorkingDir"));
    QCOMPARE(txt->text(), QDir::currentPath());

    // Cancel writes nothing.
    txt->setText(chosen.path());
    Child<QPushButton>(form, QStringLiteral("cmdCancel"))->click();
    QVERIFY(!form.isVisible());
    QVERIFY(w.mainEnabled());
    QCOMPARE(f.store->GetSetting(kDir, QStringLiteral("UserWorkDir"), QStringLiteral("unset")), QStringLiteral("unset"));

    w.doAction(UiAction::Settings, 0);
    txt->setText(QStringLiteral("  ") + chosen.path() + QStringLiteral(" "));
    Child<QRadioButton>(form, QStringLiteral("optUserOverride"))->setChecked(true);
    Child<QPushButton>(form, QStringLiteral("cmdSave"))->click();
    QCOMPARE(f.store->GetSetting(kDir, QStringLiteral("UserWorkDir")), chosen.path());
    QCOMPARE(f.store->GetSetting(kDir, QStringLiteral("UserOverride")), QStringLiteral("True"));
    QCOMPARE(f.store->GetSetting(kDir, QStringLiteral("LastWorkDir")), QDir::currentPath());
    QCOMPARE(QDir::currentPath(), QDir(here.path()).canonicalPath());  // takes effect at the next start
    QVERIFY(w.mainEnabled());
  }

  void enterInTheFolderFieldAsksForTab() {
    MainFixture f;
    MessageLog log;
    f.frmMain->doAction(UiAction::Settings, 0);
    QTest::keyClick(Child<QLineEdit>(f.frmMain->frmSettings(), QStringLiteral("txtWorkingDir")), Qt::Key_Return);
    QCOMPARE(log.messages.size(), 1);
    QCOMPARE(log.messages[0].title, QStringLiteral("Field Navigation Error"));
    QCOMPARE(log.messages[0].text, QStringLiteral("Use TAB key to advance from this field."));
    QVERIFY(f.frmMain->frmSettings().isVisible());
  }
};

QTEST_MAIN(TestSettings)
#include "settings_test.moc"
