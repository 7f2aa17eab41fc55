/** @file
  Polygons by the even-odd rule.
**/

#pragma once

#include "app/base/Types.h"

/// Whether the point lies inside. A count of 0 holds no point.
[[nodiscard]] bool IsPointInPolygon(UINT32 count, const OBV_VERTEX *vertices, UINT16 x, UINT16 y);

/// Sets pixels[x + y * width] to color for every point (x, y) of the box
/// width x height for which IsPointInPolygon holds, and leaves the others.
/// Uses at most OBV_VERTEX_CAPACITY vertices.
void FillPolygon(UINT32 count, const OBV_VERTEX *vertices, UINT32 *pixels, UINT32 width,
                 UINT32 height, UINT32 color);
