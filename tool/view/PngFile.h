/** @file
  A screen as a PNG file.
**/

#pragma once

#include <string>

#include "tool/view/HostedMachine.h"

namespace board_view {

/// Writes the file, quickly rather than small; a ViewError says why it cannot.
void WritePng(const std::string &path, const Screen &screen);

}  // namespace board_view
