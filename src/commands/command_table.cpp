// Command numbers and their tools. Numbers without a row do nothing when run.
#include "commands/command_table.h"

#include <array>

#include "filters/dialog_all.h"
#include "filters/ovid.h"

namespace zv {

namespace {

constexpr std::array kCommands{
    Command{100, "FilterDialogAll", "filter", "dialog-all",
            "DIALOG: every typed or printed record to one file (.PRO, .NDX, .FSC)", &FilterDialogAll},
    Command{1200, "FilterOvid", "filter", "ovid",
            "Ovid: every citation to one file, its 9-column margin cut off (.PRO, .NDX)", &FilterOvid},
    Command{3000, "DosWindow", "", "", "Open a terminal window in the current directory", nullptr},
    Command{3010, "Shutdown", "", "", "Save the settings and quit", nullptr},
};

}  // namespace

std::span<const Command> CommandTable() { return kCommands; }

}  // namespace zv
