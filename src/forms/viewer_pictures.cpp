// Draws the thirteen toolbar pictures of the file viewer in the sifter's manner: flat
// when up, coloured and pressed one pixel in when down.
#include "forms/viewer_pictures.h"

#include <QPainterPath>

#include "forms/sift_pictures.h"
#include "forms/toolbar_pictures.h"

namespace zv::forms {

namespace {

// A sheet of text at (x, y), w by h.
void sheet(QPainter& p, qreal x, qreal y, qreal w, qreal h) {
  p.fillRect(QRectF(x, y, w, h), kPicturePaper);
  p.drawRect(QRectF(x, y, w, h));
  for (qreal ly = y + 4; ly < y + h - 2; ly += 3.5) p.drawLine(QPointF(x + 2.5, ly), QPointF(x + w - 2.5, ly));
}

void lens(QPainter& p, qreal x, qreal y) {
  QPen pen = p.pen();
  p.save();
  pen.setWidthF(2.2);
  p.setPen(pen);
  p.setBrush(kPicturePaper);
  p.drawEllipse(QRectF(x, y, 9, 9));
  p.drawLine(QPointF(x + 8, y + 8), QPointF(x + 12.5, y + 12.5));
  p.restore();
}

void bold(QPainter& p, const QRectF& r, const QString& text, int pixels) {
  QFont f = p.font();
  f.setBold(true);
  f.setPixelSize(pixels);
  p.setFont(f);
  p.drawText(r, Qt::AlignCenter, text);
}

void draw(QPainter& p, int index) {
  switch (index) {
    case 0:  // Open: a sheet coming out of a folder
      sheet(p, 8, 2, 12, 14);
      p.fillRect(QRectF(3, 12, 20, 11), kPicturePaper);
      p.drawRect(QRectF(3, 12, 20, 11));
      p.drawLine(QPointF(3, 12), QPointF(8, 9));
      break;
    case 1:  // DOS: a prompt on a screen
      p.drawRect(QRectF(2, 4, 22, 17));
      bold(p, QRectF(2, 4, 22, 16), QStringLiteral(">_"), 11);
      break;
    case 2: {  // Split: one sheet cut into two
      sheet(p, 3, 3, 9, 20);
      sheet(p, 15, 3, 9, 20);
      QPen pen = p.pen();
      p.save();
      pen.setStyle(Qt::DashLine);
      pen.setWidthF(1.2);
      p.setPen(pen);
      p.drawLine(QPointF(1, 13), QPointF(25, 13));
      p.restore();
      break;
    }
    case 3:  // Copy: two sheets
      sheet(p, 3, 3, 12, 15);
      sheet(p, 10, 8, 12, 15);
      break;
    case 4:  // Find Text
      sheet(p, 3, 2, 14, 19);
      lens(p, 10, 10);
      break;
    case 5:  // Repeat Search: the lens and a turning arrow
      lens(p, 10, 10);
      p.drawArc(QRectF(2, 2, 14, 14), 30 * 16, 250 * 16);
      FillTriangle(p, {13, 1}, {18, 6}, {12, 8});
      break;
    case 6:  // Record Stepper: labelled records, one after another
      for (int k = 0; k < 3; ++k) {
        p.drawLine(QPointF(4, 5 + 7 * k), QPointF(13, 5 + 7 * k));
        p.drawLine(QPointF(6, 8 + 7 * k), QPointF(13, 8 + 7 * k));
      }
      FillTriangle(p, {23, 13}, {16, 7}, {16, 19});
      break;
    case 7:  // Jump to Line: a number and an arrow to it
      bold(p, QRectF(1, 1, 14, 12), QStringLiteral("#"), 12);
      p.drawLine(QPointF(8, 14), QPointF(8, 21));
      p.drawLine(QPointF(8, 21), QPointF(17, 21));
      FillTriangle(p, {16, 17}, {16, 25}, {22, 21});
      break;
    case 8:  // Top: an arrow up to a bar
      p.fillRect(QRectF(5, 4, 16, 3), p.pen().color());
      FillTriangle(p, {13, 8}, {5, 20}, {21, 20});
      break;
    case 9:  // Bottom
      p.fillRect(QRectF(5, 19, 16, 3), p.pen().color());
      FillTriangle(p, {13, 18}, {5, 6}, {21, 6});
      break;
    case 10:  // Font
      bold(p, QRectF(0, 0, 16, 22), QStringLiteral("A"), 18);
      bold(p, QRectF(11, 8, 14, 16), QStringLiteral("a"), 13);
      break;
    default:
      break;
  }
}

}  // namespace

QPixmap ViewerPicture(int index, bool down) {
  // Help and Exit are the sifter's own pictures.
  if (index == 11) return SiftPicture(12, down);
  if (index == 12) return SiftPicture(13, down);
  return DrawToolbarPicture(kViewerPictureSize, down, 1.4, [index](QPainter& p) { draw(p, index); });
}

}  // namespace zv::forms
