// Draws the fourteen toolbar pictures of the sifter: navigation arrows, keep pages,
// order lists, help and exit. Up they are drawn flat; down they are coloured and
// pressed one pixel in.
#include "forms/sift_pictures.h"

#include <QPainterPath>

#include "forms/toolbar_pictures.h"

namespace zv::forms {

namespace {

// A sheet with a folded corner, at the left of the picture.
void page(QPainter& p) {
  QPainterPath sheet;
  sheet.moveTo(4, 3);
  sheet.lineTo(14, 3);
  sheet.lineTo(18, 7);
  sheet.lineTo(18, 22);
  sheet.lineTo(4, 22);
  sheet.closeSubpath();
  p.fillPath(sheet, kPicturePaper);
  p.drawPath(sheet);
  for (int y = 10; y <= 18; y += 4) p.drawLine(QPointF(7, y), QPointF(15, y));
}

void check(QPainter& p, qreal dx, qreal dy) {
  QPen pen = p.pen();
  pen.setWidthF(2.4);
  p.save();
  p.setPen(pen);
  p.drawPolyline(QPolygonF{{12 + dx, 15 + dy}, {15.5 + dx, 19 + dy}, {22 + dx, 10 + dy}});
  p.restore();
}

void downArrowToTray(QPainter& p) {
  p.drawLine(QPointF(21, 8), QPointF(21, 17));
  FillTriangle(p, {17.5, 16}, {24.5, 16}, {21, 21});
  p.drawLine(QPointF(16, 23.5), QPointF(25, 23.5));
}

void listLines(QPainter& p) {
  for (int y = 5; y <= 21; y += 4) p.drawLine(QPointF(3, y), QPointF(13, y));
}

void draw(QPainter& p, int index) {
  const qreal mid = kSiftPictureSize / 2.0;
  switch (index) {
    case 0: {  // Jump: an arc over records to a page
      QPainterPath arc;
      arc.moveTo(3, 20);
      arc.cubicTo(4, 4, 18, 2, 20, 12);
      p.drawPath(arc);
      FillTriangle(p, {16, 11}, {24, 11}, {20, 17});
      p.drawRect(QRectF(16, 18, 8, 6));
      break;
    }
    case 1:  // First: a bar and an arrow to it
      p.fillRect(QRectF(5, 6, 3, 14), p.pen().color());
      FillTriangle(p, {8, mid}, {20, 6}, {20, 20});
      break;
    case 2:  // Last
      p.fillRect(QRectF(18, 6, 3, 14), p.pen().color());
      FillTriangle(p, {18, mid}, {6, 6}, {6, 20});
      break;
    case 3:  // Prev
      FillTriangle(p, {6, mid}, {19, 5}, {19, 21});
      break;
    case 4:  // Next
      FillTriangle(p, {20, mid}, {7, 5}, {7, 21});
      break;
    case 5:  // Keep Exp: a page kept twice over, at once
      page(p);
      check(p, -2, 0);
      check(p, 2, 0);
      break;
    case 6:  // Keep
      page(p);
      check(p, 0, 0);
      break;
    case 7: {  // Unkeep
      page(p);
      QPen pen = p.pen();
      pen.setWidthF(2.4);
      p.save();
      p.setPen(pen);
      p.drawLine(QPointF(13, 11), QPointF(22, 20));
      p.drawLine(QPointF(22, 11), QPointF(13, 20));
      p.restore();
      break;
    }
    case 8:  // Wrt Kept
      page(p);
      downArrowToTray(p);
      break;
    case 9:  // Order: one line of the list moves up or down
      listLines(p);
      p.drawLine(QPointF(20, 7), QPointF(20, 19));
      FillTriangle(p, {16, 9}, {24, 9}, {20, 3});
      FillTriangle(p, {16, 17}, {24, 17}, {20, 23});
      break;
    case 10:  // Ord Tog: forth and back
      p.drawLine(QPointF(4, 9), QPointF(18, 9));
      FillTriangle(p, {17, 5}, {17, 13}, {23, 9});
      p.drawLine(QPointF(8, 18), QPointF(22, 18));
      FillTriangle(p, {9, 14}, {9, 22}, {3, 18});
      break;
    case 11:  // Wrt Ord
      listLines(p);
      downArrowToTray(p);
      break;
    case 12: {  // Help: a question mark in a ring
      p.drawEllipse(QRectF(3, 3, 20, 20));
      QFont f = p.font();
      f.setBold(true);
      f.setPixelSize(15);
      p.setFont(f);
      p.drawText(QRectF(3, 3, 20, 20), Qt::AlignCenter, QStringLiteral("?"));
      break;
    }
    case 13:  // Exit: out through a door
      p.drawRect(QRectF(4, 3, 10, 20));
      p.drawLine(QPointF(11, 13), QPointF(21, 13));
      FillTriangle(p, {19, 9}, {19, 17}, {24, 13});
      break;
    default:
      break;
  }
}

}  // namespace

QPixmap SiftPicture(int index, bool down) {
  return DrawToolbarPicture(kSiftPictureSize, down, 1.6, [index](QPainter& p) { draw(p, index); });
}

}  // namespace zv::forms
