#include "test/unit/sources/DeviceStage.h"
#include "test/unit/sources/FakeNvme.h"
#include "test/unit/sources/FakePci.h"

namespace obv_host {
namespace {

using testing::ElementsAre;

fake::DevicePath RootPort() { return fake::DevicePath().PciRoot().Pci(0x1D); }

fake::DevicePath Controller() { return RootPort().Pci(0); }

class Nvme : public DeviceStage {
 protected:
  DeviceAnswer AskDrive() { return Ask(ReadNvme, kHardwareNvme, RootPort()); }

  FakeNvme Drive;
};

TEST_F(Nvme, DriveTellsWhatItIsAndHowItFares) {
  Drive.At(Machine, Controller());
  DeviceAnswer answer = AskDrive();
  EXPECT_EQ(answer.Status, EFI_SUCCESS);
  EXPECT_THAT(answer.Lines(),
              ElementsAre("Model: Samsung SSD 990 PRO 1TB", "Serial number: S6BENS0T123456",
                          "Firmware: 4B2QJXD7", "Capacity: 1 TB", "Temperature: 41 C",
                          "Endurance used: 3 %", "Powered on: 1234 h"));
  EXPECT_EQ(answer.Where.Handle, Drive.Handle);
}

TEST_F(Nvme, DriveIsFoundAtItsOwnPathAndBehindAnotherBridgeToo) {
  Drive.At(Machine, Controller().Pci(4));
  EXPECT_EQ(AskDrive().Status, EFI_SUCCESS);
  EXPECT_EQ(Ask(ReadNvme, kHardwareNvme, Controller().Pci(4)).Status, EFI_SUCCESS);
  EXPECT_EQ(Ask(ReadNvme, kHardwareNvme, Controller().Pci(5)).Status, EFI_NOT_FOUND);
}

TEST_F(Nvme, NothingBehindThePortIsNotThere) { EXPECT_EQ(AskDrive().Status, EFI_NOT_FOUND); }

TEST_F(Nvme, ControllerWithoutADriverIsNotReady) {
  FakePci pci(0x144D, 0xA80C, 0x0108);
  pci.At(Machine, Controller());
  DeviceAnswer answer = AskDrive();
  EXPECT_EQ(answer.Status, EFI_NOT_READY);
  EXPECT_EQ(answer.Where.Handle, pci.Handle);
}

TEST_F(Nvme, AnotherDeviceInTheSlotIsNoDrive) {
  FakePci pci(0x8086, 0x15F3, 0x0200);
  pci.At(Machine, Controller());
  EXPECT_EQ(AskDrive().Status, EFI_NOT_FOUND);
}

TEST_F(Nvme, EachCriticalWarningIsTold) {
  const char *const kWarnings[] = {
      "Failing: spare blocks are used up",         "Failing: too hot or too cold",
      "Failing: its memory has become unreliable", "Failing: can only be read",
      "Failing: its backup power has failed",      "Failing: its persistent memory is unreliable",
  };
  Drive.At(Machine, Controller());
  for (int bit = 0; bit < 6; bit++) {
    Drive.Health[0] = static_cast<UINT8>(1 << bit);
    DeviceAnswer answer = AskDrive();
    EXPECT_EQ(answer.Status, EFI_DEVICE_ERROR) << bit;
    EXPECT_EQ(answer.Line("Health"), kWarnings[bit]);
    EXPECT_EQ(answer.Line("Model"), "Samsung SSD 990 PRO 1TB");
  }
}

TEST_F(Nvme, AllWarningsAreTold) {
  Drive.At(Machine, Controller());
  Drive.Health[0] = 0x3F;
  EXPECT_EQ(AskDrive().Told.Count, 7U + 6U);
}

TEST_F(Nvme, IdentityThatNobodyWroteIsNoSense) {
  Drive.At(Machine, Controller());
  for (UINT8 byte : {0x00, 0xFF}) {
    Drive.Identity.fill(byte);
    DeviceAnswer answer = AskDrive();
    EXPECT_EQ(answer.Status, EFI_DEVICE_ERROR);
    EXPECT_THAT(answer.Lines(), ElementsAre("Health: Failing: does not answer sensibly"));
  }
}

TEST_F(Nvme, CommandThatFailsIsAFailingDrive) {
  Drive.At(Machine, Controller());
  Drive.IdentifyFailure = EFI_TIMEOUT;
  EXPECT_EQ(AskDrive().Line("Health"), "Failing: does not answer");
  Drive.IdentifyFailure = EFI_SUCCESS;
  Drive.CompletionWord = 0x6U << 17;  // Internal error, in the completion alone.
  EXPECT_EQ(AskDrive().Status, EFI_DEVICE_ERROR);
  Drive.CompletionWord = 1U << 16;  // The phase tag is no error.
  EXPECT_EQ(AskDrive().Status, EFI_SUCCESS);
}

TEST_F(Nvme, HealthThatCannotBeReadOrIsNoSenseIsUnknown) {
  Drive.At(Machine, Controller());
  Drive.HealthFailure = EFI_DEVICE_ERROR;
  EXPECT_EQ(AskDrive().Line("Health"), "Unknown");
  Drive.HealthFailure = EFI_SUCCESS;
  Drive.Health[0] = 0x40;
  EXPECT_EQ(AskDrive().Line("Health"), "Unknown");
  Drive.Health.fill(0xFF);
  DeviceAnswer answer = AskDrive();
  EXPECT_EQ(answer.Status, EFI_SUCCESS);
  EXPECT_EQ(answer.Line("Health"), "Unknown");
  EXPECT_EQ(answer.Line("Temperature"), "(none)");
}

TEST_F(Nvme, TemperatureOutsideWhatThereIsAndEndlessHoursAreLeftOut) {
  Drive.At(Machine, Controller());
  Drive.Health[1] = Drive.Health[2] = 0;
  Drive.Health[140] = 1;
  DeviceAnswer answer = AskDrive();
  EXPECT_EQ(answer.Line("Temperature"), "(none)");
  EXPECT_EQ(answer.Line("Powered on"), "(none)");
  Drive.Health[1] = Drive.Health[2] = 0xFF;
  EXPECT_EQ(AskDrive().Line("Temperature"), "(none)");
}

TEST_F(Nvme, ControllerThatIsNoNvmeDriveIsNoneWithoutADriver) {
  FakePci sata(0x8086, 0xA282, 0x0106);
  sata.At(Machine, Controller());
  FakePci silent(0x144D, 0xA80C, 0x0108);
  silent.Failure = EFI_DEVICE_ERROR;
  silent.At(Machine, Controller().Pci(1));
  EXPECT_EQ(AskDrive().Status, EFI_NOT_FOUND);
}

TEST_F(Nvme, IdentityOfOneByteOverAndOverIsAnAnswer) {
  Drive.At(Machine, Controller());
  Drive.Identity.fill(' ');
  DeviceAnswer answer = AskDrive();
  EXPECT_EQ(answer.Status, EFI_SUCCESS);
  EXPECT_EQ(answer.Line("Model"), "(none)");
  EXPECT_EQ(answer.Line("Capacity"), "(none)") << "more than counts";
  EXPECT_EQ(answer.Line("Temperature"), "41 C");
}

void ForgetCapacity(FakeNvme *drive) {
  constexpr size_t kOffset = OFFSET_OF(NVME_ADMIN_CONTROLLER_DATA, Tnvmcap);
  std::fill_n(drive->Identity.begin() + kOffset, 16, UINT8{0});
}

TEST_F(Nvme, CapacityIsThatOfTheFirstNamespaceWhenTheControllerTellsNone) {
  Drive.At(Machine, Controller());
  ForgetCapacity(&Drive);
  NVME_ADMIN_NAMESPACE_DATA space = {};
  space.Nsze = 125'026'902;
  space.Flbas = 1;
  space.LbaFormat[1].Lbads = 12;
  std::memcpy(Drive.Namespace.data(), &space, sizeof space);
  EXPECT_EQ(AskDrive().Line("Capacity"), "512 GB");
}

TEST_F(Nvme, ImpossibleCapacitiesAreLeftOut) {
  Drive.At(Machine, Controller());
  ForgetCapacity(&Drive);
  EXPECT_EQ(AskDrive().Line("Capacity"), "(none)") << "a namespace of nothing";
  NVME_ADMIN_NAMESPACE_DATA space = {};
  space.Nsze = MAX_UINT64;
  space.LbaFormat[0].Lbads = 9;
  std::memcpy(Drive.Namespace.data(), &space, sizeof space);
  EXPECT_EQ(AskDrive().Line("Capacity"), "(none)") << "more than counts";
  space.Nsze = 100'000;
  for (UINT8 exponent : {8, 17, 63, 64, 200}) {
    space.LbaFormat[0].Lbads = exponent;
    std::memcpy(Drive.Namespace.data(), &space, sizeof space);
    EXPECT_EQ(AskDrive().Line("Capacity"), "(none)") << "blocks of 2 to the " << int{exponent};
  }
  Drive.NamespaceFailure = EFI_DEVICE_ERROR;
  EXPECT_EQ(AskDrive().Line("Capacity"), "(none)");
}

TEST_F(Nvme, DriverThatAsksForTheImpossibleIsNotReady) {
  Drive.At(Machine, Controller());
  Drive.SetAlignment(8192);
  EXPECT_EQ(AskDrive().Status, EFI_NOT_READY);
  Drive.DropMode();
  EXPECT_EQ(AskDrive().Status, EFI_NOT_READY);
}

TEST_F(Nvme, DriveThatLeavesBetweenTwoCommandsStillHasASoundAnswer) {
  for (int call : {1, 2}) {
    Drive.At(Machine, Controller());
    int calls = 0;
    Drive.OnCall = [&](int) {
      if (++calls == call) {
        Drive.Leave();
      }
    };
    DeviceAnswer answer = AskDrive();
    EXPECT_EQ(answer.Status, call == 1 ? EFI_DEVICE_ERROR : EFI_SUCCESS);
    EXPECT_NE(answer.Line("Health"), "(none)");
  }
}

TEST(NvmeFailures, FailingServicesGetSoundAnswers) {
  uint64_t runs = 0;
  std::string complaints = AnswersDespiteFailures(
      [](fake::Firmware &machine) {
        static FakePci pci(0x144D, 0xA80C, 0x0108);
        pci.At(machine, Controller());
        static FakeNvme drive;
        drive.At(machine, Controller());
        return AskSource(ReadNvme, HardwareAtPath(kHardwareNvme, RootPort()));
      },
      &runs);
  EXPECT_EQ(complaints, "");
  EXPECT_EQ(runs, 4U);
}

}  // namespace
}  // namespace obv_host
