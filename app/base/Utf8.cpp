#include "app/base/Utf8.h"

#include "app/base/Firmware.h"

namespace {

bool IsHighSurrogate(CHAR16 unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLowSurrogate(CHAR16 unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

/// Code point at text[*position], which moves behind it; false when malformed.
bool NextCodePoint(const CHAR16 *text, UINTN units, UINTN *position, UINT32 *codePoint) {
  CHAR16 unit = text[(*position)++];
  if (IsLowSurrogate(unit)) {
    return false;
  }
  if (!IsHighSurrogate(unit)) {
    *codePoint = unit;
    return true;
  }
  if (*position >= units || !IsLowSurrogate(text[*position])) {
    return false;
  }
  CHAR16 low = text[(*position)++];
  *codePoint = 0x10000 + ((static_cast<UINT32>(unit) - 0xD800) << 10) + (low - 0xDC00);
  return true;
}

/// Bytes of the code point's encoding, 1 to 4.
UINTN Encode(UINT32 codePoint, UINT8 bytes[4]) {
  if (codePoint < 0x80) {
    bytes[0] = static_cast<UINT8>(codePoint);
    return 1;
  }
  UINTN length = codePoint < 0x800 ? 2 : codePoint < 0x10000 ? 3 : 4;
  for (UINTN i = length - 1; i > 0; --i) {
    bytes[i] = static_cast<UINT8>(0x80 | (codePoint & 0x3F));
    codePoint >>= 6;
  }
  constexpr UINT8 kLead[] = {0, 0, 0xC0, 0xE0, 0xF0};
  bytes[0] = static_cast<UINT8>(kLead[length] | codePoint);
  return length;
}

}  // namespace

void ConvertUtf16ToUtf8(const CHAR16 *text, UINTN units, CHAR8 *output, UINTN capacity) {
  UINTN used = 0;
  UINTN position = 0;
  while (position < units) {
    UINT32 codePoint = 0;
    if (!NextCodePoint(text, units, &position, &codePoint)) {
      return;
    }
    UINT8 bytes[4];
    UINTN length = Encode(codePoint, bytes);
    if (used + length > capacity) {
      return;
    }
    CopyMem(output + used, bytes, length);
    used += length;
  }
  if (used < capacity) {
    output[used] = 0;
  }
}
