// Points in outlines by the even-odd rule.

#include <gtest/gtest.h>

#include <random>

#include "platform/Polygon.h"

namespace {

using Outline = std::vector<OBV_VERTEX>;

bool Inside(const Outline &outline, UINT16 x, UINT16 y) {
  return IsPointInPolygon(static_cast<UINT32>(outline.size()), outline.data(), x, y) != FALSE;
}

const Outline kSquare = {{10, 10}, {20, 10}, {20, 20}, {10, 20}};

TEST(Polygon, ACountOf0HoldsNoPoint) {
  EXPECT_FALSE(IsPointInPolygon(0, kSquare.data(), 15, 15));
  EXPECT_FALSE(IsPointInPolygon(0, nullptr, 0, 0));
}

TEST(Polygon, APointAndALineHoldNoPoint) {
  EXPECT_FALSE(Inside({{5, 5}}, 5, 5));
  EXPECT_FALSE(Inside({{5, 5}, {15, 15}}, 10, 10));
}

TEST(Polygon, LeftAndTopEdgesAreInsideRightAndBottomEdgesAreNot) {
  EXPECT_TRUE(Inside(kSquare, 10, 10));
  EXPECT_TRUE(Inside(kSquare, 19, 19));
  EXPECT_TRUE(Inside(kSquare, 10, 19));
  EXPECT_FALSE(Inside(kSquare, 20, 15));
  EXPECT_FALSE(Inside(kSquare, 15, 20));
  EXPECT_FALSE(Inside(kSquare, 9, 15));
  EXPECT_FALSE(Inside(kSquare, 15, 9));
}

TEST(Polygon, TheDirectionAroundTheOutlineDoesNotMatter) {
  Outline reversed(kSquare.rbegin(), kSquare.rend());
  for (UINT16 y = 8; y < 23; y++) {
    for (UINT16 x = 8; x < 23; x++) {
      EXPECT_EQ(Inside(kSquare, x, y), Inside(reversed, x, y)) << x << ", " << y;
    }
  }
}

TEST(Polygon, ANotchIsOutside) {
  const Outline notched = {{0, 0}, {30, 0}, {30, 30}, {15, 10}, {0, 30}};
  EXPECT_TRUE(Inside(notched, 15, 5));
  EXPECT_FALSE(Inside(notched, 15, 20));
  EXPECT_TRUE(Inside(notched, 2, 20));
  EXPECT_TRUE(Inside(notched, 28, 20));
}

TEST(Polygon, WhereTheOutlineCoversTwiceIsOutside) {
  // A star of five points, drawn in one stroke.
  const Outline star = {{50, 0}, {80, 90}, {5, 35}, {95, 35}, {20, 90}};
  EXPECT_FALSE(Inside(star, 50, 50));
  EXPECT_TRUE(Inside(star, 50, 15));
  EXPECT_TRUE(Inside(star, 15, 38));
}

TEST(Polygon, CrossingsAreComputedWithFractions) {
  const Outline slanted = {{0, 0}, {1, 3}, {0, 3}};
  EXPECT_FALSE(Inside(slanted, 0, 0));
  EXPECT_TRUE(Inside(slanted, 0, 1));
  EXPECT_TRUE(Inside(slanted, 0, 2));
  EXPECT_FALSE(Inside(slanted, 1, 2));
}

TEST(Polygon, CoordinatesGoUpToTheEndOf16Bits) {
  const Outline all = {{0, 0}, {65535, 0}, {65535, 65535}, {0, 65535}};
  EXPECT_TRUE(Inside(all, 0, 0));
  EXPECT_TRUE(Inside(all, 65534, 65534));
  EXPECT_FALSE(Inside(all, 65535, 65535));
  const Outline half = {{0, 0}, {65535, 65535}, {0, 65535}};
  EXPECT_TRUE(Inside(half, 32767, 32768));
  EXPECT_FALSE(Inside(half, 32768, 32768));
}

/// Paints with FillPolygon and compares every pixel with the point test.
void ExpectFillMatchesPoints(const Outline &outline, UINT32 width, UINT32 height) {
  constexpr UINT32 kColor = 0xAABBCCDD;
  constexpr UINT32 kBefore = 0x11223344;
  std::vector<UINT32> pixels(size_t{width} * height + 1, kBefore);
  FillPolygon(static_cast<UINT32>(outline.size()), outline.data(), pixels.data(), width, height,
              kColor);
  EXPECT_EQ(pixels.back(), kBefore);
  for (UINT32 y = 0; y < height; y++) {
    for (UINT32 x = 0; x < width; x++) {
      bool inside = Inside(outline, static_cast<UINT16>(x), static_cast<UINT16>(y));
      ASSERT_EQ(pixels[y * width + x], inside ? kColor : kBefore) << x << ", " << y;
    }
  }
}

TEST(Polygon, FillingPaintsExactlyThePointsInside) {
  ExpectFillMatchesPoints(kSquare, 32, 32);
  ExpectFillMatchesPoints(kSquare, 15, 15);
  ExpectFillMatchesPoints({}, 8, 8);
  std::mt19937 random(4);
  for (int round = 0; round < 200; round++) {
    Outline outline(1 + random() % OBV_VERTEX_CAPACITY);
    for (OBV_VERTEX &vertex : outline) {
      vertex = {static_cast<UINT16>(random() % 40), static_cast<UINT16>(random() % 40)};
    }
    ExpectFillMatchesPoints(outline, 32, 24);
  }
}

TEST(Polygon, FillingUsesNoMoreVerticesThanARecordHolds) {
  Outline outline(OBV_VERTEX_CAPACITY);
  for (UINT16 i = 0; i < outline.size(); i++) {
    outline[i] = {static_cast<UINT16>(i % 2 == 0 ? 0 : 30), i};
  }
  std::vector<UINT32> exact(64 * 64), beyond(64 * 64);
  FillPolygon(OBV_VERTEX_CAPACITY, outline.data(), exact.data(), 64, 64, 1);
  // The outline has no vertices behind its end: reading them would be caught.
  FillPolygon(1000, outline.data(), beyond.data(), 64, 64, 1);
  EXPECT_EQ(exact, beyond);
}

}  // namespace
