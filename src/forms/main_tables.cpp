// The menu tree, the toolbars and the DIALOG options of frmMain.
#include "forms/main_tables.h"

#include <array>

namespace zv::forms {

namespace {

using A = UiAction;

constexpr std::array kMenu{
    MenuRow{0, "mnuFile", "&File", A::Submenu, 0},
    MenuRow{1, "mnuFileView", "&View", A::Command, 2900},
    MenuRow{1, "mnuFileDOS", "&DOS", A::Command, 3000},
    MenuRow{1, "mnuFileSep1", "-", A::Separator, 0},
    MenuRow{1, "mnuFileExit", "E&xit", A::Command, 3010},
    // Beyond the system's menu, after Exit: the keys of the main window name the File
    // menu's first four places.
    MenuRow{1, "mnuFileSep2", "-", A::Separator, 0},
    MenuRow{1, "mnuFileExport", "&Export Records...", A::Command, 9610},
    MenuRow{0, "mnuFilter", "Fil&ter", A::Submenu, 0},
    MenuRow{1, "mnuFilterBRS", "BRS ..", A::Filter, 500},
    MenuRow{1, "mnuFilterDataStar", "DataStar", A::Filter, 600},
    MenuRow{1, "mnuFilterDialog", "DIALOG", A::Submenu, 0},
    MenuRow{2, "mnuFilterDialogAll", "&All Types to One File", A::Filter, 100},
    MenuRow{2, "mnuFilterDialogPik", "Specified Types to &One File", A::Filter, 200},
    MenuRow{2, "mnuFilterDialogSep", "Specfied Types to &Separate Files", A::Filter, 300},
    MenuRow{2, "mnuFilterDialogSep1", "-", A::Separator, 0},
    MenuRow{2, "mnuFilterDialmail", "DIAL&MAILed Prints to One File", A::Filter, 400},
    MenuRow{1, "mnuFilterDJ", "DJN/R //Text", A::Filter, 800},
    MenuRow{1, "mnuFilterNLM", "Nat'l Lib of Med", A::Filter, 900},
    MenuRow{1, "mnuFilterOrbit", "Orbit/Questel", A::Filter, 1100},
    MenuRow{1, "mnuFilterOvid", "Ovid", A::Filter, 1200},
    MenuRow{1, "mnuFilterSTN", "STN", A::Filter, 1300},
    MenuRow{1, "mnuFilterSep1", "-", A::Separator, 0},
    MenuRow{1, "mnuFilterAdHoc", "Ad Hoc", A::Filter, 1},
    MenuRow{0, "mnuContent", "&Content", A::Submenu, 0},
    MenuRow{1, "mnuContentSift", "&Sift", A::Command, 1600},
    MenuRow{1, "mnuContentQBF", "&Query by Form", A::Command, 1700},
    MenuRow{1, "mnuContentRank", "&Rank", A::Command, 1800},
    MenuRow{1, "mnuContentSort", "S&ort", A::Command, 1900},
    MenuRow{1, "mnuContentSep1", "-", A::Separator, 0},
    MenuRow{1, "mnuContentDiction", "&Diction", A::Command, 2100},
    MenuRow{1, "mnuContentDedup", "&Find Duplicates...", A::Command, 9620},
    MenuRow{0, "mnuPolish", "&Polish", A::Submenu, 0},
    MenuRow{1, "mnuPolishLabels", "&Label Changes", A::Submenu, 0},
    MenuRow{2, "mnuPolishRenumber", "Re&number", A::LabelCommand, 2400},
    MenuRow{2, "mnuPolishDelete", "Dele&te", A::LabelCommand, 2500},
    MenuRow{2, "mnuPolishReplace", "Re&place", A::LabelCommand, 2600},
    MenuRow{1, "mnuPolishBreaks", "Breaks", A::Submenu, 0},
    MenuRow{2, "mnuPolishPage", "Pa&ge", A::Command, 2800},
    MenuRow{2, "mnuPolishLine", "&Line in TAGed", A::Command, 2700},
    MenuRow{1, "mnuPolishDivide", "D&ivide", A::Command, 2200},
    MenuRow{1, "mnuPolishUndelimit", "&Undelimit", A::Command, 2300},
    MenuRow{1, "mnuPolishSep1", "-", A::Separator, 0},
    MenuRow{1, "mnuPolishCover", "&Header / Cover Page", A::Cover, 3230},
    MenuRow{0, "mnuSettings", "&Settings", A::Submenu, 0},
    MenuRow{1, "mnuSettingsDir", "Startup &Directory", A::Settings, 0},
    MenuRow{0, "mnuHelp", "&Help", A::Submenu, 0},
    MenuRow{1, "mnuHelpContents", "&Contents", A::Help, 0},
    MenuRow{1, "mnuHelpAbout", "&About", A::About, 0},
};

constexpr const char* kHelpHint = " Read the online documentation for this program.";
constexpr const char* kExitHint = " Quit Zorvanta.";

constexpr std::array kFilt{
    ToolbarButton{"Ad Hoc", A::Filter, 1, " Clean up unsupported files after marking records."},
    ToolbarButton{"BRS", A::Filter, 500, " Clean up searches of Ovid when BRS .. (dot dot) mode was used."},
    ToolbarButton{"DataStar", A::Filter, 600, " Clean up searches of DataStar."},
    ToolbarButton{"Dialog", A::DialogOption, 0,
                  " Clean up searches of Dialog, using option in Dialog Filtering Options panel above."},
    ToolbarButton{"DJN/R", A::Filter, 800, " Clean up searches of Dow Jones News/Retrieval //TEXT."},
    ToolbarButton{"NLM", A::Filter, 900, " Clean up searches of National Library of Medicine."},
    ToolbarButton{"Orbit", A::Filter, 1100, " Clean up searches of Orbit/Questel."},
    ToolbarButton{"Ovid", A::Filter, 1200, " Clean up searches of Ovid."},
    ToolbarButton{"STN", A::Filter, 1300, " Clean up searches of STN."},
    ToolbarButton{"Help", A::Help, 0, kHelpHint},
    ToolbarButton{"Exit", A::Command, 3010, kExitHint},
};

constexpr std::array kContent{
    ToolbarButton{"Sift", A::Command, 1600, " View filtered records, write 'keepers' to new files, reorder records."},
    ToolbarButton{"Query", A::Command, 1700, " Apply Query by Form (QBF) to a filtered record file."},
    ToolbarButton{"Rank", A::Command, 1800, " Order filtered records by weighted terms."},
    ToolbarButton{"Sort", A::Command, 1900, " Alphabetize filtered records on a field tagged at left margin."},
    ToolbarButton{"Diction", A::Command, 2100,
                  " Generate list of words in order of frequency (except words in OMIT.LST)."},
    ToolbarButton{"Help", A::Help, 0, kHelpHint},
    ToolbarButton{"Exit", A::Command, 3010, kExitHint},
};

constexpr std::array kPolish{
    ToolbarButton{"Renum", A::LabelCommand, 2400,
                  " Change 'Record - N' style labels to numerical order after Sift, Query, Rank, Sort."},
    ToolbarButton{"Delete", A::LabelCommand, 2500, " Remove record labels from a filtered record file."},
    ToolbarButton{"Replace", A::LabelCommand, 2600,
                  " Replace 'Record - N' style labels with markers or labels of your own."},
    ToolbarButton{"Pg Brks", A::Command, 2800, " Insert hard page breaks every N number of records, for printing."},
    ToolbarButton{"Ln Brks", A::Command, 2700,
                  " Remove hard carriage returns within fields of Dialog TAGed/delimited records."},
    ToolbarButton{"Divide", A::Command, 2200,
                  " Separate filtered records into a series of files, one record to a file."},
    ToolbarButton{"Undelimit", A::Command, 2300,
                  " Remove vertical bar field and record delimiters from Dialog TAGed records."},
    ToolbarButton{"Header", A::Cover, 3230, " Create a file header or cover sheet with date, subject, etc."},
    ToolbarButton{"Help", A::Help, 0, kHelpHint},
    ToolbarButton{"Exit", A::Command, 3010, kExitHint},
};

constexpr std::array kUtil{
    ToolbarButton{"Viewer", A::Command, 2900, " View files (with no editing or processing)."},
    ToolbarButton{"DOS", A::Command, 3000, " Open a DOS window where multiple DOS commands can be performed."},
    ToolbarButton{"Settings", A::Settings, 0, " Configure working directory."},
    ToolbarButton{"Help", A::Help, 0, kHelpHint},
    ToolbarButton{"Exit", A::Command, 3010, kExitHint},
};

const std::array kToolbars{
    Toolbar{"cmdTB_Filt", "Filtering", kFilt},
    Toolbar{"cmdTB_Content", "Contents", kContent},
    Toolbar{"cmdTB_Polish", "Polish", kPolish},
    Toolbar{"cmdTB_Util", "Utilities", kUtil},
};

constexpr std::array kDialogOptions{
    DialogOption{"All online TYPES to one file", 100},
    DialogOption{"Selected TYPES to one file", 200},
    DialogOption{"Selected TYPES to separate files", 300},
    DialogOption{"Dialmailed offline PRINTS", 400},
    DialogOption{"DialogWeb", 0},
};

}  // namespace

std::span<const MenuRow> MenuRows() { return kMenu; }
std::span<const Toolbar> Toolbars() { return kToolbars; }
std::span<const DialogOption> DialogOptions() { return kDialogOptions; }

}  // namespace zv::forms
