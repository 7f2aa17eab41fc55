/** @file
  What fuzz targets share: reading the input, and stopping at a broken promise.

  Each target defines LLVMFuzzerTestOneInput, in which nothing outlives an input unless it says so.
  test/unit/run/FuzzCorpusTest.cpp replays the corpora with the ordinary compiler; there, each
  target's function has the name of its file.
**/

#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "test/firmware/Edk2.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace fuzz {

/// Ends the process; the text says which promise was broken.
[[noreturn]] inline void Stop(const std::string &text) {
  std::fprintf(stderr, "Broken promise: %s\n", text.c_str());
  std::fflush(nullptr);
  std::abort();
}

inline void Require(bool condition, const char *promise) {
  if (!condition) {
    Stop(promise);
  }
}

/// Takes values off the front of the input; behind its end everything is zero.
class Reader {
 public:
  Reader(const std::uint8_t *data, std::size_t size) : data_(data), left_(size) {}

  std::size_t Left() const { return left_; }

  void Fill(void *target, std::size_t size) {
    auto *bytes = static_cast<std::uint8_t *>(target);
    std::size_t taken = std::min(size, left_);
    std::fill(std::copy_n(data_, taken, bytes), bytes + size, 0);
    data_ += taken;
    left_ -= taken;
  }

  template <typename Value>
  Value Take() {
    Value value;
    Fill(&value, sizeof value);
    return value;
  }

  UINT8 Byte() { return Take<UINT8>(); }

  /// Up to `most` bytes, fewer at the input's end, on the heap and without a byte to spare.
  std::vector<UINT8> Bytes(std::size_t most) {
    std::vector<UINT8> bytes(std::min(most, left_));
    Fill(bytes.data(), bytes.size());
    return bytes;
  }

  /// A text whose length comes first: at most `most` units and a NUL.
  template <typename Unit>
  std::vector<Unit> Text(std::size_t most) {
    std::size_t length = std::min<std::size_t>({Take<UINT16>(), most, left_ / sizeof(Unit)});
    std::vector<Unit> text(length + 1);
    Fill(text.data(), length * sizeof(Unit));
    // A NUL inside ends the text; nothing stands behind it.
    text.resize(static_cast<std::size_t>(std::find(text.begin(), text.end(), 0) - text.begin()) +
                1);
    return text;
  }

 private:
  const std::uint8_t *data_;
  std::size_t left_;
};

}  // namespace fuzz
