/** @file
  A whole run with a sequence of keys, pointer reports, plugging and passing time.
**/

#include "test/fuzz/InputSession.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  static fuzz::LateFork fork([](fuzz::LateFork *self) { fuzz::InputSession(self).Run(); });
  fork.Try(data, size);
  return 0;
}
