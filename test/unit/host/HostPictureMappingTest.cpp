#include <gtest/gtest.h>

#include <cstdlib>

#include "host/portable/PictureMapping.h"

namespace obv_host {
namespace {

/// The source pixel that the application's resampler starts from at this view
/// pixel, in 1/256, as it accumulates it.
UINT32 SampledAt(UINT32 source, UINT32 shown, UINT32 offset) {
  UINT32 step = source * 256 / shown;
  UINT32 accumulator = 0;
  for (UINT32 i = 0; i < offset; i++) {
    accumulator += step;
  }
  return accumulator;
}

struct Case {
  UINT16 Picture;
  UINT16 View;
};

class HostPictureMappingSizes : public testing::TestWithParam<Case> {};

/// No other view pixel shows a source pixel better than the one it is mapped to.
TEST_P(HostPictureMappingSizes, NearestSampleOfEverySourcePixel) {
  const Case size = GetParam();
  PictureMapping mapping = MapPicture(size.Picture, size.Picture, size.View, size.View, 0.75);
  UINT32 shown = size.View * 3 / 4;
  for (UINT32 x = 0; x < size.Picture; x++) {
    UINT32 at = ToView(mapping.X, static_cast<UINT16>(x));
    ASSERT_LT(at, shown);
    auto distance = [&](UINT32 offset) {
      return std::abs(static_cast<int>(SampledAt(size.Picture, shown, offset)) -
                      static_cast<int>(x * 256));
    };
    if (at > 0) {
      ASSERT_LE(distance(at), distance(at - 1)) << x;
    }
    if (at + 1 < shown) {
      ASSERT_LE(distance(at), distance(at + 1)) << x;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Sizes, HostPictureMappingSizes,
                         testing::Values(Case{2880, 3840}, Case{2880, 1920}, Case{2880, 1024},
                                         Case{2880, 2560}, Case{1620, 768}, Case{1620, 1200},
                                         Case{333, 1920}, Case{1000, 1366}, Case{4095, 1024},
                                         Case{7, 1024}));

TEST(HostPictureMapping, PictureStandsAtTheLeftAndCentredVertically) {
  PictureMapping mapping = MapPicture(1620, 2880, 1080, 1920, 0.75);
  EXPECT_EQ(mapping.X.Origin, 0U);
  EXPECT_EQ(mapping.Y.Origin, 135U);
  EXPECT_EQ(mapping.X.Shown, 1440U);
  EXPECT_EQ(mapping.Y.Shown, 810U);
  EXPECT_EQ(ToView(mapping.X, 0), 0);
  EXPECT_EQ(ToView(mapping.Y, 0), 135);
  EXPECT_EQ(ToView(mapping.X, 1000), 500);
  EXPECT_EQ(ToView(mapping.Y, 1000), 635);
}

TEST(HostPictureMapping, SameSizeIsOneToOne) {
  PictureMapping mapping = MapPicture(1620, 2880, 2160, 3840, 0.75);
  for (UINT16 y : {0, 1, 809, 1619}) {
    EXPECT_EQ(ToView(mapping.Y, y), y + 270);
  }
}

TEST(HostPictureMapping, OddViewHeightTruncatesLikeTheView) {
  // 1001 * 0.125 = 125.125 and 1001 * 0.75 = 750.75.
  PictureMapping mapping = MapPicture(751, 751, 1001, 1001, 0.75);
  EXPECT_EQ(mapping.Y.Origin, 125U);
  EXPECT_EQ(mapping.Y.Shown, 750U);
}

TEST(HostPictureMapping, TruncatedStepCountsAndNotTheRatio) {
  // 333 * 256 / 1440 = 59.2: the true ratio would put the last pixel at 1435.
  PictureMapping mapping = MapPicture(333, 333, 1080, 1920, 0.75);
  EXPECT_EQ(mapping.X.Step, 59U);
  EXPECT_EQ(ToView(mapping.X, 300), (300 * 256 + 29) / 59);
  EXPECT_EQ(ToView(mapping.X, 332), 1439);
}

TEST(HostPictureMapping, PointsBeyondThePictureStayOnIt) {
  PictureMapping mapping = MapPicture(100, 100, 768, 1024, 0.75);
  EXPECT_EQ(ToView(mapping.X, 65535), 767);
  EXPECT_EQ(ToView(mapping.Y, 65535), 96 + 575);
}

TEST(HostPictureMapping, DegenerateSizesDivideByNothing) {
  PictureMapping none = MapPicture(0, 0, 0, 0, 0.75);
  EXPECT_EQ(ToView(none.X, 100), 0);
  PictureMapping tiny = MapPicture(1, 1, 2160, 3840, 0.75);
  EXPECT_EQ(ToView(tiny.X, 0), 0);
  EXPECT_EQ(ToView(tiny.Y, 0), 270);
  PictureMapping hidden = MapPicture(100, 100, 1080, 1920, 0.0);
  EXPECT_EQ(ToView(hidden.X, 50), 0);
}

TEST(HostPictureMapping, ShareOutsideItsRangeIsTheWholeView) {
  for (double share : {-1.0, 1.5, 1e300}) {
    PictureMapping mapping = MapPicture(1080, 1920, 1080, 1920, share);
    EXPECT_EQ(mapping.X.Shown, 1920U);
    EXPECT_EQ(mapping.Y.Origin, 0U);
  }
}

}  // namespace
}  // namespace obv_host
