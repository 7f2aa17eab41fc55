// One run of the real application, with 99 components, the default board's picture and the
// reference host's fonts; measured from its start to its end.

#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace bench {

struct Resolution {
  uint32_t Width, Height;
};

/// Seconds, bytes and pixel counts by name.
using Figures = std::map<std::string, double>;

/// Runs in a process of its own; empty, with a message printed, when that goes wrong.
Figures MeasureView(const Resolution &resolution);

/// The libraries alone: lodepng decoding the same picture ("decode"), FreeType loading the same
/// 159 faces ("faces").
Figures MeasureLibraries();

}  // namespace bench
