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
      QStringLiteral("gnome-terminal"), QStringLiteral("kgx"),          QStringLiteral("ptyxis"),
      QStringLiteral("konsole"),        QStringLiteral("xfce4-terminal"), QStringLiteral("mate-terminal"),
      QStringLiteral("lxterminal"),     QStringLiteral("qterminal"),    QStringLiteral("terminator"),
      QStringLiteral("tilix"),          QStringLiteral("kitty"),        QStringLiteral("alacritty"),
      QStringLiteral("foot"),           QStringLiteral("wezterm"),      QStringLiteral("terminology"),
      QStringLiteral("sakura"),         QStringLiteral("urxvt"),        QStringLiteral("rxvt"),
      QStringLiteral("st"),             QStringLiteral("xterm"),
  };
  return kTerminals;
}

QStringList DesktopTerminals(const QString& desktops) {
  // XDG_CURRENT_DESKTOP is a list, most specific first ("ubuntu:GNOME").
  static const QList<std::pair<const char*, QStringList>> kByDesktop{
      {"GNOME", {QStringLiteral("kgx"), QStringLiteral("ptyxis"), QStringLiteral("gnome-terminal")}},
      {"KDE", {QStringLiteral("konsole")}},
      {"XFCE", {QStringLiteral("xfce4-terminal")}},
      {"MATE", {QStringLiteral("mate-terminal")}},
      {"X-CINNAMON", {QStringLiteral("gnome-terminal")}},
      {"LXQT", {QStringLiteral("qterminal")}},
      {"LXDE", {QStringLiteral("lxterminal")}},
  };
  QStringList out;
  for (const QString& desktop : desktops.split(QLatin1Char(':'), Qt::SkipEmptyParts))
    for (const auto& [name, terminals] : kByDesktop)
      if (desktop.compare(QLatin1String(name), Qt::CaseInsensitive) == 0) out += terminals;
  return out;
}

namespace {

bool onPath(const QString& commandLine) {
  const QStringList words = QProcess::splitCommand(commandLine);
  return !words.isEmpty() && !QStandardPaths::findExecutable(words.first()).isEmpty();
}

// The terminal the desktop's own settings name: GNOME's and Cinnamon's key, KDE's
// TerminalApplication. Empty where there is no such setting or tool to read it.
QString configuredTerminal(const QString& desktops) {
  auto read = [](const QString& program, const QStringList& args) {
    if (QStandardPaths::findExecutable(program).isEmpty()) return QString();
    QProcess p;
    p.start(program, args);
    if (!p.waitForFinished(2000) || p.exitCode() != 0) return QString();
    QString value = QString::fromLocal8Bit(p.readAllStandardOutput()).trimmed();
    if (value.size() >= 2 && value.startsWith(QLatin1Char('\'')) && value.endsWith(QLatin1Char('\'')))
      value = value.mid(1, value.size() - 2);
    return value;
  };
  const QString upper = desktops.toUpper();
  if (upper.contains(QLatin1String("GNOME")) || upper.contains(QLatin1String("CINNAMON"))) {
    const QString schema = upper.contains(QLatin1String("CINNAMON")) ? QStringLiteral("org.cinnamon.desktop.default-applications.terminal")
                                                                  : QStringLiteral("org.gnome.desktop.default-applications.terminal");
    return read(QStringLiteral("gsettings"), {QStringLiteral("get"), schema, QStringLiteral("exec")});
  }
  if (upper.contains(QLatin1String("KDE"))) {
    for (const char* tool : {"kreadconfig6", "kreadconfig5"}) {
      const QString value = read(QLatin1String(tool), {QStringLiteral("--group"), QStringLiteral("General"),
                                                        QStringLiteral("--key"), QStringLiteral("TerminalApplication")});
      if (!value.isEmpty()) return value;
    }
  }
  return {};
}

}  // namespace

QString TerminalCommand() {
  // The user's own choice, then the desktop's default, then the system's, then any
  // common terminal that is installed.
  const QString preferred = qEnvironmentVariable("TERMINAL");
  if (!preferred.isEmpty() && onPath(preferred)) return preferred;
  if (onPath(QStringLiteral("xdg-terminal-exec"))) return QStringLiteral("xdg-terminal-exec");
  const QString desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP");
  const QString configured = configuredTerminal(desktops);
  if (!configured.isEmpty() && onPath(configured)) return configured;
  for (const QString& name : DesktopTerminals(desktops))
    if (onPath(name)) return name;
  if (onPath(QStringLiteral("x-terminal-emulator"))) return QStringLiteral("x-terminal-emulator");
  for (const QString& name : KnownTerminals())
    if (onPath(name)) return name;
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
