// From start to end: hooks, timers, the clock, the order of the shut-down.

#include "test/unit/stage/WholeRun.h"

#include "app/base/Run.h"
#include "view/StatusRefresh.h"
#include "view/ViewState.h"

namespace {

using fake::Service;
class Lifecycle : public WholeRun {
 protected:
  Lifecycle() { LeaveFontsOut(); }

  static UINT32 RefreshPeriod() {
    for (lv_timer_t *timer = lv_timer_get_next(nullptr); timer != nullptr;
         timer = lv_timer_get_next(timer)) {
      if (timer->timer_cb == RefreshStatusTimer) {
        EXPECT_EQ(timer->user_data, nullptr);
        return timer->period;
      }
    }
    return 0;
  }
  UINT32 RefreshPeriodOfARun() {
    UINT32 period = 0;
    fake::RunOptions options = OneTurn();
    options.At(1, [&] { period = RefreshPeriod(); });
    Run(options);
    return period;
  }
  /// Whole seconds that a run of this length logs.
  void ExpectUsage(UINT64 milliseconds, const std::string &seconds) {
    Install();
    fake::RunOptions options = OneTurn();
    options.StepPerTurn = 0;
    Host.OnAfterAppLife = [&] {
      Machine.Clock.SetMilliseconds(gRun.StartTime + milliseconds);
      return EFI_SUCCESS;
    };
    Run(options);
    EXPECT_EQ(Host.Log.back(),
              Error("[VeltBoardscopeAppEntryPoint] User used APP for " + seconds + "s\n"));
  }
  /// All calls but those of memory from the first CloseEvent on, without statuses.
  Lines ShutDownCalls() const {
    Lines calls;
    bool begun = false;
    for (const fake::CallRecord &call : Machine.Calls.All()) {
      begun = begun || call.What == Service::CloseEvent;
      if (begun && call.What != Service::HostDebugPrint) {
        calls.push_back(std::string(ServiceName(call.What)) + "(" + call.Args + ")");
      }
    }
    return calls;
  }
};

TEST_F(Lifecycle, EscEndsTheRun) {
  Install();
  EXPECT_EQ(Run().Status, EFI_SUCCESS);
  EXPECT_TRUE(SetupScreenIsBack());
}

TEST_F(Lifecycle, TheCloseButtonEndsTheRun) {
  Install();
  fake::RunOptions options;
  options.EscapeAtTurn = 0;
  options.At(5, [] { lv_event_send(gView.CloseButton, LV_EVENT_CLICKED, nullptr); });
  fake::RunResult result = Run(options);
  EXPECT_EQ(result.Status, EFI_SUCCESS);
  EXPECT_EQ(result.Turns, 5);
  EXPECT_TRUE(SetupScreenIsBack());
}

TEST_F(Lifecycle, WithoutAUsableModeTheScreenIsNotTouched) {
  Install({{800, 600}});
  fake::RunResult result = Run();
  EXPECT_EQ(result.Status, EFI_SUCCESS);
  EXPECT_EQ(result.Turns, 0);
  EXPECT_EQ(Machine.Calls.CountOf(Service::GopBlt), 0u);
  EXPECT_EQ(Machine.Calls.CountOf(Service::GopSetMode), 0u);
  EXPECT_EQ(Machine.Calls.CountOf(Service::HostGetResourceData), 0u);
  EXPECT_EQ(Machine.Calls.Lines({Service::HostAfterAppLife, Service::HostUnsupportedResolution}),
            (Lines{"Host.AfterAppLife(0) = Success", "Host.UnsupportedResolution() = Success"}));
}

TEST_F(Lifecycle, WithoutALogTheRunIsTheSame) {
  Install();
  Host.Protocol().DebugPrint = nullptr;
  EXPECT_EQ(Run().Status, EFI_SUCCESS);
  EXPECT_EQ(Host.Log, LogLines{});
  EXPECT_TRUE(SetupScreenIsBack());
}

TEST_F(Lifecycle, ARunOf61900MillisecondsLogs61Seconds) { ExpectUsage(61900, "61"); }
TEST_F(Lifecycle, ARunOf61999MillisecondsLogs61Seconds) { ExpectUsage(61999, "61"); }
TEST_F(Lifecycle, ARunOf62000MillisecondsLogs62Seconds) { ExpectUsage(62000, "62"); }

TEST_F(Lifecycle, StatusIsRefreshedEveryTwoSeconds) {
  Install();
  EXPECT_EQ(RefreshPeriodOfARun(), 2000u);
}

TEST_F(Lifecycle, SlowRefreshIsEveryTenSeconds) {
  Install();
  Host.State.SlowRefresh = 3;
  EXPECT_EQ(RefreshPeriodOfARun(), 10000u);
}

TEST_F(Lifecycle, TheTickFollowsTheHostsClock) {
  Install();
  fake::RunOptions options;
  options.StepPerTurn = 7;
  options.EveryTurn = [](int turn) {
    EXPECT_EQ(lv_tick_get(), static_cast<UINT32>(turn - 1) * 7);
    gRun.ExitRequested = turn == 20;
  };
  EXPECT_EQ(Run(options).Turns, 20);
}

TEST_F(Lifecycle, ElapsedTimeIsCutTo32Bits) {
  Install();
  UINT32 tick = 0;
  fake::RunOptions options;
  options.StepPerTurn = 0;
  options.At(1, [this] { Machine.Clock.Advance((UINT64{1} << 32) + 5); });
  options.At(2, [&] {
    tick = lv_tick_get();
    gRun.ExitRequested = true;
  });
  Run(options);
  EXPECT_EQ(tick, 5u);
}

TEST_F(Lifecycle, TheExitFlagIsReadOnceATurn) {
  Install();
  EXPECT_EQ(Run(OneTurn()).Turns, 1);
}

TEST_F(Lifecycle, AFailingCloseEventIsIgnored) {
  Install();
  Machine.FailCall(Service::CloseEvent, 1, EFI_INVALID_PARAMETER, fake::kForever);
  EXPECT_EQ(Run(OneTurn()).Status, EFI_SUCCESS);
  EXPECT_TRUE(SetupScreenIsBack());
}

TEST_F(Lifecycle, AnOutputThatRefusesTheViewsModeKeepsItsOwn) {
  fake::VideoMode refused = {1024, 768};
  refused.SetStatus = EFI_DEVICE_ERROR;
  Install({{1280, 1024}, refused});
  EXPECT_EQ(Run().Status, EFI_SUCCESS);
  EXPECT_TRUE(SetupScreenIsBack());
}

TEST_F(Lifecycle, TheModeIsSwitchedOnlyWhereItDiffers) {
  Install({{1024, 768}, {1280, 1024}});
  Run(OneTurn());
  EXPECT_EQ(Machine.Calls.CountOf(Service::GopSetMode), 0u);
}

TEST_F(Lifecycle, TheSetupScreenIsSavedBeforeTheModeSwitch) {
  Install({{1280, 1024}, {1024, 768}});
  Run(OneTurn());
  Lines calls = Machine.Calls.Lines({Service::GopSetMode, Service::GopBlt});
  ASSERT_GE(calls.size(), 3u);
  EXPECT_EQ(calls[0], "Gop.Blt(gop0, VideoToBltBuffer, 0, 0, 0, 0, 1280, 1024, 0) = Success");
  EXPECT_EQ(calls[1], "Gop.SetMode(gop0, 1) = Success");
  EXPECT_EQ(calls[2], "Gop.Blt(gop0, VideoFill, 0, 0, 0, 0, 1024, 768, 0) = Success");
}

TEST_F(Lifecycle, ShutDownCallsInOrder) {
  Install({{1280, 1024}, {1024, 768}});
  AddSetupScreen({{800, 600}, {1280, 1024}});
  EXPECT_EQ(Run(Jump()).Status, EFI_SUCCESS);
  EXPECT_EQ(ShutDownCalls(), (Lines{
                                 "CloseEvent(event)",
                                 "CloseEvent(null)",
                                 "Host.GetTime()",
                                 "Host.FindBiosOption(0)",
                                 "Host.GetTime()",
                                 // Whether the output in use is there.
                                 "HandleProtocol(GraphicsOutput)",
                                 "LocateHandleBuffer(2, GraphicsOutput)",
                                 "HandleProtocol(GraphicsOutput)",
                                 "HandleProtocol(GraphicsOutput)",
                                 "Gop.QueryMode(gop0, 0)",
                                 "Gop.SetMode(gop0, 0)",
                                 "Gop.QueryMode(gop1, 0)",
                                 "Gop.QueryMode(gop1, 1)",
                                 "Gop.SetMode(gop1, 1)",
                                 "LocateHandleBuffer(2, GraphicsOutput)",
                                 "HandleProtocol(GraphicsOutput)",
                                 "HandleProtocol(GraphicsOutput)",
                                 "Gop.Blt(gop0, BufferToVideo, 0, 0, 0, 0, 1280, 1024, 0)",
                                 "Host.GetTime()",
                                 "Host.AfterAppLife(1)",
                                 "Host.GetTime()",
                                 "Host.GetTime()",
                             }));
}

// LVGL reads no input then: nobody could leave.
TEST_F(Lifecycle, AClockThatStandsStillForTenSecondsEndsTheRun) {
  LeaveFontsOut();
  Install();
  Host.OnGetTime = [] { return UINT64{1000}; };
  fake::RunOptions options;
  options.EscapeAtTurn = 0;
  options.MostTurns = 1000000;
  EXPECT_EQ(Run(options).Status, EFI_SUCCESS);
  EXPECT_TRUE(Host.Logged("[OBV] The host's clock stands still, now app exit...\n"));
  EXPECT_GE(Machine.Calls.CountOf(Service::Stall), 10000u);
  EXPECT_TRUE(SetupScreenIsBack());
}

TEST_F(Lifecycle, AClockThatMovesIsNeverWaitedFor) {
  LeaveFontsOut();
  Install();
  EXPECT_EQ(Run().Status, EFI_SUCCESS);
  EXPECT_EQ(Machine.Calls.CountOf(Service::Stall), 0u);
}

}  // namespace
