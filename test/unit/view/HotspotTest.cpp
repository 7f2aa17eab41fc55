// The highlights in the shape of the components' outlines.

#include <random>

#include "test/unit/stage/ComponentStage.h"

namespace {

using Outline = std::vector<OBV_VERTEX>;

constexpr UINT32 kFill = 0x190A141E;

class Hotspot : public ComponentStage {
 protected:
  Hotspot() {
    Host.ScaleComponents = false;
    fake::CopyText(Host.Config.HotspotColor, "10,20,30");
  }

  OBV_COMPONENT &Add(const Outline &outline) {
    OBV_COMPONENT &component = Host.AddComponent(u"PART", OBV_TYPE_USB, 1, 100, 100);
    component.HotspotVertexCount = static_cast<UINT16>(outline.size());
    std::copy(outline.begin(), outline.end(), component.HotspotVertices);
    return component;
  }

  static UINT32 PixelAt(size_t index, int x, int y) {
    const lv_img_dsc_t *source = Source(gView.Components[index].Hotspot);
    UINT32 pixel;
    std::memcpy(&pixel, source->data + (x + y * source->header.w) * 4, sizeof pixel);
    return pixel;
  }
};

/// The even-odd rule as it is written down.
bool Inside(const Outline &outline, int px, int py) {
  bool inside = false;
  for (size_t i = 0, j = outline.size() - 1; i < outline.size(); j = i++) {
    double xi = outline[i].X, yi = outline[i].Y, xj = outline[j].X, yj = outline[j].Y;
    if ((yi > py) != (yj > py) && px < (xj - xi) * (py - yi) / (yj - yi) + xi) {
      inside = !inside;
    }
  }
  return inside;
}

TEST_F(Hotspot, BoxOfTenBySixPixelsYieldsAPictureOfTenBySix) {
  Add({{200, 300}, {210, 300}, {210, 306}, {200, 306}});
  Build();
  EXPECT_EQ(PlaceOf(gView.Components[0].Hotspot), (Place{200, 300, 10, 6}));
  const lv_img_dsc_t *source = Source(gView.Components[0].Hotspot);
  EXPECT_EQ(source->header.cf, LV_IMG_CF_TRUE_COLOR_ALPHA);
  EXPECT_EQ(source->header.w, 10u);
  EXPECT_EQ(source->header.h, 6u);
  EXPECT_EQ(source->data_size, 240u);
  EXPECT_EQ(Machine.Pool.SizeOf(source->data - 24), 24u + 240u);
  EXPECT_EQ(Machine.Pool.SizeOf(reinterpret_cast<const UINT8 *>(source) - 24), 24u + 16u);
}

TEST_F(Hotspot, RectangleIsFilledWithTheTranslucentColour) {
  Add({{200, 300}, {210, 300}, {210, 306}, {200, 306}});
  Build();
  for (int y = 0; y < 6; y++) {
    for (int x = 0; x < 10; x++) {
      EXPECT_EQ(PixelAt(0, x, y), kFill) << x << "," << y;
    }
  }
}

TEST_F(Hotspot, PixelsOutsideTheOutlineAreTransparent) {
  // A triangle whose right angle is at the top left.
  Add({{50, 60}, {58, 60}, {50, 68}});
  Build();
  for (int y = 0; y < 8; y++) {
    for (int x = 0; x < 8; x++) {
      EXPECT_EQ(PixelAt(0, x, y), x + y < 8 ? kFill : 0) << x << "," << y;
    }
  }
}

TEST_F(Hotspot, RightAndBottomBoundaryAreNeverOnTheScreen) {
  Add({{200, 300}, {210, 300}, {210, 306}, {200, 306}});
  Build();
  lv_obj_clear_flag(gView.Components[0].Hotspot, LV_OBJ_FLAG_HIDDEN);
  lv_obj_add_flag(gView.Components[0].Callout, LV_OBJ_FLAG_HIDDEN);
  lv_timer_handler();
  std::vector<UINT32> with = Machine.Output().Picture();
  lv_obj_add_flag(gView.Components[0].Hotspot, LV_OBJ_FLAG_HIDDEN);
  lv_tick_inc(20);
  lv_timer_handler();
  std::vector<UINT32> without = Machine.Output().Picture();
  for (size_t y = 295; y < 310; y++) {
    for (size_t x = 195; x < 215; x++) {
      bool inside = x >= 200 && x < 210 && y >= 300 && y < 306;
      EXPECT_EQ(with[y * 1920 + x] != without[y * 1920 + x], inside) << x << "," << y;
    }
  }
}

TEST_F(Hotspot, StartsOutHidden) {
  Add({{200, 300}, {210, 300}, {210, 306}});
  Build();
  EXPECT_TRUE(IsHidden(gView.Components[0].Hotspot));
}

TEST_F(Hotspot, RandomOutlinesAreFilledByTheEvenOddRule) {
  std::mt19937 random(11);
  std::vector<Outline> outlines;
  for (int i = 0; i < 99; i++) {
    Outline outline(3 + random() % 18);
    for (OBV_VERTEX &vertex : outline) {
      vertex = {static_cast<UINT16>(300 + random() % 40), static_cast<UINT16>(400 + random() % 30)};
    }
    outlines.push_back(outline);
    Add(outline);
  }
  Build();
  for (size_t i = 0; i < outlines.size(); i++) {
    auto byX = [](const OBV_VERTEX &a, const OBV_VERTEX &b) { return a.X < b.X; };
    auto byY = [](const OBV_VERTEX &a, const OBV_VERTEX &b) { return a.Y < b.Y; };
    auto [left, right] = std::minmax_element(outlines[i].begin(), outlines[i].end(), byX);
    auto [top, bottom] = std::minmax_element(outlines[i].begin(), outlines[i].end(), byY);
    Place box = {left->X, top->Y, right->X - left->X, bottom->Y - top->Y};
    ASSERT_EQ(PlaceOf(gView.Components[i].Hotspot), box) << i;
    for (int y = 0; y < box.Height; y++) {
      for (int x = 0; x < box.Width; x++) {
        ASSERT_EQ(PixelAt(i, x, y), Inside(outlines[i], box.X + x, box.Y + y) ? kFill : 0)
            << "outline " << i << " at " << x << "," << y;
      }
    }
  }
}

TEST_F(Hotspot, OutlinesWithoutAnAreaHaveNoPixels) {
  Add({{100, 100}});
  Add({{100, 100}, {100, 200}, {100, 150}});
  Add({{100, 100}, {200, 100}, {150, 100}});
  Add({});
  Build();
  for (int i = 0; i < 4; i++) {
    ASSERT_NE(gView.Components[i].Hotspot, nullptr) << i;
    EXPECT_TRUE(IsHidden(gView.Components[i].Hotspot));
    const lv_img_dsc_t *source = Source(gView.Components[i].Hotspot);
    EXPECT_TRUE(source == nullptr || source->data_size == 0) << i;
    lv_obj_clear_flag(gView.Components[i].Hotspot, LV_OBJ_FLAG_HIDDEN);
  }
  lv_timer_handler();
}

TEST_F(Hotspot, VertexCountBeyondTheTablesUsesTheFirstTwenty) {
  for (UINT16 count : {21, 40, 41, 65535}) {
    OBV_COMPONENT &component = Add({{200, 300}, {240, 300}, {240, 330}, {200, 330}});
    for (size_t i = 4; i < 20; i++) {
      component.HotspotVertices[i] = {200, static_cast<UINT16>(330 - i)};
    }
    for (size_t i = 20; i < OBV_VERTEX_CAPACITY; i++) {
      component.HotspotVertices[i] = {1000, 1000};
    }
    component.HotspotVertexCount = count;
  }
  Build();
  for (int i = 0; i < 4; i++) {
    EXPECT_EQ(PlaceOf(gView.Components[i].Hotspot), (Place{200, 300, 40, 30})) << i;
  }
}

TEST_F(Hotspot, OutlineAtTheFarCornerOfTheLargestScreen) {
  Add({{3800, 2100}, {3839, 2100}, {3839, 2159}, {3800, 2159}});
  Build(3840, 2160);
  EXPECT_EQ(PlaceOf(gView.Components[0].Hotspot), (Place{3800, 2100, 39, 59}));
}

}  // namespace
