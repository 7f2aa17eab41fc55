// The two status dots of every component, and the pictures that are built in.

#include "test/unit/stage/ViewStage.h"

#include "platform/PngCodec.h"
#include "view/EmbeddedImages.h"
#include "view/Markers.h"

namespace {

class Marker : public ViewStage {
 protected:
  Marker() {
    LeaveFontsOut();
    Host.ScaleComponents = false;
    Host.Components.resize(2);
    Host.Components[1].MarkerX = 640;
    Host.Components[1].MarkerY = 480;
  }
  void ExpectDot(lv_obj_t *dot, const lv_img_dsc_t *picture, UINT16 zoom) {
    EXPECT_EQ(Source(dot), picture);
    EXPECT_EQ(PlaceOf(dot), (Place{640, 480, 11, 11}));
    EXPECT_EQ(lv_img_get_zoom(dot), zoom);
    EXPECT_TRUE(IsHidden(dot));
  }
  void ExpectTheme(UINT8 theme, const lv_img_dsc_t *first) {
    Host.Config.MarkerTheme = theme;
    Build();
    ExpectDot(gView.Components[1].FirstMarker, first, 256);
    ExpectDot(gView.Components[1].SecondMarker, &kMarkerC, 256);
  }
  void ExpectUnknownTheme(UINT8 theme) {
    Host.Config.MarkerTheme = theme;
    Build(3840, 2160);
    for (lv_obj_t *first : {gView.Components[0].FirstMarker, gView.Components[1].FirstMarker}) {
      EXPECT_EQ(Source(first), nullptr);
      EXPECT_EQ(PlaceOf(first).X, 0);
      EXPECT_EQ(PlaceOf(first).Y, 0);
      EXPECT_EQ(lv_img_get_zoom(first), 256);
      EXPECT_FALSE(IsHidden(first));
    }
    ExpectDot(gView.Components[1].SecondMarker, &kMarkerC, 512);
  }
};

TEST_F(Marker, Theme0ShowsMarkerA) { ExpectTheme(0, &kMarkerA); }
TEST_F(Marker, Theme1ShowsMarkerB) { ExpectTheme(1, &kMarkerB); }
TEST_F(Marker, Theme2ShowsMarkerC) { ExpectTheme(2, &kMarkerC); }

// On a screen where all markers of a known theme are zoomed.
TEST_F(Marker, Theme3LeavesTheFirstMarkerEmptyVisibleAndAtTheOrigin) { ExpectUnknownTheme(3); }
TEST_F(Marker, Theme255IsAsUnknownAsTheme3) { ExpectUnknownTheme(255); }

TEST_F(Marker, WithTheme3TheSecondMarkerStillTellsAnError) {
  Host.Config.MarkerTheme = 3;
  Build();
  lv_obj_t *second = gView.Components[1].SecondMarker;
  for (bool failing : {true, false}) {
    Host.Components[1].DeviceError = failing;
    ShowMarkers(1);
    EXPECT_EQ(IsHidden(second), !failing);
  }
}

TEST_F(Marker, ZoomFollowsTheHorizontalScaleAt1024) {
  Build(1024, 768);
  ExpectDot(gView.Components[1].FirstMarker, &kMarkerA, 179);
  ExpectDot(gView.Components[1].SecondMarker, &kMarkerC, 179);
}

TEST_F(Marker, ZoomFollowsTheHorizontalScaleAt1920x1200) {
  Build(1920, 1200);
  ExpectDot(gView.Components[1].FirstMarker, &kMarkerA, 256);
}

TEST_F(Marker, ZoomFollowsTheHorizontalScaleAt2560) {
  Build(2560, 1440);
  ExpectDot(gView.Components[1].FirstMarker, &kMarkerA, 341);
}

TEST_F(Marker, ZoomFollowsTheHorizontalScaleAt3840) {
  Build(3840, 2160);
  ExpectDot(gView.Components[1].SecondMarker, &kMarkerC, 512);
}

TEST_F(Marker, PositionsMayBeNegative) {
  Host.Components[0].MarkerX = -5;
  Host.Components[0].MarkerY = -32768;
  Build();
  EXPECT_EQ(lv_obj_get_style_x(gView.Components[0].FirstMarker, LV_PART_MAIN), -5);
  EXPECT_EQ(lv_obj_get_style_y(gView.Components[0].FirstMarker, LV_PART_MAIN), -32768);
  lv_obj_clear_flag(gView.Components[0].FirstMarker, LV_OBJ_FLAG_HIDDEN);
  lv_timer_handler();
}

// The pictures.

class EmbeddedImages : public ViewStage {
 protected:
  EmbeddedImages() {
    LeaveFontsOut();
    Host.Components.clear();
    Build();
  }
  static PngPixels Decoded(const lv_img_dsc_t &image) {
    EXPECT_EQ(image.header.cf, LV_IMG_CF_RAW_ALPHA);
    PngPixels pixels = DecodePng(image.data, image.data_size);
    EXPECT_EQ(pixels.Width, image.header.w);
    EXPECT_EQ(pixels.Height, image.header.h);
    return pixels;
  }
  static UINT32 Rgb(const PngPixels &picture, UINT32 x, UINT32 y) {
    const UINT8 *pixel = picture.Data + (y * picture.Width + x) * 4;
    return static_cast<UINT32>(pixel[0]) << 16 | static_cast<UINT32>(pixel[1]) << 8 | pixel[2];
  }
  static int Alpha(const PngPixels &picture, UINT32 x, UINT32 y) {
    return picture.Data[(y * picture.Width + x) * 4 + 3];
  }
};

TEST_F(EmbeddedImages, LogosHaveTheirSizesAndSomethingTransparent) {
  const lv_img_dsc_t *logos[] = {&kLogoA, &kLogoB, &kLogoC};
  const UINT32 widths[] = {93, 67, 67};
  const UINT32 heights[] = {19, 35, 35};
  for (int i = 0; i < 3; i++) {
    PngPixels picture = Decoded(*logos[i]);
    ASSERT_EQ(picture.Width, widths[i]);
    ASSERT_EQ(picture.Height, heights[i]);
    int opaque = 0;
    int clear = 0;
    for (UINT32 p = 0; p < picture.Width * picture.Height; p++) {
      opaque += picture.Data[p * 4 + 3] > 200;
      clear += picture.Data[p * 4 + 3] == 0;
    }
    EXPECT_GT(opaque, 100) << i;
    EXPECT_GT(clear, 100) << i;
  }
}

TEST_F(EmbeddedImages, TallLogosDiffer) {
  PngPixels b = Decoded(kLogoB);
  PngPixels c = Decoded(kLogoC);
  EXPECT_NE(std::memcmp(b.Data, c.Data, 67 * 35 * 4), 0);
}

TEST_F(EmbeddedImages, MarkersAreRoundDotsInTheirColours) {
  const lv_img_dsc_t *markers[] = {&kMarkerA, &kMarkerB, &kMarkerC};
  const UINT32 colours[] = {0x00FF00, 0xFF0000, 0xFFDB4B};
  for (int i = 0; i < 3; i++) {
    PngPixels picture = Decoded(*markers[i]);
    ASSERT_EQ(picture.Width, 11u);
    ASSERT_EQ(picture.Height, 11u);
    for (UINT32 corner : {0u, 10u}) {
      EXPECT_EQ(Alpha(picture, corner, 0), 3);
      EXPECT_EQ(Alpha(picture, corner, 10), 3);
    }
    for (UINT32 y = 3; y <= 7; y++) {
      for (UINT32 x = 3; x <= 7; x++) {
        EXPECT_EQ(Alpha(picture, x, y), 255);
        for (int shift : {16, 8, 0}) {
          int seen = static_cast<int>(Rgb(picture, x, y) >> shift & 255);
          int wanted = static_cast<int>(colours[i] >> shift & 255);
          EXPECT_LE(std::abs(seen - wanted), i == 2 ? 8 : 0) << i << " " << x << "," << y;
        }
      }
    }
    // The rim lies between both.
    EXPECT_GT(Alpha(picture, 5, 0), 3);
    EXPECT_LT(Alpha(picture, 5, 0), 255);
  }
}

}  // namespace
