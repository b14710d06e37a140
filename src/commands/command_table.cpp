// Command numbers and their tools. Numbers without a row do nothing when run.
#include "commands/command_table.h"

#include <array>

#include "filters/brs.h"
#include "filters/datastar.h"
#include "filters/dialog_all.h"

namespace zv {

namespace {

constexpr std::array kCommands{
    Command{100, "FilterDialogAll", "filter", "dialog-all",
            "DIALOG: every typed or printed record to one file (.PRO, .NDX, .FSC)", &FilterDialogAll},
    Command{500, "FilterBRS", "filter", "brs", "BRS .. (dot dot) mode: every printed document (.PRO, .NDX)",
            &FilterBRS},
    Command{600, "FilterDataStar", "filter", "datastar", "Data-Star: every printed document (.PRO, .NDX)",
            &FilterDataStar},
    Command{3000, "DosWindow", "", "", "Open a terminal window in the current directory", nullptr},
    Command{3010, "Shutdown", "", "", "Save the settings and quit", nullptr},
};

}  // namespace

std::span<const Command> CommandTable() { return kCommands; }

}  // namespace zv
