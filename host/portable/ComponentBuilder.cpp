#include "host/portable/ComponentBuilder.h"

namespace obv_host {
namespace {

/// Rough size of a callout's text at 1080 lines. The view fits the callout to
/// its text; until then this keeps the pointer's hit test plausible.
constexpr double kCalloutCharacterWidth = 8.0;
constexpr double kCalloutLineHeight = 18.0;
constexpr UINT16 kCalloutMargin = 4;

/// From the corner of a status dot to its centre. Not scaled: the view zooms the
/// dot about the centre.
constexpr INT16 kDotHalf = OBV_DOT_SIZE / 2;

/// Signed coordinates are 16 bits wide: a view beyond that is cut.
INT16 ToSigned(UINT32 value) { return static_cast<INT16>(value > MAX_INT16 ? MAX_INT16 : value); }

INT16 CornerOfDot(UINT32 centre) { return static_cast<INT16>(ToSigned(centre) - kDotHalf); }

/// The corner of a callout of this length whose side touches the anchor along
/// one axis: before it, centred on it, or after it.
INT16 PlaceBefore(INT16 anchor, UINT16 length) { return static_cast<INT16>(anchor - length); }
INT16 PlaceCentred(INT16 anchor, UINT16 length) { return static_cast<INT16>(anchor - length / 2); }

INT16 CalloutLeft(INT32 side, INT16 anchor, UINT16 width) {
  switch (side) {
    case OBV_CALLOUT_RIGHT:
    case OBV_CALLOUT_BOTTOM_RIGHT:
    case OBV_CALLOUT_TOP_RIGHT:
      return PlaceBefore(anchor, width);
    case OBV_CALLOUT_LEFT:
    case OBV_CALLOUT_BOTTOM_LEFT:
    case OBV_CALLOUT_TOP_LEFT:
      return anchor;
    default:
      return PlaceCentred(anchor, width);
  }
}

INT16 CalloutTop(INT32 side, INT16 anchor, UINT16 height) {
  switch (side) {
    case OBV_CALLOUT_BOTTOM:
    case OBV_CALLOUT_BOTTOM_LEFT:
    case OBV_CALLOUT_BOTTOM_RIGHT:
      return PlaceBefore(anchor, height);
    case OBV_CALLOUT_TOP:
    case OBV_CALLOUT_TOP_LEFT:
    case OBV_CALLOUT_TOP_RIGHT:
      return anchor;
    default:
      return PlaceCentred(anchor, height);
  }
}

UINTN CopyName(const BoardComponent &source, OBV_COMPONENT *component) {
  UINTN length = 0;
  while (length < kBoardNameLength - 1 && source.Name[length] != 0) {
    component->Name[length] = source.Name[length];
    ++length;
  }
  return length;
}

void CopyPoints(const BoardComponent &source, const PictureMapping &mapping,
                OBV_COMPONENT *component) {
  component->HotspotVertexCount = source.VertexCount;
  for (UINTN i = 0; i < source.VertexCount; ++i) {
    component->HotspotVertices[i].X = ToView(mapping.X, source.Vertices[i].X);
    component->HotspotVertices[i].Y = ToView(mapping.Y, source.Vertices[i].Y);
  }
  component->LeaderPointCount = source.LeaderPointCount;
  for (UINTN i = 0; i < source.LeaderPointCount; ++i) {
    component->LeaderPoints[i].X = ToSigned(ToView(mapping.X, source.LeaderPoints[i].X));
    component->LeaderPoints[i].Y = ToSigned(ToView(mapping.Y, source.LeaderPoints[i].Y));
  }
  component->MarkerX = CornerOfDot(ToView(mapping.X, source.Marker.X));
  component->MarkerY = CornerOfDot(ToView(mapping.Y, source.Marker.Y));
}

void SuggestCallout(const ViewRequest &view, UINTN nameLength, OBV_COMPONENT *component) {
  double width = static_cast<double>(nameLength) * kCalloutCharacterWidth * view.ScaleX;
  component->CalloutWidth = static_cast<UINT16>(width + kCalloutMargin);
  component->CalloutHeight = static_cast<UINT16>(kCalloutLineHeight * view.ScaleY + kCalloutMargin);
  const OBV_POINT &anchor = component->LeaderPoints[component->LeaderPointCount - 1];
  component->CalloutX = CalloutLeft(component->CalloutSide, anchor.X, component->CalloutWidth);
  component->CalloutY = CalloutTop(component->CalloutSide, anchor.Y, component->CalloutHeight);
}

}  // namespace

void BuildComponent(const Board &board, UINTN index, const ViewRequest &view, BoardStyle *styles,
                    OBV_COMPONENT *component) {
  BoardComponent source = ComponentAt(board, index);
  ZeroMem(component, sizeof(*component));
  component->Type = source.Type;
  component->CalloutSide = source.CalloutSide;
  component->TextAlign = source.TextAlign;
  component->NotSelectable = (source.Flags & kBoardNotSelectable) != 0;
  component->InSpecialGroup = (source.Flags & kBoardInSpecialGroup) != 0;
  component->SearchTokenId = source.SearchTokenId;
  component->DefaultStyle = &styles[source.StyleIndex].Default;
  component->FocusStyle = &styles[source.StyleIndex].Focus;
  UINTN nameLength = CopyName(source, component);
  CopyPoints(source, view.Mapping, component);
  SuggestCallout(view, nameLength, component);
}

}  // namespace obv_host
