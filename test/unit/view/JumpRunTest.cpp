// Whole runs that end in a jump, or do not.

#include "test/unit/stage/RunScript.h"

#include "platform/Pointer.h"

namespace {

// The test host's components; their callouts stand above their outlines.
enum Index : size_t { kCpu, kMemory, kUsb, kSata, kM2, kPcie, kFan, kTpm };

class JumpRun : public RunScript {
 protected:
  JumpRun() {
    LeaveFontsOut();
    Host.OnAfterAppLife = [this] {
      seen_ = Host.State;
      return EFI_SUCCESS;
    };
  }
  /// A click of the tablet into the middle of a callout.
  void ThenClickCallout(size_t index) {
    ThenClick([index] { return PlaceOf(gView.Components[index].Callout); });
  }
  /// What the host found in the shared state at the end of life.
  const OBV_SHARED_STATE &Seen() const { return seen_; }

 private:
  OBV_SHARED_STATE seen_{};
};

TEST_F(JumpRun, ClickOnACalloutEndsTheRunAndAsksForItsOption) {
  AddTablet();
  ThenClickCallout(kPcie);
  EXPECT_EQ(Run().Status, EFI_SUCCESS);
  EXPECT_FALSE(RanToTheEnd());
  EXPECT_EQ(Machine.Calls.CountOf(fake::Service::HostFindBiosOption), 1u);
  EXPECT_EQ(Seen().JumpRequested, 1);
  EXPECT_EQ(Seen().JumpComponentIndex, kPcie);
  EXPECT_EQ(Seen().JumpSearchTokenId, 0x106);
  EXPECT_EQ(Seen().JumpComponentType, static_cast<UINT32>(OBV_TYPE_PCIE));
  EXPECT_EQ(Host.State.JumpRequested, 0);
}

TEST_F(JumpRun, EnterOnAFocusedCalloutJumps) {
  ThenFocus(kSata);
  ThenEnter();
  Run();
  EXPECT_FALSE(RanToTheEnd());
  EXPECT_EQ(Seen().JumpRequested, 1);
  EXPECT_EQ(Seen().JumpComponentIndex, kSata);
}

TEST_F(JumpRun, ClickOnACalloutWithoutATokenDoesNotEndTheRun) {
  AddTablet();
  ThenClickCallout(kFan);
  Run();
  EXPECT_TRUE(RanToTheEnd());
  EXPECT_EQ(Seen().JumpRequested, 0);
  EXPECT_EQ(Machine.Calls.CountOf(fake::Service::HostFindBiosOption), 0u);
}

TEST_F(JumpRun, ClickOnACalloutThatIsNotSelectableDoesNothing) {
  Host.Components[kPcie].NotSelectable = 1;
  AddTablet();
  bool watching = false;
  int turnsPressed = 0;
  Options.EveryTurn = [&](int turn) {
    if (!watching) {
      return;
    }
    Place callout = PlaceOf(gView.Components[kPcie].Callout);
    bool inside = gPointer.X >= callout.X && gPointer.X < callout.X + callout.Width &&
                  gPointer.Y >= callout.Y && gPointer.Y < callout.Y + callout.Height;
    turnsPressed += inside && gPointer.Pressed;
    EXPECT_EQ(Focused(), gView.Components[kUsb].Callout) << turn;
    EXPECT_FALSE(lv_obj_has_state(gView.Components[kPcie].Callout, LV_STATE_FOCUSED)) << turn;
    EXPECT_TRUE(IsHidden(gView.Components[kPcie].Hotspot)) << turn;
    EXPECT_EQ(Host.State.JumpRequested, 0) << turn;
  };
  ThenFocus(kUsb);
  Then([&] { watching = true; });
  ThenClickCallout(kPcie);
  Then([&] { watching = false; });
  Run();
  EXPECT_GT(turnsPressed, 0);
  EXPECT_TRUE(RanToTheEnd());
  EXPECT_EQ(Seen().JumpRequested, 0);
  EXPECT_EQ(Machine.Calls.CountOf(fake::Service::HostFindBiosOption), 0u);
}

TEST_F(JumpRun, EnterOnACalloutUnavailableForThisCpuDoesNotEndTheRun) {
  ThenFocus(kM2);
  ThenEnter();
  Run();
  EXPECT_TRUE(RanToTheEnd());
  EXPECT_EQ(Seen().JumpRequested, 0);
}

TEST_F(JumpRun, CloseButtonLeavesWithoutAJump) {
  Then([] { lv_group_focus_obj(gView.CloseButton); });
  ThenEnter();
  Run();
  EXPECT_FALSE(RanToTheEnd());
  EXPECT_EQ(Seen().JumpRequested, 0);
  EXPECT_EQ(Machine.Calls.CountOf(fake::Service::HostFindBiosOption), 0u);
}

TEST_F(JumpRun, EscLeavesWithoutAJump) {
  ThenFocus(kUsb);
  Run();
  EXPECT_TRUE(RanToTheEnd());
  EXPECT_EQ(Seen().JumpRequested, 0);
  EXPECT_EQ(Seen().FocusIndex, kUsb + 1);
}

TEST_F(JumpRun, NothingOfTheViewWithdrawsARequest) {
  // Two clicks in one turn: the loop ends after it.
  Then([] {
    lv_event_send(gView.Components[kCpu].Callout, LV_EVENT_CLICKED, nullptr);
    lv_event_send(gView.Components[kM2].Callout, LV_EVENT_CLICKED, nullptr);
    lv_event_send(gView.Components[kSata].Callout, LV_EVENT_CLICKED, nullptr);
    lv_event_send(gView.FilterButtons[1], LV_EVENT_CLICKED, nullptr);
  });
  Run();
  EXPECT_FALSE(RanToTheEnd());
  EXPECT_EQ(Seen().JumpRequested, 1);
  EXPECT_EQ(Seen().JumpComponentIndex, kSata);
}

TEST_F(JumpRun, PointingShowsTheComponentUnderTheTip) {
  AddTablet();
  std::vector<bool> shown;
  ThenPoint(520, 310);
  Then([&] {
    shown = {!IsHidden(gView.Components[kCpu].Hotspot),
             !IsHidden(gView.Components[kMemory].Hotspot)};
  });
  ThenPoint(720, 310);
  Then([&] {
    shown.push_back(!IsHidden(gView.Components[kCpu].Hotspot));
    shown.push_back(!IsHidden(gView.Components[kMemory].Hotspot));
  });
  Run();
  EXPECT_EQ(shown, (std::vector<bool>{true, false, false, true}));
}

}  // namespace
