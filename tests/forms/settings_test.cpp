// The settings store at start and stop, and frmSettings, on a store in a temporary file.
#include <QFileSystemModel>
#include <QLineEdit>
#include <QTreeView>
#include <QRadioButton>
#include <QTest>

#include "forms/app_settings.h"
#include "forms/frm_settings.h"
#include "forms/frm_startup.h"
#include "forms_test_support.h"

using namespace zv::forms;
using namespace zv::forms::test;

namespace {

// A store of its own in a temporary folder, and the current folder one of its own.
struct Store : WorkDir {
  QTemporaryDir storeDir;
  SettingsStore store{storeDir.filePath("quidlane.ini")};
  void set(const QString& section, std::initializer_list<std::pair<const char*, QString>> values) {
    for (const auto& [key, value] : values) store.SaveSetting(section, key, value);
  }
  QString win(const char* key) const { return store.GetSetting(kWindowSection, key); }
  QString wd(const char* key) const { return store.GetSetting(kWorkDirSection, key, "unset"); }
};

bool checked(FrmMain& w, const char* option) { return Child<QRadioButton>(w, option)->isChecked(); }

}  // namespace

class TestSettings : public QObject {
  Q_OBJECT

 private slots:
  void firstStartTakesTheDefaults() {
    Store s;
    ModalLog modal;
    const std::unique_ptr<FrmMain> w = StartUp(s.store);
    QVERIFY(modal.dialogs.isEmpty() && w->isVisible() && !w->isMaximized());
    // 6500 x 5000 twips at 500, 1500 (fifteen twips to the pixel), grown to what the
    // toolbar, the left bar and the status line need.
    QCOMPARE(w->pos(), QPoint(33, 100));
    QCOMPARE(w->size(), QSize(433, 333).expandedTo(w->LeastUsableSize()));
    QCOMPARE(QDir::currentPath(), QDir(s.path()).canonicalPath());
    QVERIFY(checked(*w, "optLastDir"));

    // A key that does not read as a number gives the default too.
    s.set(kWindowSection, {{"Height", "tall"}, {"Width", " 7200 "}});
    const WindowPosition read = ReadWindowPosition(s.store);
    QCOMPARE(QSize(read.width, read.height), QSize(7200, 5000));
    s.set(kWorkDirSection, {{"UserOverride", "-1"}});  // as older versions stored "True"
    QVERIFY(ReadWorkingDirectory(s.store).userOverride);
  }

  void shutdownSavesAndTheNextStartRestores() {
    Store s;
    {
      const std::unique_ptr<FrmMain> w = StartUp(s.store);
      w->resize(1000, 700);
      w->move(120, 90);
      w->RunCommand(3010);
      QVERIFY(!w->isVisible());
    }
    const QStringList saved{s.win("WindowState"), s.win("Width"), s.win("Height"), s.win("Left"), s.win("Top")};
    QCOMPARE(saved, (QStringList{"0", "15000", "10500", "1800", "1350"}));
    QCOMPARE(s.wd("LastWorkDir"), QDir::currentPath());

    // The next start, from elsewhere, comes back to the same place and folder.
    const QString folder = QDir::currentPath();
    QDir::setCurrent(QDir::rootPath());
    const std::unique_ptr<FrmMain> again = StartUp(s.store);
    QCOMPARE(QRect(again->pos(), again->size()), QRect(120, 90, 1000, 700));
    QCOMPARE(QDir::currentPath(), folder);
    // Twips of a large screen are held at the end of the store's 16-bit range.
    again->resize(2600, 400);
    QCOMPARE(CurrentWindowPosition(*again).width, 32767);
    // A maximized window takes only its state, and keeps its own normal size.
    s.set(kWindowSection, {{"WindowState", "2"}, {"Width", "4500"}, {"Height", "3000"}});
    const std::unique_ptr<FrmMain> maximized = StartUp(s.store);
    QVERIFY(maximized->windowState().testFlag(Qt::WindowMaximized));
    QVERIFY(maximized->normalGeometry().size() != QSize(300, 200));
  }

  void startupFolderChoice() {
    QTemporaryDir last, user;
    const QString lastPath = QDir(last.path()).canonicalPath(), userPath = QDir(user.path()).canonicalPath();
    const struct { QString userWorkDir, userOverride, expected; } cases[] = {
        {userPath, "True", userPath},
        {QString(), "True", lastPath},  // an empty choice falls back on the last folder
        {userPath, "False", lastPath}};  // kept, and read by nobody
    for (const auto& c : cases) {
      Store s;
      s.set(kWorkDirSection,
            {{"LastWorkDir", lastPath}, {"UserWorkDir", c.userWorkDir}, {"UserOverride", c.userOverride}});
      const std::unique_ptr<FrmMain> w = StartUp(s.store);
      QCOMPARE(QDir::currentPath(), c.expected);
      QCOMPARE(checked(*w, "optUserOverride"), c.userOverride == QLatin1String("True"));
    }
    // A folder that no longer exists is reported, and ends the load there.
    Store s;
    s.set(kWorkDirSection, {{"LastWorkDir", s.file("gone")}, {"UserOverride", "True"}});
    ModalLog modal;
    const std::unique_ptr<FrmMain> w = StartUp(s.store);
    QCOMPARE(modal.errorTexts, QStringList{"Error number 76\nPath not found"});
    QVERIFY(w->isVisible() && w->mainEnabled());
    QCOMPARE(QDir::currentPath(), QDir(s.path()).canonicalPath());
    QVERIFY(!checked(*w, "optUserOverride"));
  }

  void settingsDialogSavesOrLeavesTheStore() {
    Store s;
    MessageLog log;
    QTemporaryDir chosen;
    FrmMain w(s.store);
    w.FormLoad(nullptr);
    w.doAction(UiAction::Settings, 0);
    FrmSettings& form = w.frmSettings();
    QVERIFY(form.isVisible() && !w.mainEnabled());
    auto* txt = Child<QLineEdit>(form, "txtWorkingDir");
    QCOMPARE(txt->text(), QDir::currentPath());
    QTest::keyClick(txt, Qt::Key_Return);
    QCOMPARE(log.said(), QStringList{"Field Navigation Error: Use TAB key to advance from this field."});

    // Cancel writes nothing.
    txt->setText(chosen.path());
    Child<QPushButton>(form, "cmdCancel")->click();
    QVERIFY(!form.isVisible() && w.mainEnabled());
    QCOMPARE(s.wd("UserWorkDir"), QStringLiteral("unset"));

    w.doAction(UiAction::Settings, 0);
    txt->setText("  " + chosen.path() + " ");
    Child<QRadioButton>(form, "optUserOverride")->setChecked(true);
    Child<QPushButton>(form, "cmdSave")->click();
    QCOMPARE((QStringList{s.wd("UserWorkDir"), s.wd("UserOverride"), s.wd("LastWorkDir")}),
             (QStringList{chosen.path(), "True", QDir::currentPath()}));
    QCOMPARE(QDir::currentPath(), QDir(s.path()).canonicalPath());  // takes effect at the next start
    QVERIFY(!form.isVisible() && w.mainEnabled());
  }

  void theFolderListOpensScrolledToTheCurrentFolder() {
    Store s;
    // Many folders before the current one, so that it lies far down the list.
    for (int i = 0; i < 60; ++i) QDir(s.path()).mkdir(QStringLiteral("a%1").arg(i, 2, 10, QLatin1Char('0')));
    QDir(s.path()).mkpath("zz/here");
    QDir::setCurrent(s.file("zz/here"));
    FrmMain w(s.store);
    w.FormLoad(nullptr);
    w.doAction(UiAction::Settings, 0);
    auto* dir1 = Child<QTreeView>(w.frmSettings(), "dir1");
    auto* model = static_cast<QFileSystemModel*>(dir1->model());
    QCOMPARE(model->filePath(dir1->currentIndex()), QDir::currentPath());
    QTRY_VERIFY(dir1->viewport()->rect().contains(dir1->visualRect(dir1->currentIndex())));
    QCOMPARE(Child<QLineEdit>(w.frmSettings(), "txtWorkingDir")->text(), QDir::currentPath());
  }
};

QTEST_MAIN(TestSettings)
#include "settings_test.moc"
