/** @file
  From picture pixels to view pixels.

  The application shows the picture at the left edge of the view, at PictureShare
  of its width and height, centred vertically. It samples the source column
  (c * step) >> 8 for column c, where step is the truncated 8.8 ratio of the
  sizes: the inverse of that step, and not the ratio itself, is what puts an
  outline on the pixels that the user sees.
**/

#pragma once

#include "host/portable/BoardFormat.h"

namespace obv_host {

/// One axis. All in pixels, Step in 1/256 source pixels per view pixel.
struct AxisMapping {
  UINT32 Origin;  ///< Where the shown picture starts in the view.
  UINT32 Shown;   ///< How many pixels of the view it covers.
  UINT32 Step;
  UINT32 Limit;  ///< Size of the view.
};

struct PictureMapping {
  AxisMapping X;
  AxisMapping Y;
};

/// The geometry that ParseComponents received. share is the part of the view
/// that the picture covers in each direction.
PictureMapping MapPicture(UINT16 pictureHeight, UINT16 pictureWidth, UINT16 viewHeight,
                          UINT16 viewWidth, double share);

/// The view pixel that shows the source pixel best, inside the shown picture
/// and inside the view.
UINT16 ToView(const AxisMapping &axis, UINT16 source);

}  // namespace obv_host
