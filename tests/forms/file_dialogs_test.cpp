// The file dialogs take any name typed, so that the tools' own "File not found." is
// what the user reads; the filter and the sifter driven through the real dialog.
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include "forms/file_dialogs.h"
#include "forms/frm_filter.h"
#include "forms/frm_sift.h"
#include "forms_test_support.h"

using namespace zv::forms;
using namespace zv::forms::test;

namespace {

bool aMessageBoxIsUp() {
  for (const QWidget* w : QApplication::topLevelWidgets())
    if (qobject_cast<const QMessageBox*>(w) != nullptr && w->isVisible()) return true;
  return false;
}

// Answers each real file dialog that comes up, in turn: a name typed and Open
// pressed, or Cancel for an empty answer (and once the list is used up). Records the
// title of each dialog, and whether the platform put up a box of its own.
struct TypedAnswers {
  QStringList typed;
  QStringList titles;
  bool foreignBox = false;
  QTimer timer;
  explicit TypedAnswers(QStringList names) : typed(std::move(names)) {
    timer.setInterval(5);
    QObject::connect(&timer, &QTimer::timeout, [this] {
      foreignBox = foreignBox || aMessageBoxIsUp();
      auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr || !dialog->isVisible()) return;
      titles << dialog->windowTitle();
      const QString name = typed.isEmpty() ? QString() : typed.takeFirst();
      if (name.isEmpty()) {
        dialog->reject();
        return;
      }
      Child<QLineEdit>(*dialog, "fileNameEdit")->setText(name);
      QMetaObject::invokeMethod(dialog, "accept");
    });
    timer.start();
  }
};

}  // namespace

class TestFileDialogs : public QObject {
  Q_OBJECT

 private slots:
  void aMissingNameIsTheToolsToRefuse() {
    WorkDir dir;
    for (const FileDialogMode mode : {FileDialogMode::Open, FileDialogMode::Save}) {
      WriteText(dir.file("there.PRO"), "x");
      const std::unique_ptr<QFileDialog> d = MakeFileDialog(nullptr, {mode, {}, DialogNameFilters("All Files (*.*)|*.*|"), {}});
      QCOMPARE(d->windowTitle(), mode == FileDialogMode::Open ? "Open" : "Save As");
      QCOMPARE(d->directory().absolutePath(), QDir(dir.path()).absolutePath());
      QCOMPARE(d->fileMode(), QFileDialog::AnyFile);
      QVERIFY(d->testOption(QFileDialog::DontUseNativeDialog));
      for (const char* name : {"missing.log", "there.PRO"}) {
        d->show();
        Child<QLineEdit>(*d, "fileNameEdit")->setText(QLatin1String(name));
        QMetaObject::invokeMethod(d.get(), "accept");
        QVERIFY2(!aMessageBoxIsUp(), name);
        QCOMPARE(d->result(), int(QDialog::Accepted));
        QCOMPARE(d->selectedFiles(), QStringList{dir.file(QLatin1String(name))});
      }
    }
    QCOMPARE(DialogNameFilters("All Files (*.*)|*.*|.PRO Files|*.PRO|.NDX Files|*.NDX|"),
             (QStringList{"All Files (*)", ".PRO Files (*.PRO *.pro)", ".NDX Files (*.NDX *.ndx)"}));
  }

  void theAnswerStandsInForEveryDialog() {
    QList<FileDialogRequest> asked;
    SetFileDialogAnswer([&](const FileDialogRequest& r) {
      asked << r;
      return QStringLiteral("/x/y.PRO");
    });
    QCOMPARE(GetOpenFileName(nullptr, "All Files (*.*)|*.*|"), "/x/y.PRO");
    QCOMPARE(GetSaveFileName(nullptr, ".RNK Files|*.RNK|", "Save Ranked File"), "/x/y.PRO");
    SetFileDialogAnswer({});
    QCOMPARE(asked.size(), 2);
    QCOMPARE(asked[0].mode, FileDialogMode::Open);
    QCOMPARE(asked[1].mode, FileDialogMode::Save);
    QCOMPARE(asked[1].title, "Save Ranked File");
    QCOMPARE(asked[1].nameFilters, QStringList{".RNK Files (*.RNK *.rnk)"});
  }

  void theFilterAndTheSifterSayFileNotFound() {
    WorkDir dir;
    MainFixture m;
    MessageLog log;
    {
      // A missing capture: the program's own message, the dialog again, then Cancel.
      TypedAnswers answers({dir.file("missing.log")});
      Child<QAction>(*m.frmMain, "mnuFilterDialogAll")->trigger();
      QCOMPARE(answers.titles, (QStringList{"Open", "Open"}));
      QVERIFY(!answers.foreignBox);
    }
    QCOMPARE(log.said(), QStringList{"File Open Error: File not found."});
    QCOMPARE(log.messages[0].icon, MsgIcon::Warning);
    QVERIFY(m.frmMain->mainEnabled() && !m.frmMain->frmFilter().isVisible());
    {
      TypedAnswers answers({dir.file("missing.PRO")});
      Child<QAction>(*m.frmMain, "mnuContentSift")->trigger();
      QCOMPARE(answers.titles.size(), 2);
      QVERIFY(!answers.foreignBox);
    }
    // The sifter's own check: a name that is not there has no length.
    QCOMPARE(log.said().size(), 2);
    QCOMPARE(log.said()[1], "Zero-Length File: " + dir.file("missing.PRO") + "\r\nis a zero-length file.");
    QVERIFY(!m.frmMain->frmSift().isVisible() && m.frmMain->isVisible());
  }
};

QTEST_MAIN(TestFileDialogs)
#include "file_dialogs_test.moc"
