/** @file
  Operations on the firmware's graphics outputs (UEFI Graphics Output Protocol).

  No list of outputs survives a call; each operation enumerates afresh, so that
  outputs that came or went are taken into account. Failures are logged under
  the operation's name.
**/

#pragma once

#include "app/base/Firmware.h"

inline constexpr UINTN kMaxGops = 256;

/// What FindGopMode answers when no mode has the resolution.
inline constexpr UINT32 kNoGopMode = 0xFFFFFFFF;

/// Outputs in handle order; the first NULL ends the list.
struct GopList {
  EFI_GRAPHICS_OUTPUT_PROTOCOL *Outputs[kMaxGops];
};

/// Hands the outputs to visit, in order; NULL ends the list.
template <typename Visitor>
void ForEachOutput(const GopList &list, Visitor visit) {
  for (EFI_GRAPHICS_OUTPUT_PROTOCOL *gop : list.Outputs) {
    if (gop == nullptr) {
      return;
    }
    visit(gop);
  }
}

/// Fills the zeroed list with every output. Returns the status of the handle
/// search or else of the last handle's HandleProtocol: when the last handle
/// fails, the whole enumeration counts as failed.
[[nodiscard]] EFI_STATUS GetAllGopPrrotocol(GopList *list);

/// The handle that an output stands on; NULL for none, and without memory for the search.
[[nodiscard]] EFI_HANDLE FindGopHandle(const EFI_GRAPHICS_OUTPUT_PROTOCOL *gop);

/// The lowest mode of this resolution in pixels, or kNoGopMode. Height comes
/// first. A mode that cannot be queried does not match.
[[nodiscard]] UINT32 FindGopMode(EFI_GRAPHICS_OUTPUT_PROTOCOL *gop, UINT16 height, UINT16 width);

/// Puts every output that has such a mode into it.
[[nodiscard]] EFI_STATUS SetAllGopMode(UINT16 height, UINT16 width);

/// Copies the output's whole screen, rows packed, into *buffer, which is
/// allocated from the pool when it is NULL and is never freed here.
[[nodiscard]] EFI_STATUS BackupScreenShots(EFI_GRAPHICS_OUTPUT_PROTOCOL *gop,
                                           EFI_GRAPHICS_OUTPUT_BLT_PIXEL **buffer);

/// Makes every output black.
[[nodiscard]] EFI_STATUS ClearAllScreen();

/// Puts the saved setup screen back on the output in use, or on all outputs
/// when the host asks for it. The size is that of the previous resolution,
/// whatever the arguments.
[[nodiscard]] EFI_STATUS RecoverScreenContent(UINT16 height, UINT16 width);
