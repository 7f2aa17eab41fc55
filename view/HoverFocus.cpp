#include "app/HostClient.h"
#include "platform/LvglPort.h"
#include "platform/ModalBox.h"
#include "platform/Pointer.h"
#include "platform/Polygon.h"
#include "resources/ComponentIntake.h"
#include "view/BoardView.h"

namespace {

bool CanTakeFocus(const OBV_COMPONENT &component) {
  return component.NotSelectable == 0 &&
         (gView.CategoryFilter == 0 || component.Type == gView.CategoryFilter);
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

void UpdateHoverFocus(UINT16 x, UINT16 y, BOOLEAN) {
  if (gModalBox.ModalMessageBoxOpen != 0) {
    return;
  }
  for (UINTN i = 0; i < ViewComponentCount(); ++i) {
    const OBV_COMPONENT &component = ComponentAt(i);
    if (!CanTakeFocus(component) || !IsHit(component, x, y)) {
      continue;
    }
    if (lv_group_get_focused(gLvglPort.Group) != gView.Callouts[i]) {
      lv_group_focus_obj(gView.Callouts[i]);
    }
    return;
  }
}
