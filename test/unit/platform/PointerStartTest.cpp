// Where the pointer starts, its cursor, and the drain of old movement.

#include "test/unit/stage/PortStage.h"

#include "app/base/Geometry.h"
#include "platform/CursorImage.h"
#include "platform/Pointer.h"

namespace {

using fake::Service;

class PointerStart : public PortStage {
 protected:
  PointerStart() {
    LeaveFontsOut();
    SetView(1921, 1081);
    gGeometry.PreviousWidth = 1280;
    gGeometry.PreviousHeight = 1024;
  }
  void Start() {
    Machine.AddSimplePointer();
    Machine.AddAbsolutePointer();
    InitializeLvglPort();
  }
  static lv_indev_t *Device() {
    lv_indev_t *device = lv_indev_get_next(nullptr);
    while (device->driver->type != LV_INDEV_TYPE_POINTER) {
      device = lv_indev_get_next(device);
    }
    return device;
  }
  /// Where the cursor's tip is drawn.
  static void ExpectCursor(int x, int y) {
    lv_obj_t *cursor = Device()->cursor;
    lv_obj_update_layout(cursor);
    lv_area_t place;
    lv_obj_get_coords(cursor, &place);
    EXPECT_EQ(place.x1, x);
    EXPECT_EQ(place.y1, y);
  }
  static void ExpectStart(int x, int y) {
    EXPECT_EQ(gPointer.X, x);
    EXPECT_EQ(gPointer.Y, y);
    EXPECT_EQ(Device()->proc.types.pointer.act_point.x, x);
    EXPECT_EQ(Device()->proc.types.pointer.act_point.y, y);
  }
};

TEST_F(PointerStart, WithoutASavedPositionItIsTheMiddleRoundedDown) {
  Start();
  ExpectStart(960, 540);
}

TEST_F(PointerStart, AnUnsavedPositionOtherThanTheCornerCounts) {
  Host.State.PointerY = 512;
  Start();
  ExpectStart(0, 512 * 1081 / 1024);
}

TEST_F(PointerStart, ASavedPositionIsScaledFromTheSetupsScreenAndTruncated) {
  Host.State.UiStateSaved = 1;
  Host.State.PointerX = 642;
  Host.State.PointerY = 513;
  Start();
  // 963.5 and 541.6
  ExpectStart(963, 541);
}

TEST_F(PointerStart, AnUnsavedPositionOnTheUpperEdgeCounts) {
  Host.State.PointerX = 200;
  Start();
  ExpectStart(300, 0);
}

TEST_F(PointerStart, TheCornerIsAPositionWhenItWasSaved) {
  Host.State.UiStateSaved = 1;
  Start();
  ExpectStart(0, 0);
}

TEST_F(PointerStart, WithoutTheSetupsSizeASavedPositionIsTheMiddle) {
  Host.State.UiStateSaved = 1;
  Host.State.PointerX = 641;
  Host.State.PointerY = 511;
  gGeometry.PreviousWidth = 0;
  gGeometry.PreviousHeight = 0;
  Start();
  ExpectStart(960, 540);
}

TEST_F(PointerStart, EachAxisHasItsOwnSetupSize) {
  Host.State.UiStateSaved = 1;
  Host.State.PointerX = 641;
  Host.State.PointerY = 511;
  gGeometry.PreviousHeight = 0;
  Start();
  ExpectStart(641 * 1921 / 1280, 540);
}

TEST_F(PointerStart, OldMovementIsDropped) {
  Machine.AddSimplePointer();
  Machine.AddAbsolutePointer();
  for (int i = 0; i < 12; i++) {
    Machine.Mouse()->Move(1, 0);
  }
  InitializeLvglPort();
  EXPECT_EQ(Machine.Calls.CountOf(Service::PointerGetState), 11u);
  EXPECT_EQ(Machine.Mouse()->Waiting(), 1u);
  ExpectStart(960, 540);
}

TEST_F(PointerStart, WithoutAMouseNothingIsDrained) {
  Machine.AddAbsolutePointer();
  Machine.Tablet()->MoveTo(1, 1);
  InitializeLvglPort();
  EXPECT_EQ(Machine.Calls.CountOf(Service::PointerGetState), 0u);
  EXPECT_EQ(Machine.Calls.CountOf(Service::AbsoluteGetState), 0u);
  EXPECT_EQ(Log()[0], Error("[GetMouseProtocol] Error occurs: Unsupported\n"));
}

TEST_F(PointerStart, WithoutATabletThePointerStaysInTheCorner) {
  Machine.AddSimplePointer();
  InitializeLvglPort();
  EXPECT_EQ(Log()[0], Error("[GetMouseProtocol] Error occurs: Unsupported\n"));
  EXPECT_EQ(Device()->proc.types.pointer.act_point.x, 960);
  EXPECT_EQ(gPointer.Simple, nullptr);
  Machine.Mouse()->Move(5, 5, true);
  lv_indev_data_t data = {};
  for (int i = 0; i < 3; i++) {
    PointerRead(nullptr, &data);
    EXPECT_EQ(data.point.x, 0);
    EXPECT_EQ(data.point.y, 0);
    EXPECT_EQ(data.state, LV_INDEV_STATE_RELEASED);
  }
}

TEST_F(PointerStart, WithoutDevicesTheFirstReadingMovesTheCursorToTheCorner) {
  SetView(1920, 1080);
  InitializeLvglPort();
  ExpectCursor(960, 540);
  lv_indev_read_timer_cb(Device()->driver->read_timer);
  ExpectCursor(0, 0);
}

TEST_F(PointerStart, TheCursorStaysAtTheStartUntilTheDevicesHaveNews) {
  Start();
  lv_indev_read_timer_cb(Device()->driver->read_timer);
  ExpectCursor(960, 540);
  Machine.Mouse()->Move(-10, 5);
  lv_indev_read_timer_cb(Device()->driver->read_timer);
  ExpectCursor(960 - 140, 540 + 70);
}

TEST_F(PointerStart, TheCursorLiesOnTheSystemLayerUnzoomedAt1920) {
  Start();
  lv_obj_t *cursor = Device()->cursor;
  ASSERT_NE(cursor, nullptr);
  EXPECT_EQ(lv_obj_get_parent(cursor), lv_layer_sys());
  EXPECT_EQ(lv_img_get_src(cursor), &kCursorImage);
  EXPECT_EQ(lv_img_get_zoom(cursor), 256);
}

TEST_F(PointerStart, TheCursorsZoomIsTruncated) {
  gGeometry.ScaleX = 0.8;
  Start();
  // 204.8
  EXPECT_EQ(lv_img_get_zoom(Device()->cursor), 204);
}

}  // namespace
