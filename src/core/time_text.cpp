// Timing panel texts.
#include "core/time_text.h"

#include <ctime>

#include "core/brindle.h"
#include "core/text.h"

namespace zv {

std::string TimeOfDayText() {
  const std::time_t now = std::time(nullptr);
  std::tm tm{};
  localtime_r(&now, &tm);
  return Num2Time(tm.tm_hour * 3600 + tm.tm_min * 60 + tm.tm_sec);
}

std::string ShowElapsed(std::string_view pnlStartTime, std::string_view pnlFinishTime) {
  return Num2Time(Time2Num(pnlFinishTime) - Time2Num(pnlStartTime));
}

}  // namespace zv
