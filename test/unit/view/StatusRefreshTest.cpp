// The periodic refresh of component status.

#include "test/unit/stage/PanelStage.h"
#include "test/unit/stage/RunScript.h"
#include "view/StatusRefresh.h"

namespace {

constexpr UINT32 kTypes[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 33, 254};

// One component of each type, named by it.
class StatusRefresh : public PanelStage {
 protected:
  StatusRefresh() {
    for (UINT32 type : kTypes) {
      Host.AddComponent(NameOf(type), type, 1, 300, 300);
    }
  }
  static std::u16string NameOf(UINT32 type) { return u"T" + fake::FromAscii(std::to_string(type)); }
  /// Index of the component of a type below 10.
  static size_t IndexOf(UINT32 type) { return type; }

  void BuildAndCount() {
    Build();
    Machine.Calls.Clear();
  }
  /// Types that a refresh under this filter asks the host about.
  std::vector<UINT32> PolledUnder(UINT32 filter) {
    std::vector<UINT32> polled;
    Host.OnQueryComponentStatus = [&](CHAR16 *, UINT32 type, UINTN, UINT64 *,
                                      OBV_COMPONENT_INFO *) {
      polled.push_back(type);
      return EFI_SUCCESS;
    };
    gView.CategoryFilter = filter;
    RefreshStatusTimer(nullptr);
    Host.OnQueryComponentStatus = nullptr;
    return polled;
  }
  void Answer(UINT32 type, EFI_STATUS status, std::vector<fake::TestHost::InfoLine> lines = {}) {
    Host.Answers[NameOf(type)] = {status, std::move(lines), {}};
  }
};

TEST_F(StatusRefresh, UnderAllItPollsOnlyCategories1And5And8And9) {
  Build();
  EXPECT_EQ(PolledUnder(0), (std::vector<UINT32>{1, 5, 8, 9}));
}

TEST_F(StatusRefresh, UnderAPolledCategoryItPollsThatAlone) {
  Build();
  for (UINT32 type : {1u, 5u, 8u, 9u}) {
    EXPECT_EQ(PolledUnder(type), std::vector<UINT32>{type});
  }
}

TEST_F(StatusRefresh, UnderCategory2ItDoesNothingAtAll) {
  Build();
  lv_obj_add_flag(gView.Components[1].FirstMarker, LV_OBJ_FLAG_HIDDEN);
  Host.Components[1].Available = 1;
  EXPECT_EQ(PolledUnder(2), std::vector<UINT32>{});
  EXPECT_TRUE(IsHidden(gView.Components[1].FirstMarker));
}

TEST_F(StatusRefresh, UnderEveryOtherFilterItDoesNothing) {
  Build();
  for (UINT32 filter : {3u, 4u, 6u, 7u, 10u, 11u, 31u, 32u, 33u, 40u, 254u, 0xFFFFFFFFu}) {
    EXPECT_EQ(PolledUnder(filter), std::vector<UINT32>{}) << filter;
  }
}

TEST_F(StatusRefresh, DotsFollowTheAnswer) {
  Build();
  size_t usb = IndexOf(1);
  struct {
    EFI_STATUS Status;
    bool First, Second;
  } const kAnswers[] = {{EFI_SUCCESS, true, false},     {EFI_DEVICE_ERROR, false, true},
                        {EFI_NOT_FOUND, false, false},  {EFI_SUCCESS, true, false},
                        {EFI_NO_MAPPING, false, false}, {EFI_NOT_READY, false, false}};
  for (const auto &answer : kAnswers) {
    Answer(1, answer.Status);
    RefreshStatusTimer(nullptr);
    EXPECT_EQ(!IsHidden(gView.Components[usb].FirstMarker), answer.First) << answer.Status;
    EXPECT_EQ(!IsHidden(gView.Components[usb].SecondMarker), answer.Second) << answer.Status;
  }
}

TEST_F(StatusRefresh, ComponentsThatAreNotPolledKeepTheirDots) {
  Build();
  for (UINT32 type : {0u, 2u, 3u, 4u, 6u, 7u}) {
    Answer(type, EFI_DEVICE_ERROR);
    RefreshStatusTimer(nullptr);
    EXPECT_TRUE(IsHidden(gView.Components[IndexOf(type)].SecondMarker)) << type;
    EXPECT_EQ(Host.Components[IndexOf(type)].DeviceError, 0) << type;
  }
}

TEST_F(StatusRefresh, FocusedComponentsPanelShowsTheNewLines) {
  Answer(8, EFI_SUCCESS, {{u"Speed", u"900 rpm"}});
  Build();
  lv_group_focus_obj(gView.Components[IndexOf(8)].Callout);
  EXPECT_EQ(PanelText(), "\n\n" + InfoLineText("Speed", "900 rpm"));
  Answer(8, EFI_SUCCESS, {{u"Speed", u"1200 rpm"}});
  RefreshStatusTimer(nullptr);
  EXPECT_EQ(PanelText(), "\n\n" + InfoLineText("Speed", "1200 rpm"));
}

TEST_F(StatusRefresh, OtherComponentsLeaveThePanel) {
  Answer(2, EFI_SUCCESS, {{u"Drive", u"S"}});
  Build();
  lv_group_focus_obj(gView.Components[IndexOf(2)].Callout);
  Answer(2, EFI_SUCCESS, {{u"Drive", u"T"}});
  Answer(1, EFI_SUCCESS, {{u"Port", u"U"}});
  RefreshStatusTimer(nullptr);
  EXPECT_EQ(PanelText(), "\n\n" + InfoLineText("Drive", "S"));
}

TEST_F(StatusRefresh, PanelIsNotFilledForAComponentUnderAnotherFilter) {
  Answer(1, EFI_SUCCESS, {{u"Port", u"old"}});
  Build();
  lv_group_focus_obj(gView.Components[IndexOf(1)].Callout);
  Answer(1, EFI_SUCCESS, {{u"Port", u"new"}});
  gView.CategoryFilter = 8;
  RefreshStatusTimer(nullptr);
  EXPECT_EQ(PanelText(), "\n\n" + InfoLineText("Port", "old"));
}

TEST_F(StatusRefresh, StatusLineIsAddedAnewAfterTheHostRewroteTheTable) {
  Answer(1, EFI_NOT_FOUND);
  Build();
  lv_group_focus_obj(gView.Components[IndexOf(1)].Callout);
  std::string missing = "\n\n" + InfoLineText("Device", "Not Present");
  EXPECT_EQ(PanelText(), missing);
  RefreshStatusTimer(nullptr);
  EXPECT_EQ(Host.Components[IndexOf(1)].InfoCount, 1u);
  EXPECT_EQ(PanelText(), missing);
  Answer(1, EFI_SUCCESS);
  RefreshStatusTimer(nullptr);
  EXPECT_EQ(PanelText(), "\n\n");
}

// Else the whole screen would be drawn every two seconds.
TEST_F(StatusRefresh, DrawsOnlyWhatChanges) {
  Answer(8, EFI_SUCCESS, {{u"Speed", u"900 rpm"}});
  Build();
  lv_group_focus_obj(gView.Components[IndexOf(8)].Callout);
  RefreshStatusTimer(nullptr);
  auto drawnByARefresh = [this] {
    lv_refr_now(nullptr);
    Machine.Calls.Clear();
    RefreshStatusTimer(nullptr);
    lv_refr_now(nullptr);
    return Machine.Calls.CountOf(fake::Service::GopBlt) > 0;
  };
  EXPECT_FALSE(drawnByARefresh());
  Answer(8, EFI_SUCCESS, {{u"Speed", u"1200 rpm"}});
  EXPECT_TRUE(drawnByARefresh());
  EXPECT_FALSE(drawnByARefresh());
  Answer(1, EFI_DEVICE_ERROR);
  EXPECT_TRUE(drawnByARefresh());
}

class RefreshPeriod : public RunScript {
 protected:
  /// Times of the looks at USB_1's status in a run of about 22 s, in ms since its first turn.
  std::vector<uint64_t> LookTimes() {
    LeaveFontsOut();
    std::optional<uint64_t> start;
    std::vector<uint64_t> times;
    Host.OnQueryComponentStatus = [&](CHAR16 *name, UINT32, UINTN, UINT64 *count,
                                      OBV_COMPONENT_INFO *) {
      *count = 0;
      if (start && fake::ToU16(name) == u"USB_1") {
        times.push_back(Machine.Clock.Milliseconds() - *start);
      }
      return EFI_SUCCESS;
    };
    Options.StepPerTurn = 100;
    Options.At(1, [&] { start = Machine.Clock.Milliseconds(); });
    Then([] {}, 190);
    Run();
    return times;
  }
};

TEST_F(RefreshPeriod, IsTwoSeconds) {
  EXPECT_EQ(LookTimes(), (std::vector<uint64_t>{2000, 4000, 6000, 8000, 10000, 12000, 14000, 16000,
                                                18000, 20000, 22000}));
}

TEST_F(RefreshPeriod, IsTenSecondsWhenTheHostAsksForSlowRefresh) {
  Host.State.SlowRefresh = 1;
  EXPECT_EQ(LookTimes(), (std::vector<uint64_t>{10000, 20000}));
}

TEST_F(RefreshPeriod, AnyValueOfSlowRefreshCounts) {
  Host.State.SlowRefresh = 0x80;
  EXPECT_EQ(LookTimes(), (std::vector<uint64_t>{10000, 20000}));
}

// The answer of the second look is what the run shows after 4 s.
TEST_F(RefreshPeriod, ChangedStatusShowsOnTheScreenWithoutTheUser) {
  Host.Answers[u"USB_1"].Before = {EFI_NOT_FOUND, EFI_NOT_FOUND};
  std::vector<bool> hidden;
  Options.StepPerTurn = 100;
  for (int turn : {5, 30, 50}) {
    Options.At(turn, [&] { hidden.push_back(IsHidden(gView.Components[2].FirstMarker)); });
  }
  Then([] {}, 60);
  Run();
  EXPECT_EQ(hidden, (std::vector<bool>{true, true, false}));
}

}  // namespace
