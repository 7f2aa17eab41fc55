#include "app/base/Geometry.h"
#include "hostcheck/Checks.h"
#include "hostcheck/Intake.h"
#include "resources/ComponentIntake.h"
#include "view/CalloutPlacement.h"
#include "view/CalloutTexts.h"
#include "view/Look.h"
#include "view/ViewState.h"

namespace hostcheck {
namespace {

/// Pixels of the view, the first and the last of a place.
struct Place {
  INT32 Left, Top, Right, Bottom;
};

bool IsOnScreen(const Place &place) {
  return place.Left >= 0 && place.Top >= 0 && place.Right < gGeometry.ViewWidth &&
         place.Bottom < gGeometry.ViewHeight;
}

Place PlaceOf(INT32 x, INT32 y) { return {.Left = x, .Top = y, .Right = x, .Bottom = y}; }

void CheckPlace(Report *report, UINTN index, const CHAR8 *what, const Place &place,
                const CHAR8 *advice) {
  if (!IsOnScreen(place)) {
    Complain(report, "%a of %a lies at %d,%d to %d,%d, outside the screen of %d x %d. %a", what,
             NameOf(index).Text, place.Left, place.Top, place.Right, place.Bottom,
             static_cast<UINT32>(gGeometry.ViewWidth), static_cast<UINT32>(gGeometry.ViewHeight),
             advice);
  }
}

/// All points in one place; where one is outside, so is that.
template <typename Point>
Place PlaceAround(const Point *points, UINTN count) {
  Place place = PlaceOf(points[0].X, points[0].Y);
  for (UINTN i = 1; i < count; ++i) {
    place.Left = MIN(place.Left, points[i].X);
    place.Top = MIN(place.Top, points[i].Y);
    place.Right = MAX(place.Right, points[i].X);
    place.Bottom = MAX(place.Bottom, points[i].Y);
  }
  return place;
}

void CheckOutline(Report *report, UINTN index) {
  const OBV_COMPONENT &component = ComponentAt(index);
  if (component.HotspotVertexCount == 0) {
    return;
  }
  Place place = PlaceAround(component.HotspotVertices, component.HotspotVertexCount);
  CheckPlace(report, index, "the outline", place,
             "Map it as docs/host.md says, with the size and the scale that ParseComponents gets.");
  if (IsOnScreen(place) && (place.Left == place.Right || place.Top == place.Bottom)) {
    Complain(report, "the outline of %a has no area at %d x %d. Give it one.", NameOf(index).Text,
             static_cast<UINT32>(gGeometry.ViewWidth), static_cast<UINT32>(gGeometry.ViewHeight));
  }
}

void CheckLeader(Report *report, UINTN index) {
  const OBV_COMPONENT &component = ComponentAt(index);
  if (component.LeaderPointCount != 0) {
    CheckPlace(report, index, "the leader line",
               PlaceAround(component.LeaderPoints, component.LeaderPointCount),
               "Map its points like the outline.");
  }
}

/// Sized and placed by the view's own code; its label is measured as LVGL's labels measure
/// themselves, without one.
void CheckCallout(Report *report, UINTN index) {
  OBV_COMPONENT &component = ComponentAt(index);
  gView.Components[index] = {};
  ComposeCalloutTexts(index);
  lv_point_t size = {};
  lv_txt_get_size(&size, gView.Components[index].DefaultText, FontOf(Look().CalloutFont), 0, 0,
                  LV_COORD_MAX, LV_TEXT_FLAG_RECOLOR);
  FitCallout(&component, size.x, size.y);
  CheckPlace(report, index, "the callout",
             {.Left = component.CalloutX,
              .Top = component.CalloutY,
              .Right = component.CalloutX + component.CalloutWidth - 1,
              .Bottom = component.CalloutY + component.CalloutHeight - 1},
             "Move the end of its leader line, choose another CalloutSide, or a shorter name.");
}

void CheckView(Report *report) {
  for (UINTN i = 0; i < RecordCount(); ++i) {
    if (!LooksLikeRecord(ComponentAt(i))) {
      continue;
    }
    const OBV_COMPONENT &component = ComponentAt(i);
    CheckOutline(report, i);
    CheckLeader(report, i);
    CheckPlace(report, i, "the status dot", PlaceOf(component.MarkerX, component.MarkerY),
               "Write the corner of the dot to MarkerX and MarkerY.");
    CheckCallout(report, i);
  }
}

}  // namespace

void CheckPlaces(Report *report) {
  for (const ViewSize &view : kViewSizes) {
    EFI_STATUS status = ParseFor(view);
    if (!EFI_ERROR(status)) {
      status = AskAndFinish();
    }
    if (EFI_ERROR(status)) {
      Complain(report, "the host answers %r for a view of %d x %d. Build records for it, too.",
               status, static_cast<UINT32>(view.Width), static_cast<UINT32>(view.Height));
      continue;
    }
    CheckView(report);
  }
}

}  // namespace hostcheck
