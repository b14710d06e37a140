// frmSift's menu tree, toolbar and window keys, as data the window is built from.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include <Qt>

class QKeyEvent;

namespace zv::forms {

// What a menu item, a toolbar button or a key of the sifter does.
enum class SiftAction {
  Submenu,
  Separator,
  Open,          // command 1600
  Dos,           // command 3000 of the main window
  Exit,          // leave the sifter
  Copy,
  Next,
  Previous,
  First,
  Last,
  Jump,          // command 1609
  Keep,          // command 1603
  KeepExpress,   // command 1604
  Unkeep,        // command 1605
  KeepList,      // show or hide the keep list
  WriteKept,     // command 1607
  Order,         // command 1606, refused in ".ORD View"
  OrderToggle,
  WriteOrder,    // command 1608
  FindText,      // command 1610
  RepeatSearch,  // command 1611
  Font,
  Help,
  About,
};

// Help contexts of the sifter's elements.
inline constexpr int kSiftHelpContext = 116;
inline constexpr int kSiftWindowContext = 120;
inline constexpr int kSiftKeepContext = 121;
inline constexpr int kSiftOrderContext = 122;

// Level 0 is a menu of the bar, level 1 its items.
struct SiftMenuRow {
  int level;
  const char* name;      // objectName of the QMenu or QAction
  const char* caption;   // with its "&" and its spacing, exactly
  SiftAction action;
  const char* shortcut;  // portable text of a QKeySequence, or null
  int helpContext;       // of a menu of the bar; 0 for its items
};

std::span<const SiftMenuRow> SiftMenuRows();

struct SiftButton {
  const char* caption;
  const char* hint;
  SiftAction action;
};

// cmdTB 0 to 13.
std::span<const SiftButton> SiftButtons();

// The window keys, seen before the element with the focus: plain letters by the
// character typed, Alt and Ctrl combinations by key, with the numeric pad's keys that
// share a code with a letter; F2 and F3. Nothing for any other key.
std::optional<SiftAction> SiftKeyAction(const QKeyEvent& key);

// The number RunCommand is given for an action, or 0 for one the window does itself.
int32_t SiftCommandNumber(SiftAction action);

}  // namespace zv::forms
