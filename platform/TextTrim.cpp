#include "platform/TextTrim.h"

#include "app/base/Firmware.h"

CHAR16 *TrimTrailingWhitespace(CHAR16 *text) {
  if (text == nullptr) {
    return nullptr;
  }
  UINTN length = StrLen(text);
  while (length > 0 && (text[length - 1] == u' ' || text[length - 1] == u'\n')) {
    text[--length] = 0;
  }
  return text;
}
