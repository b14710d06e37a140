// The sifter's state between two of its commands, under the names the tools share.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zv {

inline constexpr std::string_view kProView = ".PRO View";
inline constexpr std::string_view kOrdView = ".ORD View";
// pnlViewMode's background in each view (0xRRGGBB).
inline constexpr uint32_t kProViewColor = 0xFFFFFF;
inline constexpr uint32_t kOrdViewColor = 0x80FFFF;

// The record file itself (gsProFile, gsBaseName, gsIndexFile) and gIndexRec, the
// record on display, stay in JobState with the other tools' names.
struct SiftState {
  // .PRO View: the record number on display. .ORD View: the position in glOrder.
  int32_t glCurRec = 0;
  // Records in the index: its length / 277.
  int32_t glRecCount = 0;
  // glOrder[p] is the record at position p of the user's order, for p from 1 to
  // glRecCount. Slot 0 serves no record; slot glRecCount + 1 is the spare that Order
  // shifts through. Empty while no file is open.
  std::vector<int32_t> glOrder;
  std::string gsSiftView{kProView};
  // The current keep file: empty until the first Keep, emptied by Write Kept
  // Records, and kept when the sifter is left (a later Keep Express uses it).
  std::string gsKeepFile;
  std::string gsSearchText;   // the text of the last Find Text
  int16_t giSiftKeepFlag = 0;   // 1: records were marked since the last Write Kept Records
  int16_t giSiftOrderFlag = 0;  // 1: Order was used since the last Write Order

  bool ordView() const { return gsSiftView == kOrdView; }
};

}  // namespace zv
