#include "platform/Polygon.h"

namespace {

/// Whether the edge crosses the row y, and if so where.
bool CrossesRow(const OBV_VERTEX &to, const OBV_VERTEX &from, double y, double *x) {
  double yi = to.Y;
  double yj = from.Y;
  if ((yi > y) == (yj > y)) {
    return false;
  }
  double xi = to.X;
  double xj = from.X;
  *x = (xj - xi) * (y - yi) / (yj - yi) + xi;
  return true;
}

/// Collects the row's crossings in rising order.
UINT32 SortedCrossings(UINT32 count, const OBV_VERTEX *vertices, double y, double *crossings) {
  UINT32 found = 0;
  for (UINT32 i = 0, j = count - 1; i < count; j = i++) {
    double x;
    if (!CrossesRow(vertices[i], vertices[j], y, &x)) {
      continue;
    }
    UINT32 slot = found++;
    for (; slot > 0 && crossings[slot - 1] > x; --slot) {
      crossings[slot] = crossings[slot - 1];
    }
    crossings[slot] = x;
  }
  return found;
}

/// The first pixel column that is not left of the crossing, at most width.
UINT32 FirstColumnFrom(double crossing, UINT32 width) {
  if (crossing <= 0) {
    return 0;
  }
  if (crossing >= width) {
    return width;
  }
  UINT32 column = static_cast<UINT32>(crossing);
  return column < crossing ? column + 1 : column;
}

}  // namespace

bool IsPointInPolygon(UINT32 count, const OBV_VERTEX *vertices, UINT16 x, UINT16 y) {
  bool inside = false;
  for (UINT32 i = 0, j = count - 1; i < count; j = i++) {
    double crossing;
    if (CrossesRow(vertices[i], vertices[j], y, &crossing) && x < crossing) {
      inside = !inside;
    }
  }
  return inside;
}

void FillPolygon(UINT32 count, const OBV_VERTEX *vertices, UINT32 *pixels, UINT32 width,
                 UINT32 height, UINT32 color) {
  double crossings[OBV_VERTEX_CAPACITY];
  count = MIN(count, static_cast<UINT32>(OBV_VERTEX_CAPACITY));
  for (UINT32 y = 0; y < height; ++y) {
    UINT32 *row = pixels + static_cast<UINTN>(y) * width;
    UINT32 found = SortedCrossings(count, vertices, y, crossings);
    // A point is inside when an odd number of crossings lies to its right, and
    // a closed outline crosses every row an even number of times.
    for (UINT32 k = 0; k + 1 < found; k += 2) {
      UINT32 end = FirstColumnFrom(crossings[k + 1], width);
      for (UINT32 x = FirstColumnFrom(crossings[k], width); x < end; ++x) {
        row[x] = color;
      }
    }
  }
}
