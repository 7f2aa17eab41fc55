// The surroundings of a measured run: a host with as many components as the contract allows.

#pragma once

#include "test/firmware/TestHost.h"

namespace bench {

inline constexpr size_t kComponents = 99;

/// A part of the host's, in the pixels of a 1920 x 1080 view.
struct Place {
  uint32_t X, Y;
};

/// Inside the outline of a component.
Place ComponentPlace(size_t index);

/// Between two rows of components, where nothing is; `step` runs along the gap.
Place EmptyPlace(size_t step);

/// Gives the host its components, the default board's picture and the reference host's fonts.
/// False when there is no default board.
bool Furnish(fake::TestHost *host);

/// The default board's picture as a PNG file; empty when there is no default board.
std::vector<uint8_t> DefaultPicture();

}  // namespace bench
