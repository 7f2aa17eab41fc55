// From a callout to the component's setup option.

#include "test/unit/stage/PanelStage.h"
#include "test/unit/stage/RunScript.h"

#include "app/base/Run.h"
#include "view/Jump.h"

namespace {

enum Index : size_t { kUsb, kFan, kTpm, kSata };

class Jump : public PanelStage {
 protected:
  Jump() {
    Host.AddComponent(u"USB_9", OBV_TYPE_USB, 0x1A2B, 300, 300);
    Host.AddComponent(u"FAN", OBV_TYPE_FAN, 0, 500, 300);
    Host.AddComponent(u"TPM", OBV_TYPE_UNCATEGORISED, 0x108, 700, 300);
    Host.AddComponent(u"SATA_1", OBV_TYPE_SATA, 0x104, 900, 300);
    Host.Answers[u"USB_9"].Lines = {{u"Port", u"A"}, {u"At", u"B", OBV_INFO_SIDE_LIST}};
    Host.Answers[u"SATA_1"] = {EFI_SUCCESS, {{u"Drive", u"C"}}, {}};
  }
  static void Send(size_t index, lv_event_code_t code) {
    lv_event_send(gView.Components[index].Callout, code, nullptr);
  }
  static void Click(size_t index) { Send(index, LV_EVENT_CLICKED); }
  static std::string CalloutText(size_t index) { return Caption(gView.Components[index].Callout); }
  static bool Highlighted(size_t index) {
    EXPECT_EQ(IsHidden(gView.Components[index].Hotspot),
              IsHidden(gView.Components[index].FocusLeader));
    return !IsHidden(gView.Components[index].Hotspot);
  }
  /// The shared state's bytes; a click that is refused leaves them all.
  std::vector<uint8_t> StateBytes() const {
    const auto *bytes = reinterpret_cast<const uint8_t *>(&Host.State);
    return {bytes, bytes + sizeof Host.State};
  }
  void ExpectRefused(size_t index) {
    std::vector<uint8_t> before = StateBytes();
    Host.Log.clear();
    Click(index);
    EXPECT_EQ(StateBytes(), before);
    EXPECT_FALSE(gRun.ExitRequested);
    EXPECT_TRUE(Host.Log.empty());
  }
  void ExpectJump(size_t index) {
    Click(index);
    EXPECT_EQ(Host.State.JumpRequested, 1);
    EXPECT_EQ(Host.State.JumpComponentIndex, index);
    EXPECT_EQ(Host.State.JumpSearchTokenId, Host.Components[index].SearchTokenId);
    EXPECT_EQ(Host.State.JumpComponentType, Host.Components[index].Type);
    EXPECT_TRUE(gRun.ExitRequested);
  }
};

TEST_F(Jump, ClickHandsTheComponentOverAndEndsTheView) {
  Build();
  ExpectJump(kUsb);
}

TEST_F(Jump, ClickIsLoggedWithNameAndToken) {
  Build();
  Host.Log.clear();
  Click(kUsb);
  EXPECT_EQ(Host.Log, (std::vector<fake::LogLine>{
                          {0x40, "[OBV] Ready to jump: Name USB_9 SearchTokenID 0x1A2B\n"},
                          {0x40, "[OBV] Use VeltSetupEventHandler to jump, ExitApp = TRUE.\n"}}));
}

TEST_F(Jump, TargetIsKnownBeforeTheLogAndTheRequestAfterIt) {
  Build();
  std::vector<int> requested;
  Host.OnDebugPrint = [&](const fake::LogLine &) {
    EXPECT_EQ(Host.State.JumpSearchTokenId, 0x104);
    EXPECT_EQ(Host.State.JumpComponentType, static_cast<UINT32>(OBV_TYPE_SATA));
    EXPECT_EQ(Host.State.JumpComponentIndex, kSata);
    requested.push_back(Host.State.JumpRequested + gRun.ExitRequested);
  };
  Click(kSata);
  EXPECT_EQ(requested, (std::vector<int>{0, 0}));
}

TEST_F(Jump, WithoutALogTheRequestIsWrittenAllTheSame) {
  Host.Protocol().DebugPrint = nullptr;
  Build();
  ExpectJump(kSata);
}

TEST_F(Jump, WithoutATokenAClickChangesNothing) {
  Build();
  ExpectRefused(kFan);
}

TEST_F(Jump, UnavailableForThisCpuAClickDoesNothing) {
  Host.Answers[u"USB_9"].Status = EFI_NO_MAPPING;
  Build();
  ExpectRefused(kUsb);
}

TEST_F(Jump, NotReadyComponentWithATokenJumps) {
  Host.Answers[u"USB_9"].Status = EFI_NOT_READY;
  Build();
  ExpectJump(kUsb);
}

TEST_F(Jump, FailingComponentJumps) {
  Host.Answers[u"USB_9"].Status = EFI_DEVICE_ERROR;
  Build();
  ExpectJump(kUsb);
}

TEST_F(Jump, AbsentComponentJumps) {
  Host.Answers[u"USB_9"].Status = EFI_NOT_FOUND;
  Build();
  ExpectJump(kUsb);
}

TEST_F(Jump, UncategorisedComponentJumps) {
  Build();
  ExpectJump(kTpm);
}

TEST_F(Jump, SecondClickOverwritesTheFirst) {
  Build();
  ExpectJump(kUsb);
  ExpectJump(kSata);
}

TEST_F(Jump, RefusedClickAfterARequestLeavesIt) {
  Build();
  ExpectJump(kUsb);
  Click(kFan);
  EXPECT_EQ(Host.State.JumpComponentIndex, kUsb);
  EXPECT_EQ(Host.State.JumpRequested, 1);
}

TEST_F(Jump, NotSelectableComponentHasNoHandler) {
  Host.Components[kUsb].NotSelectable = 1;
  Build();
  ExpectRefused(kUsb);
  Send(kUsb, LV_EVENT_FOCUSED);
  EXPECT_FALSE(Highlighted(kUsb));
  EXPECT_TRUE(lv_obj_has_state(gView.Components[kUsb].Callout, LV_STATE_DISABLED));
}

TEST_F(Jump, FocusHighlightsAndFillsThePanel) {
  Build();
  Send(kUsb, LV_EVENT_FOCUSED);
  EXPECT_TRUE(lv_obj_has_state(gView.Components[kUsb].Callout, LV_STATE_FOCUSED));
  EXPECT_TRUE(Highlighted(kUsb));
  EXPECT_EQ(PanelHeading(), "USB_9");
  EXPECT_EQ(PanelText(), "\n\n" + InfoLineText("Port", "A"));
}

TEST_F(Jump, LosingTheFocusHidesTheHighlightAndKeepsTheSideList) {
  Build();
  Send(kUsb, LV_EVENT_FOCUSED);
  std::string list = PanelList();
  Send(kUsb, LV_EVENT_DEFOCUSED);
  EXPECT_FALSE(lv_obj_has_state(gView.Components[kUsb].Callout, LV_STATE_FOCUSED));
  EXPECT_FALSE(Highlighted(kUsb));
  EXPECT_EQ(PanelText(), " ");
  EXPECT_EQ(PanelHeading(), " ");
  EXPECT_NE(list, "");
  EXPECT_EQ(PanelList(), list);
}

TEST_F(Jump, MarksChangeTheirColourWithTheFocus) {
  Host.DefaultStyle = {};
  Host.FocusStyle = {};
  fake::CopyText(Host.DefaultStyle.MarkColor, "1,2,3");
  fake::CopyText(Host.FocusStyle.MarkColor, "4,5,6");
  Host.Answers[u"USB_9"].Status = EFI_NOT_READY;
  Build();
  EXPECT_EQ(CalloutText(kUsb), "USB_9#010203  *#");
  Send(kUsb, LV_EVENT_FOCUSED);
  EXPECT_EQ(CalloutText(kUsb), "USB_9#040506  *#");
  Send(kUsb, LV_EVENT_DEFOCUSED);
  EXPECT_EQ(CalloutText(kUsb), "USB_9#010203  *#");
  Send(kFan, LV_EVENT_FOCUSED);
  EXPECT_EQ(CalloutText(kFan), "FAN#040506  **#");
  Send(kFan, LV_EVENT_DEFOCUSED);
  EXPECT_EQ(CalloutText(kFan), "FAN#010203  **#");
}

TEST_F(Jump, CalloutWithoutMarksKeepsItsTextThroughTheFocus) {
  Build();
  lv_label_set_text(lv_obj_get_child(gView.Components[kSata].Callout, 0), "own");
  Send(kSata, LV_EVENT_FOCUSED);
  EXPECT_EQ(CalloutText(kSata), "own");
  Send(kSata, LV_EVENT_DEFOCUSED);
  EXPECT_EQ(CalloutText(kSata), "own");
}

TEST_F(Jump, UncategorisedComponentIsHighlightedAndLeavesThePanel) {
  Build();
  Send(kUsb, LV_EVENT_FOCUSED);
  std::string text = PanelText();
  Send(kTpm, LV_EVENT_FOCUSED);
  EXPECT_TRUE(Highlighted(kTpm));
  EXPECT_EQ(PanelText(), text);
  EXPECT_EQ(PanelHeading(), "USB_9");
}

TEST_F(Jump, FocusMovesFromOneCalloutToTheNext) {
  Build();
  lv_group_focus_obj(gView.Components[kUsb].Callout);
  ASSERT_TRUE(Highlighted(kUsb));
  lv_group_focus_obj(gView.Components[kSata].Callout);
  EXPECT_FALSE(Highlighted(kUsb));
  EXPECT_TRUE(Highlighted(kSata));
  EXPECT_EQ(PanelHeading(), "SATA_1");
  EXPECT_EQ(PanelText(), "\n\n" + InfoLineText("Drive", "C"));
}

TEST_F(Jump, TheTextIsBlankBetweenLossAndGainOfTheFocus) {
  Build();
  lv_group_focus_obj(gView.Components[kUsb].Callout);
  lv_group_focus_obj(gView.Components[kTpm].Callout);
  EXPECT_TRUE(Highlighted(kTpm));
  EXPECT_EQ(PanelText(), " ");
  EXPECT_EQ(PanelHeading(), " ");
}

TEST_F(Jump, OtherEventsAreIgnored) {
  Build();
  lv_label_set_text(gView.InfoText, "untouched");
  for (lv_event_code_t code :
       {LV_EVENT_PRESSED, LV_EVENT_PRESSING, LV_EVENT_RELEASED, LV_EVENT_SHORT_CLICKED,
        LV_EVENT_LONG_PRESSED, LV_EVENT_VALUE_CHANGED, LV_EVENT_LEAVE, LV_EVENT_CANCEL}) {
    Send(kUsb, code);
  }
  EXPECT_FALSE(Highlighted(kUsb));
  EXPECT_FALSE(gRun.ExitRequested);
  EXPECT_EQ(PanelText(), "untouched");
}

}  // namespace
