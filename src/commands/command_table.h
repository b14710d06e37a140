// The table of every command number the program answers, with its tool.
#pragma once

#include <span>

#include "core/dispatcher.h"

namespace zv {

// Menus, toolbars and the command line's subcommands are all made from this table.
std::span<const Command> CommandTable();

}  // namespace zv
