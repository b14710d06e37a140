// Command numbers and their tools. Numbers without a row do nothing when run.
#include "commands/command_table.h"

#include <array>

#include "filters/brs.h"
#include "filters/datastar.h"
#include "filters/dialog_all.h"
#include "filters/djnr.h"
#include "filters/nlm.h"
#include "filters/orbit.h"
#include "filters/ovid.h"
#include "filters/stn.h"

namespace zv {

namespace {

constexpr std::array kCommands{
    Command{100, "FilterDialogAll", "filter", "dialog-all",
            "DIALOG: every typed or printed record to one file (.PRO, .NDX, .FSC)", &FilterDialogAll},
    Command{500, "FilterBRS", "filter", "brs", "BRS .. (dot dot) mode: every printed document (.PRO, .NDX)",
            &FilterBRS},
    Command{600, "FilterDataStar", "filter", "datastar", "Data-Star: every printed document (.PRO, .NDX)",
            &FilterDataStar},
    Command{800, "FilterDJ", "filter", "djnr", "DJN/R //TEXT: every document of the session (.PRO, .NDX)", &FilterDJ},
    Command{900, "FilterNLM", "filter", "nlm", "NLM: every citation of the session (.PRO, .NDX)", &FilterNLM},
    Command{1100, "FilterOrbit", "filter", "orbit",
            "Orbit/Questel: every printed item to one file (.PRO, .NDX)", &FilterOrbit},
    Command{1200, "FilterOvid", "filter", "ovid",
            "Ovid: every citation to one file, its 9-column margin cut off (.PRO, .NDX)", &FilterOvid},
    Command{1300, "FilterSTN", "filter", "stn", "STN: every displayed answer to one file (.PRO, .NDX)", &FilterSTN},
    Command{3000, "DosWindow", "", "", "Open a terminal window in the current directory", nullptr},
    Command{3010, "Shutdown", "", "", "Save the settings and quit", nullptr},
};

}  // namespace

std::span<const Command> CommandTable() { return kCommands; }

}  // namespace zv
