// Where CenterForm puts a dialog over the main window's work area, in twips.
#pragma once

#include <cstdint>

#include "core/brindle.h"

class QWidget;

namespace zv::forms {

struct CenterFormInputs {
  int32_t paneLeft = 0;         // left of pnlPane within frmMain
  int32_t mainLeft = 0;         // left of frmMain on the screen
  int32_t mainTop = 0;          // top of frmMain on the screen
  int32_t tbBackgroundHeight = 0;  // height of pnlTB_Background
  int32_t formWidth = 0;
  int32_t formHeight = 0;
  int32_t screenWidth = 0;
  int32_t screenHeight = 0;
};

// 200 twips right of the pane and 750 below the toolbar strip, kept at least 200
// from the left and 500 from the top, and pulled back 200 inside the far edge when
// the form would pass it.
FormPlace CenterFormPlace(const CenterFormInputs& in);

// CenterForm(form): moves `form` there, measured on `frmMain`'s pnlPane and
// pnlTB_Background and on the screen frmMain is on.
void CenterForm(QWidget& form, const QWidget& frmMain);

// CenterOnScreen for a window: (screen - form) / 2 on each axis.
void CenterWindowOnScreen(QWidget& form);

}  // namespace zv::forms
