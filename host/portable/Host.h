/** @file
  The host: one OBV_PROTOCOL with its shared state, its look, its fonts and its
  board. Everything it needs of the firmware is handed to it, so that the same
  host runs in a driver and in a test.
**/

#pragma once

#include "host/portable/HostRecord.h"

namespace obv_host {

/// Sets up a host without a board. services is copied. Until a board is used,
/// the slots that need one answer EFI_NOT_READY. The log slot works at once.
void InitializeHost(Host *host, const HostServices &services, const FontFile (&fonts)[kFaceCount]);

/// Checks the board binary and makes it the host's board. The bytes stay the
/// caller's and must outlive the host. A refused board is logged in one line,
/// with origin to say where it came from, and leaves the previous board in use.
[[nodiscard]] EFI_STATUS UseBoard(Host *host, const CHAR8 *origin, const void *data, UINTN size);

/// Gives back what the host allocated.
void ReleaseHost(Host *host);

}  // namespace obv_host
