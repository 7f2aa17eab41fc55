// Stands in front of an output's Blt: counts pixels and the time that transfers take.

#pragma once

#include "test/firmware/Edk2.h"

namespace bench {

class ScreenProbe {
 public:
  /// One at a time, for as long as the output is used.
  explicit ScreenProbe(EFI_GRAPHICS_OUTPUT_PROTOCOL *output);
};

}  // namespace bench
