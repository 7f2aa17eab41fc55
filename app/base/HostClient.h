/** @file
  The host, its clock and its log.
**/

#pragma once

#include "app/base/Firmware.h"

/// What the application keeps of its host for the whole run.
struct HostState {
  /// NULL until located; logging is silent meanwhile.
  OBV_PROTOCOL *Protocol;
  /// The host's record, valid once the protocol is located.
  OBV_SHARED_STATE *SharedState;
  /// The graphics output in use. The hot-plug notification may replace it, or
  /// set it to NULL, between any two instructions: read it once per use.
  EFI_GRAPHICS_OUTPUT_PROTOCOL *volatile Gop;
};

extern HostState gHost;

/// The host's free-running clock in milliseconds.
UINT64 HostTime();

/// Difference of two host times as the log's "%d" takes it.
inline UINT32 Elapsed(UINT64 from, UINT64 to) { return static_cast<UINT32>(to - from); }

/// Logs in an EDK2 print format ("%a" ASCII, "%S" UCS-2, "%r" status). Skipped
/// without a host or when the host offers no log.
template <typename... Arguments>
void Log(UINTN level, const CHAR8 *format, Arguments... arguments) {
  if (gHost.Protocol != nullptr && gHost.Protocol->DebugPrint != nullptr) {
    gHost.Protocol->DebugPrint(level, format, arguments...);
  }
}

template <typename... Arguments>
void LogInfo(const CHAR8 *format, Arguments... arguments) {
  Log(OBV_LOG_INFO, format, arguments...);
}

/// For failures, and for lines that must be recorded whatever the host filters.
template <typename... Arguments>
void LogError(const CHAR8 *format, Arguments... arguments) {
  Log(OBV_LOG_ERROR, format, arguments...);
}

/// The log line of a failed operation.
inline void LogOperationError(const CHAR8 *operation, EFI_STATUS status) {
  LogError("[%a] Error occurs: %r\n", operation, status);
}
