/** @file
  What a host is made of.
**/

#pragma once

#include "host/portable/Appearance.h"
#include "host/portable/Board.h"

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

}  // namespace obv_host
