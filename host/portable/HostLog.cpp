#include "host/portable/Host.h"

namespace obv_host {

HostLog gHostLog;

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
  // Readers of the log rely on one line per call, whatever the message.
  if (size == 0 || line[size - 1] != '\n') {
    line[size] = '\n';
    size++;
  }
  gHostLog.Services->WriteLog(gHostLog.Services->Context, line, size);
}

}  // namespace obv_host
