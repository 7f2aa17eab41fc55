// The message boxes in each language of the reference host, pixel by pixel.

#include <gtest/gtest.h>

#include "test/picture/ReferenceRun.h"
#include "test/picture/TestBoard.h"

#include "host/portable/Texts.h"

namespace picture {
namespace {

constexpr uint32_t kWidth = 1024, kHeight = 768;
// The turns that the application gets to answer a key.
constexpr int kTurnsPerKey = 6;

class BoxPictures : public ReferenceRun, public testing::WithParamInterface<size_t> {
 protected:
  BoxPictures() : boxes_{kWidth, 0, {}} {}

  void Then(std::function<void()> action) {
    options_.At(turn_, std::move(action));
    turn_ += kTurnsPerKey;
  }
  void ThenPressF12() {
    Then([this] { Machine.Keyboard.Scan(SCAN_F12); });
  }
  void ThenPressEnter() {
    Then([this] { Machine.Keyboard.Character(u'\r'); });
  }
  /// Adds what is shown now to the picture: a box takes the middle half of the screen.
  void ThenKeepBox() {
    Then([this] {
      std::vector<UINT32> screen = Machine.Output().Picture();
      auto quarter = static_cast<ptrdiff_t>(screen.size() / 4);
      boxes_.Pixels.insert(boxes_.Pixels.end(), screen.begin() + quarter, screen.end() - quarter);
      boxes_.Height += kHeight / 2;
    });
  }
  Screen Boxes() {
    Show({{kWidth, kHeight}}, TestBoard(), options_, turn_);
    return boxes_;
  }

 private:
  fake::RunOptions options_;
  // Keys are dropped before.
  int turn_ = 30;
  Screen boxes_;
};

TEST_P(BoxPictures, AllBoxes) {
  const std::string language = obv_host::kLanguages[GetParam()].Code;
  Machine.Variables.SetText(u"PlatformLang", language);
  ThenPressF12();
  ThenKeepBox();  // There is no volume.
  ThenPressEnter();
  Then([this] { Machine.AddVolume({.Label = u"HOLIDAY"}); });
  ThenPressF12();
  ThenKeepBox();  // The choice.
  ThenPressEnter();
  ThenKeepBox();  // Saved.
  ThenPressEnter();
  Then([this] { Machine.FailCall(fake::Service::FileWrite, 1, EFI_DEVICE_ERROR); });
  ThenPressF12();
  ThenPressEnter();
  ThenKeepBox();  // Not saved.
  ThenPressEnter();
  Then([this] { Machine.AddVolume({.Label = u"LOCKED", .WriteProtected = true}); });
  ThenPressF12();
  Then([this] { Machine.Keyboard.Scan(SCAN_RIGHT); });
  ThenPressEnter();
  ThenKeepBox();  // Write-protected.
  ThenPressEnter();
  ExpectReference("boxes-" + language, Boxes());
}

INSTANTIATE_TEST_SUITE_P(, BoxPictures, testing::Range(size_t{0}, size_t{obv_host::kLanguageCount}),
                         [](const auto &info) {
                           std::string name = obv_host::kLanguages[info.param].Code;
                           std::erase(name, '-');
                           return name;
                         });

}  // namespace
}  // namespace picture
