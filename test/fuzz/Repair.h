/** @file
  Puts the checksums of an input right: without this the fuzzer would have to guess a CRC-32
  before it gets anywhere.
**/

#pragma once

#include "test/firmware/Edk2.h"

extern "C" {
#include <Library/BaseLib.h>
}

#include "host/portable/BoardFormat.h"

namespace fuzz {

inline constexpr std::size_t kPngSignatureSize = 8;

inline void PutBigEndian(std::vector<UINT8> *bytes, std::size_t at, UINT32 value) {
  for (std::size_t i = 0; i < 4; i++) {
    (*bytes)[at + i] = static_cast<UINT8>(value >> (24 - 8 * i));
  }
}

/// The checksums of the chunks of the PNG file that begins at `start`.
inline void RepairChunks(std::vector<UINT8> *file, std::size_t start = 0) {
  for (std::size_t at = start + kPngSignatureSize; at + 12 <= file->size();) {
    std::size_t length = std::size_t{(*file)[at]} << 24 | std::size_t{(*file)[at + 1]} << 16 |
                         std::size_t{(*file)[at + 2]} << 8 | (*file)[at + 3];
    if (length > file->size() - at - 12) {
      return;
    }
    PutBigEndian(file, at + 8 + length, CalculateCrc32(&(*file)[at + 4], length + 4));
    at += length + 12;
  }
}

/// The size and the checksum in the header of a board binary.
inline void RepairBoard(std::vector<UINT8> *bytes) {
  constexpr std::size_t kTotalSize = OFFSET_OF(obv_host::BoardHeader, TotalSize);
  if (bytes->size() < sizeof(obv_host::BoardHeader)) {
    return;
  }
  auto total = static_cast<UINT32>(bytes->size());
  std::memcpy(&(*bytes)[kTotalSize], &total, sizeof total);
  UINT32 checksum = CalculateCrc32(&(*bytes)[kTotalSize], bytes->size() - kTotalSize);
  std::memcpy(&(*bytes)[OFFSET_OF(obv_host::BoardHeader, Checksum)], &checksum, sizeof checksum);
}

}  // namespace fuzz
