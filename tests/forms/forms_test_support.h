// Helpers of the form tests: recorded message boxes, answered modal dialogs, a main window.
#pragma once

#include <functional>
#include <memory>

#include <QDialog>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QTemporaryDir>

#include "forms/frm_main.h"
#include "forms/messages.h"
#include "forms/settings_store.h"

namespace zv::forms::test {

// Records every message box instead of showing it, while it lives.
struct MessageLog {
  QList<ShownMessage> messages;
  MessageLog() { SetMessageSink([this](const ShownMessage& m) { messages.append(m); }); }
  ~MessageLog() { SetMessageSink({}); }
  QStringList said() const {  // "title: text" of each
    QStringList out;
    for (const ShownMessage& m : messages) out << m.title + ": " + m.text;
    return out;
  }
};

// Answers Yes/No questions and input boxes from a queue while it lives ("No" and an
// empty text once the queue is used up). The questions are recorded by a MessageLog.
struct Answers {
  QStringList queue;
  explicit Answers(QStringList answers = {}) : queue(std::move(answers)) {
    SetAnswerSink([this](const ShownMessage& m) {
      if (!queue.isEmpty()) return queue.takeFirst();
      return m.kind == MsgKind::YesNo ? QStringLiteral("No") : QString();
    });
  }
  ~Answers() { SetAnswerSink({}); }
};

// Answers modal dialogs while it lives: records each one's objectName and frmError's
// text, then closes it as its OK button would.
struct ModalLog {
  QStringList dialogs, errorTexts;
  explicit ModalLog(std::function<void(QDialog&)> look = {}) {
    SetModalRunner([this, look](QDialog& d) {
      dialogs << d.objectName();
      if (auto* msg = d.findChild<QLabel*>(QStringLiteral("pnlErrorMsg"))) errorTexts << msg->text();
      if (look) look(d);
      if (auto* ok = d.findChild<QPushButton*>(QStringLiteral("cmdOkay"))) ok->click(); else d.accept();
      return static_cast<int>(QDialog::Accepted);
    });
  }
  ~ModalLog() { SetModalRunner({}); }
};

// A temporary folder that is the current directory while the object lives.
struct WorkDir {
  QString previous = QDir::currentPath();
  QTemporaryDir dir;
  WorkDir() { QDir::setCurrent(dir.path()); }
  ~WorkDir() { QDir::setCurrent(previous); }
  QString path() const { return dir.path(); }
  QString file(const QString& name) const { return dir.filePath(name); }
  bool exists(const QString& name) const { return QFileInfo::exists(file(name)); }
};

// A settings store in a temporary folder, and a main window over it.
struct MainFixture {
  QTemporaryDir settingsDir;
  std::unique_ptr<SettingsStore> store = std::make_unique<SettingsStore>(settingsDir.filePath("quidlane.ini"));
  std::unique_ptr<FrmMain> frmMain = std::make_unique<FrmMain>(*store);
  MainFixture() { frmMain->FormLoad(nullptr); }
};

inline void WriteText(const QString& path, const QByteArray& bytes) {
  QFile f(path);
  if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size()) qFatal("cannot write %s", qPrintable(path));
}

// A picture in one pixel format, so that two can be compared pixel for pixel.
inline QImage Argb32(const QPixmap& p) { return p.toImage().convertToFormat(QImage::Format_ARGB32); }

// A file's bytes, or "<missing>" when it cannot be read.
inline QByteArray ReadText(const QString& path) {
  QFile f(path);
  return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<missing>");
}

// The DIALOG sample capture, `times` over, written into `dir` under `name`; returns its path.
inline QString CopySample(const WorkDir& dir, const QString& name = QStringLiteral("session.log"), int times = 1) {
  QFile sample(QStringLiteral(ZV_SAMPLES_DIR "/dialog_session.log"));
  if (!sample.open(QIODevice::ReadOnly)) qFatal("no sample capture");
  WriteText(dir.file(name), sample.readAll().repeated(times));
  return dir.file(name);
}

template <typename T = QWidget>
T* Child(QObject& parent, const QString& name) {
  T* child = parent.findChild<T*>(name);
  if (child == nullptr) qFatal("no child %s", qPrintable(name));
  return child;
}

}  // namespace zv::forms::test
