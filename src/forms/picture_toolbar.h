// What frmSift and frmFileView build alike from their tables: the menu tree, and the
// raised strip of picture buttons with their captions under the pictures.
#pragma once

#include <QColor>
#include <QFrame>
#include <QMenu>
#include <QMenuBar>
#include <QPixmap>
#include <QToolButton>

namespace zv::forms {

// The picture of a toolbar's button `index`: `down` is the set shown while the
// pointer is over the button.
using PictureOf = QPixmap (*)(int index, bool down);

// QBColor 3 and 5: a button's caption at rest and under the pointer.
inline const QColor kCaptionAtRest(0, 128, 128);
inline const QColor kCaptionHovered(128, 0, 128);

// The raised strip "pnlToolbar" and its row of buttons.
QFrame* NewPictureStrip(QWidget* parent);
// Adds "cmdTB_<index>": the bold caption at rest under picture(index, false), the hint
// as its tooltip, never the focus. `disabledGroupToo` colours the disabled caption too,
// which else stays grey.
QToolButton* AddPictureButton(QFrame* strip, int index, const char* caption, const char* hint, PictureOf picture,
                              int pictureSize, bool disabledGroupToo);
// The stretch after the last button.
void EndPictureStrip(QFrame* strip);

// The pointer entering or leaving a button: the picture of the other set, the caption
// of the other colour.
void HoverPictureButton(QToolButton* button, PictureOf picture, bool entering, bool disabledGroupToo);

// The strip with a button for each row of `buttons` (each with caption and hint);
// made(index, row, button) connects it.
template <typename Buttons, typename Made>
QFrame* BuildPictureToolbar(QWidget* parent, const Buttons& buttons, PictureOf picture, int pictureSize,
                            bool disabledGroupToo, Made made) {
  QFrame* strip = NewPictureStrip(parent);
  int i = 0;
  for (const auto& b : buttons) {
    made(i, b, AddPictureButton(strip, i, b.caption, b.hint, picture, pictureSize, disabledGroupToo));
    ++i;
  }
  EndPictureStrip(strip);
  return strip;
}

// The menus of a window from its table: a row of level 0 opens a menu of the bar, the
// rows after it are its items or separators, each under the row's name.
// menuMade(row, menu) and itemMade(row, action) finish them (separators are not given).
template <typename Rows, typename MenuMade, typename ItemMade>
void BuildMenuTree(QMenuBar* bar, const Rows& rows, MenuMade menuMade, ItemMade itemMade) {
  QMenu* open = nullptr;
  for (const auto& row : rows) {
    const QString name = QLatin1String(row.name);
    if (row.level == 0) {
      open = bar->addMenu(QLatin1String(row.caption));
      open->setObjectName(name);
      open->menuAction()->setObjectName(name);
      menuMade(row, open);
      continue;
    }
    const bool separator = row.action == decltype(row.action)::Separator;
    QAction* action = separator ? open->addSeparator() : open->addAction(QLatin1String(row.caption));
    action->setObjectName(name);
    if (!separator) itemMade(row, action);
  }
}

}  // namespace zv::forms
