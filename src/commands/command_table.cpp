// Command numbers and their tools. Numbers without a row do nothing when run.
#include "commands/command_table.h"

#include <array>

#include "filters/dialog_all.h"
#include "records/sifter.h"

namespace zv {

namespace {

constexpr std::array kCommands{
    Command{100, "FilterDialogAll", "filter", "dialog-all",
            "DIALOG: every typed or printed record to one file (.PRO, .NDX, .FSC)", &FilterDialogAll},
    // The sifter's commands answer only a host that is the sifter's window.
    Command{kOpenSifter, "OpenSifter", "", "", "Open a record file in the sifter", &OpenSifter},
    Command{kShowOrdRecord, "ShowOrdRecord", "", "", "Show the record at the current position of the order",
            &ShowOrdRecord},
    Command{kShowProRecord, "ShowProRecord", "", "", "Show the current record", &ShowProRecord},
    Command{kKeep, "Keep", "", "", "Mark the record for a keep file named now", &Keep},
    Command{kKeepExpress, "KeepExpress", "", "", "Mark the record for the current keep file", &KeepExpress},
    Command{kUnkeep, "Unkeep", "", "", "Take the keep mark off the record", &Unkeep},
    Command{kOrder, "Order", "", "", "Move the record to another position of the order", &Order},
    Command{kWriteKept, "WriteKeptRecords", "", "", "Write the marked records to their keep files", &SiftWriteKept},
    Command{kWriteOrder, "WriteOrder", "", "", "Write every record in the new order to the .ORD", &SiftWriteOrder},
    Command{kJump, "Jump", "", "", "Go to a record by its number", &Jump},
    Command{kFindText, "FindText", "", "", "Find a text in the record on display", &FindText},
    Command{kRepeatSearch, "RepeatSearch", "", "", "Find the same text again further on", &RepeatSearch},
    Command{3000, "DosWindow", "", "", "Open a terminal window in the current directory", nullptr},
    Command{3010, "Shutdown", "", "", "Save the settings and quit", nullptr},
};

}  // namespace

std::span<const Command> CommandTable() { return kCommands; }

}  // namespace zv
