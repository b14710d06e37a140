// Small helpers of the program's own: centring, base names, replacing text.
#include "core/brindle.h"

namespace zv {

FormPlace CenterOnScreen(int32_t formWidth, int32_t formHeight, int32_t screenWidth, int32_t screenHeight) {
  return FormPlace{(screenWidth - formWidth) / 2, (screenHeight - formHeight) / 2};
}

std::string BaseName(std::string_view path) {
  constexpr std::string_view kStops = "\\/:";
  const std::size_t stop = path.find_last_of(kStops);
  const std::string_view name = stop == std::string_view::npos ? path : path.substr(stop + 1);
  if (path.find('.') == std::string_view::npos) return std::string(name);
  // The walk from the end meets the name's last dot, or reaches the stop first: then
  // the only dots were in folder names and nothing is kept.
  const std::size_t dot = name.rfind('.');
  if (dot == std::string_view::npos) return {};
  return std::string(name.substr(0, dot));
}

void ReplaceAll(std::string& text, std::string_view find, std::string_view replacement) {
  if (find.empty()) return;
  for (std::size_t p = text.find(find); p != std::string::npos; p = text.find(find, p + replacement.size()))
    text.replace(p, find.size(), replacement);
}

}  // namespace zv
