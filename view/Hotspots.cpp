#include "view/Hotspots.h"

#include "app/base/MemoryPool.h"
#include "platform/ColorText.h"
#include "platform/Polygon.h"
#include "resources/ComponentIntake.h"
#include "view/FixedLook.h"
#include "view/Layout.h"
#include "view/Look.h"
#include "view/ViewState.h"

namespace {

constexpr UINT32 kMaxVertices = 20;

/// The outline's box. The right-most column and the bottom row are deliberately
/// not part of it.
struct Box {
  UINT32 X;
  UINT32 Y;
  UINT32 Width;
  UINT32 Height;
};

Box BoundingBox(UINT32 count, const OBV_VERTEX *vertices) {
  if (count == 0) {
    return {};
  }
  UINT32 minX = MAX_UINT32;
  UINT32 minY = MAX_UINT32;
  UINT32 maxX = 0;
  UINT32 maxY = 0;
  for (UINT32 i = 0; i < count; ++i) {
    minX = MIN(minX, vertices[i].X);
    minY = MIN(minY, vertices[i].Y);
    maxX = MAX(maxX, vertices[i].X);
    maxY = MAX(maxY, vertices[i].Y);
  }
  return {.X = minX, .Y = minY, .Width = maxX - minX, .Height = maxY - minY};
}

/// The highlight's pixels from the pool; NULL for an empty box or no memory.
UINT32 *DrawHighlight(UINT32 count, const OBV_VERTEX *vertices, const Box &box) {
  UINTN size = static_cast<UINTN>(box.Width) * box.Height * sizeof(UINT32);
  auto *pixels = static_cast<UINT32 *>(malloc(size));
  if (pixels == nullptr) {
    return nullptr;
  }
  OBV_VERTEX shifted[kMaxVertices];
  for (UINT32 i = 0; i < count; ++i) {
    shifted[i].X = static_cast<UINT16>(vertices[i].X - box.X);
    shifted[i].Y = static_cast<UINT16>(vertices[i].Y - box.Y);
  }
  FillPolygon(count, shifted, pixels, box.Width, box.Height,
              kHotspotAlpha << 24 | ParseColorText(Look().HotspotColor));
  return pixels;
}

void SetHighlight(lv_obj_t *image, const Box &box, const UINT32 *pixels) {
  auto *descriptor = static_cast<lv_img_dsc_t *>(malloc(sizeof(lv_img_dsc_t)));
  if (descriptor == nullptr) {
    return;
  }
  descriptor->header.cf = LV_IMG_CF_TRUE_COLOR_ALPHA;
  descriptor->header.w = box.Width & 0xFFF;
  descriptor->header.h = box.Height & 0xFFF;
  descriptor->data_size = box.Width * box.Height * static_cast<UINT32>(sizeof(UINT32));
  descriptor->data = reinterpret_cast<const UINT8 *>(pixels);
  lv_img_set_src(image, descriptor);
}

lv_obj_t *BuildHotspot(const OBV_COMPONENT &component) {
  lv_obj_t *image = lv_img_create(Screen());
  UINT32 count = MIN(component.HotspotVertexCount, kMaxVertices);
  Box box = BoundingBox(count, component.HotspotVertices);
  SetHighlight(image, box, DrawHighlight(count, component.HotspotVertices, box));
  lv_obj_set_pos(image, static_cast<lv_coord_t>(box.X), static_cast<lv_coord_t>(box.Y));
  lv_obj_add_flag(image, LV_OBJ_FLAG_HIDDEN);
  return image;
}

}  // namespace

void BuildHotspots() {
  for (UINTN i = 0; i < ViewComponentCount(); ++i) {
    gView.Components[i].Hotspot = BuildHotspot(ComponentAt(i));
  }
}
