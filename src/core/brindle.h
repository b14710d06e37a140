// Small helpers of the program's own: centring, base names, replacing text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zv {

struct FormPlace {
  int32_t left = 0;
  int32_t top = 0;
};

// Where CenterOnScreen puts a form of the given size in normal window state:
// (screen - form) / 2 on each axis. Callers leave minimized and maximized forms put.
FormPlace CenterOnScreen(int32_t formWidth, int32_t formHeight, int32_t screenWidth, int32_t screenHeight);

// A file's name without folder and without last extension. Walking from the end, the
// first "." met is dropped with all right of it; the walk stops at "\", "/" or ":".
// C:\DIR\A.B.LOG gives A.B; a path whose only dot is in a folder name gives "".
// Without any "." the result is the name after the last "\", "/" or ":".
std::string BaseName(std::string_view path);

// Replaces every occurrence of `find` in `text`, case-sensitive, going on just behind
// each replacement so that replaced text is never searched again. An empty `find`
// changes nothing.
void ReplaceAll(std::string& text, std::string_view find, std::string_view replacement);

}  // namespace zv
