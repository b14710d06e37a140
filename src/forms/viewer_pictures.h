// The pictures of frmFileView's toolbar, in their two states.
#pragma once

#include <QPixmap>

namespace zv::forms {

// The picture of the viewer's cmdTB(index): `down` is the set shown while the pointer
// is over the button.
QPixmap ViewerPicture(int index, bool down);

inline constexpr int kViewerPictureSize = 26;

}  // namespace zv::forms
