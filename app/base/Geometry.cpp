#include "app/base/Geometry.h"

GeometryState gGeometry;

namespace {

constexpr double kSmallScaleX = 0.7;
constexpr double kSmallScaleY = 0.8;

}  // namespace

void SetViewSize(UINT16 width, UINT16 height) {
  // The small layout is deliberately not a pure reduction of the large one.
  bool small = width == kSmallWidth && height == kSmallHeight;
  gGeometry.ViewWidth = width;
  gGeometry.ViewHeight = height;
  gGeometry.ScaleX = small ? kSmallScaleX : width / static_cast<double>(kDesignWidth);
  gGeometry.ScaleY = small ? kSmallScaleY : height / static_cast<double>(kDesignHeight);
}
