#include "host/portable/HostLog.h"

namespace obv_host {

HostLog gHostLog;

namespace {

/// EDK2 prints every line feed of a format with a carriage return before it.
UINTN DropCarriageReturns(CHAR8 *text, UINTN length) {
  UINTN kept = 0;
  for (UINTN i = 0; i < length; ++i) {
    if (text[i] != '\r' || text[i + 1] != '\n') {
      text[kept] = text[i];
      ++kept;
    }
  }
  return kept;
}

}  // namespace

VOID EFIAPI HostDebugPrint(UINTN errorLevel, const CHAR8 *format, ...) {
  (void)errorLevel;  // The reference host records every level.
  if (gHostLog.Services == nullptr || format == nullptr) {
    return;
  }
  CHAR8 line[kLogLineSize];
  VA_LIST arguments;
  VA_START(arguments, format);
  UINTN size = AsciiVSPrint(line, sizeof(line) - 1, format, arguments);
  VA_END(arguments);
  size = DropCarriageReturns(line, size);
  // Readers of the log rely on one line per call, whatever the message.
  if (size == 0 || line[size - 1] != '\n') {
    line[size] = '\n';
    ++size;
  }
  gHostLog.Services->WriteLog(gHostLog.Services->Context, line, size);
}

}  // namespace obv_host
