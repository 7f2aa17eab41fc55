// Status dots on the screen: each is centred on the point that the board's author gave.

#include "test/picture/ReferenceRun.h"

#include <cmath>

#include "test/firmware/Png.h"
#include "test/unit/host/HostBoardBytes.h"

namespace picture {
namespace {

using obv_host::BoardParts;
using obv_host::BoardPoint;

constexpr uint16_t kWidth = 2880;
constexpr uint16_t kHeight = 1620;
constexpr BoardPoint kPoints[] = {{700, 400}, {1441, 601}, {2003, 905}};

/// Farther from its centre no dot reaches, and no two points are that close.
constexpr uint32_t kReach = 40;

class StatusDot : public ReferenceRun {
 protected:
  /// A black picture with a green dot at each point, their callouts at the bottom.
  static std::vector<uint8_t> Board() {
    BoardParts parts = BoardParts::Sound(kWidth, kHeight);
    parts.Components.clear();
    parts.Infos.clear();
    parts.Header.MarkerTheme = OBV_MARKER_GREEN;
    for (const BoardPoint &point : kPoints) {
      auto number = static_cast<char16_t>(u'1' + parts.Components.size());
      parts.AddComponent(std::u16string(u"USB_") + number, OBV_TYPE_USB);
      obv_host::BoardComponent &component = parts.Components.back();
      component.Marker = point;
      component.LeaderPointCount = 1;
      component.LeaderPoints[0] = {point.X, kHeight - 20};
    }
    parts.Picture = fake::MakePng(kWidth, kHeight, [](uint32_t, uint32_t) { return 0xFFu; });
    return parts.Bytes();
  }

  /// The mean position of what is green around a pixel.
  static std::pair<double, double> CentreOfGreen(const Screen &screen, double x, double y) {
    double sum = 0;
    double sumX = 0;
    double sumY = 0;
    auto left = static_cast<uint32_t>(x) - kReach;
    auto top = static_cast<uint32_t>(y) - kReach;
    for (uint32_t row = top; row <= top + 2 * kReach; row++) {
      for (uint32_t column = left; column <= left + 2 * kReach; column++) {
        uint32_t green = screen.Pixels[size_t{row} * screen.Width + column] >> 8 & 0xFF;
        sum += green;
        sumX += green * column;
        sumY += green * row;
      }
    }
    EXPECT_GT(sum, 20 * 255) << "no dot";
    return {sumX / sum, sumY / sum};
  }

  void ExpectCentred(uint32_t width, uint32_t height) {
    Screen screen = Show({{width, height}}, Board());
    ASSERT_EQ(screen.Width, width);
    for (const BoardPoint &point : kPoints) {
      double x = point.X * (width * 0.75 / kWidth);
      double y = height * 0.125 + point.Y * (height * 0.75 / kHeight);
      auto [seenX, seenY] = CentreOfGreen(screen, x, y);
      // The host rounds to the nearest pixel.
      EXPECT_NEAR(seenX, x, 0.6) << +point.X;
      EXPECT_NEAR(seenY, y, 0.6) << +point.Y;
    }
  }
};

TEST_F(StatusDot, CentredAt1024x768) { ExpectCentred(1024, 768); }
TEST_F(StatusDot, CentredAt1920x1080) { ExpectCentred(1920, 1080); }
TEST_F(StatusDot, CentredAt2560x1440) { ExpectCentred(2560, 1440); }
TEST_F(StatusDot, CentredAt3840x2160) { ExpectCentred(3840, 2160); }

}  // namespace
}  // namespace picture
