// Monitors that come while the view is up.

#include "test/unit/stage/ConnectedHost.h"
#include "test/unit/stage/WholeRun.h"

#include "app/base/Run.h"
#include "platform/HotPlug.h"
#include "view/ViewState.h"

namespace {

using fake::Service;
class HotPlug : public WholeRun {
 protected:
  HotPlug() { LeaveFontsOut(); }

  /// A run in which `plug` happens in turn 3, and the user leaves after turn 12 at the latest.
  fake::RunResult RunWith(std::function<void()> plug) {
    fake::RunOptions options;
    options.EscapeAtTurn = 0;
    options.At(3, [=, this] {
      view_ = Machine.Output(0).Picture();
      before_ = Host.Log.size();
      calls_ = Machine.Calls.All().size();
      plug();
    });
    options.At(10, [this] {
      for (size_t i = 0; i < Machine.OutputCount(); i++) {
        after_.push_back(Machine.Output(i).Picture());
      }
    });
    options.At(12, [] { gRun.ExitRequested = true; });
    return Run(options);
  }
  /// What was logged from the plugging up to the end of life.
  LogLines Logged() const {
    auto end = std::find_if(Host.Log.begin(), Host.Log.end(), [](const fake::LogLine &line) {
      return line.Text.find("AfterAppLife") != std::string::npos;
    });
    return {Host.Log.begin() + static_cast<ptrdiff_t>(before_), end};
  }
  /// Mode switches and transfers from the plugging up to the shut-down.
  Lines Calls() const {
    Lines lines;
    for (size_t i = calls_; i < Machine.Calls.All().size(); i++) {
      const fake::CallRecord &call = Machine.Calls.All()[i];
      if (call.What == Service::CloseEvent) {
        break;
      }
      if (call.What == Service::GopSetMode || call.What == Service::GopBlt) {
        lines.push_back(fake::ToText(call));
      }
    }
    return lines;
  }

  std::vector<UINT32> view_;
  std::vector<std::vector<UINT32>> after_;
  size_t before_ = 0;
  size_t calls_ = 0;
};

TEST_F(HotPlug, AnOutputInUseThatStillWorksIsKept) {
  Install();
  RunWith([this] { Machine.AddOutput({{1024, 768}}); });
  EXPECT_EQ(Logged(), (LogLines{Error("New monitor interface detected!\n"),
                                Error("Current Gop still work\n")}));
  EXPECT_EQ(Calls(), (Lines{"Gop.Blt(gop0, VideoFill, 0, 0, 0, 0, 1024, 768, 0) = Success",
                            "Gop.Blt(gop1, VideoFill, 0, 0, 0, 0, 1024, 768, 0) = Success",
                            "Gop.Blt(gop0, BufferToVideo, 0, 0, 0, 0, 1024, 768, 0) = Success"}));
  ASSERT_EQ(after_.size(), 2u);
  EXPECT_EQ(after_[0], view_);
  EXPECT_EQ(after_[1], std::vector<UINT32>(1024 * 768, 0));
  EXPECT_TRUE(SetupScreenIsBack());
}

TEST_F(HotPlug, TheLaterOfTwoOtherOutputsIsTaken) {
  Install();
  EFI_GRAPHICS_OUTPUT_PROTOCOL *chosen = nullptr;
  RunWith([&] {
    Machine.Output(0).SetModes({{1280, 1024}});
    EFI_TPL tpl = Machine.Events.Raise(TPL_NOTIFY);
    Machine.AddOutput({{1024, 768}});
    Machine.AddOutput({{1024, 768}});
    Machine.Events.Restore(tpl);
    chosen = gHost.Gop;
  });
  EXPECT_EQ(chosen, Machine.Output(2).Protocol());
  ASSERT_EQ(after_.size(), 3u);
  EXPECT_EQ(after_[2], view_);
  EXPECT_EQ(after_[1], std::vector<UINT32>(1024 * 768, 0));
}

TEST_F(HotPlug, TheChosenOutputIsSwitchedToTheViewsMode) {
  Install();
  RunWith([this] {
    Machine.Output(0).SetModes({{1280, 1024}});
    Machine.AddOutput({{800, 600}, {1024, 768}});
  });
  EXPECT_EQ(Logged(), LogLines{Error("New monitor interface detected!\n")});
  EXPECT_EQ(Calls(), (Lines{"Gop.Blt(gop0, VideoFill, 0, 0, 0, 0, 1024, 768, 0) = Success",
                            "Gop.Blt(gop1, VideoFill, 0, 0, 0, 0, 800, 600, 0) = Success",
                            "Gop.SetMode(gop1, 1) = Success",
                            "Gop.Blt(gop1, BufferToVideo, 0, 0, 0, 0, 1024, 768, 0) = Success"}));
  ASSERT_EQ(after_.size(), 2u);
  EXPECT_EQ(after_[1], view_);
}

TEST_F(HotPlug, AChosenOutputThatRefusesItsModeIsUsedAnyway) {
  Install();
  EFI_GRAPHICS_OUTPUT_PROTOCOL *chosen = nullptr;
  RunWith([&] {
    Machine.Output(0).SetModes({{1280, 1024}});
    fake::VideoMode refused = {1024, 768};
    refused.SetStatus = EFI_DEVICE_ERROR;
    Machine.AddOutput({{1280, 1024}, refused});
    chosen = gHost.Gop;
  });
  EXPECT_EQ(chosen, Machine.Output(1).Protocol());
}

TEST_F(HotPlug, WithoutAnOutputForTheViewTheRunEnds) {
  Install();
  fake::RunResult result = RunWith([this] {
    Machine.Output(0).SetModes({{1280, 1024}});
    Machine.AddOutput({{800, 600}});
    EXPECT_EQ(gHost.Gop, nullptr);
    EXPECT_TRUE(gRun.ExitRequested);
  });
  EXPECT_EQ(result.Turns, 3);
  EXPECT_EQ(result.Status, EFI_SUCCESS);
  EXPECT_EQ(Logged(), (LogLines{Error("New monitor interface detected!\n"),
                                Error("No Gop support current resolution!\nNow app exit...\n")}));
}

TEST_F(HotPlug, NothingIsTransferredWhileThereIsNoOutput) {
  Install();
  fake::RunOptions options;
  uint64_t before = 0;
  options.At(3, [&] {
    gHost.Gop = nullptr;
    lv_obj_invalidate(lv_scr_act());
    before = Machine.Calls.CountOf(Service::GopBlt);
  });
  options.At(6, [&] {
    EXPECT_EQ(Machine.Calls.CountOf(Service::GopBlt), before);
    gHost.Gop = Machine.Output(0).Protocol();
    gRun.ExitRequested = true;
  });
  Run(options);
  EXPECT_TRUE(SetupScreenIsBack());
}

TEST_F(HotPlug, AfterAnEndWithoutAnOutputTheHostMayHaveAllRestored) {
  Install();
  Host.State.RestoreAllOutputsA = 1;
  RunWith([this] {
    Machine.Output(0).SetModes({{800, 600}});
    Machine.AddOutput({{800, 600}});
    Machine.Output(0).SetModes({{1024, 768}});
  });
  EXPECT_TRUE(SetupScreenIsBack());
}

TEST_F(HotPlug, AFailedEnumerationEndsTheRun) {
  Install();
  fake::RunResult result = RunWith([this] {
    Machine.FailCall(Service::LocateHandleBuffer, 1, EFI_OUT_OF_RESOURCES, 2);
    Machine.AddOutput({{1024, 768}});
    EXPECT_EQ(gHost.Gop, Machine.Output(0).Protocol());
  });
  EXPECT_EQ(result.Turns, 3);
  EXPECT_EQ(Logged(), (LogLines{
                          Error("New monitor interface detected!\n"),
                          Error("[GetAllGopPrrotocol] Error occurs: Out of Resources\n"),
                          Error("[ClearAllScreen] Error occurs: Out of Resources\n"),
                          Error("[GetAllGopPrrotocol] Error occurs: Out of Resources\n"),
                          Error("Get Gop Protocol failed!\n"),
                      }));
  EXPECT_TRUE(SetupScreenIsBack());
}

TEST_F(HotPlug, ALastOutputThatRefusesEndsTheRun) {
  Install();
  RunWith([this] {
    // Two enumerations of two outputs each; the second one fails at its end.
    Machine.FailCall(Service::HandleProtocol, 4, EFI_UNSUPPORTED);
    Machine.AddOutput({{1024, 768}});
    EXPECT_TRUE(gRun.ExitRequested);
  });
  EXPECT_EQ(Logged(), (LogLines{Error("New monitor interface detected!\n"),
                                Error("Get Gop Protocol failed!\n")}));
}

TEST_F(HotPlug, AMonitorMayComeInTheMiddleOfAFlush) {
  Install();
  RunWith([this] {
    // A small part: what the flush itself draws does not bring the blanked view back.
    lv_obj_invalidate(gView.CloseButton);
    Machine.At(Service::GopBlt, 1, [this] { Machine.AddOutput({{1024, 768}}); });
  });
  EXPECT_EQ(Logged(), (LogLines{Error("New monitor interface detected!\n"),
                                Error("Current Gop still work\n")}));
  ASSERT_EQ(after_.size(), 2u);
  EXPECT_EQ(after_[0], view_);
}

TEST_F(HotPlug, TheOutputMayBeReplacedInTheMiddleOfAFlush) {
  Install();
  RunWith([this] {
    lv_obj_invalidate(gView.CloseButton);
    Machine.At(Service::GopBlt, 1, [this] {
      Machine.Output(0).SetModes({{800, 600}});
      Machine.AddOutput({{1024, 768}});
    });
  });
  ASSERT_EQ(after_.size(), 2u);
  EXPECT_EQ(after_[1], view_);
}

TEST_F(HotPlug, EveryMonitorIsNoticed) {
  Install();
  RunWith([this] {
    Machine.AddOutput({{800, 600}});
    Machine.AddOutput({{800, 600}});
  });
  EXPECT_EQ(Logged().size(), 4u);
  ASSERT_EQ(after_.size(), 3u);
  EXPECT_EQ(after_[0], view_);
}

TEST_F(HotPlug, WithoutALogTheOutputIsReplacedAllTheSame) {
  Install();
  Host.Protocol().DebugPrint = nullptr;
  EFI_GRAPHICS_OUTPUT_PROTOCOL *chosen = nullptr;
  RunWith([&] {
    Machine.Output(0).SetModes({{1280, 1024}});
    Machine.AddOutput({{1024, 768}});
    chosen = gHost.Gop;
  });
  EXPECT_EQ(chosen, Machine.Output(1).Protocol());
}

TEST_F(HotPlug, AnEventThatCannotBeCreatedIsLoggedAndLeavesTheRunAlone) {
  Install();
  Machine.FailCall(Service::CreateEvent, 1, EFI_OUT_OF_RESOURCES);
  EXPECT_EQ(Run(OneTurn()).Status, EFI_SUCCESS);
  EXPECT_TRUE(Host.Logged("[InstallDisplayPortHotPlugDetector] Error occurs: Out of Resources\n"));
  EXPECT_EQ(Machine.Calls.CountOf(Service::RegisterProtocolNotify), 0u);
  EXPECT_EQ(Machine.Calls.CountOf(Service::CloseEvent), 2u);
  EXPECT_TRUE(SetupScreenIsBack());
}

TEST_F(HotPlug, ANotificationThatCannotBeRegisteredIsLoggedAndNeverComes) {
  Install();
  Machine.FailCall(Service::RegisterProtocolNotify, 1, EFI_OUT_OF_RESOURCES);
  RunWith([this] { Machine.AddOutput({{1024, 768}}); });
  EXPECT_TRUE(Host.Logged("[InstallDisplayPortHotPlugDetector] Error occurs: Out of Resources\n"));
  EXPECT_EQ(Logged(), LogLines{});
}

TEST_F(HotPlug, AfterTheRunNobodyListens) {
  Install();
  size_t events = Machine.Events.LiveCount();
  Run(OneTurn());
  EXPECT_EQ(Machine.Events.LiveCount(), events);
  size_t lines = Host.Log.size();
  Machine.AddOutput({{1024, 768}});
  EXPECT_EQ(Host.Log.size(), lines);
}

class HotPlugDetector : public ConnectedHost {};

TEST_F(HotPlugDetector, TheStatusOfTheRegistrationIsReturned) {
  Machine.FailCall(Service::CreateEvent, 1, EFI_INVALID_PARAMETER);
  EXPECT_EQ(InstallDisplayPortHotPlugDetector(), EFI_INVALID_PARAMETER);
  Machine.FailCall(Service::RegisterProtocolNotify, 1, EFI_OUT_OF_RESOURCES);
  EXPECT_EQ(InstallDisplayPortHotPlugDetector(), EFI_OUT_OF_RESOURCES);
  CloseHotPlugDetector();
  EXPECT_EQ(InstallDisplayPortHotPlugDetector(), EFI_SUCCESS);
  EXPECT_EQ(Machine.Calls.Lines({Service::CreateEvent}).back(), "CreateEvent(512, 8) = Success");
  CloseHotPlugDetector();
}

}  // namespace
