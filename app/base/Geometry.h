/** @file
  The size of the view and of the setup's screen.
**/

#pragma once

#include "app/base/Types.h"

/// The share of the view that the board picture covers in each direction.
inline constexpr double kPictureShare = 0.75;

/// Set once before anything is drawn.
struct GeometryState {
  /// Resolution of the view in pixels.
  UINT16 ViewWidth;
  UINT16 ViewHeight;
  /// Factors for sizes designed for a screen of 1920 x 1080.
  double ScaleX;
  double ScaleY;
  /// Size of the setup's screen, put back at the end.
  UINT16 PreviousWidth;
  UINT16 PreviousHeight;
  /// Mode of the view on the output in use; -1 when its size has no mode.
  INT32 ModeNumber;
};

extern GeometryState gGeometry;
