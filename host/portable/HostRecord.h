/** @file
  What a host is made of.
**/

#pragma once

#include "host/portable/Appearance.h"
#include "host/portable/Board.h"
#include "host/portable/Facts.h"
#include "host/portable/FormSearch.h"

namespace obv_host {

/// What the host takes from its surroundings. Context is handed back to each.
struct HostServices {
  void *Context;
  /// Milliseconds of a free-running clock.
  UINT64 (*ReadClock)(void *context);
  /// One message, size bytes long, the last of them the only line feed.
  void (*WriteLog)(void *context, const CHAR8 *line, UINTN size);
  /// The output to draw on, and first of all the time to connect what the board
  /// names; an error status when there is none.
  EFI_STATUS (*FindGop)(void *context, EFI_GRAPHICS_OUTPUT_PROTOCOL **gop);
  /// Memory that lives as long as the host; NULL when there is none.
  void *(*Allocate)(void *context, UINTN size);
  void (*Free)(void *context, void *memory);
  /// A view starts: the time to read what the board names. NULL together with
  /// AskHardware, for a host that knows no hardware.
  void (*MeetHardware)(void *context) = nullptr;
  /// What the hardware of this component of the board says; the answer to
  /// QueryComponentStatus. Takes no longer than a look at one device.
  EFI_STATUS (*AskHardware)(void *context, UINTN component, Facts *facts) = nullptr;
  /// Finds the option of a token in the setup and has it opened after the run;
  /// *option is its place. EFI_UNSUPPORTED when there is no setup. May be NULL.
  EFI_STATUS (*FindOption)(void *context, UINT16 token, OBV_SETUP_OPTION *option) = nullptr;
  /// The look that the user chose, asked at each start of the view. NULL for a
  /// host that only has the usual one.
  LookChoice (*ReadLook)(void *context) = nullptr;
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
  /// The latest answer of hardware: 12 KB that do not belong on a stack.
  Facts Told;
};

}  // namespace obv_host
