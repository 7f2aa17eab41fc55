#include "view/InfoLine.h"

#include "app/base/Firmware.h"

namespace {

constexpr UINTN kLineSize = 290;

}  // namespace

void AppendInfoLine(CHAR8 *text, UINTN size, const OBV_COMPONENT_INFO &line, UINT32 labelColor) {
  CHAR8 formatted[kLineSize];
  if (line.Label[0] == 0) {
    AsciiSPrintUnicodeFormat(formatted, sizeof(formatted), Ucs2(u"%S\n"), line.Value);
  } else {
    AsciiSPrintUnicodeFormat(formatted, sizeof(formatted), Ucs2(u"#%.6x %S: #%S\n"), labelColor,
                             line.Label, line.Value);
  }
  (void)AsciiStrCatS(text, size, formatted);
}
