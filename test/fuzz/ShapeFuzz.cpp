/** @file
  Outlines and callouts: filling agrees with the test of single points, and a placed callout
  touches its anchor.
**/

#include "test/fuzz/Fuzz.h"

#include "platform/Polygon.h"
#include "view/CalloutPlacement.h"

namespace {

constexpr UINT32 kUntouched = 0x5A5A5A5A;
constexpr UINT32 kColor = 0x00C0FFEE;

void FillOutline(fuzz::Reader &input) {
  UINT32 count = input.Byte() % (OBV_VERTEX_CAPACITY + 1);
  // Small outlines cross the box often, large ones reach every coordinate.
  UINT16 mask = input.Byte() % 2 == 0 ? 0x3F : 0xFFFF;
  UINT32 width = input.Byte() % 80;
  UINT32 height = input.Byte() % 80;
  std::vector<OBV_VERTEX> vertices(count);
  for (OBV_VERTEX &vertex : vertices) {
    vertex.X = input.Take<UINT16>() & mask;
    vertex.Y = input.Take<UINT16>() & mask;
  }
  std::vector<UINT32> pixels(static_cast<size_t>(width) * height, kUntouched);
  FillPolygon(count, vertices.data(), pixels.data(), width, height, kColor);
  for (UINT32 y = 0; y < height; y++) {
    for (UINT32 x = 0; x < width; x++) {
      bool inside =
          IsPointInPolygon(count, vertices.data(), static_cast<UINT16>(x), static_cast<UINT16>(y));
      fuzz::Require(pixels[x + static_cast<size_t>(y) * width] == (inside ? kColor : kUntouched),
                    "a point is filled when it is inside");
    }
  }
}

bool IsOneOf(INT32 side, std::initializer_list<INT32> sides) {
  return std::find(sides.begin(), sides.end(), side) != sides.end();
}

/// From the callout's near edge to the anchor along one axis, in 16 bits.
UINT16 Reach(bool far, bool near, UINT16 size) {
  return far ? size : near ? UINT16{0} : static_cast<UINT16>(size / 2);
}

void PlaceCallout(fuzz::Reader &input) {
  INT32 side = input.Byte() % 12 == 11 ? input.Take<INT32>() : input.Byte() % 10;
  auto anchor = input.Take<OBV_POINT>();
  auto kept = input.Take<OBV_POINT>();
  auto width = input.Take<UINT16>();
  auto height = input.Take<UINT16>();
  OBV_POINT placed = PlaceAtAnchor(side, anchor, width, height, kept);
  if (side < OBV_CALLOUT_RIGHT || side > OBV_CALLOUT_TOP_RIGHT) {
    fuzz::Require(placed.X == kept.X && placed.Y == kept.Y, "other sides keep the callout");
    return;
  }
  bool right = IsOneOf(side, {OBV_CALLOUT_RIGHT, OBV_CALLOUT_TOP_RIGHT, OBV_CALLOUT_BOTTOM_RIGHT});
  bool left = IsOneOf(side, {OBV_CALLOUT_LEFT, OBV_CALLOUT_TOP_LEFT, OBV_CALLOUT_BOTTOM_LEFT});
  bool bottom =
      IsOneOf(side, {OBV_CALLOUT_BOTTOM, OBV_CALLOUT_BOTTOM_LEFT, OBV_CALLOUT_BOTTOM_RIGHT});
  bool top = IsOneOf(side, {OBV_CALLOUT_TOP, OBV_CALLOUT_TOP_LEFT, OBV_CALLOUT_TOP_RIGHT});
  fuzz::Require(static_cast<INT16>(placed.X + Reach(right, left, width)) == anchor.X &&
                    static_cast<INT16>(placed.Y + Reach(bottom, top, height)) == anchor.Y,
                "the callout's side touches the anchor");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  fuzz::Reader input(data, size);
  PlaceCallout(input);
  FillOutline(input);
  return 0;
}
