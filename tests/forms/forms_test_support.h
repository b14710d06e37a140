// Helpers of the form tests: recorded message boxes, answered modal dialogs, a main window.
#pragma once

#include <functional>
#include <memory>

#include <QDir>
#include <QList>
#include <QString>
#include <QTemporaryDir>

#include "forms/frm_main.h"
#include "forms/messages.h"
#include "forms/settings_store.h"

namespace zv::forms::test {

// Records every message box instead of showing it, while it lives.
class MessageLog {
 public:
  MessageLog();
  ~MessageLog();
  QList<ShownMessage> messages;
};

// Answers modal dialogs while it lives: records each one's objectName, lets `onDialog`
// look at it, then closes it as its OK button would (frmError's cmdOkay is clicked).
class ModalLog {
 public:
  explicit ModalLog(std::function<void(QDialog&)> onDialog = {});
  ~ModalLog();
  QStringList dialogs;
  QStringList errorTexts;  // pnlErrorMsg of each frmError, as it was shown

 private:
  std::function<void(QDialog&)> onDialog_;
};

// A temporary folder that is the current directory while the object lives.
class WorkDir {
 public:
  WorkDir();
  ~WorkDir();
  QString path() const { return dir_.path(); }
  QString file(const QString& name) const { return dir_.filePath(name); }
  bool exists(const QString& name) const { return QFileInfo::exists(file(name)); }

 private:
  QString previous_;
  QTemporaryDir dir_;
};

// A settings store in a file of a temporary folder, and a main window over it.
struct MainFixture {
  MainFixture();
  ~MainFixture();
  QTemporaryDir settingsDir;
  std::unique_ptr<SettingsStore> store;
  std::unique_ptr<FrmMain> frmMain;
};

// The DIALOG sample capture, copied into `dir` under `name`; returns its path.
QString CopySample(const WorkDir& dir, const QString& name = QStringLiteral("session.log"));
void WriteText(const QString& path, const QByteArray& bytes);

template <typename T>
T* Child(QObject& parent, const QString& name) {
  return parent.findChild<T*>(name);
}

}  // namespace zv::forms::test
