// Keys while a result box is open.

#include "test/unit/stage/BoxLooks.h"
#include "test/unit/stage/RunScript.h"

#include "app/base/Run.h"
#include "platform/LvglPort.h"

namespace {

// The box of the outcome, here of a view without any volume.
class ResultKeys : public RunScript {
 protected:
  ResultKeys() {
    LeaveFontsOut();
    ThenFocus(3);
    ThenScan(SCAN_F12);
    Then([] { ASSERT_TRUE(BoxIsOpen()); });
  }
};

TEST_F(ResultKeys, EnterClosesItAndGivesTheFocusBack) {
  ThenEnter();
  Then([] {
    EXPECT_FALSE(BoxIsOpen());
    EXPECT_EQ(Focused(), gView.Components[3].Callout);
    EXPECT_FALSE(IsHidden(gView.Components[3].Hotspot));
  });
  Run();
  EXPECT_TRUE(RanToTheEnd());
  EXPECT_TRUE(Host.Logged("0 Button OK was clicked\n"));
}

TEST_F(ResultKeys, EscClosesItAndNotTheView) {
  ThenScan(SCAN_ESC);
  Then([] { EXPECT_FALSE(BoxIsOpen()); });
  Run();
  EXPECT_TRUE(RanToTheEnd());
  EXPECT_FALSE(Host.Logged("0 Button OK was clicked\n"));
}

TEST_F(ResultKeys, ItsOneButtonStaysSelected) {
  for (UINT16 key : {SCAN_DOWN, SCAN_UP, SCAN_LEFT, SCAN_RIGHT, SCAN_PAGE_DOWN, SCAN_PAGE_UP}) {
    ThenScan(key);
    Then([] { EXPECT_EQ(SelectedButton(), 0); });
  }
  ThenEnter();
  Run();
  EXPECT_TRUE(Host.Logged("0 Button OK was clicked\n"));
}

TEST_F(ResultKeys, F12OpensAnotherAfterItWasClosed) {
  ThenEnter();
  ThenScan(SCAN_F12);
  Then([] { EXPECT_TRUE(BoxIsOpen()); });
  ThenEnter();
  Then([] { EXPECT_EQ(Focused(), gView.Components[3].Callout); });
  Run();
  EXPECT_TRUE(RanToTheEnd());
}

TEST_F(ResultKeys, ObjectThatLeftTheGroupDoesNotGetTheFocusBack) {
  Then([] { lv_group_remove_obj(gView.Components[3].Callout); });
  ThenEnter();
  Then([] {
    EXPECT_FALSE(BoxIsOpen());
    EXPECT_NE(Focused(), gView.Components[3].Callout);
  });
  Run();
  EXPECT_TRUE(RanToTheEnd());
}

// LVGL thaws a group whose focused object goes, so that the focus comes back from here, too.
TEST_F(ResultKeys, FrozenGroupIsThawedWithTheBox) {
  Then([] { lv_group_focus_freeze(gLvglPort.Group, true); });
  ThenEnter();
  Then([] {
    EXPECT_FALSE(BoxIsOpen());
    EXPECT_FALSE(gLvglPort.Group->frozen);
    EXPECT_EQ(lv_obj_get_screen(Focused()), lv_disp_get_scr_act(nullptr));
  });
  Run();
  EXPECT_TRUE(RanToTheEnd());
}

}  // namespace
