#include "platform/ColorText.h"

#include "app/base/Firmware.h"

namespace {

constexpr UINTN kChannels = 3;
constexpr UINTN kAllOnes = static_cast<UINTN>(-1);

UINTN ParseChannel(const CHAR8 *part) {
  if (part == nullptr) {
    return kAllOnes;
  }
  UINTN value = 0;
  if (RETURN_ERROR(AsciiStrDecimalToUintnS(part, nullptr, &value))) {
    return kAllOnes;
  }
  if (value == 0 && RETURN_ERROR(AsciiStrHexToUintnS(part, nullptr, &value))) {
    return kAllOnes;
  }
  return value;
}

}  // namespace

UINT32 ParseColorText(const CHAR8 *text) {
  // One byte more than is read, so that a full field still ends.
  CHAR8 copy[OBV_COLOR_TEXT_SIZE + 1] = {};
  const CHAR8 *parts[kChannels] = {};
  if (text != nullptr) {
    CopyMem(copy, text, AsciiStrnLenS(text, OBV_COLOR_TEXT_SIZE));
    parts[0] = copy;
  }

  UINTN found = 1;
  for (CHAR8 *scan = copy; *scan != 0 && found < kChannels; ++scan) {
    if (*scan == ',') {
      *scan = 0;
      parts[found++] = scan + 1;
    }
  }

  UINT32 color = 0;
  for (const CHAR8 *part : parts) {
    color = color << 8 | (ParseChannel(part) & 0xFF);
  }
  return color;
}
