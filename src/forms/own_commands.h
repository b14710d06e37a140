// The commands whose input a dialog of their own gathers, and where each one starts.
#pragma once

#include <cstdint>
#include <span>

#include "core/dispatcher.h"

namespace zv::forms {

class FrmMain;

// One tool with a dialog: `run` shows it, gathers the tool's parameters and runs the
// job through FrmMain::runJob. Menus and toolbars reach it through RunCommand.
struct OwnCommand {
  int32_t number;
  void (*run)(FrmMain& frmMain, const Command& command);
};

// Every such command: a row here for each table row whose input is CommandInput::Own
// and that the desktop offers (the command line's own rows, 9001 and up, have none).
std::span<const OwnCommand> OwnCommands();
const OwnCommand* FindOwnCommand(int32_t number);

}  // namespace zv::forms
