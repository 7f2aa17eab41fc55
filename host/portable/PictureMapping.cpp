#include "host/portable/PictureMapping.h"

namespace obv_host {
namespace {

AxisMapping MapAxis(UINT32 source, UINT32 view, UINT32 origin, double share) {
  UINT32 shown = static_cast<UINT32>(view * share);
  UINT32 step = shown == 0 ? 0 : source * 256 / shown;
  return {.Origin = origin, .Shown = shown, .Step = step, .Limit = view};
}

}  // namespace

PictureMapping MapPicture(UINT16 pictureHeight, UINT16 pictureWidth, UINT16 viewHeight,
                          UINT16 viewWidth, double share) {
  double inside = share >= 0.0 && share <= 1.0 ? share : 1.0;
  UINT32 top = static_cast<UINT32>(viewHeight * (1.0 - inside) * 0.5);
  return {.X = MapAxis(pictureWidth, viewWidth, 0, inside),
          .Y = MapAxis(pictureHeight, viewHeight, top, inside)};
}

UINT16 ToView(const AxisMapping &axis, UINT16 source) {
  UINT32 offset =
      axis.Step == 0 ? 0 : (static_cast<UINT32>(source) * 256 + axis.Step / 2) / axis.Step;
  if (axis.Shown != 0 && offset >= axis.Shown) {
    offset = axis.Shown - 1;
  }
  UINT32 position = axis.Origin + offset;
  if (axis.Limit != 0 && position >= axis.Limit) {
    position = axis.Limit - 1;
  }
  return static_cast<UINT16>(position);
}

}  // namespace obv_host
