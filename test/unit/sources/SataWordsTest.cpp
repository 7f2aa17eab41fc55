// What single words of a disk's identity mean, and disks in odd places.

#include "test/unit/sources/DeviceStage.h"
#include "test/unit/sources/FakeAta.h"

namespace obv_host {
namespace {

fake::DevicePath Controller() { return fake::DevicePath().PciRoot().Pci(0x17); }

class SataWords : public DeviceStage {
 protected:
  SataWords() { Disk.At(Machine, Controller()); }

  DeviceAnswer AskPort(UINT16 port = 2) {
    return Ask(ReadSata, kHardwareSata, Controller().Sata(port));
  }

  /// Asks for a device behind a port multiplier's port, or for one without.
  DeviceAnswer AskBehind(UINT16 multiplier) {
    BoardHardware hardware = HardwareAtPath(kHardwareSata, Controller().Sata(2));
    size_t node = fake::DevicePathSizeWithoutEnd(Controller().Get());
    std::memcpy(hardware.Name + node + OFFSET_OF(SATA_DEVICE_PATH, PortMultiplierPortNumber),
                &multiplier, sizeof multiplier);
    DeviceAnswer answer = AskSource(ReadSata, hardware);
    EXPECT_EQ(BrokenPromise(answer), "");
    return answer;
  }

  FakeAta Disk;
};

constexpr UINT16 kValid = 0x4000;
constexpr UINT16 kLargeSectors = 0x1000;

TEST_F(SataWords, LargeSectorsCountOnlyWhereTheirWordIsValidAndSaysSo) {
  Disk.Words[117] = 2048;
  for (UINT16 word : {UINT16{kValid}, UINT16{kLargeSectors}, UINT16{0xC000 | kLargeSectors}}) {
    Disk.Words[106] = word;
    EXPECT_EQ(AskPort().Line("Capacity"), "512 GB") << word;
  }
  Disk.Words[106] = kValid | kLargeSectors;
  EXPECT_EQ(AskPort().Line("Capacity"), "4 TB");
}

TEST_F(SataWords, SectorsOfAnImpossibleSizeHaveNoCapacity) {
  Disk.Words[106] = kValid | kLargeSectors;
  for (UINT16 words : {0, 255, 0x8000}) {
    Disk.Words[117] = words;
    EXPECT_EQ(AskPort().Line("Capacity"), "(none)") << words;
  }
  Disk.Words[117] = 256;
  EXPECT_EQ(AskPort().Line("Capacity"), "512 GB");
  Disk.Words[117] = 0;
  Disk.Words[118] = 1;  // The upper half: 65536 words.
  EXPECT_EQ(AskPort().Line("Capacity"), "(none)");
}

TEST_F(SataWords, LongAddressesCountOnlyWhereTheirWordIsValid) {
  Disk.Words[83] = 0x0400;
  EXPECT_EQ(AskPort().Line("Capacity"), "137 GB");
}

TEST_F(SataWords, LinkHasTheSpeedOfItsGeneration) {
  Disk.Words[76] = 0x0006;
  Disk.Words[77] = 1 << 1;
  EXPECT_EQ(AskPort().Line("Link"), "1.5 Gb/s (possible: 3.0 Gb/s)");
  Disk.Words[76] = 0x0002;
  EXPECT_EQ(AskPort().Line("Link"), "1.5 Gb/s (possible: 1.5 Gb/s)");
  Disk.Words[76] = 0x000E;
  Disk.Words[77] = 2 << 1;
  EXPECT_EQ(AskPort().Line("Link"), "3.0 Gb/s (possible: 6.0 Gb/s)");
}

TEST_F(SataWords, LinkOfAGenerationToComeIsToldAsFarAsItIsKnown) {
  Disk.Words[77] = 4 << 1;
  EXPECT_EQ(AskPort().Line("Link"), "6.0 Gb/s possible");
  Disk.Words[76] = 0;
  EXPECT_EQ(AskPort().Line("Link"), "(none)") << "a parallel one";
}

TEST_F(SataWords, DiskThatDoesNotTellWhetherItRotatesIsADisk) {
  for (UINT16 rotation : {0x0000, 0x0002, 0x0400, 0xFFFF}) {
    Disk.Words[217] = rotation;
    EXPECT_EQ(AskPort().Line("Type"), "Disk") << rotation;
  }
  Disk.Words[217] = 0x0401;
  EXPECT_EQ(AskPort().Line("Type"), "Hard disk, 1025 RPM");
}

TEST_F(SataWords, SmartThatIsNotSupportedIsNotAskedFor) {
  Disk.Words[82] = 0;
  EXPECT_EQ(AskPort().Line("Health"), "(none)");
  EXPECT_EQ(Disk.SmartCommands, 0);
}

TEST_F(SataWords, HalfOfAHealthAnswerIsNone) {
  const std::pair<UINT8, UINT8> answers[] = {{0xF4, 0xC2}, {0x4F, 0x2C}, {0xF4, 0x00}};
  for (const auto &[low, high] : answers) {
    Disk.SmartLow = low;
    Disk.SmartHigh = high;
    EXPECT_EQ(AskPort().Line("Health"), "Unknown") << int{low} << " " << int{high};
  }
}

TEST_F(SataWords, IdentityOfOneByteOverAndOverIsAnAnswer) {
  Disk.Words.fill(0x2020);
  DeviceAnswer answer = AskPort();
  EXPECT_EQ(answer.Status, EFI_SUCCESS);
  EXPECT_EQ(answer.Line("Type"), "Hard disk, 8224 RPM");
  EXPECT_EQ(answer.Line("Model"), "(none)");
}

TEST_F(SataWords, TapeIsAPacketDevice) {
  Disk.Device = FakeAta::Kind::Optical;
  Disk.Words[0] = 0x8180;
  EXPECT_EQ(AskPort().Line("Type"), "Packet device");
}

TEST_F(SataWords, PacketDeviceThatAnswersAsADiskIsNone) {
  Disk.Words[0] = 0x8580;
  DeviceAnswer answer = AskPort();
  EXPECT_EQ(answer.Status, EFI_DEVICE_ERROR) << "listed, but it does not identify as what it is";
  EXPECT_EQ(answer.Line("Type"), "(none)");
}

TEST_F(SataWords, DiskBehindAPortMultiplierIsTheOneAtItsPort) {
  Disk.Multiplier = 3;
  DeviceAnswer answer = AskBehind(3);
  EXPECT_EQ(answer.Status, EFI_SUCCESS);
  EXPECT_EQ(answer.Line("Model"), "CT512MX500SSD1");
  EXPECT_EQ(AskBehind(4).Status, EFI_NOT_FOUND);
  EXPECT_EQ(AskBehind(0xFFFF).Status, EFI_NOT_FOUND);
  Disk.Failure = EFI_TIMEOUT;
  EXPECT_EQ(AskBehind(3).Status, EFI_DEVICE_ERROR) << "listed";
  EXPECT_EQ(AskBehind(4).Status, EFI_NOT_FOUND) << "another is";
}

TEST_F(SataWords, HighestBitOfAMultipliersNumberMeansThatThereIsNone) {
  EXPECT_EQ(AskBehind(0x8000).Status, EFI_SUCCESS);
}

TEST_F(SataWords, DriverWhoseDevicesRunInCirclesComesToAnEnd) {
  Disk.CountsInCircles = true;
  EXPECT_EQ(AskPort(7).Status, EFI_NOT_FOUND);
}

}  // namespace
}  // namespace obv_host
