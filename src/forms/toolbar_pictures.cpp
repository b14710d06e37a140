// The shapes the sifter's and the viewer's toolbar pictures share.
#include "forms/toolbar_pictures.h"

#include <QPainterPath>

namespace zv::forms {

void FillTriangle(QPainter& p, QPointF a, QPointF b, QPointF c) {
  QPainterPath path;
  path.moveTo(a);
  path.lineTo(b);
  path.lineTo(c);
  path.closeSubpath();
  p.fillPath(path, p.pen().color());
}

}  // namespace zv::forms
