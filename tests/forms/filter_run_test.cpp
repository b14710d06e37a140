// A filter job driven through frmMain and frmFilter: run, cancel, interrupt, zero records, error.
#include <QLabel>
#include <QProgressBar>
#include <QTest>
#include <QTimer>

#include "core/error.h"
#include "core/input_file.h"
#include "forms/frm_filter.h"
#include "forms_test_support.h"

using namespace zv::forms;
using namespace zv::forms::test;

namespace {

QStringList texts(QObject& w, std::initializer_list<const char*> names) {
  QStringList out;
  for (const char* name : names) out << Child<QLabel>(w, name)->text();
  return out;
}

// A main window in a fresh current folder, whose open dialog answers from a list of
// paths, and cancels once they are used up.
struct Run : WorkDir, MainFixture {
  MessageLog log;
  FrmFilter& form = frmMain->frmFilter();
  QStringList answers;
  QStringList asked;  // the dialog's filters, each time it was shown
  Run() {
    form.setFileChooser([this](const QString& filters) {
      asked << filters;
      return answers.isEmpty() ? QString() : answers.takeFirst();
    });
  }
  // DIALOG: All Types to One File, from the menu.
  void start() { Child<QAction>(*frmMain, "mnuFilterDialogAll")->trigger(); }
  QStringList files() const { return QDir(path()).entryList(QDir::Files); }
};

}  // namespace

class TestFilterRun : public QObject {
  Q_OBJECT

 private slots:
  void dialogFilterFromTheMenu() {
    Run r;
    FrmMain& w = *r.frmMain;
    const QString capture = CopySample(r);
    r.answers = {capture};
    // The status line at the job's first yield: on activation, over Cancel, over the form.
    QStringList hints;
    QTimer::singleShot(0, &r.form, [&] {
      QEvent activate(QEvent::WindowActivate), enter(QEvent::Enter);
      QMouseEvent move(QEvent::MouseMove, QPointF(3, 3), r.form.mapToGlobal(QPointF(3, 3)), Qt::NoButton,
                       Qt::NoButton, Qt::NoModifier);
      const std::pair<QObject*, QEvent*> steps[] = {
          {&r.form, &activate}, {Child(r.form, "cmdCancel"), &enter}, {&r.form, &move}};
      for (auto [target, event] : steps) {
        QApplication::sendEvent(target, event);
        hints << w.statusMsg();
      }
    });
    // The file dialog moves to the capture's folder, and the outputs go there.
    QDir::setCurrent(QDir::tempPath());
    r.start();

    QCOMPARE(r.asked,
             QStringList{"All Files (*);;.REF Files (*.REF *.ref);;.LOG Files (*.LOG *.log);;.CAP Files (*.CAP *.cap)"});
    QVERIFY(r.log.messages.isEmpty());
    QCOMPARE(hints, (QStringList{" Zorvanta is cleaning up a search.", "Interrupt and quit this filtering.",
                                 "Zorvanta is filtering a search."}));
    QCOMPARE(w.statusMsg(), QString());  // they were about the job, which has ended
    QCOMPARE(QDir::currentPath(), QDir(r.path()).canonicalPath());
    QCOMPARE(r.files(), (QStringList{"session.FSC", "session.log", "session.NDX", "session.PRO"}));
    QVERIFY(QFileInfo(r.file("session.PRO")).size() > 0);

    // The result waits in frmFilter: names with a leading blank, OK instead of Cancel.
    QVERIFY(r.form.isVisible() && !w.mainEnabled());
    QCOMPARE(r.form.windowTitle(), "Filtering All DIALOG Types to One File");
    QCOMPARE(texts(r.form, {"pnlInFile", "pnlProFile", "pnlIndexFile", "pnlLineOdom"}),
             (QStringList{" " + capture, " session.PRO", " session.NDX", " 323 "}));
    QVERIFY(texts(r.form, {"pnlRecOdom"})[0].trimmed().toInt() > 0);
    QCOMPARE(Child<QProgressBar>(r.form, "pnlProgress")->value(), 100);
    QVERIFY(Child(r.form, "cmdOkay")->isVisible() && !Child(r.form, "cmdCancel")->isVisible());
    // frmMain's Processing Time panels.
    QCOMPARE(texts(w, {"pnlFileLines", "pnlFileSize"}), (QStringList{"323", QString::number(QFile(capture).size())}));
    QCOMPARE(texts(w, {"pnlElapsed"})[0].size(), 8);

    Child<QPushButton>(r.form, "cmdOkay")->click();
    QVERIFY(!r.form.isVisible() && w.mainEnabled());
    QCOMPARE(texts(r.form, {"pnlInFile"}), QStringList{""});
  }

  void theWindowStandsWithItsTitleBeforeTheLinesAreCounted() {
    Run r;
    r.answers = {CopySample(r, "big.log", 400)};
    // The first time the job lets the interface in: the window is up with its title,
    // and no line has been read (nor counted) yet.
    QString first;
    QTimer::singleShot(0, &r.form, [&] {
      first = QStringLiteral("%1|%2|%3|%4")
                  .arg(r.form.isVisible())
                  .arg(r.form.windowTitle(), texts(r.form, {"pnlLineOdom"})[0])
                  .arg(r.frmMain->job().glLineCount);
    });
    r.start();
    QCOMPARE(first, "1|Filtering All DIALOG Types to One File||0");
    QVERIFY(r.form.isVisible() && Child(r.form, "cmdOkay")->isVisible());
  }

  void theOpenDialogCancelledOrRefused() {
    Run r;
    ModalLog modal;
    r.start();
    QCOMPARE(r.asked.size(), 1);
    QVERIFY(r.log.messages.isEmpty() && modal.dialogs.isEmpty());
    QVERIFY(r.frmMain->mainEnabled() && !r.form.isVisible());
    QCOMPARE(r.files(), QStringList());

    // A missing file and a .PRO file bring the dialog back.
    WriteText(r.file("old.PRO"), "Record - 1\r\n");
    r.answers = {r.file("missing.log"), r.file("old.PRO")};
    r.start();
    QCOMPARE(r.asked.size(), 4);
    QCOMPARE(r.log.said(), (QStringList{"File Open Error: File not found.",
                                        "Open File Error: Input file must not have .PRO extension."}));
    QVERIFY(r.frmMain->mainEnabled());
  }

  void zeroRecordsWarnsAndKeepsTheFormUp() {
    Run r;
    // A capture with nothing a DIALOG filter takes for a record.
    WriteText(r.file("empty.cap"), "Welcome to the service\r\n?b 155\r\nNo records today\r\n?logoff\r\n");
    r.answers = {r.file("empty.cap"), CopySample(r)};
    r.start();
    QCOMPARE(r.log.said(), QStringList{QStringLiteral("Zero Records: ") + Q(zv::kZeroRecordsText)});
    QCOMPARE(r.log.messages[0].icon, MsgIcon::Warning);
    QCOMPARE(r.files(), (QStringList{"empty.cap", "session.log"}));
    QVERIFY(r.form.isVisible() && Child(r.form, "cmdCancel")->isVisible());
    QVERIFY(texts(r.form, {"pnlLineOdom"})[0].isEmpty() && r.frmMain->mainEnabled());

    // Cancel pressed on the idle form closes it; no interrupt outlives its job, so the
    // next filter writes its outputs.
    Child<QPushButton>(r.form, "cmdCancel")->click();
    QVERIFY(!r.form.isVisible());
    QCOMPARE(r.frmMain->job().giInterrupt.load(), int16_t{0});
    r.start();
    QCOMPARE(r.log.messages.size(), 1);
    QCOMPARE(r.files(), (QStringList{"empty.cap", "session.FSC", "session.log", "session.NDX", "session.PRO"}));
  }

  void anErrorOrTheInterruptLeavesNoOutputs() {
    Run r;
    ModalLog modal;
    // A folder where the .PRO should be: the job cannot make its record file.
    QDir(r.path()).mkdir("session.PRO");
    r.answers = {CopySample(r)};
    r.start();
    QCOMPARE(modal.dialogs, QStringList{"frmError"});
    QCOMPARE(modal.errorTexts, QStringList{"Error number 75\nPath/File access error"});
    QVERIFY(r.log.messages.isEmpty() && !r.form.isVisible() && r.frmMain->mainEnabled());
    QCOMPARE(r.files(), QStringList{"session.log"});

    // Cancel pressed at the job's first yield: the outputs go, and those of an earlier run of the stem.
    QDir(r.path()).rmdir("session.PRO");
    for (const char* old : {"session.PRO", "session.NDX", "session.FSC", "session.WRK"})
      WriteText(r.file(old), "old\r\n");
    r.answers = {r.file("session.log")};
    QTimer::singleShot(0, &r.form, [&r] { Child<QPushButton>(r.form, "cmdCancel")->click(); });
    r.start();
    QCOMPARE(r.files(), QStringList{"session.log"});
    QVERIFY(r.log.messages.isEmpty() && modal.dialogs.size() == 1);
    QVERIFY(!r.form.isVisible() && r.frmMain->mainEnabled());
    QCOMPARE(r.frmMain->job().giInterrupt.load(), int16_t{0});
    QCOMPARE(texts(*r.frmMain, {"pnlStartTime"}), QStringList{""});
  }

  // A 16-bit count passed: frmError shows the system's message and, under it, which
  // limit and at which input line.
  void aLimitPassedIsNamedInTheErrorWindow() {
    Run r;
    ModalLog modal;
    QByteArray capture = "?b 1\r\n";
    for (int i = 0; i < 32767; ++i) capture += "x\r\n";
    capture += "?t 1/5/1\r\n 1/5/1\r\nA\r\n?\r\n";
    QFile f(r.file("fsc.log"));
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(capture);
    f.close();
    r.answers = {r.file("fsc.log")};
    r.start();
    QCOMPARE(modal.errorTexts, QStringList{"Error number 6\nOverflow\nLimit reached: the lines written to the .FSC "
                                           "(iFscLines) can be at most 32767; passed at input line 32768."});
    QCOMPARE(r.files(), QStringList{"fsc.log"});
  }

  // The odometers every line-reading job window shows: the first line at once, then
  // only on every 256th line once the repaint interval has passed.
  void lineOdometersShowTheFirstLineThenEvery256th() {
    QLabel line, record;
    QProgressBar bar;
    bar.setRange(0, 100);
    LineOdometers odometers;
    odometers.lineOdom = &line;
    odometers.recOdom = &record;
    odometers.bar = &bar;
    odometers.reset();
    odometers.recordDone(0);
    QVERIFY(odometers.lineDone(1, 1000));
    QCOMPARE(line.text(), " 1 ");
    QVERIFY(record.text().isEmpty());  // a count of 0 leaves its panel empty
    QCOMPARE(bar.value(), 0);
    odometers.recordDone(4);
    QVERIFY(!odometers.lineDone(2, 1000));  // within the interval: nothing repainted
    QCOMPARE(line.text(), " 1 ");
    QTest::qWait(FrmFilter::kRepaintMs + 10);
    QVERIFY(!odometers.lineDone(200, 1000));  // the clock is not read off the 256th line
    QVERIFY(odometers.lineDone(257, 1000));
    QCOMPARE(QStringList({line.text(), record.text()}), QStringList({" 257 ", " 4 "}));
    QCOMPARE(bar.value(), 25);
    QTest::qWait(FrmFilter::kRepaintMs + 10);
    QVERIFY(odometers.lineDone(2049, 1000));  // more lines than counted: the bar stops at 100
    QCOMPARE(bar.value(), 100);
    odometers.reset();
    QVERIFY(line.text().isEmpty() && record.text().isEmpty());
    QCOMPARE(bar.value(), 0);
    QVERIFY(odometers.lineDone(3, 0));  // after a reset the next line shows at once
    QCOMPARE(bar.value(), 100);         // no count of lines: full
    LineOdometers withoutBar;  // frmIndexing's: no bar
    withoutBar.lineOdom = &line;
    withoutBar.recOdom = &record;
    withoutBar.reset();
    QVERIFY(withoutBar.lineDone(1, 10));
  }
};

QTEST_MAIN(TestFilterRun)
#include "filter_run_test.moc"
