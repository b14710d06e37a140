// Other programs the desktop program starts: a terminal, the system information tool.
#pragma once

#include <QString>
#include <QStringList>

namespace zv::forms {

// RunProgram(commandLine, windowStyle): starts the command line's program, detached,
// in the current directory, and answers as the old launcher did: 33 when it started,
// 2 ("file not found") when there was nothing to start or it would not start. The
// window style is kept for the callers' sake; the window manager places the window.
int RunProgram(const QString& commandLine, int windowStyle);

// The common terminal emulators, looked for last, in this order.
const QStringList& KnownTerminals();

// The terminals that come with the desktops named in `desktops` (XDG_CURRENT_DESKTOP,
// "ubuntu:GNOME"), in the order to look for them.
QStringList DesktopTerminals(const QString& desktops);

// The command line that opens a terminal, the first that names a program on the path
// of: $TERMINAL; xdg-terminal-exec; the terminal the desktop's settings name (GNOME,
// Cinnamon, KDE); the desktop's own terminals; x-terminal-emulator; the known ones.
// Empty when none is installed.
QString TerminalCommand();

// The system information programs looked for, in this order.
const QStringList& KnownSystemInfoPrograms();

// The full path of the first one installed, or empty.
QString SystemInfoProgram();

}  // namespace zv::forms
