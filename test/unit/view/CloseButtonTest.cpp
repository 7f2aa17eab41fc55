// What the close button does.

#include "test/unit/stage/ViewStage.h"

#include "app/base/Run.h"

namespace {

class CloseButton : public ViewStage {
 protected:
  CloseButton() { LeaveFontsOut(); }
  static void Send(lv_event_code_t code) { lv_event_send(gView.CloseButton, code, nullptr); }
  /// The info text, with "(close) " before it when the button has the focus.
  static std::string Seen() {
    bool close = lv_group_get_focused(gLvglPort.Group) == gView.CloseButton;
    return (close ? "(close) " : "") + LabelText(gView.InfoText);
  }
  /// A run with one component, whose callout leaves the info text alone, beginning at a saved
  /// focus: what is seen before and after a key that enters the button, and after Tab.
  std::vector<std::string> SeenInRun(UINT16 focusIndex, const EFI_INPUT_KEY &enter) {
    Host.ClearComponents();
    Host.AddComponent(u"TPM", OBV_TYPE_UNCATEGORISED, 0x108, 900, 800);
    Host.State.FocusIndex = focusIndex;
    Machine.AddOutput({{1024, 768}});
    Host.Install();
    std::vector<std::string> seen;
    auto look = [&seen] { seen.push_back(Seen()); };
    fake::RunOptions options;
    options.At(30, look).At(30, [&] { Machine.Keyboard.Push(enter); });
    options.At(40, look).At(40, [&] { Machine.Keyboard.Character(u'\t'); });
    options.At(50, look);
    EXPECT_EQ(fake::RunApplication(Machine, options).Status, EFI_SUCCESS);
    return seen;
  }
};

TEST_F(CloseButton, CarriesAnX) {
  Build();
  EXPECT_EQ(Caption(gView.CloseButton), "X");
  EXPECT_EQ(lv_obj_get_child_cnt(gView.CloseButton), 1u);
  EXPECT_TRUE(lv_obj_has_flag(gView.CloseButton, LV_OBJ_FLAG_CLICK_FOCUSABLE));
}

TEST_F(CloseButton, ClickSetsTheExitFlag) {
  Build();
  EXPECT_FALSE(gRun.ExitRequested);
  Send(LV_EVENT_CLICKED);
  EXPECT_TRUE(gRun.ExitRequested);
}

TEST_F(CloseButton, FocusShowsItsHintAndLeavingBlanksTheInfoText) {
  Build();
  Send(LV_EVENT_DEFOCUSED);
  EXPECT_EQ(LabelText(gView.InfoText), " ");
  Send(LV_EVENT_FOCUSED);
  EXPECT_EQ(LabelText(gView.InfoText), "Leave");
  EXPECT_FALSE(gRun.ExitRequested);
}

TEST_F(CloseButton, LeavingBlanksTheHeadingToo) {
  Build();
  Send(LV_EVENT_DEFOCUSED);
  ASSERT_NE(gView.Heading, nullptr);
  EXPECT_EQ(LabelText(gView.Heading), " ");
}

TEST_F(CloseButton, PageUpFromTheFirstCalloutShowsItsHintAndTabBlanksIt) {
  EXPECT_EQ(SeenInRun(1, {SCAN_PAGE_UP, 0}), (std::vector<std::string>{" ", "(close) Leave", " "}));
}

TEST_F(CloseButton, TabFromTheLastFilterButtonShowsItsHintAndTabBlanksIt) {
  EXPECT_EQ(SeenInRun(106, {0, u'\t'}),
            (std::vector<std::string>{"Category FAN", "(close) Leave", " "}));
}

TEST_F(CloseButton, OtherEventsAreIgnored) {
  Build();
  lv_label_set_text(gView.InfoText, "untouched");
  for (lv_event_code_t code : {LV_EVENT_PRESSED, LV_EVENT_RELEASED, LV_EVENT_SHORT_CLICKED,
                               LV_EVENT_LONG_PRESSED, LV_EVENT_VALUE_CHANGED}) {
    Send(code);
  }
  uint32_t key = LV_KEY_RIGHT;
  lv_event_send(gView.CloseButton, LV_EVENT_KEY, &key);
  EXPECT_FALSE(gRun.ExitRequested);
  EXPECT_EQ(LabelText(gView.InfoText), "untouched");
}

// A whole run, ended by the tablet.
TEST_F(CloseButton, RealClickEndsTheRun) {
  Machine.AddOutput({{1920, 1080}});
  Machine.AddSimplePointer();
  Machine.AddAbsolutePointer({0, 0, 1919, 1079});
  Host.Install();
  fake::RunOptions options;
  options.EscapeAtTurn = 0;
  options.MostTurns = 300;
  options.At(20, [this] { Machine.Tablet()->MoveTo(1875, 114); });
  options.At(30, [this] { Machine.Tablet()->MoveTo(1875, 114, 1); });
  options.At(40, [this] { Machine.Tablet()->MoveTo(1875, 114, 0); });
  fake::RunResult result = fake::RunApplication(Machine, options);
  EXPECT_EQ(result.Status, EFI_SUCCESS);
  EXPECT_GE(result.Turns, 40);
  EXPECT_LE(result.Turns, 45);
}

TEST_F(CloseButton, ClickBesideItDoesNotEndTheRun) {
  Machine.AddOutput({{1920, 1080}});
  Machine.AddSimplePointer();
  Machine.AddAbsolutePointer({0, 0, 1919, 1079});
  Host.Install();
  fake::RunOptions options;
  options.EscapeAtTurn = 100;
  options.At(20, [this] { Machine.Tablet()->MoveTo(1850, 114); });
  options.At(30, [this] { Machine.Tablet()->MoveTo(1850, 114, 1); });
  options.At(40, [this] { Machine.Tablet()->MoveTo(1850, 114, 0); });
  EXPECT_GE(fake::RunApplication(Machine, options).Turns, 100);
}

}  // namespace
