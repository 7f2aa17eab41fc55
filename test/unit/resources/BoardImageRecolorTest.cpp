// When the board picture is recoloured.

#include "test/unit/stage/BoardImageStage.h"

#include "app/base/Geometry.h"

namespace {

class BoardImageRecolor : public BoardImageStage {
 protected:
  BoardImageRecolor() {
    Host.State.RecolorEnabled = 1;
    Host.State.RecolorMode = OBV_RECOLOR_ANY_CHANNEL_INSIDE;
    // Red, green, blue: byte 2, byte 1, byte 0 of a pixel.
    fake::CopyText(Host.State.RecolorLowText, "50,30,10");
    fake::CopyText(Host.State.RecolorHighText, "60,40,20");
    fake::CopyText(Host.State.RecolorNewText, "1,2,3");
    gGeometry.ViewWidth = 1024;
    gGeometry.ViewHeight = 768;
  }
  /// The scaled picture of one pixel with these bytes.
  static Bytes Pixel(uint32_t bytes) {
    return Scale(fake::MakePng(1, 1, [bytes](uint32_t, uint32_t) { return bytes; }), 1, 1).Pixels;
  }
  const Bytes New = {3, 2, 1, 77};
};

TEST_F(BoardImageRecolor, OneChannelStrictlyInsideItsBandSufficesInMode2) {
  EXPECT_EQ(Pixel(0x0B00004D), New);
  EXPECT_EQ(Pixel(0x001F004D), New);
  EXPECT_EQ(Pixel(0x0000334D), New);
}

TEST_F(BoardImageRecolor, ChannelAtItsBoundIsNotInside) {
  EXPECT_EQ(Pixel(0x0A1E324D), (Bytes{10, 30, 50, 77}));
  EXPECT_EQ(Pixel(0x14283C4D), (Bytes{20, 40, 60, 77}));
}

TEST_F(BoardImageRecolor, Mode1NeedsAllChannels) {
  Host.State.RecolorMode = OBV_RECOLOR_ALL_CHANNELS_INSIDE;
  EXPECT_EQ(Pixel(0x0F23374D), New);
  EXPECT_EQ(Pixel(0x0F23004D), (Bytes{15, 35, 0, 77}));
}

TEST_F(BoardImageRecolor, OtherModesRecolourNothing) {
  for (UINT8 mode : {0, 3, 255}) {
    Host.State.RecolorMode = mode;
    EXPECT_EQ(Pixel(0x0F23374D), (Bytes{15, 35, 55, 77})) << int(mode);
  }
}

TEST_F(BoardImageRecolor, OnlyWithTheSwitch) {
  Host.State.RecolorEnabled = 0;
  EXPECT_EQ(Pixel(0x0F23374D), (Bytes{15, 35, 55, 77}));
  Host.State.RecolorEnabled = 128;
  EXPECT_EQ(Pixel(0x0F23374D), New);
}

TEST_F(BoardImageRecolor, OnlyAtExactly1024x768) {
  const UINT16 sizes[][2] = {{1023, 768}, {1025, 768}, {1024, 767}, {1024, 769}, {1920, 1080}};
  for (auto [width, height] : sizes) {
    gGeometry.ViewWidth = width;
    gGeometry.ViewHeight = height;
    EXPECT_EQ(Pixel(0x0F23374D), (Bytes{15, 35, 55, 77})) << width << "x" << height;
  }
}

TEST_F(BoardImageRecolor, EveryPixelOfTheScaledPictureIsVisited) {
  Bytes png = fake::MakePng(1, 1, [](uint32_t, uint32_t) { return 0x0F23374Du; });
  Bytes pixels = Scale(png, 7, 5).Pixels;
  ASSERT_EQ(pixels.size(), 140u);
  for (size_t i = 0; i < pixels.size(); i++) {
    EXPECT_EQ(pixels[i], New[i % 4]) << i;
  }
}

}  // namespace
