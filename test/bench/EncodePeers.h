// What the screenshot's encoder is compared with. Nothing of EDK2 here: its macros do not go with
// the peers' headers.

#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace bench {

/// A picture of red, green, blue and alpha bytes, without gaps between rows.
struct RgbaPicture {
  uint32_t Width, Height;
  std::vector<uint8_t> Bytes;
};

struct Encoder {
  std::string Name;
  /// The PNG file; empty when the library refuses.
  std::function<std::vector<uint8_t>(const RgbaPicture &)> Encode;
};

/// libspng and libpng as they come, without a setting changed.
std::vector<Encoder> EncodePeers();

}  // namespace bench
