// The menu tree, the toolbar and the keys of frmSift.
#include "forms/sift_tables.h"

#include <array>

#include <QKeyEvent>

namespace zv::forms {

namespace {

using A = SiftAction;

constexpr std::array kMenu{
    SiftMenuRow{0, "mnuFile", "&File", A::Submenu, nullptr, kSiftWindowContext},
    SiftMenuRow{1, "mnuFileOpen", "&Open", A::Open, "Ctrl+O", 0},
    SiftMenuRow{1, "mnuFileDOS", "&DOS", A::Dos, "Ctrl+F2", 0},
    SiftMenuRow{1, "mnuFileSep1", "-", A::Separator, nullptr, 0},
    SiftMenuRow{1, "mnuFileExit", "E&xit Sifter", A::Exit, "F7", 0},
    SiftMenuRow{0, "mnuEdit", "&Edit", A::Submenu, nullptr, kSiftWindowContext},
    SiftMenuRow{1, "mnuEditCopy", "&Copy", A::Copy, "Ctrl+C", 0},
    SiftMenuRow{0, "mnuNavigate", "&Navigate", A::Submenu, nullptr, kSiftWindowContext},
    SiftMenuRow{1, "mnuNavigateNext", "N    &Next", A::Next, nullptr, 0},
    SiftMenuRow{1, "mnuNavigatePrevious", "P    &Previous", A::Previous, nullptr, 0},
    SiftMenuRow{1, "mnuNavigateFirst", "F    &First", A::First, nullptr, 0},
    SiftMenuRow{1, "mnuNavigateLast", "L    &Last", A::Last, nullptr, 0},
    SiftMenuRow{1, "mnuNavigateJump", "J    &Jump", A::Jump, nullptr, 0},
    SiftMenuRow{0, "mnuKeep", "Kee&p", A::Submenu, nullptr, kSiftKeepContext},
    SiftMenuRow{1, "mnuKeepKeep", "&Keep                         K", A::Keep, nullptr, 0},
    SiftMenuRow{1, "mnuKeepExpress", "Keep E&xpress            Alt-K", A::KeepExpress, nullptr, 0},
    SiftMenuRow{1, "mnuKeepUnkeep", "&Unkeep                     Ctrl-U", A::Unkeep, nullptr, 0},
    SiftMenuRow{1, "mnuKeepList", "Keep &List                   Ctrl-L", A::KeepList, nullptr, 0},
    SiftMenuRow{1, "mnuKeepSep1", "-", A::Separator, nullptr, 0},
    SiftMenuRow{1, "mnuKeepWrite", "&Write Kept Records   Ctrl-K", A::WriteKept, nullptr, 0},
    SiftMenuRow{0, "mnuOrder", "Or&der", A::Submenu, nullptr, kSiftOrderContext},
    SiftMenuRow{1, "mnuOrderOrder", "&Order                O", A::Order, nullptr, 0},
    SiftMenuRow{1, "mnuOrderToggle", "Order &Toggle    Alt-O", A::OrderToggle, nullptr, 0},
    SiftMenuRow{1, "mnuOrderSep1", "-", A::Separator, nullptr, 0},
    SiftMenuRow{1, "mnuOrderWrite", "&Write Order      Ctrl-O", A::WriteOrder, nullptr, 0},
    SiftMenuRow{0, "mnuSearch", "&Search", A::Submenu, nullptr, kSiftWindowContext},
    SiftMenuRow{1, "mnuSearchFind", "&Find Text", A::FindText, "F2", 0},
    SiftMenuRow{1, "mnuSearchRepeat", "&Repeat Search", A::RepeatSearch, "F3", 0},
    SiftMenuRow{0, "mnuOptions", "Op&tions", A::Submenu, nullptr, kSiftWindowContext},
    SiftMenuRow{1, "mnuOptionsFont", "&Font", A::Font, nullptr, 0},
    SiftMenuRow{0, "mnuHelp", "&Help", A::Submenu, nullptr, kSiftHelpContext},
    SiftMenuRow{1, "mnuHelpSifter", "&Sifter Help", A::Help, nullptr, 0},
    SiftMenuRow{1, "mnuHelpAbout", "&About", A::About, nullptr, 0},
};

constexpr std::array kButtons{
    SiftButton{"Jump", " Jump to a record by giving its number. ", A::Jump},
    SiftButton{"First", " Navigate to the first record. ", A::First},
    SiftButton{"Last", " Navigate to the last record. ", A::Last},
    SiftButton{"Prev", " Navigate to the previous record. ", A::Previous},
    SiftButton{"Next", " Navigate to the next record. ", A::Next},
    SiftButton{"Keep Exp", " Mark this record to be written to the current 'keep' file. ", A::KeepExpress},
    SiftButton{"Keep", " Mark this record to be written to a 'keep' file. ", A::Keep},
    SiftButton{"Unkeep", " Reverse the Keep command for this record. ", A::Unkeep},
    SiftButton{"Wrt Kept", " Write the records marked for 'keeping' to the designated 'keep' files. ", A::WriteKept},
    SiftButton{"Order", " Move this whole record to a different position, by number. ", A::Order},
    SiftButton{"Ord Tog", " Switch forth and back between .ORD View and .PRO View. ", A::OrderToggle},
    SiftButton{"Wrt Ord", " Write a new file of the records in their new order. ", A::WriteOrder},
    SiftButton{"Help", " Read the online documentation for the sifter. ", A::Help},
    SiftButton{"Exit", " Quit using the sifter and return to the Zorvanta main screen. ", A::Exit},
};

struct LetterKey {
  char letter;  // the capital; the small letter answers as well
  SiftAction action;
};

constexpr std::array kLetters{
    LetterKey{'F', A::First}, LetterKey{'J', A::Jump},    LetterKey{'K', A::Keep},
    LetterKey{'L', A::Last},  LetterKey{'N', A::Next},    LetterKey{'O', A::Order},
    LetterKey{'P', A::Previous}, LetterKey{'W', A::WriteOrder},
};

// An Alt or Ctrl combination. The old key test compared the key code with the codes
// of both the capital and the small letter, and the small letters' codes are those of
// keys of the numeric pad and of F6: those keys answer too.
struct ComboKey {
  Qt::KeyboardModifier modifier;
  int key;
  int sharedKey;         // the key whose code is the small letter's
  bool sharedOnKeypad;   // that key is on the numeric pad
  SiftAction action;
};

constexpr std::array kCombos{
    ComboKey{Qt::AltModifier, Qt::Key_K, Qt::Key_Plus, true, A::KeepExpress},       // 107: pad +
    ComboKey{Qt::AltModifier, Qt::Key_O, Qt::Key_Slash, true, A::OrderToggle},      // 111: pad /
    ComboKey{Qt::ControlModifier, Qt::Key_O, Qt::Key_Slash, true, A::WriteOrder},   // 111: pad /
    ComboKey{Qt::ControlModifier, Qt::Key_U, Qt::Key_F6, false, A::Unkeep},         // 117: F6
    ComboKey{Qt::ControlModifier, Qt::Key_L, Qt::Key_Comma, true, A::KeepList},     // 108: pad separator
};

}  // namespace

std::span<const SiftMenuRow> SiftMenuRows() { return kMenu; }
std::span<const SiftButton> SiftButtons() { return kButtons; }

std::optional<SiftAction> SiftKeyAction(const QKeyEvent& key) {
  const Qt::KeyboardModifiers mods = key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier);
  const bool keypad = key.modifiers().testFlag(Qt::KeypadModifier);
  if ((mods & (Qt::ControlModifier | Qt::AltModifier)) == Qt::NoModifier) {
    if (key.key() == Qt::Key_F2 && mods == Qt::NoModifier) return A::FindText;
    if (key.key() == Qt::Key_F3 && mods == Qt::NoModifier) return A::RepeatSearch;
    // A typed letter, capital or small, whatever Shift and Caps Lock made of it.
    const QString typed = key.text();
    if (typed.size() != 1 || keypad) return std::nullopt;
    const char16_t c = typed.front().toUpper().unicode();
    for (const LetterKey& row : kLetters)
      if (c == static_cast<char16_t>(row.letter)) return row.action;
    return std::nullopt;
  }
  for (const ComboKey& row : kCombos) {
    if ((mods & ~Qt::ShiftModifier) != row.modifier) continue;
    if (key.key() == row.key && !keypad) return row.action;
    if (key.key() == row.sharedKey && keypad == row.sharedOnKeypad) return row.action;
  }
  return std::nullopt;
}

int32_t SiftCommandNumber(SiftAction action) {
  switch (action) {
    case A::Open: return 1600;
    case A::Keep: return 1603;
    case A::KeepExpress: return 1604;
    case A::Unkeep: return 1605;
    case A::Order: return 1606;
    case A::WriteKept: return 1607;
    case A::WriteOrder: return 1608;
    case A::Jump: return 1609;
    case A::FindText: return 1610;
    case A::RepeatSearch: return 1611;
    case A::Dos: return 3000;
    default: return 0;
  }
}

}  // namespace zv::forms
