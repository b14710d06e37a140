// frmFileView driven as a user drives it: open from the main window, the first screen
// of a large file before its index is done, search, stepper, jump, copy, fonts, Split
// and leaving; its menus, toolbar and panels.
#include <QApplication>
#include <QClipboard>
#include <QFontDialog>
#include <QCheckBox>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

#include "forms/app_settings.h"
#include "forms/file_dialogs.h"
#include "forms/file_display_widget.h"
#include "forms/frm_big_load.h"
#include "forms/frm_file_view.h"
#include "forms/frm_options_fonts.h"
#include "forms/frm_sift.h"
#include "forms/help_window.h"
#include "forms/settings_store.h"
#include "forms/viewer_pictures.h"
#include "forms_test_support.h"

using namespace zv::forms;
using namespace zv::forms::test;

namespace {

// Three records, as a filter writes them: 12 lines.
const QByteArray kPro =
    "Record - 1\r\n\r\nTitle one about a wetland\r\n\r\nRecord - 2\r\n\r\nTitle two about a forest\r\n\r\n"
    "Record - 3\r\n\r\nwetland again\r\nlast line\r\n";

const QStringList kExpectedMenus = {
    "&File", " &Open", " &DOS", " -", " &Split", " -", " E&xit Viewer",
    "&Edit", " &Copy",
    "&Search", " &Find Text", " &Repeat Search", " &Jump to Line", " Record &Stepper", " -", " &Top", " &Bottom",
    "&Options", " &Font",
    "&Help", " Help", " About",
};

const QStringList kExpectedHints = {
    " Close this file and open another for viewing. ",
    " Open a DOS window where multiple DOS commands can be performed. ",
    " Divide the file into two segments and write each segment to its own new file. ",
    " Copy selected text to the Windows clipboard for pasting to other Windows applications. ",
    " Search for text in the currently displayed file. ",
    " Repeat the last search for text in the currently displayed file. ",
    " Step through the file record-by-record, if it is a filtered record file. ",
    " Move directly to a line in the file, by its number. ",
    " Move directly to the top of the file. ",
    " Move directly to the bottom of the file. ",
    " Set the font used in the file display port. ",
    " Read the online documentation for the file viewer. ",
    " Quit using the file viewer and return to the Zorvanta main screen. ",
};

// A main window in a fresh folder holding f.PRO; the file dialogs, input boxes and
// modal dialogs answer from lists, and every message box is recorded.
struct Viewer : WorkDir, MainFixture {
  MessageLog log;
  Answers answers;
  std::function<void(QDialog&)> onDialog;  // looks at each modal dialog before its OK
  ModalLog modal{[this](QDialog& d) {
    if (onDialog) onDialog(d);
  }};
  FrmFileView& v = FrmFileView::Of(*frmMain);
  QStringList opens;  // the open dialog's answers, then its cancel
  QStringList saves;  // the save dialog's answers
  int openDialogs = 0;
  QStringList openFilters, saveFilters;  // as the last dialog of each kind had them

  Viewer() {
    WriteText(file("f.PRO"), kPro);
    SetFileDialogAnswer([this](const FileDialogRequest& request) {
      const bool save = request.mode == FileDialogMode::Save;
      (save ? saveFilters : openFilters) = request.nameFilters;
      QStringList& queue = save ? saves : opens;
      if (!save) ++openDialogs;
      return queue.isEmpty() ? QString() : file(queue.takeFirst());
    });
  }
  ~Viewer() { SetFileDialogAnswer({}); }
  FileDisplayWidget& display() { return v.display(); }
  zv::FileDisplay& model() { return v.display().display(); }
  // The Viewer button of the Utilities toolbar.
  void open(const QString& name) {
    opens = {name};
    Child<QToolButton>(*frmMain, "cmdTB_Util_0")->click();
    model().waitForLoad();
  }
  QString panel(const char* name) { return Child<QLabel>(v, name)->text(); }
  void act(ViewerAction a) { v.doAction(a); }
  // The text of the display's line n, as drawn.
  QString line(int64_t n) {
    const zv::LineSpan s = model().lineSpan(n);
    return QString::fromLatin1(model().bytes().substr(s.start, s.textEnd - s.start));
  }
};

void walkMenus(const QMenuBar* bar, QStringList& out) {
  for (const QAction* top : bar->actions()) {
    out << top->text();
    for (const QAction* a : top->menu()->actions()) out << " " + (a->isSeparator() ? "-" : a->text());
  }
}

// A capture of `megabytes` of numbered lines.
void writeLargeCapture(const QString& path, int megabytes) {
  QFile f(path);
  if (!f.open(QIODevice::WriteOnly)) qFatal("cannot write %s", qPrintable(path));
  QByteArray block;
  for (int i = 0; block.size() < (1 << 20); ++i)
    block += "capture line " + QByteArray::number(i) + " of the session, with some text after it\r\n";
  for (int k = 0; k < megabytes; ++k) f.write(block);
}

}  // namespace

class TestFileView : public QObject {
  Q_OBJECT

 private slots:
  void menusToolbarAndPanels() {
    Viewer t;
    QCOMPARE(t.v.windowTitle(), "Zorvanta File Viewer");
    QStringList menus;
    walkMenus(t.v.menuBar(), menus);
    QCOMPARE(menus, kExpectedMenus);
    t.open("f.PRO");
    QStringList hints;
    for (int i = 0; i < 13; ++i) {
      auto* b = Child<QToolButton>(t.v, QString("cmdTB_%1").arg(i));
      hints << b->toolTip();
      QEvent enter(QEvent::Enter), leave(QEvent::Leave);
      QApplication::sendEvent(b, &enter);
      QCOMPARE(Argb32(b->icon().pixmap(kViewerPictureSize)), Argb32(ViewerPicture(i, true)));
      QCOMPARE(b->palette().color(QPalette::ButtonText), QColor(128, 0, 128));
      QApplication::sendEvent(b, &leave);
      QCOMPARE(Argb32(b->icon().pixmap(kViewerPictureSize)), Argb32(ViewerPicture(i, false)));
      QCOMPARE(b->palette().color(QPalette::ButtonText), QColor(0, 128, 128));
      if (i < 11) QVERIFY(Argb32(ViewerPicture(i, true)) != Argb32(ViewerPicture(i, false)));
    }
    QCOMPARE(hints, kExpectedHints);
    QCOMPARE(t.panel("pnlFileName"), t.file("f.PRO"));
    QCOMPARE(t.panel("pnlViewLine"), " 1 ");
    QCOMPARE(t.panel("lblLineOf"), "of");
    QTRY_COMPARE(t.panel("pnlLinesInFile"), " 12 ");
    // F1 in the display opens the viewer's page; the Help item sends F1.
    t.display().setFocus();
    t.act(ViewerAction::Help);
    QCOMPARE(ExistingHelpWindow()->currentPage(), "viewer.html");
    ExistingHelpWindow()->close();
  }

  void openFromTheMainWindowAndLeave() {
    Viewer t;
    // File > View of the main window, and the Viewer button: both command 2900.
    t.opens = {};
    Child<QAction>(*t.frmMain, "mnuFileView")->trigger();
    QCOMPARE(t.openDialogs, 1);
    QVERIFY(!t.v.isVisible() && t.frmMain->isVisible() && t.frmMain->mainEnabled());
    t.open("f.PRO");
    QCOMPARE(t.openDialogs, 2);
    QCOMPARE(t.openFilters.size(), 15);
    QCOMPARE(t.openFilters.first(), "All Files (*)");
    QCOMPARE(t.openFilters.last(), ".DIC Files (*.dic)");
    QVERIFY(t.v.isVisible() && !t.frmMain->isVisible());
    QCOMPARE(QString::fromStdString(t.frmMain->job().gsInFile), t.file("f.PRO"));
    QCOMPARE(t.line(3), "Title one about a wetland");
    // Exit Viewer: the file closed, the main window back and enabled.
    Child<QAction>(t.v, "mnuFileExit")->trigger();
    QVERIFY(!t.v.isVisible() && t.frmMain->isVisible() && t.frmMain->mainEnabled());
    QVERIFY(!t.model().isOpen());
    // The close box does the same.
    t.open("f.PRO");
    t.v.close();
    QVERIFY(!t.v.isVisible() && t.frmMain->isVisible() && !t.model().isOpen());
    QVERIFY(t.log.messages.isEmpty());
  }

  void aZeroLengthOrMissingFileIsRefusedAndTheDialogComesBack() {
    Viewer t;
    WriteText(t.file("empty.log"), "");
    t.opens = {"empty.log", "gone.log", "f.PRO"};
    Child<QToolButton>(*t.frmMain, "cmdTB_Util_0")->click();
    QCOMPARE(t.openDialogs, 3);
    QCOMPARE(t.log.said(), (QStringList{"Zero-Length File: " + t.file("empty.log") + "\r\n\r\nis a zero-length file.",
                                        "File Open Error: File not found."}));
    QCOMPARE(t.log.messages[0].icon, MsgIcon::Warning);
    QVERIFY(t.v.isVisible());
    QCOMPARE(t.model().fileName(), t.file("f.PRO").toStdString());
  }

  void theFirstScreenShowsBeforeTheIndexIsComplete() {
    Viewer t;
    WorkDir big;
    const QString path = big.file("big.log");
    writeLargeCapture(path, 400);
    SetFileDialogAnswer([&](const FileDialogRequest&) { return path; });
    QSignalSpy first(&t.display(), &FileDisplayWidget::FirstScreen);
    QSignalSpy loaded(&t.display(), &FileDisplayWidget::LoadComplete);
    t.act(ViewerAction::Open);
    // frmBigLoad stands until the first screen is drawn.
    QVERIFY(t.v.frmBigLoad().isVisible());
    QVERIFY(first.wait(5000));
    QCOMPARE(loaded.count(), 0);
    QVERIFY(!t.model().loadComplete());
    QVERIFY(!t.v.frmBigLoad().isVisible());
    QCOMPARE(t.panel("pnlLinesInFile"), "");
    QCOMPARE(t.line(1), "capture line 0 of the session, with some text after it");
    // The window answers while the index grows: the page moves down at once.
    const int64_t page = t.display().pageLines();
    QTest::keyClick(&t.display(), Qt::Key_PageDown);
    QCOMPARE(t.model().topLine(), 1 + page);
    QCOMPARE(t.panel("pnlViewLine"), QString(" %1 ").arg(1 + page));
    QVERIFY(loaded.wait(20000));
    QCOMPARE(first.count(), 1);
    const int64_t lines = t.model().lineCount();
    QCOMPARE(t.panel("pnlLinesInFile"), QString(" %1 ").arg(lines));
    // Bottom: twenty lines above the last.
    t.act(ViewerAction::Bottom);
    QCOMPARE(t.model().topLine(), lines - 20);
    QVERIFY(t.line(lines).startsWith("capture line "));
    // The whole file selected is more than the clipboard takes.
    QVERIFY(t.model().selectLines(1, lines));
    t.act(ViewerAction::Copy);
    QCOMPARE(t.log.messages.last().title, "Copy Error");
    QVERIFY(t.log.messages.last().text.startsWith("The selection is too large for the clipboard."));
    t.act(ViewerAction::Exit);
  }

  void findTextIsSharedWithTheSifterAndTheStepperKeepsItsPlace() {
    Viewer t;
    t.open("f.PRO");
    t.answers.queue = {"wetland"};
    t.act(ViewerAction::FindText);
    QCOMPARE(t.frmMain->frmSift().sift.gsSearchText, "wetland");
    QCOMPARE(t.display().selectedText(), "wetland");
    QCOMPARE(t.log.messages.last().title, "Find Text");
    QCOMPARE(t.log.messages.last().text, "Search text:");
    t.act(ViewerAction::RecordStepper);
    QCOMPARE(t.model().selLine(), 5);
    // Repeat Search repeats the Find Text, which the sifter may have set meanwhile.
    t.frmMain->frmSift().sift.gsSearchText = "forest";
    t.act(ViewerAction::RepeatSearch);
    QCOMPARE(t.display().selectedText(), "forest");
    QCOMPARE(t.model().selLine(), 7);
    t.act(ViewerAction::RepeatSearch);
    QCOMPARE(t.log.said().last(), "Text Not Found: No further occurences of the search text.");
    QCOMPARE(t.log.messages.last().icon, MsgIcon::Information);
    QCOMPARE(t.model().selStart(), 0);
    QVERIFY(t.display().hasFocus() || !QApplication::focusWidget());
    t.act(ViewerAction::RecordStepper);
    QCOMPARE(t.model().selLine(), 9);
    t.act(ViewerAction::RecordStepper);
    QCOMPARE(t.log.said().last(), "Last Record: No further 'Record - N' style record labels found.");
    t.act(ViewerAction::RecordStepper);
    QCOMPARE(t.model().selLine(), 1);
  }

  void jumpToLineAndItsOverflow() {
    Viewer t;
    t.open("f.PRO");
    t.answers.queue = {"12"};
    Child<QAction>(t.v, "mnuSearchJump")->trigger();
    QCOMPARE(t.model().topLine(), 12);
    QCOMPARE(t.panel("pnlViewLine"), " 12 ");
    QCOMPARE(t.log.messages.last().text, "Jump to what line?\r\n\r\n(1 to 12)");
    t.act(ViewerAction::Top);
    QCOMPARE(t.panel("pnlViewLine"), " 1 ");
    // Above 32767 the 16-bit number overflows, whatever the file's size.
    t.answers.queue = {"40000"};
    t.act(ViewerAction::JumpToLine);
    QCOMPARE(t.modal.errorTexts, QStringList{"Error number 6\nOverflow"});
    QCOMPARE(t.model().topLine(), 1);
    QVERIFY(t.v.isVisible());
  }

  void copyTheClickedLine() {
    Viewer t;
    t.open("f.PRO");
    t.act(ViewerAction::Copy);
    QCOMPARE(t.log.said(), QStringList{"Copy Error: No text has been selected for the copy command."});
    // A click on the third row selects line 3 with its line end.
    const int y = t.display().fontMetrics().lineSpacing() * 2 + 2;
    QTest::mouseClick(t.display().viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(20, y));
    QCOMPARE(t.model().selLine(), 3);
    t.act(ViewerAction::Copy);
    QCOMPARE(QApplication::clipboard()->text(), "Title one about a wetland\r\n");
    // Shift and a click further down take the lines between.
    QTest::mouseClick(t.display().viewport(), Qt::LeftButton, Qt::ShiftModifier,
                      QPoint(20, t.display().fontMetrics().lineSpacing() * 4 + 2));
    QCOMPARE(t.display().selectedText(), "Title one about a wetland\r\n\r\nRecord - 2\r\n");
  }

  void fontsUnderFileViewerFontsWithTheFixedFontsChoice() {
    Viewer t;
    QCOMPARE(t.display().font().family(), ReadFontSetting(*t.store, kViewerFontsSection).family());
    t.open("f.PRO");
    int flagsSeen = 0;
    QFont chosen = t.display().font();
    chosen.setPointSize(17);
    chosen.setBold(true);
    SetFontChooser([&](const QFont&, int flags) {
      flagsSeen = flags;
      return std::optional<QFont>(chosen);
    });
    t.onDialog = [](QDialog& d) {
      if (d.objectName() != QLatin1String("frmOptionsFonts")) return;
      Child<QCheckBox>(d, "chkFonts_1")->setChecked(true);
      Child<QRadioButton>(d, "optSave_0")->setChecked(true);
    };
    t.act(ViewerAction::Font);
    SetFontChooser({});
    QCOMPARE(flagsSeen & font_flags::kFixedPitchOnly, font_flags::kFixedPitchOnly);
    QCOMPARE(t.display().font().pointSize(), 17);
    QVERIFY(t.display().font().bold());
    QCOMPARE(t.store->GetSetting(kViewerFontsSection, "FontSize"), "17");
    QCOMPARE(t.store->GetSetting(kViewerFontsSection, "FontBold"), SettingBoolText(true));
    QCOMPARE(t.store->GetSetting(kViewerFontsSection, "FontName"), chosen.family());
    // The real font dialog, over the viewer, lists only fixed faces when asked to.
    const auto dialog = MakeFontDialog(&t.v, t.display().font(), FontDialogFlags(false, true, false));
    QVERIFY(dialog->testOption(QFontDialog::MonospacedFonts));
    QCOMPARE(dialog->parentWidget(), &t.v);
    // The sifter's fonts are left alone.
    QCOMPARE(t.store->GetSetting(kSifterFontsSection, "FontSize", "unset"), "unset");
  }

  void splitAtTheClickedLineAndTheViewerReopensItsFile() {
    Viewer t;
    t.open("f.PRO");
    // Nothing selected: refused with its explanation.
    t.act(ViewerAction::Split);
    QCOMPARE(t.log.messages.last().title, "Split File Error");
    QVERIFY(!t.v.frmSplit().isVisible());
    t.display().selectLine(5);
    t.act(ViewerAction::Split);
    FrmSplit& split = t.v.frmSplit();
    QVERIFY(split.isVisible() && !t.v.isEnabled() && split.isEnabled());
    QCOMPARE(split.windowTitle(), "Split File");
    // Split with a name missing puts the focus there.
    Child<QPushButton>(split, "cmdSplit")->click();
    QVERIFY(!QFileInfo::exists(t.file("one.pro")));
    // A double click in each field: the save dialog fills it.
    t.saves = {"one.pro", "two.pro"};
    QTest::mouseDClick(Child<QLineEdit>(split, "txtSplitFile1"), Qt::LeftButton);
    QTest::mouseDClick(Child<QLineEdit>(split, "txtSplitFile2"), Qt::LeftButton);
    QCOMPARE(Child<QLineEdit>(split, "txtSplitFile2")->text(), t.file("two.pro"));
    QCOMPARE(t.saveFilters.size(), 11);
    QCOMPARE(t.saveFilters[2], ".PRO Files (*.PRO *.pro)");
    Child<QPushButton>(split, "cmdSplit")->click();
    QCOMPARE(ReadText(t.file("one.pro")), kPro.left(kPro.indexOf("Record - 2")));
    QCOMPARE(ReadText(t.file("two.pro")), kPro.mid(kPro.indexOf("Record - 2")));
    QCOMPARE(ReadText(t.file("f.PRO")), kPro);
    QCOMPARE(Child<QProgressBar>(split, "pnlProgress")->value(), 100);
    QVERIFY(Child(split, "cmdOkay")->isVisible() && !Child(split, "cmdCancel")->isVisible());
    QVERIFY(!Child(split, "cmdSplit")->isEnabled() && Child(split, "cmdHelp")->isEnabled());
    // The viewer has its file again, with nothing selected.
    QCOMPARE(t.model().fileName(), t.file("f.PRO").toStdString());
    QCOMPARE(t.model().selLine() + t.model().selStart() + t.model().selLength(), 0);
    Child<QPushButton>(split, "cmdOkay")->click();
    QVERIFY(!split.isVisible() && t.v.isEnabled());
    QVERIFY(t.log.messages.last().title != "Split File");
  }

  void splitCancelledAndRefused() {
    Viewer t;
    t.open("f.PRO");
    t.display().selectLine(2);
    t.act(ViewerAction::Split);
    FrmSplit& split = t.v.frmSplit();
    Child<QPushButton>(split, "cmdCancel")->click();
    QVERIFY(!split.isVisible() && t.v.isEnabled());
    QCOMPARE(t.model().selLine(), 0);
    // The viewed file itself as an output is refused, and the form stays for other names.
    t.display().selectLine(2);
    t.act(ViewerAction::Split);
    Child<QLineEdit>(split, "txtSplitFile1")->setText(t.file("f.PRO"));
    Child<QLineEdit>(split, "txtSplitFile2")->setText(t.file("b.pro"));
    Child<QPushButton>(split, "cmdSplit")->click();
    QCOMPARE(t.log.messages.last().title, "Split File");
    QCOMPARE(ReadText(t.file("f.PRO")), kPro);
    QVERIFY(!QFileInfo::exists(t.file("b.pro")));
    QVERIFY(split.isVisible() && Child(split, "cmdSplit")->isEnabled() && Child(split, "cmdCancel")->isVisible());
    QVERIFY(t.model().isOpen());
    Child<QPushButton>(split, "cmdCancel")->click();
  }

  void resizeRuleFloorsNegativeValues() {
    const FileViewLayout l = FileViewResize(100, 100, 200, 120, 600);
    QCOMPARE(l.backgroundHeight, 400);
    QCOMPARE(l.displayHeight, 400);
    QCOMPARE(l.displayWidth, 400);
    const FileViewLayout wide = FileViewResize(12000, 9000, 900, 120, 540);
    QCOMPARE(wide.backgroundHeight, 8100);
    QCOMPARE(wide.displayHeight, 8100 - 540 - 180);
    QCOMPARE(wide.displayWidth, 12000 - 120 - 180);
  }
};

QTEST_MAIN(TestFileView)
#include "file_view_test.moc"
