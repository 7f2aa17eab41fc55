#include "setup/portable/Language.h"

namespace obv_setup {
namespace {

/// Characters before the first hyphen, or all.
UINTN PrimaryLength(const CHAR8 *code, UINTN limit) {
  UINTN length = 0;
  while (length < limit && code[length] != 0 && code[length] != '-') {
    ++length;
  }
  return length;
}

UINTN LengthWithin(const CHAR8 *text, UINTN limit) {
  UINTN length = 0;
  while (length < limit && text[length] != 0) {
    ++length;
  }
  return length;
}

bool SameText(const CHAR8 *left, UINTN leftLength, const CHAR8 *right, UINTN rightLength) {
  return leftLength == rightLength && leftLength != 0 && AsciiStrnCmp(left, right, leftLength) == 0;
}

}  // namespace

UINT8 LanguageIndex(const CHAR8 *data, UINTN size) {
  UINTN length = data == nullptr ? 0 : LengthWithin(data, size);
  for (UINT8 i = 0; i < kLanguageCount; ++i) {
    if (SameText(data, length, kLanguageCodes[i], AsciiStrLen(kLanguageCodes[i]))) {
      return i;
    }
  }
  for (UINT8 i = 0; i < kLanguageCount; ++i) {
    const CHAR8 *code = kLanguageCodes[i];
    if (length != 0 &&
        SameText(data, PrimaryLength(data, length), code, PrimaryLength(code, AsciiStrLen(code)))) {
      return i;
    }
  }
  return 0;
}

}  // namespace obv_setup
