// Replacing a band of colours.

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "resources/Recolor.h"

namespace {

using Pixels = std::vector<UINT8>;

// In each channel another band: blue 10 to 20, green 30 to 40, red 50 to 60.
constexpr RecolorBand kBand = {0x321E0A, 0x3C2814, 0xA1B2C3};

Pixels Recolored(Pixels pixels, UINT8 mode, const RecolorBand &band = kBand) {
  RecolorPixels(pixels.data(), pixels.size() / 4, band, mode);
  return pixels;
}

TEST(Recolor, AllChannelsInsideTakesTheNewColourAndKeepsAlpha) {
  EXPECT_EQ(Recolored({15, 35, 55, 77}, 1), (Pixels{0xC3, 0xB2, 0xA1, 77}));
}

TEST(Recolor, Mode1NeedsEveryChannelInside) {
  for (const Pixels &pixel : {Pixels{21, 35, 55, 7}, Pixels{15, 29, 55, 7}, Pixels{15, 35, 61, 7},
                              Pixels{9, 29, 49, 7}}) {
    EXPECT_EQ(Recolored(pixel, 1), pixel);
  }
}

TEST(Recolor, Mode2NeedsOneChannelInside) {
  for (const Pixels &pixel :
       {Pixels{15, 0, 0, 9}, Pixels{0, 35, 0, 9}, Pixels{0, 0, 55, 9}, Pixels{15, 35, 55, 9}}) {
    EXPECT_EQ(Recolored(pixel, 2), (Pixels{0xC3, 0xB2, 0xA1, 9}));
  }
}

TEST(Recolor, ChannelAtABoundIsNotInside) {
  for (UINT8 mode : {1, 2}) {
    for (UINT8 blue : {10, 20}) {
      for (UINT8 green : {30, 40}) {
        for (UINT8 red : {50, 60}) {
          Pixels pixel = {blue, green, red, 5};
          EXPECT_EQ(Recolored(pixel, mode), pixel) << int(mode);
        }
      }
    }
  }
}

TEST(Recolor, ChannelNextToABoundIsInside) {
  for (UINT8 blue : {11, 19}) {
    EXPECT_EQ(Recolored({blue, 0, 0, 5}, 2)[0], 0xC3) << int(blue);
    EXPECT_EQ(Recolored({blue, 31, 59, 5}, 1)[0], 0xC3) << int(blue);
  }
}

TEST(Recolor, EmptyAndReversedBandsHoldNothing) {
  Pixels pixel = {15, 35, 55, 5};
  for (UINT8 mode : {1, 2}) {
    EXPECT_EQ(Recolored(pixel, mode, {kBand.High, kBand.Low, 0}), pixel);
    EXPECT_EQ(Recolored(pixel, mode, {0x37230F, 0x37230F, 0}), pixel);
    EXPECT_EQ(Recolored(pixel, mode, {0x37230F, 0x382410, 0}), pixel);
  }
}

TEST(Recolor, OtherModesChangeNothing) {
  Pixels pixel = {15, 35, 55, 5};
  for (UINT8 mode : {0, 3, 4, 128, 255}) {
    EXPECT_EQ(Recolored(pixel, mode), pixel) << int(mode);
  }
}

TEST(Recolor, NoPixelsMeansNoVisit) {
  Pixels pixel = {15, 35, 55, 5};
  RecolorPixels(pixel.data(), 0, kBand, 2);
  RecolorPixels(nullptr, 0, kBand, 1);
  EXPECT_EQ(pixel, (Pixels{15, 35, 55, 5}));
}

TEST(Recolor, VisitsExactlyTheGivenPixels) {
  Pixels pixels(16, 15);
  RecolorPixels(pixels.data() + 4, 2, kBand, 2);
  EXPECT_EQ(pixels,
            (Pixels{15, 15, 15, 15, 0xC3, 0xB2, 0xA1, 15, 0xC3, 0xB2, 0xA1, 15, 15, 15, 15, 15}));
}

// The definition, channel by channel.
Pixels Expected(const Pixels &pixels, const RecolorBand &band, UINT8 mode) {
  Pixels result = pixels;
  for (size_t p = 0; p < pixels.size(); p += 4) {
    bool inside[3];
    for (int c = 0; c < 3; c++) {
      int low = band.Low >> (8 * c) & 255;
      int high = band.High >> (8 * c) & 255;
      inside[c] = low < pixels[p + c] && pixels[p + c] < high;
    }
    bool all = inside[0] && inside[1] && inside[2];
    bool any = inside[2] || inside[1] || inside[0];
    for (int c = 0; c < 3 && (mode == 1 ? all : any); c++) {
      result[p + c] = static_cast<UINT8>(band.New >> (8 * c));
    }
  }
  return result;
}

TEST(Recolor, AgreesWithTheDefinitionOnNoise) {
  std::mt19937 random(7);
  for (int round = 0; round < 200; round++) {
    Pixels pixels(64);
    for (UINT8 &byte : pixels) {
      byte = static_cast<UINT8>(random());
    }
    // Wide bands, so that all channels are inside often enough.
    RecolorBand band = {static_cast<UINT32>(random()) & 0x3F3F3F,
                        (static_cast<UINT32>(random()) & 0xFFFFFF) | 0x808080,
                        static_cast<UINT32>(random()) & 0xFFFFFF};
    for (UINT8 mode : {1, 2}) {
      ASSERT_EQ(Recolored(pixels, mode, band), Expected(pixels, band, mode)) << int(mode);
    }
  }
}

}  // namespace
