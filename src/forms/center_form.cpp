// CenterForm and CenterOnScreen for Qt windows.
#include "forms/center_form.h"

#include <QScreen>
#include <QWidget>

#include "forms/settings_store.h"

namespace zv::forms {

FormPlace CenterFormPlace(const CenterFormInputs& in) {
  FormPlace p;
  p.left = in.paneLeft + in.mainLeft + 200;
  p.top = in.tbBackgroundHeight + in.mainTop + 750;
  if (p.left < 200)
    p.left = 200;
  else if (in.screenWidth - p.left < in.formWidth)
    p.left = in.screenWidth - in.formWidth - 200;
  if (p.top < 500)
    p.top = 500;
  else if (in.screenHeight - p.top < in.formHeight)
    p.top = in.screenHeight - in.formHeight - 200;
  return p;
}

namespace {

QSize screenSize(const QWidget& w) {
  const QScreen* screen = w.screen();
  return screen != nullptr ? screen->geometry().size() : QSize(1024, 768);
}

}  // namespace

void CenterForm(QWidget& form, const QWidget& frmMain) {
  CenterFormInputs in;
  if (const auto* pane = frmMain.findChild<QWidget*>(QStringLiteral("pnlPane")))
    in.paneLeft = PixelsToTwips(pane->mapTo(&frmMain, QPoint(0, 0)).x());
  if (const auto* strip = frmMain.findChild<QWidget*>(QStringLiteral("pnlTB_Background")))
    in.tbBackgroundHeight = PixelsToTwips(strip->height());
  in.mainLeft = PixelsToTwips(frmMain.x());
  in.mainTop = PixelsToTwips(frmMain.y());
  const QSize formSize = form.frameGeometry().size();
  in.formWidth = PixelsToTwips(formSize.width());
  in.formHeight = PixelsToTwips(formSize.height());
  const QSize screen = screenSize(frmMain);
  in.screenWidth = PixelsToTwips(screen.width());
  in.screenHeight = PixelsToTwips(screen.height());
  const FormPlace p = CenterFormPlace(in);
  form.move(TwipsToPixels(p.left), TwipsToPixels(p.top));
}

void CenterWindowOnScreen(QWidget& form) {
  const QSize screen = screenSize(form);
  const FormPlace p = CenterOnScreen(form.width(), form.height(), screen.width(), screen.height());
  form.move(p.left, p.top);
}

}  // namespace zv::forms
