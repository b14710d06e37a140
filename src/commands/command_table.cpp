// Command numbers and their tools. Numbers without a row do nothing when run.
#include "commands/command_table.h"

#include <array>

#include "analysis/diction.h"
#include "analysis/qbf.h"
#include "analysis/rank.h"
#include "analysis/sort.h"
#include "filters/adhoc.h"
#include "filters/brs.h"
#include "filters/datastar.h"
#include "filters/dialmail.h"
#include "filters/dialog_all.h"
#include "filters/dialog_pick.h"
#include "filters/dialog_separate.h"
#include "filters/djnr.h"
#include "filters/nlm.h"
#include "filters/orbit.h"
#include "filters/ovid.h"
#include "filters/stn.h"
#include "polish/polish_commands.h"
#include "records/record_commands.h"
#include "records/export_records.h"
#include "records/find_duplicates.h"
#include "records/sifter.h"
#include "viewer/file_view.h"
#include "viewer/split.h"

namespace zv {

namespace {

// A tool's row whose parameters its dialog (or the command line) gathered; without
// them, NoCommand.
template <class Params, JobResult (*Tool)(JobState&, JobProgress&, const Params&)>
JobResult runWith(CommandContext& context) {
  const Params* params = context.get<Params>();
  if (params == nullptr) {
    JobResult none;
    none.outcome = JobOutcome::NoCommand;
    return none;
  }
  return Tool(context.job, context.progress, *params);
}

// A filter's row: the capture the front end chose, handed to the filter.
template <JobResult (*Tool)(JobState&, JobProgress&, const FilterInput&)>
constexpr CommandHandler runFilter = &runWith<FilterInput, Tool>;

constexpr std::array kCommands{
    Command{1, "FilterAdHoc", "filter", "adhoc", "Ad hoc: the records between marker lines you name (.PRO, .NDX)",
            &runWith<AdHocParams, &FilterAdHoc>, CommandInput::Own},
    Command{100, "FilterDialogAll", "filter", "dialog-all",
            "DIALOG: every typed or printed record to one file (.PRO, .NDX, .FSC)", runFilter<&FilterDialogAll>, CommandInput::Capture},
    // 200 and 300 show their dialogs; the dialogs' Begin buttons run 201 and 301.
    Command{200, "FilterDialogPik", "filter", "dialog-types",
            "DIALOG: the records of up to five types you name, to one file (.PRO, .NDX, .FSC)",
            &runWith<PikTypesParams, &FilterDialogPik>, CommandInput::Own},
    Command{201, "FilterDialogPik", "", "", "Filter the types the dialog names to one file",
            &runWith<PikTypesParams, &FilterDialogPik>, CommandInput::Own},
    Command{300, "FilterDialogSep", "filter", "dialog-separate",
            "DIALOG: the records of up to five types you name, each type to a file of its own (.PRO, .NDX; .FSC)",
            &runWith<SepTypesParams, &FilterDialogSep>, CommandInput::Own},
    Command{301, "FilterDialogSep", "", "", "Filter the types the dialog names to their own files",
            &runWith<SepTypesParams, &FilterDialogSep>, CommandInput::Own},
    Command{400, "FilterDialmail", "filter", "dialmail",
            "DIALMAIL: every mailed offline print to one file (.PRO, .NDX, .FSC)", runFilter<&FilterDialmail>,
            CommandInput::Capture},
    Command{500, "FilterBRS", "filter", "brs", "BRS .. (dot dot) mode: every printed document (.PRO, .NDX)",
            runFilter<&FilterBRS>, CommandInput::Capture},
    Command{600, "FilterDataStar", "filter", "datastar", "Data-Star: every printed document (.PRO, .NDX)",
            runFilter<&FilterDataStar>, CommandInput::Capture},
    Command{800, "FilterDJ", "filter", "djnr", "DJN/R //TEXT: every document of the session (.PRO, .NDX)", runFilter<&FilterDJ>, CommandInput::Capture},
    Command{900, "FilterNLM", "filter", "nlm", "NLM: every citation of the session (.PRO, .NDX)", runFilter<&FilterNLM>, CommandInput::Capture},
    Command{1100, "FilterOrbit", "filter", "orbit",
            "Orbit/Questel: every printed item to one file (.PRO, .NDX)", runFilter<&FilterOrbit>, CommandInput::Capture},
    Command{1200, "FilterOvid", "filter", "ovid",
            "Ovid: every citation to one file, its 9-column margin cut off (.PRO, .NDX)", runFilter<&FilterOvid>, CommandInput::Capture},
    Command{1300, "FilterSTN", "filter", "stn", "STN: every displayed answer to one file (.PRO, .NDX)", runFilter<&FilterSTN>, CommandInput::Capture},
    // The sifter's commands answer only a host that is the sifter's window.
    Command{kOpenSifter, "OpenSifter", "", "", "Open a record file in the sifter", &OpenSifter, CommandInput::Sifter},
    Command{kShowOrdRecord, "ShowOrdRecord", "", "", "Show the record at the current position of the order",
            &ShowOrdRecord, CommandInput::Sifter},
    Command{kShowProRecord, "ShowProRecord", "", "", "Show the current record", &ShowProRecord, CommandInput::Sifter},
    Command{kKeep, "Keep", "", "", "Mark the record for a keep file named now", &Keep, CommandInput::Sifter},
    Command{kKeepExpress, "KeepExpress", "", "", "Mark the record for the current keep file", &KeepExpress, CommandInput::Sifter},
    Command{kUnkeep, "Unkeep", "", "", "Take the keep mark off the record", &Unkeep, CommandInput::Sifter},
    Command{kOrder, "Order", "", "", "Move the record to another position of the order", &Order, CommandInput::Sifter},
    Command{kWriteKept, "WriteKeptRecords", "", "", "Write the marked records to their keep files", &SiftWriteKept, CommandInput::Sifter},
    Command{kWriteOrder, "WriteOrder", "", "", "Write every record in the new order to the .ORD", &SiftWriteOrder, CommandInput::Sifter},
    Command{kJump, "Jump", "", "", "Go to a record by its number", &Jump, CommandInput::Sifter},
    Command{kFindText, "FindText", "", "", "Find a text in the record on display", &FindText, CommandInput::Sifter},
    Command{kRepeatSearch, "RepeatSearch", "", "", "Find the same text again further on", &RepeatSearch, CommandInput::Sifter},
    Command{kOpenQbf, "OpenQBF", "query", "", "Query by Form: records that meet nine terms in three nests (.QRY)",
            &OpenQbfCommand, CommandInput::Own},
    Command{kRunQbf, "RunQBF", "", "", "Run the query of the form", &RunQbfCommand, CommandInput::Own},
    Command{kOpenRank, "OpenRank", "rank", "", "Rank: records ordered by weighted terms (.RNK, .TBL)", &OpenRankCommand,
            CommandInput::Own},
    Command{kRunRank, "RunRank", "", "", "Rank the records by the terms of the form", &RunRankCommand, CommandInput::Own},
    Command{kSort, "Sort", "sort", "", "Sort: records alphabetized on a field tagged at the left margin (.SRT)",
            &SortCommand, CommandInput::Own},
    Command{kDiction, "Diction", "diction", "", "Diction: the words of a file by frequency (.DIC)", &DictionCommand,
            CommandInput::Own},
    // The polishing tools: their dialogs or options gather files and choices.
    Command{2200, "DivideRecords", "divide", "", "Write each record to a file of its own, BASE.001 to BASE.999",
            &DivideCommand, CommandInput::Own},
    Command{2300, "UndelimitRecords", "undelimit", "", "Copy a file without the \"|\" delimiters at line ends",
            &UndelimitCommand, CommandInput::Own},
    Command{2400, "RenumberLabels", "renumber", "", "Copy a record file with its labels numbered from 1 in order",
            &RenumberCommand, CommandInput::Own},
    Command{2500, "DeleteLabels", "delete-labels", "", "Copy a record file without its labels",
            &DeleteLabelsCommand, CommandInput::Own},
    Command{2600, "ReplaceLabels", "replace-labels", "", "Copy a record file with its labels replaced or marked",
            &ReplaceLabelsCommand, CommandInput::Own},
    Command{2700, "RemoveLineBreaks", "line-breaks", "",
            "Put each field of TAGed DIALOG records on one line (BASE.FMT)", &LineBreaksCommand, CommandInput::Own},
    Command{2800, "InsertPageBreaks", "page-breaks", "", "Put a page break every N records (BASE.BRK)",
            &PageBreaksCommand, CommandInput::Own},
    Command{3200, "CoverPageLibrary", "cover", "", "Write a header or cover page, alone or in front of a file",
            &CoverLibraryCommand, CommandInput::Own},
    Command{3210, "CoverPageFirm", "", "", "Write a header or cover page in the research firm's layout",
            &CoverFirmCommand, CommandInput::Own},
    Command{3220, "SaveCoverSettings", "", "", "Save the header and cover page settings",
            &CoverSaveSettingsCommand, CommandInput::Own},
    Command{3230, "LoadCoverSettings", "", "", "Load the header and cover page settings",
            &CoverLoadSettingsCommand, CommandInput::Own},
    Command{kOpenFileView, "OpenFileView", "", "", "Check a file chosen for the file viewer", &OpenFileView, CommandInput::Own},
    Command{kSplitFile, "SplitFile", "split", "", "Split a file at a line into two new files", &SplitFileCommand,
            CommandInput::Own},
    Command{3000, "DosWindow", "", "", "Open a terminal window in the current directory", nullptr},
    Command{3010, "Shutdown", "", "", "Save the settings and quit", nullptr},
    // The sifter's steps without its window, for the command line.
    Command{kIndexRecordFile, "IndexRecordFile", "index", "", "Index a record file: FILE.NDX beside FILE.PRO",
            &IndexRecordFileCommand, CommandInput::Own},
    Command{kKeepRecords, "KeepRecords", "keep", "", "Append the listed records to a keep file", &KeepRecordsCommand,
            CommandInput::Own},
    Command{kOrderRecords, "OrderRecords", "order", "", "Write every record to BASE.ORD in a new order", &OrderRecordsCommand,
            CommandInput::Own},
    Command{kExportRecords, "ExportRecords", "export", "",
            "Write every record as a reference in RIS, CSL JSON or CSV, for reference managers", &ExportRecordsCommand,
            CommandInput::Own},
    Command{kFindDuplicates, "FindDuplicates", "dedup", "",
            "Keep one record of each work retrieved more than once, across record files, with a report of the groups",
            &FindDuplicatesCommand, CommandInput::Own},
};

}  // namespace

std::span<const Command> CommandTable() { return kCommands; }

}  // namespace zv
