/** @file
  The application for a window: its own side of the wire.
**/

#pragma once

#include <nlohmann/json.hpp>

namespace board_view {

/// Runs the application on the clock of this machine until it is left. wanted is a request with
/// "stick", the folder that gets screenshots, beside its other fields. What the state in the shared
/// memory says is taken over at the start, and told anew at the end. Returns the exit code.
int RunLive(const nlohmann::json &wanted);

}  // namespace board_view
