#include <cstdio>
#include <cstdlib>

#include "test/unit/host/HostDriverStage.h"

#include "host/portable/Texts.h"

// What the driver does when it finds its stack damaged; the compiler knows it by another name.
extern "C" [[noreturn]] void BoardscopeHostStackFail();

namespace obv_host {
namespace {

using fake::Firmware;
using fake::Service;

class HostDriver : public HostDriverStage {};

TEST_F(HostDriver, PublishesTheProtocolAndSaysSo) {
  ASSERT_EQ(Load(), EFI_SUCCESS);
  EXPECT_EQ(FindHost(), &gDriver.Contract.Protocol);
  EXPECT_EQ(gPorts.Sent(0x3E8), "[Host] Ready\n");
  EXPECT_EQ(BoardInUse(), "Boardscope reference board");
}

TEST_F(HostDriver, SecondHostIsNotStarted) {
  ASSERT_EQ(Load(), EFI_SUCCESS);
  OBV_PROTOCOL *first = FindHost();
  EXPECT_EQ(Load(), EFI_ALREADY_STARTED);
  EXPECT_EQ(FindHost(), first);
  EXPECT_EQ(Machine.Hii.ListCount(), 1U);
}

TEST_F(HostDriver, UnloadTakesEverythingBackAndAllowsAnotherLoad) {
  uint64_t blocks = Machine.Pool.LiveBlocks();
  ASSERT_EQ(Load(), EFI_SUCCESS);
  EXPECT_EQ(ObvHostUnload(Machine.ImageHandle), EFI_SUCCESS);
  EXPECT_EQ(FindHost(), nullptr);
  EXPECT_EQ(Machine.Hii.ListCount(), 0U);
  EXPECT_EQ(Machine.Pool.LiveBlocks(), blocks);
  EXPECT_EQ(Load(), EFI_SUCCESS);
}

TEST_F(HostDriver, TextsAreRegisteredUnderTheContractsGuid) {
  ASSERT_EQ(Load(), EFI_SUCCESS);
  EFI_GUID guid = OBV_STRING_PACKAGE_LIST_GUID;
  EFI_HII_HANDLE *handles = HiiGetHiiHandles(&guid);
  ASSERT_NE(handles, nullptr);
  const OBV_SHARED_STATE *shared = FindHost()->SharedState;
  for (const LanguageTexts &language : kLanguages) {
    for (UINTN i = 0; i < OBV_STRING_COUNT; i++) {
      EFI_STRING text = HiiGetString(handles[0], shared->StringIds[i], language.Code);
      ASSERT_NE(text, nullptr) << language.Code << " " << i;
      EXPECT_EQ(StrCmp(text, Ucs2(TextAt(language, i))), 0) << language.Code << " " << i;
      FreePool(text);
    }
  }
  FreePool(handles);
}

TEST_F(HostDriver, FontsAreEmbedded) {
  ASSERT_EQ(Load(), EFI_SUCCESS);
  OBV_PROTOCOL *host = FindHost();
  for (UINT8 face = 0; face < kFaceCount; face++) {
    CHAR8 *name = nullptr;
    VOID *data = nullptr;
    UINTN size = 0;
    ASSERT_EQ(host->GetFontData(host, face, &name, &data, &size), EFI_SUCCESS);
    EXPECT_GT(size, 10000U);
    const UINT8 trueType[4] = {0, 1, 0, 0};
    EXPECT_EQ(std::memcmp(data, trueType, sizeof(trueType)), 0) << name;
  }
}

TEST_F(HostDriver, ClockNeverGoesBack) {
  ASSERT_EQ(Load(), EFI_SUCCESS);
  OBV_PROTOCOL *host = FindHost();
  UINT64 last = host->GetTime(host);
  for (int i = 0; i < 1000; i++) {
    UINT64 now = host->GetTime(host);
    EXPECT_GE(now, last);
    last = now;
  }
}

TEST_F(HostDriver, OutputOfTheConsoleIsPreferred) {
  fake::GraphicsOutput &first = Machine.AddOutput();
  fake::GraphicsOutput &second = Machine.AddOutput();
  ASSERT_EQ(Load(), EFI_SUCCESS);
  OBV_PROTOCOL *host = FindHost();
  EFI_GRAPHICS_OUTPUT_PROTOCOL *gop = nullptr;
  ASSERT_EQ(host->GetGop(host, &gop), EFI_SUCCESS);
  EXPECT_EQ(gop, first.Protocol());
  Machine.SystemTable.ConsoleOutHandle = second.Handle;
  ASSERT_EQ(host->GetGop(host, &gop), EFI_SUCCESS);
  EXPECT_EQ(gop, second.Protocol());
}

TEST_F(HostDriver, OutputThatStandsForADeviceComesBeforeOneThatDoesNot) {
  fake::GraphicsOutput lone("lone", fake::UsualModes(), 0);
  EFI_HANDLE handle = Machine.Install(gEfiGraphicsOutputProtocolGuid, lone.Protocol());
  ASSERT_EQ(Load(), EFI_SUCCESS);
  OBV_PROTOCOL *host = FindHost();
  EFI_GRAPHICS_OUTPUT_PROTOCOL *gop = nullptr;
  ASSERT_EQ(host->GetGop(host, &gop), EFI_SUCCESS);
  EXPECT_EQ(gop, lone.Protocol());
  fake::GraphicsOutput &device = Machine.AddOutput();
  ASSERT_EQ(host->GetGop(host, &gop), EFI_SUCCESS);
  EXPECT_EQ(gop, device.Protocol());
  Machine.Uninstall(handle, gEfiGraphicsOutputProtocolGuid, lone.Protocol());
}

TEST_F(HostDriver, WhatTheBoardNamesIsConnectedBeforeTheOutputIsChosen) {
  fake::GraphicsOutput &output = Machine.AddOutput();
  fake::DevicePath root = fake::DevicePath().PciRoot();
  EFI_HANDLE bus = Machine.Install(gEfiDevicePathProtocolGuid, root.Get());
  ASSERT_EQ(Load(), EFI_SUCCESS);
  OBV_PROTOCOL *host = FindHost();
  EXPECT_EQ(Machine.Calls.CountOf(fake::Service::ConnectController), 0U);
  EFI_GRAPHICS_OUTPUT_PROTOCOL *gop = nullptr;
  ASSERT_EQ(host->GetGop(host, &gop), EFI_SUCCESS);
  EXPECT_EQ(gop, output.Protocol());
  UINT64 connected = Machine.Calls.CountOf(fake::Service::ConnectController);
  EXPECT_GT(connected, 0U);
  OBV_COMPONENT *components = nullptr;
  ASSERT_EQ(host->ParseComponents(host, &components, 1620, 2880, 1080, 1920, 0.75, 1.0, 1.0),
            EFI_SUCCESS);
  EXPECT_EQ(Machine.Calls.CountOf(fake::Service::ConnectController), connected);
  Machine.Uninstall(bus, gEfiDevicePathProtocolGuid, root.Get());
}

TEST_F(HostDriver, NoOutputIsNotFound) {
  ASSERT_EQ(Load(), EFI_SUCCESS);
  OBV_PROTOCOL *host = FindHost();
  EFI_GRAPHICS_OUTPUT_PROTOCOL *gop = nullptr;
  EXPECT_EQ(host->GetGop(host, &gop), EFI_NOT_FOUND);
  EXPECT_EQ(gop, nullptr);
}

TEST_F(HostDriver, ThirdSerialPortIsSetUpAndHasTheLogAlone) {
  ASSERT_EQ(Load(), EFI_SUCCESS);
  EXPECT_EQ(gPorts.Sent(0x3E8), gPorts.DebugOutput);
  EXPECT_EQ(gPorts.Sent(0x3F8), "");
  EXPECT_EQ(gPorts.Divisor(0x3E8), 1);
}

TEST_F(HostDriver, FirstSerialPortStandsInAndKeepsItsSettings) {
  gPorts.Serials = {0x3F8};
  ASSERT_EQ(Load(), EFI_SUCCESS);
  EXPECT_EQ(gPorts.Sent(0x3F8), "[Host] Ready\n");
  EXPECT_EQ(gPorts.Divisor(0x3F8), 0);
}

TEST_F(HostDriver, MachineWithoutPortsLoadsSilently) {
  gPorts.Serials.clear();
  gPorts.DebugConsole = false;
  EXPECT_EQ(Load(), EFI_SUCCESS);
  EXPECT_EQ(gPorts.DebugOutput, "");
}

TEST_F(HostDriver, StuckSerialPortDoesNotHangTheMachine) {
  gPorts.Stuck = true;
  EXPECT_EQ(Load(), EFI_SUCCESS);
  EXPECT_EQ(gPorts.Sent(0x3E8), "");
  EXPECT_EQ(gPorts.DebugOutput, "[Host] Ready\n");
}

TEST_F(HostDriver, SerialPortIsGivenUpAtItsFirstTimeOut) {
  ASSERT_EQ(Load(), EFI_SUCCESS);
  gPorts.Stuck = true;
  FindHost()->DebugPrint(OBV_LOG_INFO, "1\n");
  EXPECT_GT(gPorts.SerialReads, 0U);
  gPorts.SerialReads = 0;
  FindHost()->DebugPrint(OBV_LOG_INFO, "2\n");
  // Ready again, but nobody looks any more.
  gPorts.Stuck = false;
  FindHost()->DebugPrint(OBV_LOG_INFO, "3\n");
  EXPECT_EQ(gPorts.SerialReads, 0U);
  EXPECT_EQ(gPorts.Sent(0x3E8), "[Host] Ready\n");
  EXPECT_EQ(gPorts.DebugOutput, "[Host] Ready\n1\n2\n3\n");
}

/// Every call of every service that loading needs fails once: the driver is either there, with the
/// default board if need be, or leaves nothing behind.
TEST_F(HostDriver, AnyFailingServiceLeavesAllOrNothing) {
  fake::Volume &volume = AddOwnVolume();
  volume.Write(kBoardPath, OwnBoard(u"Brought along"));
  const Service services[] = {
      Service::AllocatePool, Service::HandleProtocol, Service::InstallProtocolInterface,
      Service::FsOpenVolume, Service::FileOpen,       Service::FileGetInfo,
      Service::FileRead,     Service::FileClose,      Service::HiiNewPackageList};
  uint64_t blocks = Machine.Pool.LiveBlocks();
  for (Service service : services) {
    bool failed = true;
    for (uint64_t n = 1; failed; n++) {
      Machine.Faults.Clear();
      uint64_t before = Machine.Faults.FailedCount();
      Machine.FailCall(service, n, EFI_OUT_OF_RESOURCES);
      EFI_STATUS status = Load();
      failed = Machine.Faults.FailedCount() != before;
      Machine.Faults.Clear();
      EXPECT_EQ(FindHost() != nullptr, status == EFI_SUCCESS);
      if (status == EFI_SUCCESS) {
        EXPECT_EQ(ObvHostUnload(Machine.ImageHandle), EFI_SUCCESS);
      }
      EXPECT_EQ(Machine.Pool.LiveBlocks(), blocks) << static_cast<int>(service) << " " << n;
      EXPECT_EQ(Machine.Hii.ListCount(), 0U);
      ASSERT_LT(n, 100U);
    }
  }
  EXPECT_EQ(volume.OpenCount(), 0U);
}

/// The application on the reference host, from entry to return.
TEST_F(HostDriver, ApplicationRunsOnIt) {
  Machine.AddOutput();
  Machine.AddSimplePointer();
  Machine.AddAbsolutePointer();
  ASSERT_EQ(Load(), EFI_SUCCESS);
  // Turns of the main loop are counted by looks at the fake's clock.
  FindHost()->GetTime = [](OBV_PROTOCOL *)
                            EFIAPI -> UINT64 { return Firmware::Current().LookAtClock(); };
  fake::RunResult result = fake::RunApplication(Machine);
  EXPECT_EQ(result.Status, EFI_SUCCESS);
  EXPECT_GT(result.Turns, 0);
  const std::string log = gPorts.Sent(0x3E8);
  EXPECT_NE(log.find("Load multilangage string success\n"), std::string::npos) << log;
  EXPECT_NE(log.find("[Host] Board \"Boardscope reference board\", "), std::string::npos) << log;
  EXPECT_NE(log.find("[Host] Application ended: jump 0, focus 0, category 0"), std::string::npos)
      << log;
  EXPECT_EQ(log.find("not found, ignore"), std::string::npos) << log;
  EXPECT_EQ(log.find("Error occurs"), std::string::npos) << log;
  const OBV_SHARED_STATE *shared = FindHost()->SharedState;
  EXPECT_EQ(shared->UiStateSaved, 1);
  EXPECT_GE(shared->ComponentCount, 25);
}

VOID EFIAPI LeaveForAReset(EFI_RESET_TYPE type, EFI_STATUS status, UINTN, VOID *) {
  std::fprintf(stderr, "%s", gPorts.Sent(0x3E8).c_str());
  std::_Exit(type == EfiResetCold && status == EFI_COMPROMISED_DATA ? 3 : 4);
}

TEST_F(HostDriver, DamagedStackResetsTheMachine) {
  ASSERT_EQ(Load(), EFI_SUCCESS);
  Machine.RuntimeServices.ResetSystem = &LeaveForAReset;
  EXPECT_EXIT(BoardscopeHostStackFail(), testing::ExitedWithCode(3),
              "\\[Host\\] The stack is damaged");
}

}  // namespace
}  // namespace obv_host
