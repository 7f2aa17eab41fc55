// Presses of the pointer that begin or end while a box opens.

#include "test/unit/stage/BoxLooks.h"
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
  Then([this] { PointAt(PlaceOf(gView.FilterButtons[3]), true); });
  ThenScan(SCAN_F12);
  ThenBoxIsUntouched();
  Then([this] { PointAt(PlaceOf(gView.FilterButtons[3]), false); });
  ThenBoxIsUntouched();
  ThenScan(SCAN_ESC);
  Run();
  EXPECT_TRUE(RanToTheEnd());
}

TEST_F(BoxPress, CalloutThatWasHeldDownDoesNotJumpWhenLetGo) {
  Then([this] { PointAt(PlaceOf(gView.Components[0].Callout), true); });
  ThenScan(SCAN_F12);
  Then([this] { PointAt(PlaceOf(gView.Components[0].Callout), false); });
  ThenBoxIsUntouched();
  Then([] { EXPECT_FALSE(lv_obj_has_state(gView.Components[0].Callout, LV_STATE_PRESSED)); });
  ThenScan(SCAN_ESC);
  Run();
  EXPECT_TRUE(RanToTheEnd());
}

TEST_F(BoxPress, PressInTheTurnThatOpensTheBoxDoesNotReachTheView) {
  Then([this] {
    Machine.Keyboard.Scan(SCAN_F12);
    PointAt(PlaceOf(gView.CloseButton), true);
  });
  ThenBoxIsUntouched();
  Then([this] { PointAt(PlaceOf(gView.CloseButton), false); });
  ThenBoxIsUntouched();
  ThenScan(SCAN_ESC);
  Run();
  EXPECT_TRUE(RanToTheEnd());
}

TEST_F(BoxPress, ClickAfterADroppedPressWorks) {
  Then([this] { PointAt(PlaceOf(gView.Components[0].Callout), true); });
  ThenScan(SCAN_F12);
  Then([this] { PointAt(PlaceOf(gView.Components[0].Callout), false); });
  ThenClick([] { return ButtonPlace(1); });
  Then([] { EXPECT_FALSE(BoxIsOpen()); });
  Run();
  EXPECT_TRUE(Host.Logged("F12ScreenShots Canceled\n"));
}

}  // namespace
