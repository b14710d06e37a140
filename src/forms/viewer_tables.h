// frmFileView's menu tree and toolbar, as data the window is built from.
#pragma once

#include <span>

namespace zv::forms {

// What a menu item or a toolbar button of the viewer does.
enum class ViewerAction {
  Submenu,
  Separator,
  Open,  // command 2900
  Dos,   // command 3000 of the main window
  Split,
  Exit,
  Copy,
  FindText,
  RepeatSearch,
  JumpToLine,
  RecordStepper,
  Top,
  Bottom,
  Font,
  Help,
  About,
};

// Help contexts of the viewer and of its Split dialog.
inline constexpr int kViewerHelpContext = 130;
inline constexpr int kSplitHelpContext = 131;

// Level 0 is a menu of the bar, level 1 its items.
struct ViewerMenuRow {
  int level;
  const char* name;     // objectName of the QMenu or QAction
  const char* caption;  // with its "&", exactly
  ViewerAction action;
};

std::span<const ViewerMenuRow> ViewerMenuRows();

// cmdTB(index): the picture's caption under it, what it does, and its hint.
struct ViewerButton {
  const char* caption;
  ViewerAction action;
  const char* hint;
};

std::span<const ViewerButton> ViewerButtons();

}  // namespace zv::forms
