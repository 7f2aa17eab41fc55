/** @file
  One view, from the board to its picture.
**/

#pragma once

#include <nlohmann/json.hpp>

#include "tool/view/Request.h"

namespace board_view {

/// Shows the board in a process of its own until nothing changes any more, and returns the answer:
/// {"shot": ..., "measures": ...}, or {"error": ...}.
nlohmann::json View(const Request &request);

}  // namespace board_view
