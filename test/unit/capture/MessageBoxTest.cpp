// Keys and clicks in the message boxes, and what becomes of the focus.

#include "test/unit/stage/BoxLooks.h"
#include "test/unit/stage/RunScript.h"

#include "app/base/Run.h"

namespace {

// Three sticks, so that the choice has four buttons; F12 opens it over a focused callout.
class ChoiceKeys : public RunScript {
 protected:
  ChoiceKeys() {
    LeaveFontsOut();
    for (int i = 0; i < 3; i++) {
      sticks_.push_back(&Machine.AddVolume());
    }
    ThenFocus(kFocused);
    ThenScan(SCAN_F12);
  }
  static constexpr size_t kFocused = 2;

  /// Presses a key that must act on the open box alone, and looks at the selection.
  void ThenSelects(std::function<void()> press, UINT16 button) {
    Then(std::move(press));
    Then([button] {
      ASSERT_TRUE(BoxIsOpen());
      EXPECT_EQ(SelectedButton(), button);
      EXPECT_EQ(Focused(), BoxButtons());
    });
  }
  void ThenScanSelects(UINT16 scanCode, UINT16 button) {
    ThenSelects([this, scanCode] { Machine.Keyboard.Scan(scanCode); }, button);
  }
  void ThenCharacterSelects(char16_t character, UINT16 button) {
    ThenSelects([this, character] { Machine.Keyboard.Character(character); }, button);
  }
  void ThenBoxIsClosed() {
    Then([] { EXPECT_FALSE(BoxIsOpen()); });
  }
  void ThenFocusIsBack() {
    Then([] { EXPECT_EQ(Focused(), gView.Components[kFocused].Callout); });
  }
  /// Leaves an open box, so that the final Esc ends the run.
  void ThenLeaveBox() { ThenScan(SCAN_ESC); }
  size_t OpenCount() const {
    size_t count = 0;
    for (const fake::Volume *stick : sticks_) {
      count += stick->OpenCount();
    }
    return count;
  }
  size_t FileCount() const {
    size_t count = 0;
    for (const fake::Volume *stick : sticks_) {
      count += stick->RootNames().size();
    }
    return count;
  }

  std::vector<fake::Volume *> sticks_;
};

TEST_F(ChoiceKeys, DownRightTabAndPageDownSelectTheNext) {
  ThenScanSelects(SCAN_DOWN, 1);
  ThenScanSelects(SCAN_RIGHT, 2);
  ThenCharacterSelects(u'\t', 3);
  ThenScan(SCAN_HOME);
  ThenScanSelects(SCAN_UP, 2);
  ThenScanSelects(SCAN_PAGE_DOWN, 3);
  ThenLeaveBox();
  Run();
  EXPECT_TRUE(RanToTheEnd());
}

TEST_F(ChoiceKeys, UpLeftAndPageUpSelectThePrevious) {
  Then([] { lv_btnmatrix_set_selected_btn(BoxButtons(), 3); });
  ThenScanSelects(SCAN_UP, 2);
  ThenScanSelects(SCAN_LEFT, 1);
  ThenScanSelects(SCAN_PAGE_UP, 0);
  ThenLeaveBox();
  Run();
}

TEST_F(ChoiceKeys, BeforeTheFirstAndBehindTheLastThereIsNone) {
  for (UINT16 key : {SCAN_UP, SCAN_LEFT, SCAN_PAGE_UP}) {
    ThenScanSelects(key, 0);
  }
  Then([] { lv_btnmatrix_set_selected_btn(BoxButtons(), 3); });
  for (UINT16 key : {SCAN_DOWN, SCAN_RIGHT, SCAN_PAGE_DOWN}) {
    ThenScanSelects(key, 3);
  }
  ThenCharacterSelects(u'\t', 3);
  ThenLeaveBox();
  Run();
}

TEST_F(ChoiceKeys, FromNoSelectionDownSelectsTheFirst) {
  Then([] { lv_btnmatrix_set_selected_btn(BoxButtons(), LV_BTNMATRIX_BTN_NONE); });
  ThenScanSelects(SCAN_DOWN, 0);
  ThenLeaveBox();
  Run();
}

TEST_F(ChoiceKeys, EscClosesTheBoxAloneAndChoosesNothing) {
  ThenScan(SCAN_ESC);
  ThenBoxIsClosed();
  Then([this] {
    EXPECT_FALSE(gRun.ExitRequested);
    EXPECT_EQ(OpenCount(), 3u);
  });
  EXPECT_EQ(Run().Status, EFI_SUCCESS);
  EXPECT_TRUE(RanToTheEnd());
  EXPECT_FALSE(Host.Logged("F12ScreenShots Canceled\n"));
  EXPECT_EQ(FileCount(), 0u);
}

// The sticks may be gone by then, and a file system's driver need not bear a close on what it lost.
TEST_F(ChoiceKeys, VolumesThatEscLeftOpenAreNotClosedAtTheEnd) {
  ThenScan(SCAN_ESC);
  EXPECT_EQ(Run().Status, EFI_SUCCESS);
  EXPECT_TRUE(RanToTheEnd());
  EXPECT_EQ(OpenCount(), 3u);
}

TEST_F(ChoiceKeys, VolumesThatEscLeftOpenAreNotClosedWhenTheBoxOpensAgain) {
  ThenScan(SCAN_ESC);
  ThenScan(SCAN_F12);
  Then([this] {
    EXPECT_TRUE(BoxIsOpen());
    EXPECT_EQ(OpenCount(), 6u);
  });
  ThenLeaveBox();
  Run();
  EXPECT_TRUE(RanToTheEnd());
  EXPECT_EQ(OpenCount(), 6u);
}

TEST_F(ChoiceKeys, AfterEscAnObjectOfTheViewHasTheFocus) {
  ThenScan(SCAN_ESC);
  Then([] {
    lv_obj_t *focused = Focused();
    ASSERT_NE(focused, nullptr);
    EXPECT_EQ(lv_obj_get_screen(focused), lv_disp_get_scr_act(nullptr));
  });
  Run();
}

TEST_F(ChoiceKeys, InsertAndF12DoNothingWhileItIsOpen) {
  ThenScanSelects(SCAN_INSERT, 0);
  ThenScanSelects(SCAN_F12, 0);
  Then([] { EXPECT_EQ(gView.CategoryFilter, 0u); });
  ThenLeaveBox();
  ThenBoxIsClosed();
  Run();
  EXPECT_EQ(Machine.Calls.CountOf(fake::Service::FsOpenVolume), 3u);
}

TEST_F(ChoiceKeys, LettersDoNothing) {
  ThenCharacterSelects(u'x', 0);
  ThenCharacterSelects(u'\b', 0);
  ThenLeaveBox();
  Run();
  EXPECT_EQ(FileCount(), 0u);
}

TEST_F(ChoiceKeys, EnterOnCancelClosesAllVolumesAndGivesTheFocusBack) {
  for (int i = 0; i < 3; i++) {
    ThenScan(SCAN_DOWN);
  }
  ThenEnter();
  ThenBoxIsClosed();
  ThenFocusIsBack();
  Then([this] { EXPECT_EQ(OpenCount(), 0u); });
  Run();
  EXPECT_TRUE(RanToTheEnd());
  EXPECT_TRUE(Host.Logged("3 Button Cancel was clicked\n"));
  EXPECT_TRUE(Host.Logged("F12ScreenShots Canceled\n"));
  EXPECT_EQ(FileCount(), 0u);
}

TEST_F(ChoiceKeys, EnterOnAVolumeSavesThere) {
  ThenScan(SCAN_DOWN);
  ThenEnter();
  ThenEnter();
  ThenBoxIsClosed();
  ThenFocusIsBack();
  Run();
  EXPECT_TRUE(Host.Logged("1 Button FS1:\\ [USB STICK 64MB] was clicked\n"));
  EXPECT_EQ(sticks_[0]->RootNames().size(), 0u);
  EXPECT_EQ(sticks_[1]->RootNames().size(), 1u);
}

TEST_F(ChoiceKeys, PointingDoesNotMoveTheFocusWhileItIsOpen) {
  AddTablet();
  ThenPoint(520, 310);
  Then([] {
    EXPECT_EQ(Focused(), BoxButtons());
    EXPECT_TRUE(IsHidden(gView.Components[0].Hotspot));
  });
  ThenLeaveBox();
  ThenPoint(521, 310);
  Then([] { EXPECT_EQ(Focused(), gView.Components[0].Callout); });
  Run();
}

TEST_F(ChoiceKeys, ClickOnCancelCancels) {
  AddTablet();
  ThenClick([] { return ButtonPlace(3); });
  ThenBoxIsClosed();
  ThenFocusIsBack();
  Run();
  EXPECT_TRUE(Host.Logged("F12ScreenShots Canceled\n"));
  EXPECT_EQ(OpenCount(), 0u);
}

TEST_F(ChoiceKeys, ClickBesideTheBoxLeavesItOpen) {
  AddTablet();
  ThenClick(300, 100);
  ThenClick(250, 320);
  Then([] { EXPECT_TRUE(BoxIsOpen()); });
  ThenLeaveBox();
  Run();
  EXPECT_TRUE(RanToTheEnd());
}

}  // namespace
