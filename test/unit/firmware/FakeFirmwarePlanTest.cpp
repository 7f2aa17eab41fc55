#include <unistd.h>
#include <csignal>

#include <gtest/gtest.h>

#include "test/firmware/Child.h"
#include "test/firmware/FakeFirmware.h"

namespace fake {
namespace {

VOID EFIAPI Count(EFI_EVENT, VOID *context) { ++*static_cast<int *>(context); }

class FakeFirmwarePlan : public testing::Test {
 protected:
  EFI_STATUS Stall() { return Services.Stall(0); }
  Firmware Machine;
  EFI_BOOT_SERVICES &Services = Machine.BootServices;
};

TEST_F(FakeFirmwarePlan, FailsTheNthCallOnce) {
  Machine.FailCall(Service::Stall, 2, EFI_DEVICE_ERROR);
  EXPECT_EQ(Stall(), EFI_SUCCESS);
  EXPECT_FALSE(Machine.Faults.AnyFailed());
  EXPECT_EQ(Stall(), EFI_DEVICE_ERROR);
  EXPECT_EQ(Stall(), EFI_SUCCESS);
  EXPECT_EQ(Machine.Faults.FailedCount(), 1u);
}

TEST_F(FakeFirmwarePlan, FailsSeveralOrForEver) {
  Machine.FailCall("Stall", 1, EFI_TIMEOUT, 2);
  EXPECT_EQ(Stall(), EFI_TIMEOUT);
  EXPECT_EQ(Stall(), EFI_TIMEOUT);
  EXPECT_EQ(Stall(), EFI_SUCCESS);
  Machine.FailCall(Service::Stall, 2, EFI_ABORTED, kForever);
  EXPECT_EQ(Stall(), EFI_SUCCESS);
  for (int i = 0; i < 5; i++) {
    EXPECT_EQ(Stall(), EFI_ABORTED);
  }
  Machine.Faults.Clear();
  EXPECT_EQ(Stall(), EFI_SUCCESS);
}

TEST_F(FakeFirmwarePlan, ChooserDecidesCallByCall) {
  int calls = 0;
  Machine.Faults.Choose = [&](Service service, const void *) -> std::optional<EFI_STATUS> {
    EXPECT_EQ(service, Service::Stall);
    return ++calls % 2 == 0 ? std::optional<EFI_STATUS>(EFI_NO_MEDIA) : std::nullopt;
  };
  EXPECT_EQ(Stall(), EFI_SUCCESS);
  EXPECT_EQ(Stall(), EFI_NO_MEDIA);
  EXPECT_EQ(Stall(), EFI_SUCCESS);
  EXPECT_EQ(Machine.Faults.FailedCount(), 1u);
}

TEST_F(FakeFirmwarePlan, FailedCallHasNoEffect) {
  Machine.FailCall(Service::AllocatePool, 1, EFI_OUT_OF_RESOURCES);
  VOID *buffer = this;
  EXPECT_EQ(Services.AllocatePool(EfiBootServicesData, 8, &buffer), EFI_OUT_OF_RESOURCES);
  EXPECT_EQ(buffer, this);
  EXPECT_EQ(Machine.Pool.AllocationCount(), 0u);
}

TEST_F(FakeFirmwarePlan, EveryServiceHasAName) {
  for (size_t i = 0; i < kServiceCount; i++) {
    auto service = static_cast<Service>(i);
    if (service != Service::RtUnprovided && service != Service::HiiUnprovided) {
      EXPECT_EQ(ServiceByName(ServiceName(service)), service);
    }
  }
  EXPECT_EQ(ServiceByName("GopBlt"), Service::GopBlt);
  EXPECT_EQ(ServiceByName("Gop.Blt"), Service::GopBlt);
  EXPECT_FALSE(ServiceByName("Nothing"));
  EXPECT_DEATH(Machine.FailCall("Nothing", 1, EFI_ABORTED), "no service named 'Nothing'");
}

TEST_F(FakeFirmwarePlan, ActionsRunAtTheirCall) {
  int at = 0;
  int every = 0;
  Machine.At(Service::Stall, 2, [&] { at = every; });
  Machine.Faults.AtEvery(Service::Stall, [&] { every++; });
  Stall();
  EXPECT_EQ(at, 0);
  Stall();
  Stall();
  EXPECT_EQ(at, 1);
  EXPECT_EQ(every, 3);
  Machine.Faults.StopEvery(Service::Stall);
  Stall();
  EXPECT_EQ(every, 3);
}

TEST_F(FakeFirmwarePlan, HotPlugInterruptsAnyService) {
  int notified = 0;
  EFI_EVENT event = nullptr;
  VOID *registration = nullptr;
  EFI_GUID guid = kGraphicsOutputGuid;
  Services.CreateEvent(EVT_NOTIFY_SIGNAL, TPL_CALLBACK, &Count, &notified, &event);
  Services.RegisterProtocolNotify(&guid, event, &registration);
  Machine.At(Service::SetMem, 1, [&] { Machine.AddOutput(); });
  char byte = 0;
  Services.SetMem(&byte, 1, 1);
  EXPECT_EQ(notified, 1);
  Services.RaiseTPL(TPL_NOTIFY);
  Machine.At(Service::SetMem, 1, [&] { Machine.AddOutput(); });
  Services.SetMem(&byte, 1, 1);
  EXPECT_EQ(notified, 1);
  Services.RestoreTPL(TPL_APPLICATION);
  EXPECT_EQ(notified, 2);
}

TEST_F(FakeFirmwarePlan, LeftoversNameWhatWasNotGivenBack) {
  EXPECT_EQ(Machine.Leftovers(), "");
  VOID *block = nullptr;
  Services.AllocatePool(EfiBootServicesData, 8, &block);
  EFI_PHYSICAL_ADDRESS page = 0;
  Services.AllocatePages(AllocateAnyPages, EfiBootServicesData, 1, &page);
  EFI_FILE_PROTOCOL *root = nullptr;
  EFI_SIMPLE_FILE_SYSTEM_PROTOCOL *files = Machine.AddVolume().Protocol();
  files->OpenVolume(files, &root);
  EXPECT_EQ(Machine.Leftovers(),
            "1 pool blocks are still allocated\n1 pages are still allocated\n"
            "1 files are still open\n");
}

TEST_F(FakeFirmwarePlan, RecordsTellOrderArgumentsAndStatus) {
  Stall();
  VOID *found = nullptr;
  EFI_GUID guid = kObvProtocolGuid;
  Services.LocateProtocol(&guid, nullptr, &found);
  VOID *buffer = nullptr;
  Services.AllocatePool(EfiBootServicesData, 8, &buffer);
  EXPECT_EQ(Machine.Calls.Lines(),
            (std::vector<std::string>{"Stall(0) = Success", "LocateProtocol(Obv) = Not Found"}));
  EXPECT_EQ(Machine.Calls.CountOf(Service::AllocatePool), 1u) << "counted, though not recorded";
  Machine.Calls.Record(Service::FreePool, true);
  Services.FreePool(buffer);
  EXPECT_EQ(Machine.Calls.Lines({Service::FreePool}).size(), 1u);
  EXPECT_EQ(Machine.Calls.Find("LocateProtocol"), 1);
  EXPECT_EQ(Machine.Calls.Find("LocateProtocol", 2), -1);
  Machine.Calls.RecordAll(false);
  Stall();
  EXPECT_EQ(Machine.Calls.All().size(), 3u);
  EXPECT_EQ(Machine.Calls.CountOf(Service::Stall), 2u);
}

TEST(FakeFirmwareChild, ReportsSuccessTextAndOutput) {
  ChildResult result = RunInChild([](std::string *text) {
    *text = std::string(200000, 'x');
    std::puts("printed");
    return 0;
  });
  EXPECT_TRUE(result.Succeeded) << result.Summary();
  EXPECT_EQ(result.Text.size(), 200000u);
  EXPECT_EQ(result.Output, "printed\n");
}

TEST(FakeFirmwareChild, ReportsFailureCrashAndTimeout) {
  EXPECT_EQ(RunInChild([](std::string *) { return 7; }).ExitCode, 7);
  ChildResult crash = RunInChild([](std::string *) -> int { std::abort(); });
  EXPECT_FALSE(crash.Succeeded);
  EXPECT_EQ(crash.Signal, SIGABRT);
  ChildResult stuck = RunInChild(
      [](std::string *) {
        pause();
        return 0;
      },
      1);
  EXPECT_TRUE(stuck.TimedOut);
  EXPECT_FALSE(stuck.Succeeded);
}

}  // namespace
}  // namespace fake
