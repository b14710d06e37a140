// The file viewer's menu tree and its thirteen toolbar buttons with their hints.
#include "forms/viewer_tables.h"

#include <array>

namespace zv::forms {

namespace {

using A = ViewerAction;

constexpr std::array kMenu{
    ViewerMenuRow{0, "mnuFile", "&File", A::Submenu},
    ViewerMenuRow{1, "mnuFileOpen", "&Open", A::Open},
    ViewerMenuRow{1, "mnuFileDOS", "&DOS", A::Dos},
    ViewerMenuRow{1, "mnuFileSep1", "-", A::Separator},
    ViewerMenuRow{1, "mnuFileSplit", "&Split", A::Split},
    ViewerMenuRow{1, "mnuFileSep2", "-", A::Separator},
    ViewerMenuRow{1, "mnuFileExit", "E&xit Viewer", A::Exit},
    ViewerMenuRow{0, "mnuEdit", "&Edit", A::Submenu},
    ViewerMenuRow{1, "mnuEditCopy", "&Copy", A::Copy},
    ViewerMenuRow{0, "mnuSearch", "&Search", A::Submenu},
    ViewerMenuRow{1, "mnuSearchFind", "&Find Text", A::FindText},
    ViewerMenuRow{1, "mnuSearchRepeat", "&Repeat Search", A::RepeatSearch},
    ViewerMenuRow{1, "mnuSearchJump", "&Jump to Line", A::JumpToLine},
    ViewerMenuRow{1, "mnuSearchStepper", "Record &Stepper", A::RecordStepper},
    ViewerMenuRow{1, "mnuSearchSep1", "-", A::Separator},
    ViewerMenuRow{1, "mnuSearchTop", "&Top", A::Top},
    ViewerMenuRow{1, "mnuSearchBottom", "&Bottom", A::Bottom},
    ViewerMenuRow{0, "mnuOptions", "&Options", A::Submenu},
    ViewerMenuRow{1, "mnuOptionsFont", "&Font", A::Font},
    ViewerMenuRow{0, "mnuHelp", "&Help", A::Submenu},
    ViewerMenuRow{1, "mnuHelpHelp", "Help", A::Help},
    ViewerMenuRow{1, "mnuHelpAbout", "About", A::About},
};

constexpr std::array kButtons{
    ViewerButton{"Open", A::Open, " Close this file and open another for viewing. "},
    ViewerButton{"DOS", A::Dos, " Open a DOS window where multiple DOS commands can be performed. "},
    ViewerButton{"Split", A::Split, " Divide the file into two segments and write each segment to its own new file. "},
    ViewerButton{"Copy", A::Copy,
                 " Copy selected text to the Windows clipboard for pasting to other Windows applications. "},
    ViewerButton{"Find", A::FindText, " Search for text in the currently displayed file. "},
    ViewerButton{"Repeat", A::RepeatSearch, " Repeat the last search for text in the currently displayed file. "},
    ViewerButton{"Stepper", A::RecordStepper,
                 " Step through the file record-by-record, if it is a filtered record file. "},
    ViewerButton{"Jump", A::JumpToLine, " Move directly to a line in the file, by its number. "},
    ViewerButton{"Top", A::Top, " Move directly to the top of the file. "},
    ViewerButton{"Bottom", A::Bottom, " Move directly to the bottom of the file. "},
    ViewerButton{"Font", A::Font, " Set the font used in the file display port. "},
    ViewerButton{"Help", A::Help, " Read the online documentation for the file viewer. "},
    ViewerButton{"Exit", A::Exit, " Quit using the file viewer and return to the Zorvanta main screen. "},
};

}  // namespace

std::span<const ViewerMenuRow> ViewerMenuRows() { return kMenu; }
std::span<const ViewerButton> ViewerButtons() { return kButtons; }

}  // namespace zv::forms
