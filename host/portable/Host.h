/** @file
  The host: one OBV_PROTOCOL with its shared state, its look, its fonts and its
  board. Everything it needs of the firmware is handed to it, so that the same
  host runs in a driver and in a test.
**/

#pragma once

#include "host/portable/Appearance.h"
#include "host/portable/BoardReader.h"

namespace obv_host {

/// What the host takes from its surroundings. Context is handed back to each.
struct HostServices {
  void *Context;
  /// Milliseconds of a free-running clock.
  UINT64 (*ReadClock)(void *context);
  /// One message, size bytes long, the last of them the only line feed.
  void (*WriteLog)(void *context, const CHAR8 *line, UINTN size);
  /// The output to draw on; an error status when there is none.
  EFI_STATUS (*FindGop)(void *context, EFI_GRAPHICS_OUTPUT_PROTOCOL **gop);
  /// Memory that lives as long as the host; NULL when there is none.
  void *(*Allocate)(void *context, UINTN size);
  void (*Free)(void *context, void *memory);
};

/// A font file in memory, owned by whoever set up the host. Data is NULL for a
/// face that the host does not have.
struct FontFile {
  const void *Data;
  UINTN Size;
};

/// Protocol is the first member: slots get their host back from This.
struct Host {
  OBV_PROTOCOL Protocol;
  OBV_SHARED_STATE Shared;
  OBV_CONFIG Config;
  HostServices Services;
  FontFile Fonts[kFaceCount];
  Board ActiveBoard;
  /// ActiveBoard's looks and component records, owned by the host.
  BoardStyle *Styles;
  OBV_COMPONENT *Components;
};

/// The one host whose DebugPrint is wired: that slot takes no This.
struct HostLog {
  const HostServices *Services;
};
extern HostLog gHostLog;

/// Longest log line, with its line feed; a longer message is cut.
inline constexpr UINTN kLogLineSize = 1024;

/// Sets up a host without a board. services is copied. Until a board is used,
/// the slots that need one answer EFI_NOT_READY. The log slot works at once.
void InitializeHost(Host *host, const HostServices &services, const FontFile (&fonts)[kFaceCount]);

/// Checks the board binary and makes it the host's board. The bytes stay the
/// caller's and must outlive the host. A refused board is logged in one line,
/// with origin to say where it came from, and leaves the previous board in use.
[[nodiscard]] EFI_STATUS UseBoard(Host *host, const CHAR8 *origin, const void *data, UINTN size);

/// Gives back what the host allocated.
void ReleaseHost(Host *host);

/// The log slot, for the host's own lines.
VOID EFIAPI HostDebugPrint(UINTN errorLevel, const CHAR8 *format, ...);

}  // namespace obv_host
