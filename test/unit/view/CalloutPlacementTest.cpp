// Where callouts stand at the ends of their leader lines.

#include "test/unit/stage/ViewStage.h"

#include "view/CalloutPlacement.h"

inline bool operator==(const OBV_POINT &a, const OBV_POINT &b) { return a.X == b.X && a.Y == b.Y; }

inline std::ostream &operator<<(std::ostream &out, const OBV_POINT &point) {
  return out << "(" << point.X << ", " << point.Y << ")";
}

namespace {

constexpr OBV_POINT kOwn = {-3, 12345};

TEST(CalloutPlacement, EachSideTouchesTheAnchor) {
  // The anchor is (500, 300); 61 x 25 pixels have halves of 30 and 12.
  const OBV_POINT expected[] = {
      kOwn,       {439, 288}, {439, 275}, {470, 275}, {500, 275},
      {500, 288}, {500, 300}, {470, 300}, {439, 300}, kOwn,
  };
  for (INT32 side = 0; side <= 9; side++) {
    EXPECT_EQ(PlaceAtAnchor(side, {500, 300}, 61, 25, kOwn), expected[side]) << side;
  }
}

TEST(CalloutPlacement, UnknownSidesKeepTheRecordsOwnPlace) {
  for (INT32 side : {9, 10, 255, 256, 257, 65537, 0x7FFFFFFF, -1, -2, INT32{-0x7FFFFFFF} - 1}) {
    EXPECT_EQ(PlaceAtAnchor(side, {500, 300}, 61, 25, kOwn), kOwn) << side;
  }
}

TEST(CalloutPlacement, EvenAndOddHalvesRoundDown) {
  EXPECT_EQ(PlaceAtAnchor(OBV_CALLOUT_BOTTOM, {100, 100}, 10, 10, kOwn), (OBV_POINT{95, 90}));
  EXPECT_EQ(PlaceAtAnchor(OBV_CALLOUT_BOTTOM, {100, 100}, 11, 11, kOwn), (OBV_POINT{95, 89}));
  EXPECT_EQ(PlaceAtAnchor(OBV_CALLOUT_RIGHT, {100, 100}, 1, 1, kOwn), (OBV_POINT{99, 100}));
}

TEST(CalloutPlacement, AnchorsNearTheOriginGiveNegativePlaces) {
  EXPECT_EQ(PlaceAtAnchor(OBV_CALLOUT_BOTTOM_RIGHT, {5, 3}, 40, 20, kOwn), (OBV_POINT{-35, -17}));
}

TEST(CalloutPlacement, ArithmeticWrapsAt16Bits) {
  EXPECT_EQ(PlaceAtAnchor(OBV_CALLOUT_BOTTOM_RIGHT, {-32768, -32768}, 1, 2, kOwn),
            (OBV_POINT{32767, 32766}));
  EXPECT_EQ(PlaceAtAnchor(OBV_CALLOUT_BOTTOM_RIGHT, {0, 0}, 65535, 40000, kOwn),
            (OBV_POINT{1, 25536}));
  EXPECT_EQ(PlaceAtAnchor(OBV_CALLOUT_TOP, {0, 0}, 65535, 9, kOwn), (OBV_POINT{-32767, 0}));
}

// In the built view.

class PlacedCallout : public ViewStage {
 protected:
  PlacedCallout() {
    Host.ScaleComponents = false;
    Host.Components.clear();
  }
  OBV_COMPONENT &Add(INT32 side, std::u16string_view name = u"SATA_12") {
    OBV_COMPONENT &component = Host.AddComponent(name, OBV_TYPE_SATA, 1, 600, 400);
    component.CalloutSide = side;
    component.LeaderPointCount = 3;
    component.LeaderPoints[0] = {640, 400};
    component.LeaderPoints[1] = {640, 380};
    component.LeaderPoints[2] = {660, 350};
    component.LeaderPoints[3] = {9, 9};
    component.CalloutX = 111;
    component.CalloutY = 222;
    component.CalloutWidth = 333;
    component.CalloutHeight = 99;
    return component;
  }
  static Place Callout(size_t index) { return PlaceOf(gView.Components[index].Callout); }
  static Place Label(size_t index) {
    return PlaceOf(lv_obj_get_child(gView.Components[index].Callout, 0));
  }
};

TEST_F(PlacedCallout, Side6PutsTheTopLeftCornerExactlyOnTheAnchor) {
  Add(OBV_CALLOUT_TOP_LEFT);
  Build();
  EXPECT_EQ(Callout(0).X, 660);
  EXPECT_EQ(Callout(0).Y, 350);
}

TEST_F(PlacedCallout, Side0StaysAtTheRecordsPlaceAndIsStillResized) {
  Add(OBV_CALLOUT_KEEP);
  Build();
  EXPECT_EQ(Callout(0), (Place{111, 222, Label(0).Width + 4, Label(0).Height + 4}));
  EXPECT_LT(Callout(0).Width, 333);
}

TEST_F(PlacedCallout, EverySideTouchesTheLastLeaderPoint) {
  for (INT32 side = 0; side <= 9; side++) {
    Add(side);
  }
  Build();
  int w = Label(0).Width + 4;
  int h = Label(0).Height + 4;
  ASSERT_GT(w, 30);
  ASSERT_GT(h, 12);
  const Place expected[] = {
      {111, 222, w, h},         {660 - w, 350 - h / 2, w, h},
      {660 - w, 350 - h, w, h}, {660 - w / 2, 350 - h, w, h},
      {660, 350 - h, w, h},     {660, 350 - h / 2, w, h},
      {660, 350, w, h},         {660 - w / 2, 350, w, h},
      {660 - w, 350, w, h},     {111, 222, w, h},
  };
  for (size_t side = 0; side <= 9; side++) {
    EXPECT_EQ(Callout(side), expected[side]) << side;
  }
}

TEST_F(PlacedCallout, RecordsHoldThePlacedRectangle) {
  Add(OBV_CALLOUT_BOTTOM);
  Add(OBV_CALLOUT_KEEP, u"M");
  Build();
  for (size_t i = 0; i < 2; i++) {
    const OBV_COMPONENT &record = Host.Components[i];
    EXPECT_EQ(Callout(i),
              (Place{record.CalloutX, record.CalloutY, record.CalloutWidth, record.CalloutHeight}))
        << i;
  }
}

TEST_F(PlacedCallout, MarksCountForTheSize) {
  Add(OBV_CALLOUT_BOTTOM, u"A");
  Add(OBV_CALLOUT_BOTTOM, u"B").SearchTokenId = 0;
  Build();
  EXPECT_GT(Callout(1).Width, Callout(0).Width);
}

TEST_F(PlacedCallout, LeaderLineWithoutPointsKeepsTheCalloutWhereItIs) {
  Add(OBV_CALLOUT_TOP_LEFT).LeaderPointCount = 0;
  Build();
  EXPECT_EQ(Callout(0), (Place{111, 222, Label(0).Width + 4, Label(0).Height + 4}));
}

TEST_F(PlacedCallout, PointCountBeyondTheTableUsesItsLastPoint) {
  for (UINT16 count : {20, 21, 65535}) {
    OBV_COMPONENT &component = Add(OBV_CALLOUT_TOP_LEFT);
    component.LeaderPoints[19] = {700, 500};
    component.LeaderPointCount = count;
  }
  Build();
  for (size_t i = 0; i < 3; i++) {
    EXPECT_EQ(Callout(i).X, 700) << i;
    EXPECT_EQ(Callout(i).Y, 500) << i;
  }
}

TEST_F(PlacedCallout, CalloutsMayLieOutsideTheScreen) {
  OBV_COMPONENT &component = Add(OBV_CALLOUT_BOTTOM_RIGHT);
  component.LeaderPoints[2] = {2, 1};
  Build();
  EXPECT_EQ(Callout(0).X, 2 - Callout(0).Width);
  lv_timer_handler();
}

}  // namespace
