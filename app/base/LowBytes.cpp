#include "app/base/LowBytes.h"

#include "app/base/Firmware.h"

// Not UnicodeStrToAsciiStrS, which stops DEBUG firmware at a character beyond 0xFF; names and
// volume labels come from outside.
void CopyLowBytes(const CHAR16 *text, CHAR8 *output, UINTN size) {
  UINTN length = StrnLenS(text, size);
  if (length >= size) {
    return;
  }
  for (UINTN i = 0; i < length; ++i) {
    output[i] = static_cast<CHAR8>(text[i]);
  }
  output[length] = 0;
}
