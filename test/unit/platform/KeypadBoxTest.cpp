// Keys while a message box stands over the view.

#include "test/unit/stage/BoxLooks.h"
#include "test/unit/stage/ViewStage.h"

#include "app/base/Run.h"
#include "platform/Keypad.h"

namespace {

class KeypadBox : public ViewStage {
 protected:
  KeypadBox() { LeaveFontsOut(); }

  /// The built view with an open box of three buttons, the given one selected.
  void Open(UINT16 selected = 0) {
    Build();
    static const char *buttons[] = {"One", "Two", "Three", ""};
    gMessageBox.Box = lv_msgbox_create(lv_scr_act(), "Title", "Text", buttons, false);
    gMessageBox.ModalMessageBoxOpen = true;
    gKeypad.KeysArmed = true;
    lv_btnmatrix_set_selected_btn(BoxButtons(), selected);
  }
  std::optional<UINT32> Press(const EFI_INPUT_KEY &key) {
    Machine.Keyboard.Push(key);
    lv_indev_data_t data = {};
    KeypadRead(nullptr, &data);
    return data.state == LV_INDEV_STATE_PRESSED ? std::optional<UINT32>(data.key) : std::nullopt;
  }
  std::optional<UINT32> Scan(UINT16 code) { return Press({code, 0}); }
};

TEST_F(KeypadBox, PageDownTabDownAndRightSelectTheNextButton) {
  const EFI_INPUT_KEY keys[] = {{SCAN_PAGE_DOWN, 0}, {0, 9}, {SCAN_DOWN, 0}, {SCAN_RIGHT, 0}};
  Open();
  for (const EFI_INPUT_KEY &key : keys) {
    lv_btnmatrix_set_selected_btn(BoxButtons(), 0);
    EXPECT_EQ(Press(key), std::nullopt);
    EXPECT_EQ(SelectedButton(), 1) << key.ScanCode;
  }
}

TEST_F(KeypadBox, PageUpUpAndLeftSelectThePreviousButton) {
  Open();
  for (UINT16 scan : {SCAN_PAGE_UP, SCAN_UP, SCAN_LEFT}) {
    lv_btnmatrix_set_selected_btn(BoxButtons(), 2);
    EXPECT_EQ(Scan(scan), std::nullopt);
    EXPECT_EQ(SelectedButton(), 1) << scan;
  }
}

TEST_F(KeypadBox, FromTheSecondButtonThePreviousIsTheFirst) {
  Open(1);
  EXPECT_EQ(Scan(SCAN_UP), std::nullopt);
  EXPECT_EQ(SelectedButton(), 0);
}

TEST_F(KeypadBox, PastTheLastButtonTheSelectionStays) {
  Open(2);
  EXPECT_EQ(Scan(SCAN_DOWN), std::nullopt);
  EXPECT_EQ(SelectedButton(), 2);
}

TEST_F(KeypadBox, BeforeTheFirstButtonTheSelectionStays) {
  Open(0);
  EXPECT_EQ(Scan(SCAN_UP), std::nullopt);
  EXPECT_EQ(SelectedButton(), 0);
}

TEST_F(KeypadBox, FromNoSelectionTheNextIsTheFirst) {
  Open(LV_BTNMATRIX_BTN_NONE);
  ASSERT_EQ(SelectedButton(), LV_BTNMATRIX_BTN_NONE);
  EXPECT_EQ(Scan(SCAN_DOWN), std::nullopt);
  EXPECT_EQ(SelectedButton(), 0);
}

TEST_F(KeypadBox, FromNoSelectionThereIsNoPrevious) {
  Open(LV_BTNMATRIX_BTN_NONE);
  EXPECT_EQ(Scan(SCAN_UP), std::nullopt);
  EXPECT_EQ(SelectedButton(), LV_BTNMATRIX_BTN_NONE);
}

TEST_F(KeypadBox, EscClosesTheBoxAndDoesNotLeave) {
  Open();
  lv_obj_t *box = gMessageBox.Box;
  EXPECT_EQ(Scan(SCAN_ESC), std::nullopt);
  EXPECT_FALSE(gMessageBox.ModalMessageBoxOpen);
  EXPECT_FALSE(lv_obj_is_valid(box));
  EXPECT_FALSE(gRun.ExitRequested);
}

TEST_F(KeypadBox, EnterAndOtherKeysReachTheBox) {
  Open(1);
  EXPECT_EQ(Press({0, CHAR_CARRIAGE_RETURN}), UINT32{LV_KEY_ENTER});
  EXPECT_EQ(Press({0, u'x'}), UINT32{'x'});
  EXPECT_EQ(Scan(SCAN_HOME), UINT32{LV_KEY_HOME});
  EXPECT_EQ(SelectedButton(), 1);
}

TEST_F(KeypadBox, InsertAndF12DoNothing) {
  Open();
  UINT32 filter = gView.CategoryFilter;
  size_t lines = Host.Log.size();
  EXPECT_EQ(Scan(SCAN_INSERT), UINT32{0});
  EXPECT_EQ(Scan(SCAN_F12), UINT32{0});
  EXPECT_EQ(gView.CategoryFilter, filter);
  EXPECT_EQ(Host.Log.size(), lines);
  EXPECT_EQ(Machine.Calls.CountOf(fake::Service::GopBlt), 0u);
}

}  // namespace
