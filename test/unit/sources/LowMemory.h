/** @file
  Memory whose addresses have 32 bits, as old firmware tables state them.
**/

#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace obv_host {

/// Pages for one block. It ends with the last of them, and behind that no memory is: a read beyond
/// the block ends the test.
class LowMemory {
 public:
  LowMemory() = default;
  LowMemory(const LowMemory &) = delete;
  LowMemory &operator=(const LowMemory &) = delete;
  ~LowMemory() { Release(); }

  /// Puts these bytes in the place of the last block; returns where they are.
  uint8_t *Place(const std::vector<uint8_t> &bytes);

 private:
  void Release();

  void *base_ = nullptr;
  size_t size_ = 0;
};

}  // namespace obv_host
