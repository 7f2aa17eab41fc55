/** @file
  The host's records, taken in as the application does, but with an eye on what they say: a record
  that cannot be one is not followed.
**/

#pragma once

#include "app/base/Firmware.h"

namespace hostcheck {

struct ViewSize {
  UINT16 Width;
  UINT16 Height;
};

/// The views that the host builds its records for.
inline constexpr ViewSize kViewSizes[] = {{1024, 768}, {1920, 1080}, {2560, 1440}, {3840, 2160}};
/// Where one view is enough: the one that everything is designed for.
inline constexpr ViewSize kDesignView = kViewSizes[1];

/// Has the host build its records for a view of this size.
[[nodiscard]] EFI_STATUS ParseFor(const ViewSize &view);

/// Asks for the status of each record, and ends the intake.
[[nodiscard]] EFI_STATUS AskAndFinish();

/// Records that may be looked at: the host's count, cut to what the contract allows. 0 where there
/// is not as much memory.
[[nodiscard]] UINTN RecordCount();

/// Whether name, type and counts are within their bounds.
[[nodiscard]] bool IsInBounds(const OBV_COMPONENT &component);

/// Whether the styles are, too, so that the rest may be believed.
[[nodiscard]] bool LooksLikeRecord(const OBV_COMPONENT &component);

/// How the report calls a record: its index and its name.
struct RecordName {
  CHAR8 Text[56];
};
[[nodiscard]] RecordName NameOf(UINTN index);

}  // namespace hostcheck
