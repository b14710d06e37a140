// The picture toolbar's strip and buttons, and their two states under the pointer.
#include "forms/picture_toolbar.h"

#include <QHBoxLayout>
#include <QVariant>

namespace zv::forms {

namespace {

void setCaptionColour(QWidget* w, const QColor& colour, bool disabledGroupToo) {
  QPalette p = w->palette();
  if (disabledGroupToo) {
    p.setColor(QPalette::ButtonText, colour);
  } else {
    // Not the disabled group: a disabled button keeps its greyed caption.
    p.setColor(QPalette::Active, QPalette::ButtonText, colour);
    p.setColor(QPalette::Inactive, QPalette::ButtonText, colour);
  }
  w->setPalette(p);
}

}  // namespace

QFrame* NewPictureStrip(QWidget* parent) {
  auto* strip = new QFrame(parent);
  strip->setObjectName(QStringLiteral("pnlToolbar"));
  strip->setFrameStyle(QFrame::Panel | QFrame::Raised);
  auto* row = new QHBoxLayout(strip);
  row->setContentsMargins(3, 3, 3, 3);
  row->setSpacing(1);
  return strip;
}

QToolButton* AddPictureButton(QFrame* strip, int index, const char* caption, const char* hint, PictureOf picture,
                              int pictureSize, bool disabledGroupToo) {
  auto* button = new QToolButton(strip);
  button->setObjectName(QStringLiteral("cmdTB_%1").arg(index));
  button->setText(QLatin1String(caption));
  button->setToolTip(QLatin1String(hint));
  button->setIcon(QIcon(picture(index, false)));
  button->setIconSize(QSize(pictureSize, pictureSize));
  button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  button->setAutoRaise(true);
  button->setFocusPolicy(Qt::NoFocus);
  button->setMinimumWidth(54);
  button->setProperty("pictureIndex", index);
  QFont f = button->font();
  f.setBold(true);
  button->setFont(f);
  setCaptionColour(button, kCaptionAtRest, disabledGroupToo);
  strip->layout()->addWidget(button);
  return button;
}

void EndPictureStrip(QFrame* strip) { static_cast<QHBoxLayout*>(strip->layout())->addStretch(); }

void HoverPictureButton(QToolButton* button, PictureOf picture, bool entering, bool disabledGroupToo) {
  const int index = button->property("pictureIndex").toInt();
  button->setIcon(QIcon(picture(index, entering)));
  setCaptionColour(button, entering ? kCaptionHovered : kCaptionAtRest, disabledGroupToo);
}

}  // namespace zv::forms
