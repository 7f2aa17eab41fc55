// Keys: their translation, when they begin to count, and the application's own.

#include "test/unit/stage/RunScript.h"
#include "test/unit/stage/ViewStage.h"

#include "app/base/Run.h"
#include "capture/MessageBox.h"
#include "platform/Keypad.h"

namespace {

class Keypad : public ViewStage {
 protected:
  Keypad() { LeaveFontsOut(); }

  void Arm() { gKeypad.KeysArmed = true; }
  /// One reading; the key when it reports one as pressed.
  std::optional<UINT32> Read() {
    lv_indev_data_t data = {};
    data.state = LV_INDEV_STATE_PRESSED;
    KeypadRead(nullptr, &data);
    EXPECT_FALSE(data.continue_reading);
    return data.state == LV_INDEV_STATE_PRESSED ? std::optional<UINT32>(data.key) : std::nullopt;
  }
  std::optional<UINT32> Scanned(UINT16 code) {
    Machine.Keyboard.Scan(code);
    return Read();
  }
  std::optional<UINT32> Typed(char16_t character) {
    Machine.Keyboard.Character(character);
    return Read();
  }
};

TEST(KeyTranslation, FirmwareKeysWithAnLvglKey) {
  const std::pair<UINT16, UINT32> rows[] = {{0x01, 17}, {0x02, 18}, {0x03, 19},  {0x04, 20},
                                            {0x05, 2},  {0x06, 3},  {0x08, 127}, {0x09, 11},
                                            {0x0A, 9},  {0x17, 27}};
  for (auto [scan, key] : rows) {
    EXPECT_EQ(TranslateEfiKey({scan, 0}), key) << scan;
  }
  EXPECT_EQ(TranslateEfiKey({0, 0x0D}), UINT32{LV_KEY_ENTER});
}

TEST(KeyTranslation, OtherKeysAreTheirCharacters) {
  EXPECT_EQ(TranslateEfiKey({0, 8}), UINT32{LV_KEY_BACKSPACE});
  EXPECT_EQ(TranslateEfiKey({0, 9}), UINT32{LV_KEY_NEXT});
  EXPECT_EQ(TranslateEfiKey({0, u'a'}), UINT32{'a'});
  EXPECT_EQ(TranslateEfiKey({0, 0x20AC}), 0x20ACu);
  for (UINT16 scan : {0x07, 0x0B, 0x16, 0x18, 0x48}) {
    EXPECT_EQ(TranslateEfiKey({scan, 0}), 0u) << scan;
  }
}

TEST(KeyTranslation, EnterIsOnlyTheCharacterWithoutAScanCode) {
  EXPECT_EQ(TranslateEfiKey({0x0B, 0x0D}), 0x0Du);
  EXPECT_EQ(TranslateEfiKey({0x01, 0x0D}), UINT32{LV_KEY_UP});
}

TEST_F(Keypad, UpTo200MillisecondsEveryKeyIsDropped) {
  Build();
  gRun.StartTime = 5000;
  gRun.LastTime = 5200;
  Machine.Keyboard.Character(u'a');
  Machine.Keyboard.Scan(SCAN_ESC);
  EXPECT_EQ(Read(), std::nullopt);
  EXPECT_EQ(Read(), std::nullopt);
  EXPECT_EQ(Machine.Keyboard.Waiting(), 0u);
  EXPECT_FALSE(gKeypad.KeysArmed);
  EXPECT_FALSE(gRun.ExitRequested);
}

TEST_F(Keypad, TheKeyOfTheReadingThatArmsIsDroppedToo) {
  Build();
  gRun.StartTime = 5000;
  gRun.LastTime = 5201;
  Machine.Keyboard.Character(u'a');
  Machine.Keyboard.Character(u'b');
  EXPECT_EQ(Read(), std::nullopt);
  EXPECT_TRUE(gKeypad.KeysArmed);
  EXPECT_EQ(Read(), UINT32{'b'});
}

TEST_F(Keypad, AReadingWithoutAKeyArmsToo) {
  Build();
  gRun.StartTime = 5000;
  gRun.LastTime = 5201;
  EXPECT_EQ(Read(), std::nullopt);
  EXPECT_EQ(Typed(u'a'), UINT32{'a'});
}

TEST_F(Keypad, OnceArmedItStaysArmed) {
  Build();
  Arm();
  gRun.StartTime = gRun.LastTime = 5000;
  EXPECT_EQ(Typed(u'a'), UINT32{'a'});
}

TEST_F(Keypad, WithoutAKeyNothingIsPressed) {
  Build();
  Arm();
  EXPECT_EQ(Read(), std::nullopt);
  Machine.Keyboard.Character(u'a');
  Machine.FailCall(fake::Service::ConInReadKeyStroke, 1, EFI_DEVICE_ERROR);
  EXPECT_EQ(Read(), std::nullopt);
  EXPECT_EQ(Read(), UINT32{'a'});
}

TEST_F(Keypad, EscLeavesAndIsPassedOn) {
  Build();
  Arm();
  EXPECT_EQ(Scanned(SCAN_ESC), UINT32{LV_KEY_ESC});
  EXPECT_TRUE(gRun.ExitRequested);
}

TEST_F(Keypad, OtherKeysDoNotLeave) {
  Build();
  Arm();
  for (UINT16 scan = 1; scan < 0x17; scan++) {
    Scanned(scan);
    gMessageBox.ModalMessageBoxOpen = false;
  }
  Typed(u'q');
  EXPECT_FALSE(gRun.ExitRequested);
}

class ArrowKeys : public RunScript {};

// They are LVGL's, whose buttons have no use for them; Tab and the page keys walk.
TEST_F(ArrowKeys, LeaveFocusFilterAndViewAlone) {
  LeaveFontsOut();
  ThenFocus(2);
  for (UINT16 key : {SCAN_UP, SCAN_DOWN, SCAN_LEFT, SCAN_RIGHT, SCAN_HOME, SCAN_END}) {
    ThenScan(key);
    Then([] {
      EXPECT_EQ(Focused(), gView.Components[2].Callout);
      EXPECT_EQ(gView.CategoryFilter, 0u);
      EXPECT_FALSE(gRun.ExitRequested);
    });
  }
  Run();
  EXPECT_TRUE(RanToTheEnd());
}

TEST_F(Keypad, InsertStepsTheFilterAndIsPassedOn) {
  Build();
  Arm();
  const UINT32 codes[] = {1, 2, 3, 4, 8, 0};
  for (UINT32 code : codes) {
    EXPECT_EQ(Scanned(SCAN_INSERT), UINT32{0});
    EXPECT_EQ(gView.CategoryFilter, code);
  }
}

TEST_F(Keypad, F12TakesAScreenshotAndIsPassedOn) {
  Build();
  Arm();
  EXPECT_EQ(Scanned(SCAN_F12), UINT32{0});
  EXPECT_NE(Machine.Calls.Find("LocateHandleBuffer(2, SimpleFileSystem)"), -1);
}

}  // namespace
