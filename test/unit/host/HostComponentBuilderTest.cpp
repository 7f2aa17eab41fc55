#include "test/unit/host/HostBoardBytes.h"

#include "host/portable/ComponentBuilder.h"

namespace obv_host {
namespace {

struct Geometry {
  UINT16 Width = 1920;
  UINT16 Height = 1080;
  double ScaleX = 1.0;
  double ScaleY = 1.0;
};

/// The middle one of the dot's eleven pixels, about which the view zooms it.
constexpr int kMiddleOfDot = 5;

class HostComponentBuilder : public testing::Test {
 protected:
  /// Builds component 0 of the parts.
  OBV_COMPONENT Build(const Geometry &geometry = {}) {
    bytes_ = Parts.Bytes();
    Board board;
    BoardFault fault;
    EXPECT_EQ(OpenBoard(bytes_.data(), bytes_.size(), &board, &fault), EFI_SUCCESS) << fault.Text;
    ViewRequest view = {
        .Mapping = MapPicture(Parts.Header.PictureHeight, Parts.Header.PictureWidth,
                              geometry.Height, geometry.Width, 0.75),
        .ScaleX = geometry.ScaleX,
        .ScaleY = geometry.ScaleY,
    };
    OBV_COMPONENT component;
    std::memset(&component, 0xCC, sizeof(component));
    BuildComponent(board, 0, view, Styles, &component);
    return component;
  }

  BoardParts Parts = BoardParts::Sound();
  BoardStyle Styles[2] = {};

 private:
  std::vector<UINT8> bytes_;
};

TEST_F(HostComponentBuilder, CopiesWhatTheBoardSays) {
  Parts.Components[0].Flags = kBoardNotSelectable | kBoardInSpecialGroup;
  Parts.Components[0].TextAlign = OBV_TEXT_RIGHT;
  OBV_COMPONENT component = Build();
  EXPECT_EQ(component.Type, static_cast<UINT32>(OBV_TYPE_PROCESSOR));
  EXPECT_EQ(component.SearchTokenId, 0x1234);
  EXPECT_EQ(component.NotSelectable, 1);
  EXPECT_EQ(component.InSpecialGroup, 1);
  EXPECT_EQ(component.CalloutSide, OBV_CALLOUT_BOTTOM);
  EXPECT_EQ(component.TextAlign, OBV_TEXT_RIGHT);
  EXPECT_EQ(StrCmp(component.Name, Ucs2(u"CPU")), 0);
}

TEST_F(HostComponentBuilder, EachFlagGoesToItsField) {
  Parts.Components[0].Flags = kBoardNotSelectable;
  OBV_COMPONENT locked = Build();
  EXPECT_EQ(locked.NotSelectable, 1);
  EXPECT_EQ(locked.InSpecialGroup, 0);
  Parts.Components[0].Flags = kBoardInSpecialGroup;
  OBV_COMPONENT special = Build();
  EXPECT_EQ(special.NotSelectable, 0);
  EXPECT_EQ(special.InSpecialGroup, 1);
}

TEST_F(HostComponentBuilder, ConvertsPointsToTheView) {
  OBV_COMPONENT component = Build();
  // 320 x 180 is shown as 1440 x 810 from line 135, in truncated steps of 56/256.
  ASSERT_EQ(component.HotspotVertexCount, 3);
  EXPECT_EQ(component.HotspotVertices[0].X, 46);
  EXPECT_EQ(component.HotspotVertices[0].Y, 135 + 46);
  ASSERT_EQ(component.LeaderPointCount, 2);
  EXPECT_EQ(component.LeaderPoints[1].X, 137);
  EXPECT_EQ(component.LeaderPoints[1].Y, 135 + 183);
  EXPECT_EQ(component.MarkerX + kMiddleOfDot, 50);
  EXPECT_EQ(component.MarkerY + kMiddleOfDot, 135 + 55);
}

TEST_F(HostComponentBuilder, MiddleOfTheDotIsTheAuthorsPointAtEverySize) {
  constexpr Geometry kGeometries[] = {
      {.Width = 1024, .Height = 768, .ScaleX = 0.7, .ScaleY = 0.8},
      {.Width = 1920, .Height = 1080},
      {.Width = 2560, .Height = 1440, .ScaleX = 4.0 / 3, .ScaleY = 4.0 / 3},
      {.Width = 3840, .Height = 2160, .ScaleX = 2.0, .ScaleY = 2.0},
  };
  Parts = BoardParts::Sound(2880, 1620);
  for (const Geometry &geometry : kGeometries) {
    for (BoardPoint point : {BoardPoint{0, 0}, {11, 12}, {1440, 810}, {2001, 1303}, {2877, 1617}}) {
      Parts.Components[0].Marker = point;
      OBV_COMPONENT component = Build(geometry);
      double x = point.X * (geometry.Width * 0.75 / 2880);
      double y = geometry.Height * 0.125 + point.Y * (geometry.Height * 0.75 / 1620);
      EXPECT_NEAR(component.MarkerX + kMiddleOfDot, x, 0.5) << geometry.Width << " " << +point.X;
      EXPECT_NEAR(component.MarkerY + kMiddleOfDot, y, 0.5) << geometry.Width << " " << +point.Y;
    }
  }
}

TEST_F(HostComponentBuilder, LeavesStatusAndInformationToTheQuery) {
  OBV_COMPONENT component = Build();
  EXPECT_EQ(component.Available + component.DeviceError + component.NotReady + component.NoMapping,
            0);
  EXPECT_EQ(component.InfoCount, 0U);
  OBV_COMPONENT_INFO none = {};
  EXPECT_EQ(std::memcmp(&component.Info[19], &none, sizeof(none)), 0);
}

TEST_F(HostComponentBuilder, PointsAtTheChosenStyle) {
  Parts.AddStyle();
  Parts.Components[0].StyleIndex = 1;
  OBV_COMPONENT component = Build();
  EXPECT_EQ(component.DefaultStyle, &Styles[1].Default);
  EXPECT_EQ(component.FocusStyle, &Styles[1].Focus);
}

TEST_F(HostComponentBuilder, LongestNameIsKeptWhole) {
  PutText(Parts.Components[0].Name, std::u16string(19, u'N'));
  OBV_COMPONENT component = Build();
  EXPECT_EQ(StrLen(component.Name), 19U);
}

TEST_F(HostComponentBuilder, CalloutTouchesTheAnchorWithTheNamedSide) {
  struct Expectation {
    UINT8 Side;
    double Left;  ///< Part of the width between the callout's left edge and the anchor.
    double Top;
  };
  const Expectation expectations[] = {
      {OBV_CALLOUT_KEEP, 0.5, 0.5},         {OBV_CALLOUT_RIGHT, 1.0, 0.5},
      {OBV_CALLOUT_BOTTOM_RIGHT, 1.0, 1.0}, {OBV_CALLOUT_BOTTOM, 0.5, 1.0},
      {OBV_CALLOUT_BOTTOM_LEFT, 0.0, 1.0},  {OBV_CALLOUT_LEFT, 0.0, 0.5},
      {OBV_CALLOUT_TOP_LEFT, 0.0, 0.0},     {OBV_CALLOUT_TOP, 0.5, 0.0},
      {OBV_CALLOUT_TOP_RIGHT, 1.0, 0.0},
  };
  for (const Expectation &expected : expectations) {
    Parts.Components[0].CalloutSide = expected.Side;
    OBV_COMPONENT component = Build();
    EXPECT_EQ(component.CalloutX, 137 - static_cast<int>(component.CalloutWidth * expected.Left))
        << int(expected.Side);
    EXPECT_EQ(component.CalloutY, 318 - static_cast<int>(component.CalloutHeight * expected.Top))
        << int(expected.Side);
  }
}

TEST_F(HostComponentBuilder, CalloutSizeFollowsNameAndScale) {
  OBV_COMPONENT normal = Build();
  EXPECT_EQ(normal.CalloutWidth, 3 * 8 + 4);
  EXPECT_EQ(normal.CalloutHeight, 18 + 4);
  OBV_COMPONENT small = Build({.ScaleX = 0.7, .ScaleY = 0.8});
  EXPECT_EQ(small.CalloutWidth, 16 + 4);
  EXPECT_EQ(small.CalloutHeight, 14 + 4);
}

}  // namespace
}  // namespace obv_host
