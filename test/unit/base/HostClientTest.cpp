// Locating the host, choosing its output, and the guarded log.

#include "test/unit/stage/ConnectedHost.h"

#include "app/base/Geometry.h"
#include "app/base/LocalizedStrings.h"
#include "app/base/LocateHost.h"

namespace {

using fake::Service;

class HostClient : public ConnectedHost {
 protected:
  HostClient() { gHost = {}; }
  fake::GraphicsOutput &Output = Machine.AddOutput({{1366, 768}});
};

TEST_F(HostClient, TakesOverRecordAndOutput) {
  Host.Install();
  EXPECT_EQ(InitializeObvProtocol(), EFI_SUCCESS);
  EXPECT_EQ(gHost.Protocol, &Host.Protocol());
  EXPECT_EQ(gHost.SharedState, &Host.State);
  EXPECT_EQ(gHost.Gop, Output.Protocol());
  EXPECT_EQ(Machine.Calls.CountOf(Service::HostGetGop), 0u);
}

TEST_F(HostClient, RecordsAndLogsTheSetupScreensSize) {
  Host.Install();
  EXPECT_EQ(InitializeObvProtocol(), EFI_SUCCESS);
  EXPECT_EQ(gGeometry.PreviousWidth, 1366);
  EXPECT_EQ(gGeometry.PreviousHeight, 768);
  EXPECT_EQ(Log(), (LogLines{Info("previous resolution: 1366 768\n"),
                             Error("Load multilangage string success\n")}));
}

TEST_F(HostClient, AsksForAnOutputWhenTheRecordHasNone) {
  Host.Install();
  Host.State.Gop = nullptr;
  fake::GraphicsOutput &other = Machine.AddOutput({{800, 600}});
  Host.OnGetGop = [&](EFI_GRAPHICS_OUTPUT_PROTOCOL **gop) {
    *gop = other.Protocol();
    return EFI_SUCCESS;
  };
  EXPECT_EQ(InitializeObvProtocol(), EFI_SUCCESS);
  EXPECT_EQ(gHost.Gop, other.Protocol());
  EXPECT_EQ(gGeometry.PreviousWidth, 800);
}

TEST_F(HostClient, AHostWithoutAnOutputEndsTheStart) {
  Host.Install();
  Host.State.Gop = nullptr;
  Host.OnGetGop = [](EFI_GRAPHICS_OUTPUT_PROTOCOL **) { return EFI_NOT_READY; };
  EXPECT_EQ(InitializeObvProtocol(), EFI_NOT_READY);
  EXPECT_EQ(Log(), LogLines{Error("[InitializeObvProtocol] Error occurs: Not Ready\n")});
}

TEST_F(HostClient, SuccessWithoutAnOutputIsAFailure) {
  Host.Install();
  Host.State.Gop = nullptr;
  Host.OnGetGop = [](EFI_GRAPHICS_OUTPUT_PROTOCOL **) { return EFI_SUCCESS; };
  EXPECT_EQ(InitializeObvProtocol(), EFI_NOT_FOUND);
  EXPECT_EQ(Log(), LogLines{Error("[InitializeObvProtocol] Error occurs: Not Found\n")});
}

TEST_F(HostClient, WithoutAHostTheStatusOfTheSearchIsReturned) {
  EXPECT_EQ(InitializeObvProtocol(), EFI_NOT_FOUND);
  EXPECT_EQ(gHost.Protocol, nullptr);
  Host.Install();
  Machine.FailCall(Service::LocateProtocol, 1, EFI_INVALID_PARAMETER);
  EXPECT_EQ(InitializeObvProtocol(), EFI_INVALID_PARAMETER);
  EXPECT_EQ(gHost.Protocol, nullptr);
  EXPECT_EQ(Log(), LogLines{});
}

TEST_F(HostClient, TheTextsDecideAtTheEnd) {
  Host.Install();
  Machine.FailCall(Service::HiiListPackageLists, 1, EFI_NOT_FOUND, fake::kForever);
  EXPECT_EQ(InitializeObvProtocol(), EFI_NOT_FOUND);
  EXPECT_EQ(Log(), (LogLines{Info("previous resolution: 1366 768\n"),
                             Error("Load multilangage string fail\n")}));
}

TEST_F(HostClient, AHostWithoutItsRecordIsRefused) {
  Host.Install();
  Host.Protocol().SharedState = nullptr;
  EXPECT_EQ(InitializeObvProtocol(), EFI_NOT_FOUND);
  EXPECT_EQ(Log(), LogLines{Error("[InitializeObvProtocol] Error occurs: Not Found\n")});
}

TEST_F(HostClient, TheHostIsLocatedByTheContractsGuid) {
  const UINT8 bytes[] = {0xFE, 0x2B, 0x5C, 0xFC, 0x98, 0x98, 0xC6, 0x4A,
                         0x8E, 0x5B, 0x6A, 0x18, 0x1C, 0x03, 0x5F, 0x3F};
  EFI_GUID guid;
  std::memcpy(&guid, bytes, sizeof guid);
  EFI_HANDLE handle = Machine.Install(guid, &Host.Protocol());
  Host.State.Gop = Output.Protocol();
  EXPECT_EQ(InitializeObvProtocol(), EFI_NOT_FOUND);  // It has no texts.
  EXPECT_EQ(gHost.Protocol, &Host.Protocol());
  Machine.Uninstall(handle, guid, &Host.Protocol());
}

TEST_F(HostClient, LogLinesNeedAHostWithALog) {
  LogInfo("nobody listens %d\n", 1);
  gHost.Protocol = &Host.Protocol();
  LogInfo("info %d %a\n", 2, "two");
  LogError("error %r\n", EFI_ABORTED);
  Host.Protocol().DebugPrint = nullptr;
  LogError("nobody listens %d\n", 3);
  EXPECT_EQ(Log(), (LogLines{Info("info 2 two\n"), Error("error Aborted\n")}));
}

TEST_F(HostClient, TheTwoLogLevelsAreThoseOfTheContract) {
  EXPECT_EQ(UINTN{OBV_LOG_INFO}, 0x40u);
  EXPECT_EQ(UINTN{OBV_LOG_ERROR}, 0x80000000u);
}

TEST_F(HostClient, TheHostsClockIsReadEachTime) {
  gHost.Protocol = &Host.Protocol();
  Machine.Clock.SetMilliseconds(0x123456789A);
  EXPECT_EQ(HostTime(), 0x123456789Au);
  Machine.Clock.Advance(1);
  EXPECT_EQ(HostTime(), 0x123456789Bu);
}

}  // namespace
