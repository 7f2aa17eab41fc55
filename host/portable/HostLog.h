/** @file
  The host's log.
**/

#pragma once

#include "host/portable/HostRecord.h"

namespace obv_host {

/// The one host whose DebugPrint is wired: that slot takes no This.
struct HostLog {
  const HostServices *Services;
};
extern HostLog gHostLog;

/// Longest log line, with its line feed; a longer message is cut.
inline constexpr UINTN kLogLineSize = 1024;

/// The log slot, for the host's own lines.
VOID EFIAPI HostDebugPrint(UINTN errorLevel, const CHAR8 *format, ...);

}  // namespace obv_host
