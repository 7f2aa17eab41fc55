/** @file
  Where everything stands on the screen.
**/

#pragma once

#include <nlohmann/json.hpp>

namespace board_view {

/// Boxes of the view's objects as [x, y, width, height], in pixels, to be called while the
/// application runs. Each component gets the focus once, for its panel, so nothing is to be shown
/// after that.
nlohmann::json MeasureView();

}  // namespace board_view
