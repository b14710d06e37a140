// Finding and starting a terminal and a system information program.
#include "forms/programs.h"

#include <QDir>
#include <QProcess>
#include <QStandardPaths>

namespace zv::forms {

namespace {

constexpr int kStarted = 33;       // anything from 32 up was a success
constexpr int kFileNotFound = 2;

}  // namespace

int RunProgram(const QString& commandLine, int /*windowStyle*/) {
  QStringList words = QProcess::splitCommand(commandLine);
  if (words.isEmpty()) return kFileNotFound;
  const QString program = QStandardPaths::findExecutable(words.takeFirst());
  if (program.isEmpty()) return kFileNotFound;
  return QProcess::startDetached(program, words, QDir::currentPath()) ? kStarted : kFileNotFound;
}

const QStringList& KnownTerminals() {
  static const QStringList kTerminals{
      QStringLiteral("gnome-terminal"), QStringLiteral("konsole"),       QStringLiteral("xfce4-terminal"),
      QStringLiteral("mate-terminal"),  QStringLiteral("lxterminal"),    QStringLiteral("qterminal"),
      QStringLiteral("terminator"),     QStringLiteral("tilix"),         QStringLiteral("kitty"),
      QStringLiteral("alacritty"),      QStringLiteral("urxvt"),         QStringLiteral("xterm"),
  };
  return kTerminals;
}

QString TerminalCommand() {
  const QString preferred = qEnvironmentVariable("TERMINAL");
  if (!preferred.isEmpty()) {
    const QStringList words = QProcess::splitCommand(preferred);
    if (!words.isEmpty() && !QStandardPaths::findExecutable(words.first()).isEmpty()) return preferred;
  }
  if (!QStandardPaths::findExecutable(QStringLiteral("x-terminal-emulator")).isEmpty())
    return QStringLiteral("x-terminal-emulator");
  for (const QString& name : KnownTerminals())
    if (!QStandardPaths::findExecutable(name).isEmpty()) return name;
  return {};
}

const QStringList& KnownSystemInfoPrograms() {
  static const QStringList kPrograms{
      QStringLiteral("hardinfo2"),   QStringLiteral("hardinfo"),           QStringLiteral("kinfocenter"),
      QStringLiteral("gnome-system-monitor"), QStringLiteral("mate-system-monitor"),
      QStringLiteral("xfce4-taskmanager"),
  };
  return kPrograms;
}

QString SystemInfoProgram() {
  for (const QString& name : KnownSystemInfoPrograms()) {
    const QString path = QStandardPaths::findExecutable(name);
    if (!path.isEmpty()) return path;
  }
  return {};
}

}  // namespace zv::forms
