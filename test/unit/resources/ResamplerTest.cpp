#include <gtest/gtest.h>
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "resources/Resampler.h"

namespace {

struct Size {
  UINTN Width;
  UINTN Height;
};

using Pixels = std::vector<UINT8>;

/// The definition, byte by byte and without a shortcut.
Pixels SlowResample(const Pixels &source, Size from, Size to) {
  Pixels target;
  target.reserve(to.Width * to.Height * 4);
  UINTN rowStep = (from.Height * 256) / to.Height;
  UINTN columnStep = (from.Width * 256) / to.Width;
  for (UINTN r = 0, rowPosition = 0; r < to.Height; ++r, rowPosition += rowStep) {
    for (UINTN c = 0, columnPosition = 0; c < to.Width; ++c, columnPosition += columnStep) {
      UINTN sx = columnPosition >> 8;
      UINTN sy = rowPosition >> 8;
      INT64 fx = columnPosition & 255;
      INT64 fy = rowPosition & 255;
      UINTN right = sx < from.Width - 1 ? sx + 1 : sx;
      UINTN below = sy < from.Height - 1 ? sy + 1 : sy;
      for (UINTN byte = 0; byte < 4; ++byte) {
        INT64 p00 = source[(sy * from.Width + sx) * 4 + byte];
        INT64 p01 = source[(sy * from.Width + right) * 4 + byte];
        INT64 p10 = source[(below * from.Width + sx) * 4 + byte];
        INT64 p11 = source[(below * from.Width + right) * 4 + byte];
        INT64 top = p00 * 256 + (p01 - p00) * fx;
        INT64 bottom = p10 * 256 + (p11 - p10) * fx;
        target.push_back(static_cast<UINT8>((top * 256 + (bottom - top) * fy) >> 16));
      }
    }
  }
  return target;
}

class Pictures {
 public:
  explicit Pictures(unsigned seed) : random_(seed) {}

  UINTN Number(UINTN least, UINTN most) {
    return std::uniform_int_distribution<UINTN>(least, most)(random_);
  }

  Pixels Noise(Size size) {
    Pixels pixels(size.Width * size.Height * 4);
    std::generate(pixels.begin(), pixels.end(), [this] { return static_cast<UINT8>(random_()); });
    return pixels;
  }

  /// Black and white only: the largest differences that neighbours can have.
  Pixels Contrast(Size size) {
    Pixels pixels = Noise(size);
    for (UINT8 &byte : pixels) {
      byte = byte < 128 ? 0 : 255;
    }
    return pixels;
  }

 private:
  std::mt19937 random_;
};

/// Scales within a larger buffer, so that a byte written outside is noticed,
/// from a buffer of the exact size, so that the sanitizer notices a byte read
/// outside.
Pixels Scale(const Pixels &source, Size from, Size to) {
  constexpr UINTN kMargin = 64;
  constexpr UINT8 kUntouched = 0xA5;
  UINTN bytes = to.Width * to.Height * 4;
  Pixels buffer(bytes + 2 * kMargin, kUntouched);
  EFI_STATUS status = ResampleBilinear(source.data(), from.Width, from.Height,
                                       buffer.data() + kMargin, to.Width, to.Height);
  EXPECT_EQ(EFI_SUCCESS, status);
  auto begin = buffer.begin() + kMargin;
  auto end = begin + static_cast<std::ptrdiff_t>(bytes);
  auto touched = [](UINT8 byte) { return byte != kUntouched; };
  EXPECT_TRUE(std::none_of(buffer.begin(), begin, touched)) << "wrote before the target";
  EXPECT_TRUE(std::none_of(end, buffer.end(), touched)) << "wrote behind the target";
  return Pixels(begin, end);
}

/// Compares one scaling with the definition; false stops the caller's loop.
bool Agrees(const Pixels &source, Size from, Size to) {
  Pixels expected = SlowResample(source, from, to);
  Pixels actual = Scale(source, from, to);
  auto [wanted, got] = std::mismatch(expected.begin(), expected.end(), actual.begin());
  if (wanted == expected.end()) {
    return true;
  }
  auto byte = static_cast<UINTN>(wanted - expected.begin());
  ADD_FAILURE() << from.Width << "x" << from.Height << " to " << to.Width << "x" << to.Height
                << ": column " << byte / 4 % to.Width << ", row " << byte / 4 / to.Width
                << ", byte " << byte % 4 << " is " << int(*got) << " instead of " << int(*wanted);
  return false;
}

Pixels Gray(std::initializer_list<UINT8> values) {
  Pixels pixels;
  for (UINT8 value : values) {
    pixels.insert(pixels.end(), 4, value);
  }
  return pixels;
}

}  // namespace

TEST(Resampler, RefusesNullPictures) {
  Pixels pixels(16);
  EXPECT_EQ(EFI_INVALID_PARAMETER, ResampleBilinear(nullptr, 2, 2, pixels.data(), 2, 2));
  EXPECT_EQ(EFI_INVALID_PARAMETER, ResampleBilinear(pixels.data(), 2, 2, nullptr, 2, 2));
}

TEST(Resampler, RefusesEachSizeOfZeroAndLeavesTheTargetAlone) {
  Pixels source(16, 1);
  for (int zero = 0; zero < 4; ++zero) {
    UINTN sizes[] = {2, 2, 2, 2};
    sizes[zero] = 0;
    Pixels target(16, 7);
    EXPECT_EQ(EFI_INVALID_PARAMETER, ResampleBilinear(source.data(), sizes[0], sizes[1],
                                                      target.data(), sizes[2], sizes[3]))
        << "size " << zero;
    EXPECT_EQ(Pixels(16, 7), target);
  }
}

TEST(Resampler, RefusesSizesWhoseProductsDoNotFitTheNaturalWidth) {
  constexpr UINTN kHuge[] = {UINTN{1} << 62, UINTN{1} << 56, MAX_UINTN};
  for (UINTN huge : kHuge) {
    Pixels source(16, 1);
    Pixels target(16, 7);
    UINT8 *to = target.data();
    EXPECT_EQ(EFI_INVALID_PARAMETER, ResampleBilinear(source.data(), huge, 1, to, 2, 2));
    EXPECT_EQ(EFI_INVALID_PARAMETER, ResampleBilinear(source.data(), 1, huge, to, 2, 2));
    EXPECT_EQ(EFI_INVALID_PARAMETER, ResampleBilinear(source.data(), 2, 2, to, huge, 1));
    EXPECT_EQ(EFI_INVALID_PARAMETER, ResampleBilinear(source.data(), 2, 2, to, 1, huge));
    EXPECT_EQ(EFI_INVALID_PARAMETER, ResampleBilinear(source.data(), huge, huge, to, huge, huge));
    EXPECT_EQ(Pixels(16, 7), target);
  }
}

TEST(Resampler, CopiesAPictureOfTheSameSize) {
  Pictures pictures(1);
  for (Size size : {Size{1, 1}, Size{7, 5}, Size{640, 480}}) {
    Pixels source = pictures.Noise(size);
    EXPECT_EQ(source, Scale(source, size, size));
  }
}

TEST(Resampler, DoublesAlignedAtTheTopLeftAndRepeatsTheEdge) {
  Pixels source = Gray({0, 200, 100, 40});
  Pixels expected = Gray({
      0, 100, 200, 200,  //
      50, 85, 120, 120,  //
      100, 70, 40, 40,   //
      100, 70, 40, 40,   //
  });
  EXPECT_EQ(expected, Scale(source, {2, 2}, {4, 4}));
}

TEST(Resampler, CutsFractionsOffInsteadOfRounding) {
  // A quarter, a half and three quarters of 255 all have a fraction.
  EXPECT_EQ(Gray({0, 63, 127, 191, 255, 255, 255, 255}), Scale(Gray({0, 255}), {2, 1}, {8, 1}));
  EXPECT_EQ(Gray({255, 191, 127, 63, 0, 0, 0, 0}), Scale(Gray({255, 0}), {2, 1}, {8, 1}));
}

TEST(Resampler, BlendsEachByteOfAPixelForItselfAlphaIncluded) {
  Pixels source = {0, 10, 255, 0, 100, 20, 1, 255};
  Pixels expected = {0, 10, 255, 0, 50, 15, 128, 127, 100, 20, 1, 255, 100, 20, 1, 255};
  EXPECT_EQ(expected, Scale(source, {2, 1}, {4, 1}));
}

TEST(Resampler, KeepsASinglePixelAtAnySize) {
  Pixels source = {1, 128, 255, 77};
  for (Size size : {Size{1, 2}, Size{5, 1}, Size{300, 7}, Size{4095, 3}, Size{3, 4095}}) {
    Pixels target = Scale(source, {1, 1}, size);
    for (UINTN i = 0; i < target.size(); ++i) {
      ASSERT_EQ(source[i % 4], target[i]) << size.Width << "x" << size.Height;
    }
  }
}

TEST(Resampler, ScalesOnlyOneOfTheTwoDirections) {
  Pictures pictures(2);
  Size from = {97, 61};
  Pixels source = pictures.Noise(from);
  EXPECT_TRUE(Agrees(source, from, {97, 40}));
  EXPECT_TRUE(Agrees(source, from, {97, 200}));
  EXPECT_TRUE(Agrees(source, from, {30, 61}));
  EXPECT_TRUE(Agrees(source, from, {500, 61}));
}

TEST(Resampler, AgreesWithTheDefinitionForEverySmallSize) {
  Pictures pictures(3);
  for (UINTN width = 1; width <= 9; ++width) {
    for (UINTN height = 1; height <= 4; ++height) {
      Pixels source = pictures.Contrast({width, height});
      for (UINTN i = 0; i < 40 * 6; ++i) {
        ASSERT_TRUE(Agrees(source, {width, height}, {1 + i % 40, 1 + i / 40}));
      }
    }
  }
}

TEST(Resampler, AgreesWithTheDefinitionForRandomSizes) {
  Pictures pictures(4);
  for (int round = 0; round < 2000; ++round) {
    Size from = {pictures.Number(1, 120), pictures.Number(1, 50)};
    Size to = {pictures.Number(1, 160), pictures.Number(1, 50)};
    Pixels source = round % 2 == 0 ? pictures.Noise(from) : pictures.Contrast(from);
    ASSERT_TRUE(Agrees(source, from, to));
  }
}

TEST(Resampler, AgreesWithTheDefinitionForRowsAndColumnsOfOnePixel) {
  Pictures pictures(5);
  for (int round = 0; round < 400; ++round) {
    UINTN length = pictures.Number(1, 1200);
    UINTN target = pictures.Number(1, 1200);
    UINTN other = pictures.Number(1, 5);
    Pixels source = pictures.Noise({length, 1});
    ASSERT_TRUE(Agrees(source, {length, 1}, {target, other}));
    ASSERT_TRUE(Agrees(source, {1, length}, {other, target}));
  }
}

TEST(Resampler, AgreesWithTheDefinitionForEveryColumnStepNearOne) {
  // From thrice as wide to half as wide, over more than one block of columns.
  Pictures pictures(6);
  constexpr UINTN kSource = 601;
  Pixels source = pictures.Contrast({kSource, 2});
  for (UINTN width = 200; width <= 1300; ++width) {
    ASSERT_TRUE(Agrees(source, {kSource, 2}, {width, 3}));
  }
}

TEST(Resampler, AgreesWithTheDefinitionForEveryPairOfFractions) {
  // 256 columns and rows out of 255 step by 255/256: all fractions meet.
  Pictures pictures(7);
  Pixels source = pictures.Contrast({255, 255});
  EXPECT_TRUE(Agrees(source, {255, 255}, {256, 256}));
  source = pictures.Noise({255, 255});
  EXPECT_TRUE(Agrees(source, {255, 255}, {256, 256}));
}

TEST(Resampler, ShrinksAndGrowsByMoreThan256) {
  Pictures pictures(8);
  for (Size to : {Size{1, 1}, Size{2, 3}, Size{15, 4}, Size{16, 1}, Size{31, 2}}) {
    EXPECT_TRUE(Agrees(pictures.Noise({4095, 9}), {4095, 9}, to));
    EXPECT_TRUE(Agrees(pictures.Noise({3, 2050}), {3, 2050}, to));
  }
  EXPECT_TRUE(Agrees(pictures.Noise({100000, 1}), {100000, 1}, {7, 1}));
  EXPECT_TRUE(Agrees(pictures.Noise({2, 2}), {2, 2}, {1000, 3}));
  EXPECT_TRUE(Agrees(pictures.Noise({2, 2}), {2, 2}, {3, 1000}));
  EXPECT_TRUE(Agrees(pictures.Noise({3, 3}), {3, 3}, {100000, 1}));
}

TEST(Resampler, AgreesWithTheDefinitionForTheViewsSizes) {
  Pictures pictures(9);
  constexpr Size kViews[] = {{1440, 810}, {768, 576}, {1920, 1080}, {1440, 900}, {960, 768}};
  for (Size from : {Size{1280, 720}, Size{1920, 1080}, Size{2880, 1620}}) {
    Pixels source = pictures.Noise(from);
    for (Size to : kViews) {
      EXPECT_TRUE(Agrees(source, from, to));
    }
  }
}

TEST(Resampler, TakesTheLargestPictureThatAnImageCanHave) {
  Pictures pictures(10);
  Size largest = {4095, 4095};
  EXPECT_TRUE(Agrees(pictures.Contrast(largest), largest, {1000, 700}));
  EXPECT_TRUE(Agrees(pictures.Contrast({900, 600}), {900, 600}, largest));
}
