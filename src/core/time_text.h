// The time of day as the timing panels show it, and the elapsed time between two.
#pragma once

#include <string>
#include <string_view>

namespace zv {

// The time of day as the timing panels show it, "hh:mm:ss".
std::string TimeOfDayText();

// ShowElapsed: Num2Time of the finish text's seconds minus the start text's. A job
// that crosses midnight gives a negative difference, as it always has.
std::string ShowElapsed(std::string_view pnlStartTime, std::string_view pnlFinishTime);

}  // namespace zv
