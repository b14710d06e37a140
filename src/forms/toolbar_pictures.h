// The manner the toolbar pictures of the sifter and the viewer are drawn in: flat ink
// when up, coloured and pressed one pixel in when down.
#pragma once

#include <QColor>
#include <QPainter>
#include <QPixmap>

namespace zv::forms {

inline const QColor kPictureInkUp(31, 58, 95);
inline const QColor kPictureInkDown(128, 0, 128);
inline const QColor kPicturePaper(255, 255, 255);

// A square picture of `size`, transparent, with the pen of its set (`penWidth` wide,
// round ends and joins) for draw(painter) to draw with.
template <typename Draw>
QPixmap DrawToolbarPicture(int size, bool down, qreal penWidth, Draw draw) {
  QPixmap pixmap(size, size);
  pixmap.fill(Qt::transparent);
  QPainter p(&pixmap);
  p.setRenderHint(QPainter::Antialiasing);
  QPen pen(down ? kPictureInkDown : kPictureInkUp);
  pen.setWidthF(penWidth);
  pen.setCapStyle(Qt::RoundCap);
  pen.setJoinStyle(Qt::RoundJoin);
  p.setPen(pen);
  if (down) p.translate(1, 1);
  draw(p);
  p.end();
  return pixmap;
}

// A triangle filled with the pen's colour.
void FillTriangle(QPainter& p, QPointF a, QPointF b, QPointF c);

}  // namespace zv::forms
