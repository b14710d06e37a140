// frmMain's menu tree and its four toolbars, as data the window is built from.
#pragma once

#include <cstdint>
#include <span>

namespace zv::forms {

// What choosing a menu item or pressing a toolbar button does.
enum class UiAction {
  Submenu,       // a menu that opens a submenu
  Separator,
  Command,       // RunCommand(number)
  Filter,        // ResetFilterForm, then RunCommand(number)
  LabelCommand,  // the reset of frmRenumber, then RunCommand(number)
  Cover,         // RunCommand(number), then frmCover
  DialogOption,  // the filter that optDial chooses
  Settings,      // frmSettings
  Help,          // the manual
  About,         // frmAbout
};

// One row of the menu tree: level 0 is a menu of the bar, level 1 its items, level 2
// the items of a submenu above them.
struct MenuRow {
  int level;
  const char* name;     // objectName of the QMenu or QAction
  const char* caption;  // with its "&" accelerator
  UiAction action;
  int32_t number;       // the command number; 0 when there is none
};

std::span<const MenuRow> MenuRows();

struct ToolbarButton {
  const char* caption;
  UiAction action;
  int32_t number;
  const char* hint;  // pnlStatusMsg while the mouse is over the button
};

struct Toolbar {
  const char* name;     // cmdTB_Filt, ...: the buttons are named name + "_" + index
  const char* ribCaption;  // the ribTB button that shows it
  std::span<const ToolbarButton> buttons;
};

std::span<const Toolbar> Toolbars();

// optDial, in order: the caption and the menu command each one stands for; "DialogWeb"
// has none.
struct DialogOption {
  const char* caption;
  int32_t number;
};

std::span<const DialogOption> DialogOptions();

inline constexpr const char* kDialogOptionErrorTitle = "DIALOG Option Error";
inline constexpr const char* kDialogOptionErrorText =
    "The DIALOG filtering button was clicked, but no DIALOG filtering option is currently selected.";

}  // namespace zv::forms
