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

struct Peer {
  std::string Name;
  /// The pictures must outlive what it returns.
  std::function<void()> (*Make)(const Scaling &scaling);
  /// Without AVX, whose state firmware does not save. The others are an outlook.
  bool MayRunInFirmware;
};

/// Bilinear scaling by pixman, OpenCV and libyuv, each in this thread alone. libyuv is there twice,
/// held to what may run in firmware and not; the others have no AVX for this task.
std::vector<Peer> ResamplerPeers();

}  // namespace bench
