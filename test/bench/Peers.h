// What the resampler is compared with. Nothing of EDK2 here: its macros do not go with the peers'
// headers.

#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "test/bench/Timing.h"

namespace bench {

/// Two pictures of 4 bytes a pixel, without gaps between rows.
struct Scaling {
  uint8_t *Source;
  size_t SourceWidth, SourceHeight;
  uint8_t *Target;
  size_t TargetWidth, TargetHeight;
};

/// The definition of the result, as anybody would write it down.
void PlainResample(const Scaling &scaling);

/// Bilinear scaling by pixman, libyuv and OpenCV, each in this thread alone. The pictures must
/// outlive them.
std::vector<Contender> ResamplerPeers(const Scaling &scaling);

}  // namespace bench
