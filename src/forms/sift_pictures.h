// The pictures of frmSift's toolbar, in their two states.
#pragma once

#include <QPixmap>

namespace zv::forms {

// The picture of cmdTB(index): `down` is the set imgDN, shown while the pointer is
// over the button, else the set imgUP.
QPixmap SiftPicture(int index, bool down);

inline constexpr int kSiftPictureSize = 26;

}  // namespace zv::forms
