// frmSift driven as a user drives it: open, step, keep, order, write, leave; its menus,
// toolbar, keys, fonts, satellites and resize rule.
#include <QCheckBox>
#include <QFontDatabase>
#include <QFontDialog>
#include <QListView>
#include <QKeySequence>
#include <QClipboard>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QScopeGuard>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include "forms/frm_indexing.h"
#include "forms/frm_keep_file.h"
#include "forms/frm_options_fonts.h"
#include "forms/frm_sift.h"
#include "forms/help_window.h"
#include "forms/sift_pictures.h"
#include "forms_test_support.h"

using namespace zv::forms;
using namespace zv::forms::test;

namespace {

// Four records, as a filter writes them: 15 lines, 82 bytes.
const QByteArray kPro =
    "Record - 1\r\n\r\nAAA\r\n\r\nRecord - 2\r\n\r\nBBB\r\n\r\nRecord - 3\r\n\r\nCCC\r\n\r\nRecord - 4\r\n\r\nDDD\r\n";

// The menu tree as SiftMenuRows gives it: caption, "=" shortcut, "#" help context of a
// menu of the bar.
QStringList rowsOfTable() {
  QStringList out;
  for (const SiftMenuRow& row : SiftMenuRows()) {
    if (row.level == 0) {
      out << QString::fromUtf8(row.caption) + "#" + QString::number(row.helpContext);
      continue;
    }
    const QString shortcut = row.shortcut ? QKeySequence(QString::fromUtf8(row.shortcut)).toString() : QString();
    out << " " + (row.action == SiftAction::Separator ? QStringLiteral("-") : QString::fromUtf8(row.caption)) +
               (shortcut.isEmpty() ? QString() : "=" + shortcut);
  }
  return out;
}

// A main window in a fresh folder holding f.PRO; the open dialog, frmKeepFile, the
// questions and the input boxes answer from lists.
struct Sifter : WorkDir, MainFixture {
  MessageLog log;
  Answers answers;
  FrmSift& s = frmMain->frmSift();
  QStringList opens;      // paths the open dialog gives, then its cancel
  int dialogs = 0;
  QStringList keepNames;  // what is typed in frmKeepFile; Cancel when none is left
  std::function<void(QDialog&)> onDialog;  // looks at any other modal dialog first
  ModalLog modal{[this](QDialog& d) {
    if (d.objectName() != QLatin1String("frmKeepFile")) {
      if (onDialog) onDialog(d);
      return;
    }
    if (keepNames.isEmpty())
      Child<QPushButton>(d, "cmdCancel")->click();
    else
      Child<QLineEdit>(d, "txtKeepFile")->setText(keepNames.takeFirst());
  }};

  Sifter() {
    WriteText(file("f.PRO"), kPro);
    s.setFileChooser([this](const QString&) {
      ++dialogs;
      return opens.isEmpty() ? QString() : file(opens.takeFirst());
    });
  }
  // The Sift button of the Contents toolbar.
  void open(const QString& name) {
    opens = {name};
    Child<QToolButton>(*frmMain, "cmdTB_Content_0")->click();
  }
  QString panel(const char* name) { return Child<QLabel>(s, name)->text(); }
  QString text() { return s.txtRecord()->toPlainText(); }
  QStringList keepList() {
    QStringList out;
    auto* list = Child<QListWidget>(s, "lstKeepList");
    for (int i = 0; i < list->count(); ++i) out << list->item(i)->text();
    return out;
  }
  bool keepListShown() { return Child(s, "pnlKeepList")->isVisible(); }
  void menu(const char* name) { Child<QAction>(s, name)->trigger(); }
  void key(Qt::Key k, Qt::KeyboardModifiers mods = Qt::NoModifier) { QTest::keyClick(s.txtRecord(), k, mods); }
  void key(char c) { QTest::keyClick(s.txtRecord(), c); }
};

void walkMenus(const QMenuBar* bar, QStringList& out) {
  for (const QAction* top : bar->actions()) {
    out << top->text() + "#" + QString::number(top->menu()->property("helpContext").toInt());
    for (const QAction* a : top->menu()->actions())
      out << " " + (a->isSeparator() ? "-" : a->text()) +
                 (a->shortcut().isEmpty() ? QString() : "=" + a->shortcut().toString());
  }
}

}  // namespace

class TestSiftWindow : public QObject {
  Q_OBJECT

 private slots:
  void menusToolbarAndHelpContexts() {
    Sifter t;
    QCOMPARE(t.s.windowTitle(), "Zorvanta Sifter");
    QStringList menus;
    walkMenus(t.s.menuBar(), menus);
    QCOMPARE(menus, rowsOfTable());

    t.open("f.PRO");
    QTRY_COMPARE(QApplication::activeWindow(), &t.s);
    QStringList buttons, table;
    for (const SiftButton& b : SiftButtons()) table << QString::fromUtf8(b.caption) << QString::fromUtf8(b.hint);
    for (int i = 0; i < 14; ++i) {
      auto* b = Child<QToolButton>(t.s, QString("cmdTB_%1").arg(i));
      buttons << b->text() << b->toolTip();
      QEvent enter(QEvent::Enter), leave(QEvent::Leave);
      Child(t.s, "lstKeepList")->setFocus();
      QApplication::sendEvent(b, &enter);
      QCOMPARE(Argb32(b->icon().pixmap(kSiftPictureSize)), Argb32(SiftPicture(i, true)));
      QCOMPARE(b->palette().color(QPalette::ButtonText), QColor(128, 0, 128));
      QVERIFY(t.s.txtRecord()->hasFocus());
      QApplication::sendEvent(b, &leave);
      QCOMPARE(Argb32(b->icon().pixmap(kSiftPictureSize)), Argb32(SiftPicture(i, false)));
      QCOMPARE(b->palette().color(QPalette::ButtonText), QColor(0, 128, 128));
    }
    QCOMPARE(buttons, table);
    // The two states are different pictures.
    QVERIFY(Argb32(SiftPicture(4, true)) != Argb32(SiftPicture(4, false)));

    // F1 in the record text opens the sifter's page; Sifter Help sets context 116.
    QCOMPARE(HelpContextOf(t.s.txtRecord()), kSiftWindowContext);
    t.key(Qt::Key_F1);
    QCOMPARE(ExistingHelpWindow()->currentPage(), "sift.html");
    QCOMPARE(HelpPageForContext(kSiftKeepContext), "sift.html#keeping");
    t.s.txtRecord()->setFocus();
    t.menu("mnuHelpSifter");
    QCOMPARE(HelpContextOf(t.s.txtRecord()), kSiftHelpContext);
    ExistingHelpWindow()->close();
    // The pointer over the text gives it the focus and context 120 again.
    t.s.activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), &t.s);
    Child(t.s, "lstKeepList")->setFocus();
    QWidget* viewport = t.s.txtRecord()->viewport();
    QMouseEvent move(QEvent::MouseMove, QPointF(30, 30), viewport->mapToGlobal(QPointF(30, 30)), Qt::NoButton,
                     Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(viewport, &move);
    QVERIFY(t.s.txtRecord()->hasFocus());
    QCOMPARE(HelpContextOf(t.s.txtRecord()), kSiftWindowContext);
  }

  void openStepKeepWriteAndTheBookmark() {
    Sifter t;
    WriteText(t.file("a.kep"), "OLD\r\n");
    t.open("f.PRO");
    QCOMPARE(t.dialogs, 1);
    QVERIFY(t.s.isVisible() && !t.frmMain->isVisible());
    QCOMPARE(t.panel("pnlProFileName"), t.file("f.PRO"));
    QCOMPARE((QStringList{t.panel("pnlRecToView"), t.panel("pnlTotRecs"), t.panel("pnlOrder"), t.panel("pnlViewMode")}),
             (QStringList{" 1 ", " 4 ", " 1 ", ".PRO View"}));
    QCOMPARE(t.text(), "Record - 1\n\nAAA\n");
    QCOMPARE(QFileInfo(t.file("f.NDX")).size(), 4 * 277);
    // frmIndexing's odometers as the build left them; the main window's timing panels.
    QCOMPARE(Child<QLabel>(t.s.indexingForm(), "pnlLineOdom")->text(), " 15 ");
    QCOMPARE(Child<QLabel>(t.s.indexingForm(), "pnlRecOdom")->text(), " 4 ");
    QCOMPARE(Child<QLabel>(*t.frmMain, "pnlFileSize")->text(), "82");
    QVERIFY(!Child<QLabel>(*t.frmMain, "pnlElapsed")->text().isEmpty());
    QVERIFY(!Child(t.s, "pnlPartialDisplay")->isVisible());

    // Keep to a.kep, Keep Express, Keep to b.kep: each moves on.
    t.keepNames = {"a.kep", "b.kep"};
    Child<QToolButton>(t.s, "cmdTB_6")->click();
    Child<QToolButton>(t.s, "cmdTB_5")->click();
    QCOMPARE(t.panel("pnlCurrentKeepFile"), "a.kep");
    t.menu("mnuKeepList");
    Child<QToolButton>(t.s, "cmdTB_6")->click();
    QCOMPARE(t.panel("pnlRecToView"), " 4 ");
    QCOMPARE(t.keepList(), (QStringList{"1", "2", "3"}));
    QVERIFY(Child<QAction>(t.s, "mnuKeepList")->isChecked() && t.keepListShown());
    // Prev, then Unkeep record 3: the panel blanks.
    Child<QToolButton>(t.s, "cmdTB_3")->click();
    QCOMPARE(t.panel("pnlKeptFileName").trimmed(), "b.kep");
    Child<QToolButton>(t.s, "cmdTB_7")->click();
    QCOMPARE(t.panel("pnlKeptFileName").trimmed(), "");
    t.menu("mnuKeepList");
    QVERIFY(!t.keepListShown() && t.keepList().isEmpty());

    // Written, appended to what a.kep held; b.kep has nothing.
    t.menu("mnuKeepWrite");
    QVERIFY(ReadText(t.file("a.kep")).startsWith("OLD\r\nRecord - 1\r\n"));
    QVERIFY(!t.exists("b.kep"));
    QVERIFY(!Child(t.s, "frmWriting")->isVisible());
    QCOMPARE(t.log.said(), QStringList());

    // Leaving on record 3 asks nothing and leaves the bookmark.
    Child<QToolButton>(t.s, "cmdTB_13")->click();
    QVERIFY(!t.s.isVisible() && t.frmMain->isVisible() && t.frmMain->mainEnabled());
    QCOMPARE(ReadText(t.file("f.WRK")), "3\r\n");
    QCOMPARE(t.log.said(), QStringList());

    // Through the .NDX the sifter comes back there; closing the window on the last
    // record leaves as Exit does, taking the bookmark away.
    t.open("f.NDX");
    QCOMPARE(t.panel("pnlRecToView"), " 3 ");
    Child<QToolButton>(t.s, "cmdTB_4")->click();
    QCOMPARE(t.text(), "Record - 4\n\nDDD\n");
    t.s.close();
    QVERIFY(!t.s.isVisible() && !t.exists("f.WRK"));
  }

  void orderViewsAndTheOversightQuestions() {
    Sifter t;
    t.open("f.PRO");
    t.answers.queue = {"3"};
    t.key('o');
    QCOMPARE(t.panel("pnlOrder"), " 3 ");
    QCOMPARE(t.text(), "Record - 1\n\nAAA\n");

    t.key(Qt::Key_O, Qt::AltModifier);
    auto* mode = Child<QLabel>(t.s, "pnlViewMode");
    QCOMPARE(mode->text(), ".ORD View");
    QCOMPARE(mode->palette().color(QPalette::Window), QColor(255, 255, 128));
    QCOMPARE(t.panel("pnlRecToView"), " 3 ");
    t.key('l');
    Child<QToolButton>(t.s, "cmdTB_10")->click();
    QCOMPARE(mode->palette().color(QPalette::Window), QColor(Qt::white));

    // Kept on the last record: marked, then the end is said.
    t.keepNames = {"c.kep"};
    t.key('k');
    t.log.messages.clear();
    t.answers.queue = {"Yes", "Yes"};
    // frmWriting's caption while each file is written.
    QStringList captions;
    auto* writing = Child<QDialog>(t.s, "frmWriting");
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
      const QString shown = writing->windowTitle() + ": " + Child<QLabel>(*writing, "pnlFile")->text();
      if (writing->isVisible() && !captions.contains(shown)) captions << shown;
    });
    watch.start(0);
    t.menu("mnuFileExit");
    watch.stop();
    QCOMPARE(captions, (QStringList{"Writing Kept Records: c.kep", "Writing Reordered Records: f.ORD"}));
    QCOMPARE(writing->windowTitle(), "Writing Kept Records");
    QStringList titles;
    for (const ShownMessage& m : t.log.messages) titles << m.title + (m.kind == MsgKind::YesNo ? "?" : "");
    QCOMPARE(titles, (QStringList{"Keeping Oversight?", "Reordering Oversight?"}));
    QVERIFY(ReadText(t.file("c.kep")).startsWith("Record - 4\r\n"));
    QVERIFY(ReadText(t.file("f.ORD")).startsWith("Record - 2\r\n"));
    QVERIFY(!t.s.isVisible() && !t.exists("f.WRK"));

    // The next session starts in .PRO View, and asks nothing after a plain look.
    t.log.messages.clear();
    t.open("f.NDX");
    QCOMPARE(mode->text(), ".PRO View");
    t.menu("mnuFileExit");
    QCOMPARE(t.log.said(), QStringList());
  }

  void windowKeysActBeforeTheFocusedText() {
    Sifter t;
    t.open("f.PRO");
    QTRY_COMPARE(QApplication::activeWindow(), &t.s);
    t.s.txtRecord()->setFocus();
    const struct {
      char key;
      const char* record;
    } steps[] = {{'n', " 2 "}, {'x', " 2 "}, {'P', " 1 "}, {'L', " 4 "}, {'f', " 1 "}};
    for (const auto& step : steps) {
      t.key(step.key);
      QCOMPARE(t.panel("pnlRecToView"), step.record);
    }
    QCOMPARE(t.text(), "Record - 1\n\nAAA\n");  // nothing typed into it
    t.answers.queue = {"3"};
    t.key('j');
    QCOMPARE(t.text(), "Record - 3\n\nCCC\n\n");

    // F2 and F3 select in bytes of the record, where a line end is two.
    t.answers.queue = {"C"};
    t.key(Qt::Key_F2);
    t.key(Qt::Key_F3);
    t.key(Qt::Key_F3);
    QCOMPARE((QList<int>{t.s.selStart(), t.s.selLength()}), (QList<int>{16, 1}));
    QCOMPARE(t.s.txtRecord()->textCursor().selectedText(), "C");

    // Ctrl+L, Alt+K, Ctrl+U, and Ctrl+O, which writes the order rather than opening.
    t.key(Qt::Key_L, Qt::ControlModifier);
    QVERIFY(t.keepListShown());
    t.key(Qt::Key_K, Qt::AltModifier);
    QVERIFY(t.log.said().last().startsWith("No Keep File: "));
    t.key(Qt::Key_O, Qt::ControlModifier);
    QCOMPARE(t.dialogs, 1);
    QVERIFY(QFile::remove(t.file("f.ORD")));
    t.key('w');
    QVERIFY(t.exists("f.ORD"));
    QCOMPARE(t.text(), "Record - 3\n\nCCC\n\n");

    // The keys that share a code with a small letter, and keys with no binding.
    const Qt::KeyboardModifiers alt = Qt::AltModifier, ctrl = Qt::ControlModifier, pad = Qt::KeypadModifier;
    const struct {
      int key;
      Qt::KeyboardModifiers mods;
      const char* text;
      std::optional<SiftAction> action;
    } codes[] = {
        {Qt::Key_Plus, alt | pad, "+", SiftAction::KeepExpress},
        {Qt::Key_Slash, alt | pad, "/", SiftAction::OrderToggle},
        {Qt::Key_Slash, ctrl | pad, "/", SiftAction::WriteOrder},
        {Qt::Key_F6, ctrl, "", SiftAction::Unkeep},
        {Qt::Key_Comma, ctrl | pad, ",", SiftAction::KeepList},
        {Qt::Key_Plus, alt, "+", std::nullopt},
        {Qt::Key_K, ctrl, "\x0b", std::nullopt},
        {Qt::Key_6, pad, "6", std::nullopt},
        {Qt::Key_F, ctrl, "\x06", std::nullopt},
    };
    for (const auto& c : codes)
      QCOMPARE(SiftKeyAction(QKeyEvent(QEvent::KeyPress, c.key, c.mods, QLatin1String(c.text))), c.action);
  }

  void openRefusalsCancelAndErrors() {
    Sifter t;
    WriteText(t.file("z.PRO"), "");
    WriteText(t.file("one.PRO"), "Record - 1\r\n\r\nAAA\r\n");
    t.opens = {"z.PRO", "one.PRO"};
    Child<QAction>(*t.frmMain, "mnuContentSift")->trigger();
    QCOMPARE(t.dialogs, 2);
    QCOMPARE(t.log.said(), (QStringList{"Zero-Length File: " + t.file("z.PRO") + "\r\nis a zero-length file.",
                                        "File Format Error: This does not appear to be a filtered record file."}));
    QCOMPARE(t.log.messages[1].icon, MsgIcon::Critical);
    QVERIFY(!t.s.isVisible() && t.frmMain->isVisible() && t.frmMain->mainEnabled());

    // Cancel in frmIndexing at the builder's first yield: no index, no message.
    QTimer::singleShot(0, &t.s, [&t] { Child<QPushButton>(t.s.indexingForm(), "cmdCancel")->click(); });
    t.open("f.PRO");
    QVERIFY(!t.exists("f.NDX") && !t.s.isVisible() && !t.s.indexingForm().isVisible());
    QVERIFY(t.frmMain->isVisible() && t.frmMain->mainEnabled());
    QCOMPARE(t.log.messages.size(), 2);
    QCOMPARE(t.frmMain->job().giInterrupt.load(), int16_t{0});

    // Cancel on frmIndexing after its build has ended interrupts nothing: the next
    // build runs to its end.
    t.s.indexingForm().show();
    Child<QPushButton>(t.s.indexingForm(), "cmdCancel")->click();
    QVERIFY(!t.s.indexingForm().isVisible());
    QCOMPARE(t.frmMain->job().giInterrupt.load(), int16_t{0});

    // File Open from inside the sifter, cancelled: back to the main window.
    t.open("f.PRO");
    QVERIFY(t.s.isVisible() && t.exists("f.NDX"));
    t.menu("mnuFileOpen");
    QVERIFY(!t.s.isVisible() && t.frmMain->isVisible());

    // A .PRO cut short after indexing: showing record 4 fails, frmError reports it with
    // the reason under the system's message, and the session ends.
    WriteText(t.file("f.PRO"), kPro.left(60));
    t.open("f.NDX");
    QCOMPARE(t.modal.errorTexts, QStringList{});
    t.key('l');
    QCOMPARE(t.modal.errorTexts,
             QStringList{"Error number 62\nInput past end of file\n"
                         "The index does not match its record file: record 4 runs past the end of f.PRO."});
    QVERIFY(!t.s.isVisible() && t.frmMain->isVisible());
  }

  void keepFileAndFontOptions() {
    Sifter t;
    FrmKeepFile& keep = t.s.frmKeepFile();
    QLineEdit* name = keep.txtKeepFile();
    QTest::keyClicks(name, "a*b|c.kep");
    QCOMPARE(name->text(), "abc.kep");
    QCOMPARE(t.log.said(), (QStringList{"Zorvanta: * is not a valid character in a file name",
                                        "Zorvanta: | is not a valid character in a file name"}));
    for (QChar c : {QChar(3), QChar(9), QChar(21), QChar('"'), QChar(':'), QChar('\\')})
      QVERIFY(!FrmKeepFile::RefusalOfKey(c).isEmpty());
    for (QChar c : {QChar(8), QChar(22), QChar('.'), QChar(' '), QChar('~')}) QVERIFY(FrmKeepFile::RefusalOfKey(c).isEmpty());
    name->setText(QString(251, 'x'));
    QCOMPARE(name->text().size(), 250);
    QCOMPARE(t.log.said().last(), "File Specification Error: Your file name now has over 250 characters.");

    QCOMPARE(FontDialogFlags(false, false, false), 6);
    QCOMPARE(FontDialogFlags(true, false, false), 1);
    QCOMPARE(FontDialogFlags(false, true, false), 16387);
    QCOMPARE(FontDialogFlags(true, true, true), 17409);

    // Fixed Fonts Only and Save Setting: the chosen font goes to the text and the store.
    QList<int> flagsSeen;
    SetFontChooser([&](const QFont&, int flags) {
      flagsSeen << flags;
      QFont f(QStringLiteral("DejaVu Serif"), 14);
      f.setBold(true);
      return std::optional<QFont>(f);
    });
    auto guard = qScopeGuard([] { SetFontChooser({}); });
    QCOMPARE(t.s.txtRecord()->font().family(), "Courier New");
    QCOMPARE(t.s.txtRecord()->font().pointSize(), 10);
    t.onDialog = [](QDialog& d) {
      Child<QCheckBox>(d, "chkFonts_1")->setChecked(true);
      Child<QRadioButton>(d, "optSave_0")->setChecked(true);
    };
    t.menu("mnuOptionsFont");
    QCOMPARE(flagsSeen, QList<int>{16387});
    QCOMPARE(t.s.txtRecord()->font().family(), "DejaVu Serif");
    auto stored = [&] {
      QStringList out;
      for (const char* key : {"FontName", "FontSize", "FontBold", "FontItalic", "FontUnderline", "FontStrikethru"})
        out << t.store->GetSetting("Sifter Fonts", key);
      return out;
    };
    QCOMPARE(stored(), (QStringList{"DejaVu Serif", "14", "True", "False", "False", "False"}));

    // Each showing starts from "Session Only" and no box: nothing more is stored.
    t.onDialog = nullptr;
    SetFontChooser([&](const QFont&, int flags) {
      flagsSeen << flags;
      return std::optional<QFont>(QFont(QStringLiteral("DejaVu Sans Mono"), 9));
    });
    t.menu("mnuOptionsFont");
    QCOMPARE(flagsSeen.last(), 6);
    QCOMPARE(t.s.txtRecord()->font().pointSize(), 9);
    QCOMPARE(stored()[0], "DejaVu Serif");
    // Cancel in Font Options: no font dialog, the interrupt lowered again.
    t.onDialog = [](QDialog& d) { Child<QPushButton>(d, "cmdCancel")->click(); };
    t.menu("mnuOptionsFont");
    QCOMPARE(flagsSeen.size(), 2);
    QCOMPARE(t.frmMain->job().giInterrupt.load(), int16_t{0});

    // A new start reads the saved font.
    FrmMain next(*t.store);
    QCOMPARE(next.frmSift().txtRecord()->font().family(), "DejaVu Serif");
    QCOMPARE(next.frmSift().txtRecord()->font().pointSize(), 14);
    QVERIFY(next.frmSift().txtRecord()->font().bold());
  }

  void aFontChangeKeepsTheSessionAndItsMarks() {
    // The font dialog itself, as the user answers it, inside the program's own event
    // loop: OK with another size, then Cancel.
    Sifter t;
    t.open("f.PRO");
    t.keepNames = {"a.kep"};
    Child<QToolButton>(t.s, "cmdTB_6")->click();
    QCOMPARE(t.panel("pnlRecToView"), " 2 ");
    for (const bool ok : {true, false}) {
      QTimer::singleShot(0, &t.s, [&] {
        QTimer::singleShot(0, &t.s, [ok] {
          auto* dialog = qobject_cast<QFontDialog*>(QApplication::activeModalWidget());
          QVERIFY(dialog != nullptr);
          if (!ok) {
            dialog->reject();
            return;
          }
          QFont bigger = dialog->currentFont();
          bigger.setPointSize(15);
          dialog->setCurrentFont(bigger);
          dialog->accept();
        });
        t.menu("mnuOptionsFont");
        // Whatever the closing dialog set going is done before the loop ends.
        for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
        QCoreApplication::exit(0);
      });
      QCoreApplication::exec();
      QVERIFY(t.s.isVisible() && !t.frmMain->isVisible());
      QCOMPARE(t.s.txtRecord()->font().pointSize(), 15);
      QCOMPARE(t.log.said(), QStringList());
      QCOMPARE(t.panel("pnlRecToView"), " 2 ");
    }
    Child<QToolButton>(t.s, "cmdTB_3")->click();
    QCOMPARE(t.panel("pnlKeptFileName").trimmed(), "a.kep");
  }

  void theFontDialogNarrowsToFixedFacesAndOpensOnTheRecordsFont() {
    QStringList fixedFaces, otherFaces;
    for (const QString& family : QFontDatabase::families())
      (QFontDatabase::isFixedPitch(family) ? fixedFaces : otherFaces) << family;
    if (fixedFaces.isEmpty() || otherFaces.isEmpty()) QSKIP("the system needs fixed and proportional faces");
    QWidget owner;
    const QFont record(QStringLiteral("Courier New"), 11);
    const QString shownIn = QFontInfo(record).family();
    // The faces the dialog lists: its first list, the one that holds the face chosen.
    auto faces = [](QFontDialog& d) {
      for (const QListView* list : d.findChildren<QListView*>()) {
        QStringList rows;
        for (int r = 0; r < list->model()->rowCount(); ++r) rows << list->model()->index(r, 0).data().toString();
        if (rows.contains(d.currentFont().family())) return rows;
      }
      return QStringList();
    };
    struct Case {
      int flags;
      bool onlyFixed;
    };
    for (const Case c : {Case{FontDialogFlags(false, true, false), true}, Case{FontDialogFlags(false, false, false), false},
                         Case{FontDialogFlags(true, true, true), true}}) {
      const std::unique_ptr<QFontDialog> d = MakeFontDialog(&owner, record, c.flags);
      QCOMPARE(d->parentWidget(), &owner);
      QCOMPARE(d->currentFont().family(), shownIn);
      QCOMPARE(d->currentFont().pointSize(), 11);
      const QStringList listed = faces(*d);
      QVERIFY2(!listed.isEmpty(), qPrintable(QString::number(c.flags)));
      bool proportionalListed = false;
      for (const QString& family : listed) proportionalListed = proportionalListed || otherFaces.contains(family);
      QCOMPARE(proportionalListed, !c.onlyFixed);
    }
  }

  void buttonsCaptionsAndTheKeepListFitAtEverySize() {
    Sifter t;
    t.open("f.PRO");
    t.keepNames = {"a.kep"};
    Child<QToolButton>(t.s, "cmdTB_6")->click();
    t.menu("mnuKeepList");
    t.s.setPartialDisplay(true);
    t.s.setRecordText(QByteArray("Record - 2\r\n\r\n").append(QByteArray(300, 'x')).toStdString());
    const QSize least = t.s.minimumSize();
    QStringList clipped;
    for (const QSize size : {QSize(300, 200), QSize(1200, 800)}) {
      t.s.resize(size);
      QTest::qWait(20);
      QVERIFY(t.s.width() >= least.width() && t.s.height() >= least.height());
      const QString at = QStringLiteral("%1x%2 ").arg(t.s.width()).arg(t.s.height());
      const QWidget* toolbar = Child(t.s, "pnlToolbar");
      for (const QToolButton* b : toolbar->findChildren<QToolButton*>())
        if (!toolbar->rect().contains(QRect(b->pos(), b->size())) || b->width() < b->sizeHint().width())
          clipped << at + b->text();
      // The captions, and the panels whose text is fixed.
      const QWidget* background = Child(t.s, "pnlBackground");
      for (const QLabel* l : background->findChildren<QLabel*>()) {
        const bool fixedText = !l->objectName().startsWith("pnl") || l->objectName() == "pnlPartialDisplay";
        if (l->isVisible() && fixedText && l->contentsRect().width() < l->fontMetrics().horizontalAdvance(l->text()))
          clipped << at + l->text();
      }
      // The list stands beside the record, not over its line ends.
      const QRect text = t.s.txtRecord()->geometry(), list = Child(t.s, "pnlKeepList")->geometry();
      if (text.intersects(list) || !background->rect().contains(list) || text.width() < list.width())
        clipped << at + "the keep list";
    }
    QCOMPARE(clipped, QStringList());
    // Hidden, the list gives the text its width back.
    t.menu("mnuKeepList");
    QCOMPARE(Child(t.s, "pnlBackground")->width() - t.s.txtRecord()->geometry().right() - 1, TwipsToPixels(250) + 1);
  }

  void resizeRuleAndCopy() {
    const SiftLayout big = SiftResize(9000, 6000, 900, 120, 960);
    QCOMPARE((QList<int>{big.backgroundHeight, big.recordHeight, big.recordWidth}), (QList<int>{5100, 3315, 8630}));
    const SiftLayout tiny = SiftResize(300, 800, 900, 120, 960);
    QCOMPARE((QList<int>{tiny.backgroundHeight, tiny.recordHeight, tiny.recordWidth}), (QList<int>{400, 400, 400}));

    Sifter t;
    t.open("f.PRO");
    for (const QSize size : {QSize(900, 640), QSize(500, 380)}) {
      t.s.resize(size);
      QTest::qWait(20);
      const QWidget* text = t.s.txtRecord();
      const QWidget* background = Child(t.s, "pnlBackground");
      QCOMPARE(background->width() - text->geometry().right() - 1, TwipsToPixels(250) + 1);
      QCOMPARE(background->height() - text->geometry().bottom() - 1, TwipsToPixels(825));
    }

    t.menu("mnuEditCopy");
    QCOMPARE(t.log.said(), QStringList{"Copy Error: No text has been selected for the copy command."});
    t.key(Qt::Key_C, Qt::ControlModifier);  // in the text, the menu's Copy all the same
    QCOMPARE(t.log.said().size(), 2);
    t.answers.queue = {"AA"};
    t.menu("mnuSearchFind");
    t.key(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(), "AA");
    QCOMPARE(t.log.said().size(), 3);  // the input box
  }
};

QTEST_MAIN(TestSiftWindow)
#include "sift_window_test.moc"
