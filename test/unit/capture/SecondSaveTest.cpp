// Two screenshots within a second: both have the same name, so the second is written over the
// first.

#include "test/unit/stage/ScreenshotStage.h"

namespace {

class SecondSave : public ScreenshotStage {
 protected:
  static constexpr uint64_t kSecond = 1000;

  SecondSave() { LeaveFontsOut(); }

  /// Saves the view with one object focused, then with the other, all within a second. A third
  /// picture, of the second's screen, gets a file of its own and tells what the second save wrote.
  void SaveBoth(const std::function<lv_obj_t *()> &first,
                const std::function<lv_obj_t *()> &second) {
    fake::Volume &stick = AddStick();
    uint64_t start = 0;
    Then([&] {
      start = Machine.Clock.Milliseconds();
      lv_group_focus_obj(first());
    });
    ThenSave();
    Then([&] {
      First = FileOf(stick, kName);
      lv_group_focus_obj(second());
    });
    ThenSave();
    Then([&] {
      EXPECT_LT(Machine.Clock.Milliseconds() - start, kSecond);
      EXPECT_EQ(stick.RootNames(), std::vector<std::u16string>{kName});
      Together = FileOf(stick, kName);
      Machine.Clock.Date.Second++;
    });
    ThenSave();
    Run();
    Second = FileOf(stick, u"2023-07-04-13-05-10.png");
    ExpectPictureOfF12(Second);
    EXPECT_EQ(stick.OpenCount(), 0u);
  }

  static std::vector<uint8_t> FileOf(const fake::Volume &stick, std::u16string_view name) {
    return stick.Read(name).value_or(std::vector<uint8_t>());
  }
  static lv_obj_t *Component() { return gView.Components[0].Callout; }
  static lv_obj_t *Close() { return gView.CloseButton; }

  std::vector<uint8_t> First, Second, Together;
};

TEST_F(SecondSave, OfAShorterFileLeavesTheEndOfTheFirst) {
  SaveBoth(Component, Close);
  ASSERT_LT(Second.size(), First.size());
  std::vector<uint8_t> expected = First;
  std::copy(Second.begin(), Second.end(), expected.begin());
  EXPECT_TRUE(Together == expected);
}

TEST_F(SecondSave, OfALongerFileLeavesNothingOfTheFirst) {
  SaveBoth(Close, Component);
  ASSERT_GT(Second.size(), First.size());
  EXPECT_TRUE(Together == Second);
}

}  // namespace
