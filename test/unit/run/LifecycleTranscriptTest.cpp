// Everything that whole runs log, line by line.

#include "test/unit/stage/WholeRun.h"

#include "app/base/Run.h"

namespace {

#define ENTRY "[VeltBoardscopeAppEntryPoint] "

class LifecycleTranscript : public WholeRun {
 protected:
  /// The leak report's numbers as the pool has them when nothing is freed yet.
  void WatchPool() {
    Host.OnAfterAppLife = [this] {
      blocks_ = Machine.Pool.LiveBlocks();
      bytes_ = Machine.Pool.LiveBytes();
      return EFI_SUCCESS;
    };
  }
  /// What is alive when only the localized texts were loaded.
  fake::LogLine ReportOfTexts() {
    UINT64 bytes = 0;
    for (UINT16 id : Host.State.StringIds) {
      bytes += 24 + Host.Strings["en-US"][id].size() * 4 + 1;
    }
    return LeakReport(OBV_STRING_COUNT, bytes);
  }
  fake::LogLine WatchedReport() const { return LeakReport(blocks_, bytes_); }

  /// A run that never gets to see the view.
  void ExpectFailedIntake(const LogLines &lines, EFI_STATUS status) {
    Install();
    fake::RunResult result = Run();
    EXPECT_EQ(result.Status, status);
    EXPECT_EQ(result.Turns, 0);
    LogLines expected = {Info("previous resolution: 1024 768\n"),
                         Error("Load multilangage string success\n"),
                         Info("current resolution: 1024 768\n")};
    expected.insert(expected.end(), lines.begin(), lines.end());
    expected.push_back(Error(ENTRY "AfterAppLife cost: 10ms\n"));
    expected.push_back(ReportOfTexts());
    expected.push_back(Error(ENTRY "User used APP for 0s\n"));
    EXPECT_EQ(Host.Log, expected);
    EXPECT_TRUE(SetupScreenIsBack());
    EXPECT_EQ(Machine.Calls.CountOf(fake::Service::GopBlt), 0u);
  }

  UINT64 blocks_ = 0;
  UINT64 bytes_ = 0;
};

TEST_F(LifecycleTranscript, ANormalRun) {
  Install();
  WatchPool();
  fake::RunOptions options;
  options.EscapeAtTurn = 150;
  EXPECT_EQ(Run(options).Status, EFI_SUCCESS);
  EXPECT_EQ(Host.Log, (LogLines{
                          Info("previous resolution: 1024 768\n"),
                          Error("Load multilangage string success\n"),
                          Info("current resolution: 1024 768\n"),
                          Error("192 108 768 576\n"),
                          Info("LocateProtocol gVeltSetupEventHandlerProtocolGuid Status = "
                               "Not Found\n"),
                          Info(ENTRY "Preparation cost: 10ms\n"),
                          Error(ENTRY "AfterAppLife cost: 10ms\n"),
                          WatchedReport(),
                          Error(ENTRY "User used APP for 1s\n"),
                      }));
}

TEST_F(LifecycleTranscript, ARunInAModeOfItsOwn) {
  Install({{1280, 1024}, {800, 600}, {1024, 768}});
  WatchPool();
  EXPECT_EQ(Run().Status, EFI_SUCCESS);
  EXPECT_EQ(Host.Log, (LogLines{
                          Info("previous resolution: 1280 1024\n"),
                          Error("Load multilangage string success\n"),
                          Info(ENTRY "1920*1080 unsupported by GOP.\n"),
                          Info("current resolution: 1024 768\n"),
                          Error("192 108 768 576\n"),
                          Info("LocateProtocol gVeltSetupEventHandlerProtocolGuid Status = "
                               "Not Found\n"),
                          Info(ENTRY "Preparation cost: 10ms\n"),
                          Error(ENTRY "AfterAppLife cost: 10ms\n"),
                          WatchedReport(),
                          Error(ENTRY "User used APP for 0s\n"),
                      }));
  EXPECT_TRUE(SetupScreenIsBack());
}

TEST_F(LifecycleTranscript, WithoutAHostThereIsNothingToLogTo) {
  AddSetupScreen({{1024, 768}});
  fake::RunResult result = Run();
  EXPECT_EQ(result.Status, EFI_NOT_FOUND);
  EXPECT_EQ(Host.Log, LogLines{});
  EXPECT_TRUE(SetupScreenIsBack());
}

TEST_F(LifecycleTranscript, WithoutAGraphicsOutput) {
  Install();
  Host.State.Gop = nullptr;
  Host.OnGetGop = [](EFI_GRAPHICS_OUTPUT_PROTOCOL **) { return EFI_UNSUPPORTED; };
  EXPECT_EQ(Run().Status, EFI_UNSUPPORTED);
  EXPECT_EQ(Host.Log, (LogLines{Error("[InitializeObvProtocol] Error occurs: Unsupported\n"),
                                Error(ENTRY "Init error: Unsupported.\n")}));
  EXPECT_EQ(Machine.Calls.CountOf(fake::Service::HostAfterAppLife), 0u);
}

TEST_F(LifecycleTranscript, WithoutTheStringPackage) {
  Install();
  Machine.FailCall(fake::Service::HiiListPackageLists, 1, EFI_NOT_FOUND, fake::kForever);
  EXPECT_EQ(Run().Status, EFI_NOT_FOUND);
  EXPECT_EQ(Host.Log, (LogLines{Info("previous resolution: 1024 768\n"),
                                Error("Load multilangage string fail\n"),
                                Error(ENTRY "Init error: Not Found.\n")}));
  EXPECT_EQ(Machine.Calls.CountOf(fake::Service::HostAfterAppLife), 0u);
}

TEST_F(LifecycleTranscript, WithoutTheBoardsResource) {
  Host.OnGetResourceData = [](VOID **, UINTN *) { return EFI_VOLUME_CORRUPTED; };
  ExpectFailedIntake({Error("[GetComponentData] Error occurs: Volume Corrupt\n"),
                      Error(ENTRY "Parse resources error: Volume Corrupt.\n")},
                     EFI_VOLUME_CORRUPTED);
}

TEST_F(LifecycleTranscript, WithAPictureTooShortForItsSize) {
  Host.Picture.resize(23);
  ExpectFailedIntake({Error("GetPngHeightAndWidth 252\n"),
                      Error("[GetComponentData] Error occurs: Invalid Parameter\n"),
                      Error(ENTRY "Parse resources error: Invalid Parameter.\n")},
                     EFI_INVALID_PARAMETER);
  EXPECT_EQ(Machine.Calls.CountOf(fake::Service::HostParseComponents), 0u);
}

TEST_F(LifecycleTranscript, WithABoardThatCannotBeParsed) {
  Host.OnParseComponents = [](OBV_COMPONENT **, const fake::ParseArguments &) {
    return EFI_CRC_ERROR;
  };
  ExpectFailedIntake({Error("[GetComponentData] Error occurs: CRC Error\n"),
                      Error(ENTRY "Parse resources error: CRC Error.\n")},
                     EFI_CRC_ERROR);
}

TEST_F(LifecycleTranscript, AFailingFinishIsNotLoggedByTheIntake) {
  Host.OnFinishParse = [] { return EFI_DEVICE_ERROR; };
  ExpectFailedIntake({Error(ENTRY "Parse resources error: Device Error.\n")}, EFI_DEVICE_ERROR);
}

TEST_F(LifecycleTranscript, WithoutAUsableMode) {
  Install({{800, 600}, {1280, 1024}});
  EXPECT_EQ(Run().Status, EFI_SUCCESS);
  EXPECT_EQ(Host.Log, (LogLines{
                          Info("previous resolution: 800 600\n"),
                          Error("Load multilangage string success\n"),
                          Info(ENTRY "1920*1080 unsupported by GOP.\n"),
                          Info(ENTRY "1024*768 unsupported by GOP.\n"),
                          Error(ENTRY "AfterAppLife cost: 10ms\n"),
                          ReportOfTexts(),
                          Error(ENTRY "User used APP for 0s\n"),
                      }));
  EXPECT_TRUE(SetupScreenIsBack());
}

/// The lines of a run that ends with a jump, from the end of its preparation on.
class JumpTranscript : public LifecycleTranscript {
 protected:
  LogLines RunWithJump(EFI_STATUS search) {
    Install();
    LeaveFontsOut();
    WatchPool();
    Host.OnFindBiosOption = [=] { return search; };
    fake::RunOptions options;
    options.At(3, [this] {
      Host.State.JumpRequested = 1;
      gRun.ExitRequested = true;
    });
    EXPECT_EQ(Run(options).Status, search);
    auto end = std::find(Host.Log.begin(), Host.Log.end(), Info(ENTRY "Preparation cost: 10ms\n"));
    return {end, Host.Log.end()};
  }
};

TEST_F(JumpTranscript, AJumpWhoseSearchSucceeds) {
  LogLines lines = RunWithJump(EFI_SUCCESS);
  EXPECT_EQ(lines, (LogLines{
                       Info(ENTRY "Preparation cost: 10ms\n"),
                       Info(ENTRY "Find BIOS option cost: 10ms\n"),
                       Error(ENTRY "AfterAppLife cost: 10ms\n"),
                       WatchedReport(),
                       Error(ENTRY "User used APP for 0s\n"),
                   }));
}

TEST_F(JumpTranscript, AJumpWhoseSearchFails) {
  LogLines lines = RunWithJump(EFI_NO_MAPPING);
  EXPECT_EQ(lines, (LogLines{
                       Info(ENTRY "Preparation cost: 10ms\n"),
                       Info(ENTRY "Find BIOS option cost: 10ms\n"),
                       Error(ENTRY "Find BIOS option error: No mapping.\n"),
                       Error(ENTRY "AfterAppLife cost: 10ms\n"),
                       WatchedReport(),
                       Error(ENTRY "User used APP for 0s\n"),
                   }));
}

}  // namespace
