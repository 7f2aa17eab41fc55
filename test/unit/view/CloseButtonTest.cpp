// What the close button does.

#include "test/unit/stage/RunScript.h"
#include "test/unit/stage/ViewStage.h"

#include "app/base/Run.h"

namespace {

class CloseButton : public ViewStage {
 protected:
  CloseButton() { LeaveFontsOut(); }
  static void Send(lv_event_code_t code) { lv_event_send(gView.CloseButton, code, nullptr); }
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

// Whole runs.
class CloseButtonRun : public RunScript {
 protected:
  CloseButtonRun() { LeaveFontsOut(); }
  /// Looks at the info text, with "(close) " before it when the button has the focus.
  void ThenLook() {
    Then(
        [this] {
          bool close = Focused() == gView.CloseButton;
          seen_.push_back((close ? "(close) " : "") + LabelText(gView.InfoText));
        },
        0);
  }
  /// A run with one component, whose callout leaves the info text alone, beginning at a saved
  /// focus: what is seen before and after a key that enters the button, and after Tab.
  Lines SeenInRun(UINT16 focusIndex, const EFI_INPUT_KEY &enter) {
    Host.ClearComponents();
    Host.AddComponent(u"TPM", OBV_TYPE_UNCATEGORISED, 0x108, 900, 800);
    Host.State.FocusIndex = focusIndex;
    ThenLook();
    Then([&] { Machine.Keyboard.Push(enter); });
    ThenLook();
    ThenCharacter(u'\t');
    ThenLook();
    EXPECT_EQ(Run(1024, 768).Status, EFI_SUCCESS);
    EXPECT_TRUE(RanToTheEnd());
    return seen_;
  }

 private:
  Lines seen_;
};

TEST_F(CloseButtonRun, PageUpFromTheFirstCalloutShowsItsHintAndTabBlanksIt) {
  EXPECT_EQ(SeenInRun(1, {SCAN_PAGE_UP, 0}), (Lines{" ", "(close) Leave", " "}));
}

TEST_F(CloseButtonRun, TabFromTheLastFilterButtonShowsItsHintAndTabBlanksIt) {
  EXPECT_EQ(SeenInRun(106, {0, u'\t'}), (Lines{"Category FAN", "(close) Leave", " "}));
}

TEST_F(CloseButtonRun, RealClickEndsTheRun) {
  AddTablet();
  ThenPoint(1875, 114);
  ThenPoint(1875, 114, true);
  bool heldDown = false;
  Then([&] { heldDown = true; }, 0);
  ThenPoint(1875, 114);
  EXPECT_EQ(Run().Status, EFI_SUCCESS);
  EXPECT_TRUE(heldDown) << "the press alone ended the run";
  EXPECT_FALSE(RanToTheEnd());
}

TEST_F(CloseButtonRun, ClickBesideItDoesNotEndTheRun) {
  AddTablet();
  ThenClick(1850, 114);
  EXPECT_EQ(Run().Status, EFI_SUCCESS);
  EXPECT_TRUE(RanToTheEnd());
}

}  // namespace
