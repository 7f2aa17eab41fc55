/** @file
  A board for pictures of the screen: few colours, every kind of component, every side of a
  callout. It never changes with the default board.
**/

#pragma once

#include <cstdint>
#include <vector>

namespace picture {

/// The board binary.
std::vector<uint8_t> TestBoard();

/// Where parts of the test board are shown at 1920 x 1080.
struct Spot {
  uint32_t X, Y;
};
inline constexpr Spot kProcessorSpot = {652, 428};

/// A board without components that shows this picture.
std::vector<uint8_t> BareBoard(const std::vector<uint8_t> &png);

}  // namespace picture
