// Figures from a process of its own: the application's state and LVGL's are one-shot.

#pragma once

#include <functional>
#include <string>

#include "test/bench/ViewRun.h"

namespace bench {

/// Runs body, which fills in lines of a name and a number; false means that it failed, and then
/// nothing is returned and what it printed is shown.
Figures MeasureInChild(const std::string &what, const std::function<bool(std::string *)> &body);

}  // namespace bench
