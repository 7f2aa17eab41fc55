/** @file
  The size of the view and of the setup's screen.
**/

#pragma once

#include "app/base/Types.h"

/// The share of the view that the board picture covers in each direction.
inline constexpr double kPictureShare = 0.75;

/// The view that all sizes are designed for, and the one that is smaller.
inline constexpr UINT16 kDesignWidth = 1920;
inline constexpr UINT16 kDesignHeight = 1080;
inline constexpr UINT16 kSmallWidth = 1024;
inline constexpr UINT16 kSmallHeight = 768;

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

/// Sets the view's size and its scale factors, and nothing else.
void SetViewSize(UINT16 width, UINT16 height);
