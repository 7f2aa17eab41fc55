#include "test/unit/sources/DeviceStage.h"
#include "test/unit/sources/FakeAta.h"

namespace obv_host {
namespace {

using testing::ElementsAre;

fake::DevicePath Controller() { return fake::DevicePath().PciRoot().Pci(0x17); }

class Sata : public DeviceStage {
 protected:
  Sata() { Disk.At(Machine, Controller()); }

  DeviceAnswer AskPort(UINT16 port = 2) {
    return Ask(ReadSata, kHardwareSata, Controller().Sata(port));
  }

  FakeAta Disk;
};

TEST_F(Sata, DiskTellsWhatItIs) {
  DeviceAnswer answer = AskPort();
  EXPECT_EQ(answer.Status, EFI_SUCCESS);
  EXPECT_THAT(answer.Lines(), ElementsAre("Model: CT512MX500SSD1", "Serial number: 2034E2A5F00C",
                                          "Firmware: M3CR032", "Type: SSD", "Capacity: 512 GB",
                                          "Link: 6.0 Gb/s (possible: 6.0 Gb/s)", "Health: Good"));
  EXPECT_EQ(answer.Where.Handle, Disk.Handle);
}

TEST_F(Sata, DiskAnswersAgainAndItsDriverIsLeftAtTheStartOfItsList) {
  for (int i = 0; i < 3; i++) {
    EXPECT_EQ(AskPort().Status, EFI_SUCCESS);
    EXPECT_FALSE(Disk.IsBetweenDevices());
  }
}

TEST_F(Sata, PortWithoutADeviceIsNotThere) {
  EXPECT_EQ(AskPort(3).Status, EFI_NOT_FOUND);
  Disk.Device = FakeAta::Kind::Nothing;
  EXPECT_EQ(AskPort().Status, EFI_NOT_FOUND);
}

TEST_F(Sata, ControllerThatIsNotThereHasNoDisks) {
  EXPECT_EQ(Ask(ReadSata, kHardwareSata, fake::DevicePath().PciRoot().Pci(0x18).Sata(2)).Status,
            EFI_NOT_FOUND);
}

TEST_F(Sata, NameThatDoesNotEndAtAPortIsNotThere) {
  EXPECT_EQ(Ask(ReadSata, kHardwareSata, Controller()).Status, EFI_NOT_FOUND);
  EXPECT_EQ(Ask(ReadSata, kHardwareSata, fake::DevicePath()).Status, EFI_NOT_FOUND);
}

TEST_F(Sata, RotatingDiskTellsItsSpeedAndTheCapacityOfLargeSectors) {
  Disk.Words[217] = 7200;
  Disk.Words[106] = 0x5000;
  Disk.Words[117] = 2048;
  Disk.Words[118] = 0;
  UINT64 sectors = 976'754'646;  // 4 TB in sectors of 4096 bytes
  std::memcpy(&Disk.Words[100], &sectors, sizeof sectors);
  DeviceAnswer answer = AskPort();
  EXPECT_EQ(answer.Line("Type"), "Hard disk, 7200 RPM");
  EXPECT_EQ(answer.Line("Capacity"), "4 TB");
}

TEST_F(Sata, CapacityWithoutLongAddressesIsTheShortOne) {
  Disk.Words[83] = 0x4000;
  EXPECT_EQ(AskPort().Line("Capacity"), "137 GB");
}

TEST_F(Sata, ImpossibleCapacityIsLeftOut) {
  Disk.Words[103] = 0xFFFF;
  EXPECT_EQ(AskPort().Line("Capacity"), "(none)");
}

TEST_F(Sata, DiskThatExpectsToFailIsFailing) {
  Disk.SmartLow = 0xF4;
  Disk.SmartHigh = 0x2C;
  DeviceAnswer answer = AskPort();
  EXPECT_EQ(answer.Status, EFI_DEVICE_ERROR);
  EXPECT_EQ(answer.Line("Health"), "Failing: expects its own failure (SMART)");
  EXPECT_EQ(answer.Line("Model"), "CT512MX500SSD1");
}

TEST_F(Sata, HealthThatCannotBeReadIsUnknown) {
  Disk.SmartFailure = EFI_TIMEOUT;
  EXPECT_EQ(AskPort().Line("Health"), "Unknown");
  Disk.SmartFailure = EFI_SUCCESS;
  Disk.SmartLow = 0x00;
  EXPECT_EQ(AskPort().Line("Health"), "Unknown");
  Disk.SmartLow = 0xF4;
  Disk.SmartHigh = 0x2C;
  Disk.SmartStatus = 0x51;
  EXPECT_EQ(AskPort().Line("Health"), "Unknown") << "the command was refused";
}

TEST_F(Sata, DiskWithoutSmartIsNotAskedForIt) {
  Disk.Words[85] = 0;
  EXPECT_EQ(AskPort().Line("Health"), "(none)");
  EXPECT_EQ(Disk.SmartCommands, 0);
}

TEST_F(Sata, OpticalDriveIsTold) {
  Disk.Device = FakeAta::Kind::Optical;
  Disk.Words[0] = 0x8580;
  Disk.Text(27, 20, "HL-DT-ST DVDRAM GH24NSD1");
  DeviceAnswer answer = AskPort();
  EXPECT_EQ(answer.Status, EFI_SUCCESS);
  EXPECT_EQ(answer.Line("Model"), "HL-DT-ST DVDRAM GH24NSD1");
  EXPECT_EQ(answer.Line("Type"), "Optical drive");
  EXPECT_EQ(answer.Line("Capacity"), "(none)");
}

TEST_F(Sata, ListedDiskThatDoesNotAnswerFails) {
  Disk.Failure = EFI_TIMEOUT;
  DeviceAnswer answer = AskPort();
  EXPECT_EQ(answer.Status, EFI_DEVICE_ERROR);
  EXPECT_EQ(answer.Line("Health"), "Failing: does not answer");
}

TEST_F(Sata, IdentityThatNobodyWroteFails) {
  for (UINT16 word : {0x0000, 0xFFFF}) {
    Disk.Words.fill(word);
    EXPECT_EQ(AskPort().Line("Health"), "Failing: does not answer");
  }
}

TEST_F(Sata, DriverThatCountsInCirclesComesToAnEnd) {
  Disk.CountsInCircles = true;
  EXPECT_EQ(AskPort().Status, EFI_SUCCESS) << "not listed, but it answers";
  Disk.Failure = EFI_TIMEOUT;
  EXPECT_EQ(AskPort().Status, EFI_NOT_FOUND) << "neither listed nor answering";
}

TEST_F(Sata, DriverThatAsksForTheImpossibleIsNotReady) {
  Disk.SetAlignment(8192);
  EXPECT_EQ(AskPort().Status, EFI_NOT_READY);
  Disk.DropMode();
  EXPECT_EQ(AskPort().Status, EFI_NOT_READY);
}

TEST_F(Sata, LinkIsToldAsFarAsItIsKnown) {
  Disk.Words[77] = 0;
  EXPECT_EQ(AskPort().Line("Link"), "6.0 Gb/s possible");
  Disk.Words[76] = 0xFFFF;
  EXPECT_EQ(AskPort().Line("Link"), "(none)");
}

TEST_F(Sata, ControllerThatLeavesBetweenTwoCommandsStillHasASoundAnswer) {
  Disk.OnCall = [&](int call) {
    if (call == 2) {
      Disk.Leave();
    }
  };
  DeviceAnswer answer = AskPort();
  EXPECT_EQ(answer.Status, EFI_SUCCESS);
  EXPECT_EQ(answer.Line("Health"), "Unknown");
  EXPECT_EQ(AskPort().Status, EFI_NOT_FOUND);
}

TEST(SataFailures, FailingServicesGetSoundAnswers) {
  uint64_t runs = 0;
  std::string complaints = AnswersDespiteFailures(
      [](fake::Firmware &machine) {
        static FakeAta disk;
        disk.At(machine, Controller());
        return AskSource(ReadSata, HardwareAtPath(kHardwareSata, Controller().Sata(2)));
      },
      &runs);
  EXPECT_EQ(complaints, "");
  EXPECT_EQ(runs, 4U);
}

}  // namespace
}  // namespace obv_host
