/** @file
  Scales pictures.
**/

#pragma once

#include "app/base/Types.h"

/// Scales a picture bilinearly, in 8.8 fixed point, aligned at the top left,
/// with the edge pixels repeated and the result truncated. All four bytes of a
/// pixel are treated alike. Rows follow each other without gaps; sizes are in
/// pixels and the buffers, which must not overlap, hold 4 bytes for each.
/// Equal sizes copy.
///
/// EFI_INVALID_PARAMETER when a pointer is NULL, a size is 0, or a picture is
/// larger than any memory; the target is untouched then. Allocates nothing and
/// needs about 14 KB of stack.
[[nodiscard]] EFI_STATUS ResampleBilinear(const UINT8 *source, UINTN sourceWidth,
                                          UINTN sourceHeight, UINT8 *target, UINTN targetWidth,
                                          UINTN targetHeight);
