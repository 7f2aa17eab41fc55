// The focus that follows the pointer.

#include "test/unit/stage/ComponentStage.h"

#include "capture/MessageBox.h"
#include "platform/Pointer.h"

namespace {

class HoverFocus : public ComponentStage {
 protected:
  /// A component whose outline is this rectangle, with its callout far away from it.
  OBV_COMPONENT &Add(UINT16 left, UINT16 top, UINT16 right, UINT16 bottom, UINT32 type = 0) {
    auto number = static_cast<INT16>(Host.Components.size());
    OBV_COMPONENT &component = Host.AddComponent(u"C", type, 1, 0, 0);
    component.HotspotVertices[0] = {left, top};
    component.HotspotVertices[1] = {right, top};
    component.HotspotVertices[2] = {right, bottom};
    component.HotspotVertices[3] = {left, bottom};
    PlaceCallout(component, 1700, static_cast<INT16>(100 + number * 7), 100, 5);
    return component;
  }
  /// Keeps the callout where it is put.
  static void PlaceCallout(OBV_COMPONENT &component, INT16 x, INT16 y, UINT16 width,
                           UINT16 height) {
    component.CalloutSide = OBV_CALLOUT_KEEP;
    component.CalloutX = x;
    component.CalloutY = y;
    component.CalloutWidth = width;
    component.CalloutHeight = height;
  }
  /// The component that has the focus once the pointer is there; -1 for none.
  static int FocusAt(UINT16 x, UINT16 y, BOOLEAN pressed = FALSE) {
    UpdateHoverFocus(x, y, pressed);
    return FocusedComponent();
  }
  static int FocusedComponent() {
    lv_obj_t *focused = Focused();
    for (int i = 0; i < static_cast<int>(kMaxViewComponents); i++) {
      if (focused != nullptr && gView.Components[i].Callout == focused) {
        return i;
      }
    }
    return -1;
  }
};

TEST_F(HoverFocus, TheOutlineTakesTheFocus) {
  Add(100, 100, 200, 150);
  Add(300, 100, 400, 150);
  Build();
  EXPECT_EQ(FocusAt(350, 120), 1);
  EXPECT_EQ(FocusAt(100, 100), 0);
  EXPECT_EQ(FocusAt(300, 149), 1);
}

TEST_F(HoverFocus, WhereNoComponentLiesTheFocusStays) {
  Add(100, 100, 200, 150);
  Build();
  EXPECT_EQ(FocusAt(99, 120), -1);
  EXPECT_EQ(FocusAt(150, 120), 0);
  EXPECT_EQ(FocusAt(200, 120), 0);
  EXPECT_EQ(FocusAt(900, 900), 0);
}

TEST_F(HoverFocus, OfOverlappingComponentsTheLowerIndexTakesTheFocus) {
  Add(100, 100, 200, 200);
  Add(150, 150, 250, 250);
  Build();
  EXPECT_EQ(FocusAt(220, 220), 1);
  EXPECT_EQ(FocusAt(170, 170), 0);
}

TEST_F(HoverFocus, TheCalloutTakesTheFocusUpToItsEdges) {
  Add(100, 100, 110, 110);
  Add(300, 300, 310, 310);
  Build();
  PlaceCallout(gComponents.Components[0], 1000, 100, 100, 30);
  PlaceCallout(gComponents.Components[1], 1000, 140, 100, 30);
  UpdateHoverFocus(105, 105, FALSE);
  EXPECT_EQ(FocusAt(999, 140), 0);
  EXPECT_EQ(FocusAt(1000, 139), 0);
  EXPECT_EQ(FocusAt(1000, 140), 1);
  UpdateHoverFocus(105, 105, FALSE);
  EXPECT_EQ(FocusAt(1100, 169), 0);
  EXPECT_EQ(FocusAt(1099, 170), 0);
  EXPECT_EQ(FocusAt(1099, 169), 1);
}

TEST_F(HoverFocus, ACalloutLeftOfTheScreenIsHitByNoPoint) {
  Add(100, 100, 110, 110);
  Build();
  PlaceCallout(gComponents.Components[0], -5, 200, 100, 30);
  EXPECT_EQ(FocusAt(0, 210), -1);
  PlaceCallout(gComponents.Components[0], 200, -5, 100, 30);
  EXPECT_EQ(FocusAt(210, 0), -1);
}

TEST_F(HoverFocus, ACalloutWithoutSizeIsHitByNoPoint) {
  Add(100, 100, 110, 110);
  Build();
  PlaceCallout(gComponents.Components[0], 500, 500, 0, 30);
  EXPECT_EQ(FocusAt(500, 510), -1);
}

TEST_F(HoverFocus, AComponentThatCannotBeSelectedIsPassedOver) {
  Add(100, 100, 200, 200).NotSelectable = 1;
  Add(100, 100, 200, 200);
  Build();
  EXPECT_EQ(FocusAt(150, 150), 1);
}

TEST_F(HoverFocus, OnlyTheFilteredCategoryTakesTheFocus) {
  Add(100, 100, 200, 200, OBV_TYPE_USB);
  Add(100, 100, 200, 200, OBV_TYPE_SATA);
  Build();
  gView.CategoryFilter = OBV_TYPE_SATA;
  EXPECT_EQ(FocusAt(150, 150), 1);
  gView.CategoryFilter = 0;
  EXPECT_EQ(FocusAt(150, 150), 0);
}

TEST_F(HoverFocus, TheSpecialGroupsFilterLetsNoOtherTypeTakeTheFocus) {
  Add(100, 100, 200, 200, OBV_TYPE_USB).InSpecialGroup = 1;
  Build();
  gView.CategoryFilter = 254;
  EXPECT_EQ(FocusAt(150, 150), -1);
}

TEST_F(HoverFocus, AnOpenMessageBoxTurnsItOff) {
  Add(100, 100, 200, 200);
  Build();
  gMessageBox.ModalMessageBoxOpen = true;
  EXPECT_EQ(FocusAt(150, 150), -1);
  gMessageBox.ModalMessageBoxOpen = false;
  EXPECT_EQ(FocusAt(150, 150), 0);
}

TEST_F(HoverFocus, TheButtonPlaysNoPart) {
  Add(100, 100, 200, 200);
  Build();
  EXPECT_EQ(FocusAt(150, 150, TRUE), 0);
}

TEST_F(HoverFocus, AReadingWithoutNewsLeavesTheFocusAlone) {
  Machine.AddSimplePointer();
  Machine.AddAbsolutePointer({.MinX = 0, .MinY = 0, .MaxX = 1920, .MaxY = 1080});
  Add(100, 100, 200, 200);
  Build();
  lv_indev_data_t data = {};
  Machine.Tablet()->MoveTo(150, 160, 1);
  PointerRead(nullptr, &data);
  EXPECT_EQ(FocusedComponent(), 0);
  lv_group_focus_obj(gView.CloseButton);
  PointerRead(nullptr, &data);
  EXPECT_EQ(Focused(), gView.CloseButton);
  EXPECT_EQ(gPointer.X, 150);
  EXPECT_EQ(gPointer.Y, 160);
  EXPECT_TRUE(gPointer.Pressed);
  // With news it follows again, though the pointer has not moved.
  Machine.Mouse()->Move(0, 0);
  PointerRead(nullptr, &data);
  EXPECT_EQ(FocusedComponent(), 0);
}

TEST_F(HoverFocus, AFocusedCalloutIsNotFocusedAgain) {
  Add(100, 100, 200, 200);
  Build();
  UpdateHoverFocus(150, 150, FALSE);
  int events = 0;
  lv_obj_add_event_cb(
      gView.Components[0].Callout,
      [](lv_event_t *event) { ++*static_cast<int *>(event->user_data); }, LV_EVENT_FOCUSED,
      &events);
  UpdateHoverFocus(151, 151, FALSE);
  EXPECT_EQ(events, 0);
}

TEST_F(HoverFocus, TheHostsCountIsReadEachTime) {
  Add(100, 100, 200, 200);
  Add(300, 300, 400, 400);
  Build();
  Host.State.ComponentCount = 1;
  EXPECT_EQ(FocusAt(350, 350), -1);
  Host.State.ComponentCount = 2;
  EXPECT_EQ(FocusAt(350, 350), 1);
}

TEST_F(HoverFocus, ComponentsBeyondTheViewsTablesAreIgnored) {
  for (UINT16 i = 0; i < 130; i++) {
    Add(static_cast<UINT16>(i * 10), 500, static_cast<UINT16>(i * 10 + 10), 510);
  }
  Build();
  EXPECT_EQ(FocusAt(995, 505), 99);
  EXPECT_EQ(FocusAt(1005, 505), 99);
}

TEST_F(HoverFocus, AnOutlineNeverHasMoreVerticesThanItsTable) {
  OBV_COMPONENT &component = Add(100, 100, 200, 200);
  std::fill_n(component.HotspotVertices, OBV_VERTEX_CAPACITY, OBV_VERTEX{0, 0});
  component.LeaderPoints[0] = {100, 100};
  component.LeaderPoints[1] = {300, 300};
  component.HotspotVertices[38] = {100, 100};
  component.HotspotVertices[39] = {100, 300};
  Build();
  gComponents.Components[0].HotspotVertexCount = 40;
  bool inside = FocusAt(80, 200) == 0;
  lv_group_focus_obj(gView.CloseButton);
  gComponents.Components[0].HotspotVertexCount = 65535;
  EXPECT_EQ(FocusAt(80, 200) == 0, inside);
}

}  // namespace
