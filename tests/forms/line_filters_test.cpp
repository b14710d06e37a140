// Every line filter started from its menu item and from its Filtering toolbar button.
#include <QTest>
#include <QToolButton>

#include "forms/frm_filter.h"
#include "forms_test_support.h"

using namespace zv::forms;
using namespace zv::forms::test;

namespace {

struct LineFilterCase {
  const char* menu;    // the Filter menu item
  const char* button;  // the caption of its Filtering toolbar button
  const char* sample;  // the service's sample capture
  const char* title;   // frmFilter's title while it runs
};

const LineFilterCase kCases[] = {
    {"mnuFilterBRS", "BRS", "brs_session.log", "Filtering BRS .. (dot dot) Search"},
    {"mnuFilterDataStar", "DataStar", "datastar_session.log", "Filtering Data-Star Search"},
    {"mnuFilterDJ", "DJN/R", "djnr_session.log", "Filtering DJN/R //TEXT Search"},
    {"mnuFilterNLM", "NLM", "nlm_session.log", "Filtering NLM Search"},
    {"mnuFilterOrbit", "Orbit", "orbit_session.log", "Filtering Orbit/Questel Search"},
    {"mnuFilterOvid", "Ovid", "ovid_session.log", "Filtering Ovid Search"},
    {"mnuFilterSTN", "STN", "stn_session.log", "Filtering STN Search"},
};

// A main window in a fresh folder holding one service's sample as "capture.log", whose
// open dialog answers with that capture once.
struct Run : WorkDir, MainFixture {
  MessageLog log;
  FrmFilter& form = frmMain->frmFilter();

  explicit Run(const LineFilterCase& c) {
    QFile sample(QStringLiteral(ZV_SAMPLES_DIR "/") + QLatin1String(c.sample));
    if (!sample.open(QIODevice::ReadOnly)) qFatal("no sample %s", c.sample);
    WriteText(file(QStringLiteral("capture.log")), sample.readAll());
    form.setFileChooser([this, answered = false](const QString&) mutable {
      if (answered) return QString();
      answered = true;
      return file(QStringLiteral("capture.log"));
    });
  }

  QByteArray read(const QString& name) const {
    QFile f(file(name));
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
  }
};

QToolButton* FilteringButton(FrmMain& w, const QString& caption) {
  for (QToolButton* b : w.findChildren<QToolButton*>()) {
    if (b->objectName().startsWith(QLatin1String("cmdTB_Filt_")) && b->text() == caption) return b;
  }
  qFatal("no Filtering button %s", qPrintable(caption));
}

}  // namespace

class TestLineFilters : public QObject {
  Q_OBJECT

 private slots:
  void menuAndToolbarGiveTheSameRecords_data() {
    QTest::addColumn<int>("row");
    for (int i = 0; i < static_cast<int>(std::size(kCases)); ++i) QTest::newRow(kCases[i].menu) << i;
  }

  void menuAndToolbarGiveTheSameRecords() {
    QFETCH(int, row);
    const LineFilterCase& c = kCases[row];

    Run menu(c);
    Child<QAction>(*menu.frmMain, QLatin1String(c.menu))->trigger();
    QCOMPARE(menu.form.windowTitle(), QLatin1String(c.title));
    QVERIFY2(menu.log.messages.isEmpty(), qPrintable(menu.log.said().join('\n')));
    QCOMPARE(QDir(menu.path()).entryList(QDir::Files),
             (QStringList{"capture.log", "capture.NDX", "capture.PRO"}));
    const QByteArray pro = menu.read(QStringLiteral("capture.PRO"));
    QVERIFY(pro.startsWith("Record - "));  // the label of record 1 on the first line
    QVERIFY(Child<QLabel>(menu.form, "pnlRecOdom")->text().trimmed().toInt() > 1);

    Run button(c);
    FilteringButton(*button.frmMain, QLatin1String(c.button))->click();
    QCOMPARE(button.form.windowTitle(), QLatin1String(c.title));
    QCOMPARE(button.read(QStringLiteral("capture.PRO")), pro);
    QCOMPARE(button.read(QStringLiteral("capture.NDX")), menu.read(QStringLiteral("capture.NDX")));
  }
};

QTEST_MAIN(TestLineFilters)
#include "line_filters_test.moc"
