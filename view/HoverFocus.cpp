#include "view/HoverFocus.h"

#include "platform/LvglPort.h"
#include "platform/Polygon.h"
#include "resources/ComponentIntake.h"
#include "view/ViewState.h"

namespace {

bool CanTakeFocus(const OBV_COMPONENT &component) {
  return component.NotSelectable == 0 && FilterFinds(gView.CategoryFilter, component);
}

/// Compared as unsigned integers: a callout that begins left of or above the
/// screen is hit by no point.
bool InSpan(UINT16 point, INT16 start, UINT16 size) {
  UINT32 first = static_cast<UINT32>(static_cast<INT32>(start));
  return first <= point && point < first + size;
}

bool IsHit(const OBV_COMPONENT &component, UINT16 x, UINT16 y) {
  UINT32 vertices = MIN(component.HotspotVertexCount, OBV_VERTEX_CAPACITY);
  return IsPointInPolygon(vertices, component.HotspotVertices, x, y) ||
         (InSpan(x, component.CalloutX, component.CalloutWidth) &&
          InSpan(y, component.CalloutY, component.CalloutHeight));
}

}  // namespace

void FocusComponentAt(UINT16 x, UINT16 y) {
  for (UINTN i = 0; i < ViewComponentCount(); ++i) {
    const OBV_COMPONENT &component = ComponentAt(i);
    if (!CanTakeFocus(component) || !IsHit(component, x, y)) {
      continue;
    }
    if (lv_group_get_focused(gLvglPort.Group) != gView.Components[i].Callout) {
      lv_group_focus_obj(gView.Components[i].Callout);
    }
    return;
  }
}
