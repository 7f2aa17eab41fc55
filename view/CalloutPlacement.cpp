#include "view/CalloutPlacement.h"

#include "view/FixedLook.h"

namespace {

/// Halves of the callout's size between its top left corner and the anchor.
struct SideOffset {
  UINT8 HalvesX;
  UINT8 HalvesY;
};

constexpr SideOffset kSideOffsets[] = {
    {0, 0},  // OBV_CALLOUT_KEEP, not used
    {2, 1},  // OBV_CALLOUT_RIGHT
    {2, 2},  // OBV_CALLOUT_BOTTOM_RIGHT
    {1, 2},  // OBV_CALLOUT_BOTTOM
    {0, 2},  // OBV_CALLOUT_BOTTOM_LEFT
    {0, 1},  // OBV_CALLOUT_LEFT
    {0, 0},  // OBV_CALLOUT_TOP_LEFT
    {1, 0},  // OBV_CALLOUT_TOP
    {2, 0},  // OBV_CALLOUT_TOP_RIGHT
};

INT16 Shift(INT16 anchor, UINT16 size, UINT8 halves) {
  constexpr UINT8 kFull = 2;
  UINT16 offset = halves == kFull ? size : static_cast<UINT16>(halves == 0 ? 0 : size >> 1);
  return static_cast<INT16>(static_cast<UINT16>(anchor) - offset);
}

}  // namespace

OBV_POINT PlaceAtAnchor(INT32 side, OBV_POINT anchor, UINT16 width, UINT16 height,
                        OBV_POINT unchanged) {
  if (side < OBV_CALLOUT_RIGHT || side > OBV_CALLOUT_TOP_RIGHT) {
    return unchanged;
  }
  const SideOffset &offset = kSideOffsets[side];
  return {Shift(anchor.X, width, offset.HalvesX), Shift(anchor.Y, height, offset.HalvesY)};
}

void FitCallout(OBV_COMPONENT *component, INT16 labelWidth, INT16 labelHeight) {
  component->CalloutWidth = static_cast<UINT16>(labelWidth + kCalloutLabelMargin);
  component->CalloutHeight = static_cast<UINT16>(labelHeight + kCalloutLabelMargin);
  UINT16 points = MIN(component->LeaderPointCount, OBV_LEADER_POINT_CAPACITY);
  if (points == 0) {
    return;
  }
  OBV_POINT corner = {component->CalloutX, component->CalloutY};
  corner = PlaceAtAnchor(component->CalloutSide, component->LeaderPoints[points - 1],
                         component->CalloutWidth, component->CalloutHeight, corner);
  component->CalloutX = corner.X;
  component->CalloutY = corner.Y;
}
