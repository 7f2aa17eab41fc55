/** @file
  The board picture: from the host's PNG file to an LVGL image.
**/

#pragma once

#include "app/base/Types.h"
#include "lvgl.h"

/// Fetches the host's picture, scales it to width x height pixels and fills the
/// caller's descriptor, which must not be NULL and is untouched on failure. The
/// pixels come from the pool and stay for the run.
[[nodiscard]] EFI_STATUS GetPngFromFv(lv_img_dsc_t *descriptor, UINT16 width, UINT16 height);

/// Picture size in pixels from the header of a PNG file; height comes first.
/// Nothing else of the file is looked at. EFI_INVALID_PARAMETER for NULL or
/// fewer than 24 bytes.
[[nodiscard]] EFI_STATUS GetPngHeightAndWidth(const VOID *data, UINTN size, UINT32 *height,
                                              UINT32 *width);

/// Decodes a PNG file and scales it to a new pixel buffer from the pool, 4
/// bytes a pixel in the file's channel order. *hasAlpha becomes 1.
/// The buffer is the caller's to keep. EFI_INVALID_PARAMETER for NULL, zero, an
/// undecodable file or no memory; what was allocated for a picture that fails is
/// left to the leak report.
[[nodiscard]] EFI_STATUS ScaleImage(const VOID *data, UINTN size, UINT32 targetWidth,
                                    UINT32 targetHeight, VOID **buffer, UINTN *bufferSize,
                                    UINT8 *hasAlpha);
