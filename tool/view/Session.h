/** @file
  A board in a window, from its first view to the last.
**/

#pragma once

#include <nlohmann/json.hpp>

namespace board_view {

/// Shows what is wanted, a request with "stick" beside its other fields, until the user leaves.
/// Lines on the standard input change it meanwhile: {"board": PATH} shows another board, or the
/// same file anew; {"complaint": TEXT} puts a text over the view. Returns the exit code.
int RunSession(nlohmann::json wanted);

}  // namespace board_view
