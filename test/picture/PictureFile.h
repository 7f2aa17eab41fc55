/** @file
  Pictures of the screen as PNG files, and their comparison with the committed ones.
**/

#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tool/view/HostedMachine.h"

namespace picture {

using board_view::Screen;

/// The samples of a PNG file as they stand in it, four bytes a pixel. Ends the program when the
/// file does not decode.
std::vector<uint8_t> DecodeSamples(const std::vector<uint8_t> &file, uint32_t *width,
                                   uint32_t *height);

/// Fails the test when the screen differs in any pixel from test/picture/reference/<name>.png. The
/// screen and the difference are then left in the build folder, and the failure says where. With
/// BOARDSCOPE_UPDATE_REFERENCES=1 in the environment the file is written instead; nothing else
/// ever writes it.
void ExpectReference(const std::string &name, const Screen &screen);

}  // namespace picture
