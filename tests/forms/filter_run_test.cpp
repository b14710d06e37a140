// A filter job driven through frmMain and frmFilter: run, cancel, interrupt, zero records, error.
#include <QElapsedTimer>
#include <QLabel>
#include <QMouseEvent>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include "core/error.h"
#include "core/job_host.h"
#include "forms/frm_filter.h"
#include "forms_test_support.h"

using namespace zv::forms;
using namespace zv::forms::test;

namespace {

// Answers the open dialog from a list of paths; a cancel once they are used up.
struct Answers {
  explicit Answers(QStringList p = {}) : paths(std::move(p)) {}
  QStringList paths;
  int asked = 0;
  QString filters;
  void install(FrmFilter& form) {
    form.setFileChooser([this](const QString& f) {
      ++asked;
      filters = f;
      return paths.isEmpty() ? QString() : paths.takeFirst();
    });
  }
};

QString text(QObject& w, const char* name) { return Child<QLabel>(w, QLatin1String(name))->text(); }

QAction* menuItem(FrmMain& w, const char* name) { return w.findChild<QAction*>(QLatin1String(name)); }

// A capture with nothing a DIALOG filter takes for a record.
const QByteArray kNoRecords = "Welcome to the service\r\n?b 155\r\nNo records today\r\n?logoff\r\n";

}  // namespace

class TestFilterRun : public QObject {
  Q_OBJECT

 private slots:
  void dialogFilterFromTheMenu() {
    WorkDir dir;
    const QString capture = CopySample(dir);
    MainFixture f;
    MessageLog log;
    FrmMain& w = *f.frmMain;
    FrmFilter& form = w.frmFilter();
    Answers answers({capture});
    answers.install(form);

    // The file dialog moves to the capture's folder, and the outputs go there.
    QDir::setCurrent(QDir::tempPath());
    menuItem(w, "mnuFilterDialogAll")->trigger();

    QCOMPARE(answers.asked, 1);
    QVERIFY(answers.filters.startsWith(QStringLiteral("All Files (*);;.REF Files")));
    QVERIFY(log.messages.isEmpty());
    QCOMPARE(QDir::currentPath(), QDir(dir.path()).canonicalPath());
    QVERIFY(dir.exists(QStringLiteral("session.PRO")));
    QVERIFY(dir.exists(QStringLiteral("session.NDX")));
    QVERIFY(QFileInfo(dir.file(QStringLiteral("session.PRO"))).size() > 0);

    // The result waits in frmFilter: names with a leading blank, OK instead of Cancel.
    QVERIFY(form.isVisible());
    QCOMPARE(form.windowTitle(), QStringLiteral("Filtering All DIALOG Types to One File"));
    QCOMPARE(text(form, "pnlInFile"), QLatin1Char(' ') + capture);
    QCOMPARE(text(form, "pnlProFile"), QStringLiteral(" session.PRO"));
    QCOMPARE(text(form, "pnlIndexFile"), QStringLiteral(" session.NDX"));
    QCOMPARE(text(form, "pnlLineOdom"), QStringLiteral(" 323 "));
    QVERIFY(text(form, "pnlRecOdom").trimmed().toInt() > 0);
    QCOMPARE(Child<QProgressBar>(form, QStringLiteral("pnlProgress"))->value(), 100);
    auto* ok = Child<QPushButton>(form, QStringLiteral("cmdOkay"));
    QVERIFY(ok->isVisible());
    QVERIFY(!Child<QPushButton>(form, QStringLiteral("cmdCancel"))->isVisible());
    QVERIFY(!w.mainEnabled());
    QCOMPARE(text(w, "pnlFileLines"), QStringLiteral("323"));
    QCOMPARE(text(w, "pnlFileSize"), QString::number(QFileInfo(capture).size()));
    QCOMPARE(text(w, "pnlStartTime").size(), 8);
    QCOMPARE(text(w, "pnlElapsed").size(), 8);
    QCOMPARE(w.job().glRecNum, 0);

    ok->click();
    QVERIFY(!form.isVisible());
    QVERIFY(w.mainEnabled());
    QCOMPARE(text(form, "pnlInFile"), QString());
    QCOMPARE(w.job().giInterrupt.load(), int16_t{0});
  }

  void statusLineWhileFiltering() {
    WorkDir dir;
    MainFixture f;
    MessageLog log;
    FrmFilter& form = f.frmMain->frmFilter();
    QString onActivation, overCancel, overForm;
    // Looks at the status line from inside the job, at its first yield.
    QTimer::singleShot(0, &form, [&] {
      QEvent activate(QEvent::WindowActivate);
      QApplication::sendEvent(&form, &activate);
      onActivation = f.frmMain->statusMsg();
      QEvent enter(QEvent::Enter);
      QApplication::sendEvent(Child<QPushButton>(form, QStringLiteral("cmdCancel")), &enter);
      overCancel = f.frmMain->statusMsg();
      QMouseEvent move(QEvent::MouseMove, QPointF(3, 3), form.mapToGlobal(QPointF(3, 3)), Qt::NoButton,
                       Qt::NoButton, Qt::NoModifier);
      QApplication::sendEvent(&form, &move);
      overForm = f.frmMain->statusMsg();
    });
    Answers answers({CopySample(dir)});
    answers.install(form);
    menuItem(*f.frmMain, "mnuFilterDialogAll")->trigger();
    QCOMPARE(onActivation, QStringLiteral(" Zorvanta is cleaning up a search."));
    QCOMPARE(overCancel, QStringLiteral("Interrupt and quit this filtering."));
    QCOMPARE(overForm, QStringLiteral("Zorvanta is filtering a search."));
  }

  void dialogButtonRunsTheChosenFilter() {
    WorkDir dir;
    MainFixture f;
    MessageLog log;
    Answers answers({CopySample(dir, QStringLiteral("second.log"))});
    answers.install(f.frmMain->frmFilter());
    Child<QToolButton>(*f.frmMain, QStringLiteral("cmdTB_Filt_3"))->click();
    QVERIFY(dir.exists(QStringLiteral("second.PRO")));
    QVERIFY(f.frmMain->frmFilter().isVisible());
  }

  void cancellingTheDialog() {
    WorkDir dir;
    MainFixture f;
    MessageLog log;
    ModalLog modal;
    Answers answers;
    answers.install(f.frmMain->frmFilter());
    menuItem(*f.frmMain, "mnuFilterDialogAll")->trigger();
    QCOMPARE(answers.asked, 1);
    QVERIFY(log.messages.isEmpty());
    QVERIFY(modal.dialogs.isEmpty());
    QVERIFY(f.frmMain->mainEnabled());
    QVERIFY(!f.frmMain->frmFilter().isVisible());
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList());
  }

  void refusedInputsBringTheDialogBack() {
    WorkDir dir;
    MainFixture f;
    MessageLog log;
    WriteText(dir.file(QStringLiteral("old.PRO")), "Record - 1\r\n");
    Answers answers({dir.file(QStringLiteral("missing.log")), dir.file(QStringLiteral("old.PRO"))});
    answers.install(f.frmMain->frmFilter());
    menuItem(*f.frmMain, "mnuFilterDialogAll")->trigger();
    QCOMPARE(answers.asked, 3);
    QCOMPARE(log.messages.size(), 2);
    QCOMPARE(log.messages[0].title, QStringLiteral("File Open Error"));
    QCOMPARE(log.messages[0].text, QStringLiteral("File not found."));
    QCOMPARE(log.messages[1].title, QStringLiteral("Open File Error"));
    QCOMPARE(log.messages[1].text, QStringLiteral("Input file must not have .PRO extension."));
    QCOMPARE(log.messages[1].icon, MsgIcon::Warning);
    QVERIFY(f.frmMain->mainEnabled());
  }

  void interruptRemovesEverything() {
    WorkDir dir;
    MainFixture f;
    MessageLog log;
    ModalLog modal;
    // Outputs of an earlier run of the same stem go too.
    for (const char* old : {"session.PRO", "session.NDX", "session.FSC", "session.WRK"})
      WriteText(dir.file(QLatin1String(old)), "old\r\n");
    Answers answers({CopySample(dir)});
    FrmFilter& form = f.frmMain->frmFilter();
    answers.install(form);
    // Cancel is pressed at the job's first yield.
    QTimer::singleShot(0, &form, [&form] { Child<QPushButton>(form, QStringLiteral("cmdCancel"))->click(); });
    menuItem(*f.frmMain, "mnuFilterDialogAll")->trigger();

    QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList{QStringLiteral("session.log")});
    QVERIFY(log.messages.isEmpty());
    QVERIFY(modal.dialogs.isEmpty());
    QVERIFY(!form.isVisible());
    QVERIFY(f.frmMain->mainEnabled());
    QCOMPARE(f.frmMain->job().giInterrupt.load(), int16_t{0});
    QCOMPARE(text(*f.frmMain, "pnlStartTime"), QString());
  }

  void zeroRecordsWarnsAndKeepsTheFormUp() {
    WorkDir dir;
    MainFixture f;
    MessageLog log;
    WriteText(dir.file(QStringLiteral("empty.cap")), kNoRecords);
    Answers answers({dir.file(QStringLiteral("empty.cap")), CopySample(dir)});
    FrmFilter& form = f.frmMain->frmFilter();
    answers.install(form);
    menuItem(*f.frmMain, "mnuFilterDialogAll")->trigger();

    QCOMPARE(log.messages.size(), 1);
    QCOMPARE(log.messages[0].title, QStringLiteral("Zero Records"));
    QCOMPARE(log.messages[0].text, Q(zv::kZeroRecordsText));
    QCOMPARE(log.messages[0].icon, MsgIcon::Warning);
    QVERIFY(!dir.exists(QStringLiteral("empty.PRO")));
    QVERIFY(!dir.exists(QStringLiteral("empty.NDX")));
    QVERIFY(!dir.exists(QStringLiteral("empty.FSC")));
    QVERIFY(form.isVisible());
    auto* cancel = Child<QPushButton>(form, QStringLiteral("cmdCancel"));
    QVERIFY(cancel->isVisible());
    QCOMPARE(text(form, "pnlLineOdom"), QString());
    QVERIFY(f.frmMain->mainEnabled());

    // Cancel pressed on the idle form raises the flag, and nothing lowers it: the next
    // job gives itself up after its first line.
    cancel->click();
    menuItem(*f.frmMain, "mnuFilterDialogAll")->trigger();
    QCOMPARE(log.messages.size(), 1);
    QVERIFY(!dir.exists(QStringLiteral("session.PRO")));
    QVERIFY(!form.isVisible());
  }

  void anErrorEndsInFrmError() {
    WorkDir dir;
    MainFixture f;
    MessageLog log;
    ModalLog modal;
    // A folder where the .PRO should be: the job cannot make its record file.
    QDir(dir.path()).mkdir(QStringLiteral("session.PRO"));
    Answers answers({CopySample(dir)});
    answers.install(f.frmMain->frmFilter());
    menuItem(*f.frmMain, "mnuFilterDialogAll")->trigger();

    QCOMPARE(modal.dialogs, QStringList{QStringLiteral("frmError")});
    const QString expected = DisplayText(Q(zv::ErrorFormText(f.frmMain->job().gsErrNumber, f.frmMain->job().gsErrText)));
    QCOMPARE(modal.errorTexts, QStringList{expected});
    QVERIFY(expected.startsWith(QStringLiteral("Error number ")));
    QVERIFY(!expected.startsWith(QStringLiteral("Error number  ")));
    QVERIFY(log.messages.isEmpty());
    QVERIFY(!f.frmMain->frmFilter().isVisible());
    QVERIFY(f.frmMain->mainEnabled());
    QVERIFY(!dir.exists(QStringLiteral("session.NDX")));
    QCOMPARE(f.frmMain->job().glRecNum, 0);
  }

  void theInterfaceIsServedEveryFewMilliseconds() {
    WorkDir dir;
    MainFixture f;
    MessageLog log;
    // A long capture: the sample over and over.
    QFile sample(QStringLiteral(ZV_SAMPLES_DIR "/dialog_session.log"));
    QVERIFY(sample.open(QIODevice::ReadOnly));
    const QByteArray once = sample.readAll();
    QByteArray many;
    for (int i = 0; i < 200; ++i) many += once;
    WriteText(dir.file(QStringLiteral("long.log")), many);
    Answers answers({dir.file(QStringLiteral("long.log"))});
    answers.install(f.frmMain->frmFilter());
    // A zero-interval timer runs once for every time the job yields.
    int yields = 0;
    QTimer counter;
    QObject::connect(&counter, &QTimer::timeout, [&yields] { ++yields; });
    counter.start(0);
    QElapsedTimer clock;
    clock.start();
    menuItem(*f.frmMain, "mnuFilterDialogAll")->trigger();
    const qint64 ms = clock.elapsed();
    counter.stop();
    QVERIFY(dir.exists(QStringLiteral("long.PRO")));
    // Served now and then, but not after every one of the 64,600 lines.
    QVERIFY2(yields >= ms / (4 * FrmFilter::kRepaintMs) && yields <= ms / (FrmFilter::kRepaintMs / 2) + 5,
             qPrintable(QStringLiteral("%1 yields in %2 ms").arg(yields).arg(ms)));
  }
};

QTEST_MAIN(TestFilterRun)
#include "filter_run_test.moc"
