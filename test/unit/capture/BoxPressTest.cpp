// Presses of the pointer that begin or end while a box opens.

#include "test/unit/stage/BoxStage.h"
#include "test/unit/stage/RunScript.h"

#include "app/base/Run.h"

namespace {

class BoxPress : public RunScript {
 protected:
  BoxPress() {
    LeaveFontsOut();
    Machine.AddVolume();
    AddTablet();
  }
  /// The tablet in the middle of an object.
  void Point(lv_obj_t *object, bool pressed) {
    Place place = PlaceOf(object);
    Machine.Tablet()->MoveTo(static_cast<UINT64>(place.X + place.Width / 2),
                             static_cast<UINT64>(place.Y + place.Height / 2), pressed ? 1 : 0);
  }
  void ThenBoxIsUntouched() {
    Then([] {
      ASSERT_TRUE(BoxIsOpen());
      EXPECT_EQ(Focused(), BoxButtons());
      EXPECT_FALSE(gRun.ExitRequested);
      EXPECT_EQ(gView.CategoryFilter, 0u);
    });
  }
};

TEST_F(BoxPress, FilterButtonThatWasHeldDownDoesNotActWhenLetGo) {
  Then([this] { Point(gView.FilterButtons[3], true); });
  ThenScan(SCAN_F12);
  ThenBoxIsUntouched();
  Then([this] { Point(gView.FilterButtons[3], false); });
  ThenBoxIsUntouched();
  ThenScan(SCAN_ESC);
  Run();
  EXPECT_TRUE(RanToTheEnd());
}

TEST_F(BoxPress, CalloutThatWasHeldDownDoesNotJumpWhenLetGo) {
  Then([this] { Point(gView.Components[0].Callout, true); });
  ThenScan(SCAN_F12);
  Then([this] { Point(gView.Components[0].Callout, false); });
  ThenBoxIsUntouched();
  Then([] { EXPECT_FALSE(lv_obj_has_state(gView.Components[0].Callout, LV_STATE_PRESSED)); });
  ThenScan(SCAN_ESC);
  Run();
  EXPECT_TRUE(RanToTheEnd());
}

TEST_F(BoxPress, PressInTheTurnThatOpensTheBoxDoesNotReachTheView) {
  Then([this] {
    Machine.Keyboard.Scan(SCAN_F12);
    Point(gView.CloseButton, true);
  });
  ThenBoxIsUntouched();
  Then([this] { Point(gView.CloseButton, false); });
  ThenBoxIsUntouched();
  ThenScan(SCAN_ESC);
  Run();
  EXPECT_TRUE(RanToTheEnd());
}

TEST_F(BoxPress, ClickAfterADroppedPressWorks) {
  Then([this] { Point(gView.Components[0].Callout, true); });
  ThenScan(SCAN_F12);
  Then([this] { Point(gView.Components[0].Callout, false); });
  for (bool pressed : {false, true, false}) {
    Then([this, pressed] {
      auto *matrix = reinterpret_cast<lv_btnmatrix_t *>(BoxButtons());
      Place place = PlaceOf(BoxButtons());
      const lv_area_t &cancel = matrix->button_areas[1];
      Machine.Tablet()->MoveTo(static_cast<UINT64>(place.X + (cancel.x1 + cancel.x2) / 2),
                               static_cast<UINT64>(place.Y + (cancel.y1 + cancel.y2) / 2), pressed);
    });
  }
  Then([] { EXPECT_FALSE(BoxIsOpen()); });
  Run();
  EXPECT_TRUE(Host.Logged("F12ScreenShots Canceled\n"));
}

}  // namespace
