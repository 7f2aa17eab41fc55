#include "view/Markers.h"

#include "resources/ComponentIntake.h"
#include "view/EmbeddedImages.h"
#include "view/Layout.h"
#include "view/Look.h"
#include "view/ViewState.h"

namespace {

const lv_img_dsc_t *ThemedMarker() {
  switch (Look().MarkerTheme) {
    case OBV_MARKER_GREEN:
      return &kMarkerA;
    case OBV_MARKER_RED:
      return &kMarkerB;
    case OBV_MARKER_AMBER:
      return &kMarkerC;
    default:
      return nullptr;
  }
}

/// Without a picture the object deliberately stays as created, not hidden.
lv_obj_t *BuildMarker(const OBV_COMPONENT &component, const lv_img_dsc_t *picture) {
  lv_obj_t *marker = lv_img_create(Screen());
  if (picture != nullptr) {
    lv_img_set_src(marker, picture);
    lv_obj_set_pos(marker, component.MarkerX, component.MarkerY);
    lv_img_set_zoom(marker, static_cast<UINT16>(gGeometry.ScaleX * LV_IMG_ZOOM_NONE));
    lv_obj_add_flag(marker, LV_OBJ_FLAG_HIDDEN);
  }
  return marker;
}

}  // namespace

void BuildMarkers() {
  for (UINTN i = 0; i < ViewComponentCount(); ++i) {
    gView.Components[i].FirstMarker = BuildMarker(ComponentAt(i), ThemedMarker());
    gView.Components[i].SecondMarker = BuildMarker(ComponentAt(i), &kMarkerC);
  }
}

void ShowMarkers(UINTN index) {
  const OBV_COMPONENT &component = ComponentAt(index);
  SetVisible(gView.Components[index].FirstMarker, component.Available != 0);
  SetVisible(gView.Components[index].SecondMarker, component.DeviceError != 0);
}

void HideMarkers(UINTN index) {
  SetVisible(gView.Components[index].FirstMarker, false);
  SetVisible(gView.Components[index].SecondMarker, false);
}
