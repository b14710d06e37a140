// Helpers of the form tests.
#include "forms_test_support.h"

#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTest>

namespace zv::forms::test {

MessageLog::MessageLog() {
  SetMessageSink([this](const ShownMessage& m) { messages.append(m); });
}

MessageLog::~MessageLog() { SetMessageSink({}); }

ModalLog::ModalLog(std::function<void(QDialog&)> onDialog) : onDialog_(std::move(onDialog)) {
  SetModalRunner([this](QDialog& dialog) {
    dialogs << dialog.objectName();
    if (dialog.objectName() == QLatin1String("frmError"))
      errorTexts << dialog.findChild<QLabel*>(QStringLiteral("pnlErrorMsg"))->text();
    if (onDialog_) onDialog_(dialog);
    if (auto* ok = dialog.findChild<QPushButton*>(QStringLiteral("cmdOkay")))
      ok->click();
    else
      dialog.accept();
    return static_cast<int>(QDialog::Accepted);
  });
}

ModalLog::~ModalLog() { SetModalRunner({}); }

WorkDir::WorkDir() : previous_(QDir::currentPath()) {
  if (!dir_.isValid()) qFatal("no temporary folder");
  QDir::setCurrent(dir_.path());
}

WorkDir::~WorkDir() { QDir::setCurrent(previous_); }

MainFixture::MainFixture()
    : store(std::make_unique<SettingsStore>(settingsDir.filePath(QStringLiteral("quidlane.ini")))),
      frmMain(std::make_unique<FrmMain>(*store)) {
  frmMain->FormLoad(nullptr);
}

MainFixture::~MainFixture() {
  frmMain.reset();
  store.reset();
}

void WriteText(const QString& path, const QByteArray& bytes) {
  QFile f(path);
  if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size()) qFatal("cannot write %s", qPrintable(path));
}

QString CopySample(const WorkDir& dir, const QString& name) {
  const QString path = dir.file(name);
  QFile::remove(path);
  if (!QFile::copy(QStringLiteral(ZV_SAMPLES_DIR "/dialog_session.log"), path)) qFatal("no sample capture");
  return path;
}

}  // namespace zv::forms::test
