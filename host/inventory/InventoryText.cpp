#include "host/inventory/InventoryText.h"

namespace obv_host {
namespace {

constexpr UINTN kLineSize = 512;

}  // namespace

void EFIAPI AddLine(InventoryText *text, const CHAR8 *format, ...) {
  CHAR8 line[kLineSize];
  VA_LIST arguments;
  VA_START(arguments, format);
  UINTN length = AsciiVSPrint(line, sizeof(line), format, arguments);
  VA_END(arguments);
  if (text->Full || length + 1 > text->Size - text->Length) {
    text->Full = true;
    return;
  }
  CopyMem(text->Bytes + text->Length, line, length);
  text->Bytes[text->Length + length] = '\n';
  text->Length += length + 1;
}

bool QuoteName(const CHAR8 *name, CHAR8 *quoted, UINTN size) {
  UINTN length = 0;
  for (UINTN i = 0; name[i] != '\0'; ++i) {
    bool escaped = name[i] == '"' || name[i] == '\\';
    if (name[i] < 0x20 || name[i] > 0x7E || length + 3 > size) {
      return false;
    }
    if (escaped) {
      quoted[length++] = '\\';
    }
    quoted[length++] = name[i];
  }
  quoted[length] = '\0';
  return length != 0;
}

}  // namespace obv_host
