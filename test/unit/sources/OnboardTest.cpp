// Devices on the mainboard: network, sound and display.

#include "test/unit/sources/DeviceStage.h"
#include "test/unit/sources/FakeNetwork.h"
#include "test/unit/sources/FakePci.h"

#include "host/sources/Display.h"

namespace obv_host {
namespace {

using testing::ElementsAre;

fake::DevicePath Place() { return fake::DevicePath().PciRoot().Pci(0x1F, 6); }

fake::DevicePath Interface() {
  return Place().Node(MESSAGING_DEVICE_PATH, MSG_MAC_ADDR_DP, std::vector<uint8_t>(33));
}

class Network : public DeviceStage {
 protected:
  Network() { card_.At(Machine, Place()); }

  DeviceAnswer AskCard() { return Ask(ReadNetwork, kHardwareNetwork, Place()); }

  FakeNetwork Port;

 private:
  FakePci card_{0x8086, 0x15F3, 0x0200};
};

TEST_F(Network, CardTellsItsAddressAndItsCable) {
  Port.At(Machine, Interface());
  DeviceAnswer answer = AskCard();
  EXPECT_EQ(answer.Status, EFI_SUCCESS);
  EXPECT_THAT(answer.Lines(), ElementsAre("Type: Ethernet controller", "Manufacturer: Intel",
                                          "Device ID: 8086:15F3", "MAC address: 52:54:00:12:34:56",
                                          "Connection: Connected"));
  Port.Mode.MediaPresent = FALSE;
  EXPECT_EQ(AskCard().Line("Connection"), "No cable");
}

TEST_F(Network, CardWithoutADriverTellsWhatItIs) {
  DeviceAnswer answer = AskCard();
  EXPECT_EQ(answer.Status, EFI_SUCCESS);
  EXPECT_EQ(answer.Told.Count, 3U);
}

TEST_F(Network, DriverThatCannotTellTheCableTellsTheAddressAlone) {
  Port.Mode.MediaPresentSupported = FALSE;
  Port.At(Machine, Interface());
  DeviceAnswer answer = AskCard();
  EXPECT_EQ(answer.Line("Connection"), "(none)");
  EXPECT_EQ(answer.Line("MAC address"), "52:54:00:12:34:56");
}

TEST_F(Network, AddressOfAnotherSizeIsLeftOut) {
  Port.At(Machine, Interface());
  for (UINT32 size : {0U, 5U, 32U, 0xFFFFFFFFU}) {
    Port.Mode.HwAddressSize = size;
    EXPECT_EQ(AskCard().Line("MAC address"), "(none)") << size;
  }
}

TEST_F(Network, DriverWithoutAModeTellsNothing) {
  Port.Protocol.Mode = nullptr;
  Port.At(Machine, Interface());
  EXPECT_EQ(AskCard().Told.Count, 3U);
}

TEST_F(Network, InterfaceOfAnotherCardIsNotTold) {
  Port.At(Machine, fake::DevicePath().PciRoot().Pci(0x1E));
  EXPECT_EQ(AskCard().Line("MAC address"), "(none)");
}

TEST_F(Network, CardThatIsNotThereIsNotFound) {
  EXPECT_EQ(Ask(ReadNetwork, kHardwareNetwork, fake::DevicePath().PciRoot().Pci(0x1E)).Status,
            EFI_NOT_FOUND);
}

TEST(NetworkFailures, FailingServicesGetSoundAnswers) {
  uint64_t runs = 0;
  std::string complaints = AnswersDespiteFailures(
      [](fake::Firmware &machine) {
        static FakePci card(0x8086, 0x15F3, 0x0200);
        card.At(machine, Place());
        static FakeNetwork port;
        port.At(machine, Interface());
        return AskSource(ReadNetwork, HardwareAtPath(kHardwareNetwork, Place()));
      },
      &runs);
  EXPECT_EQ(complaints, "");
  EXPECT_EQ(runs, 6U);
}

class Audio : public DeviceStage {};

TEST_F(Audio, ControllerTellsWhatItIs) {
  FakePci sound(0x8086, 0x7AD0, 0x0403);
  sound.At(Machine, Place());
  DeviceAnswer answer = Ask(ReadAudio, kHardwareAudio, Place());
  EXPECT_EQ(answer.Status, EFI_SUCCESS);
  EXPECT_EQ(answer.Line("Type"), "HD Audio controller");
  EXPECT_EQ(answer.Where.Handle, sound.Handle);
}

TEST_F(Audio, ControllerThatIsSwitchedOffIsNotThere) {
  EXPECT_EQ(Ask(ReadAudio, kHardwareAudio, Place()).Status, EFI_NOT_FOUND);
}

class Display : public DeviceStage {
 protected:
  /// Outputs of the fake firmware hang on this device.
  static fake::DevicePath Adapter() { return fake::DevicePath().PciRoot().Pci(2); }
};

// The view changes the mode after it has asked.
TEST_F(Display, AdapterTellsNothingOfItsOutputsMode) {
  FakePci adapter(0x1234, 0x1111, 0x0300);
  adapter.At(Machine, Adapter());
  Machine.AddOutput();
  DeviceAnswer answer = Ask(ReadDisplay, kHardwareDisplay, Adapter());
  EXPECT_THAT(answer.Lines(),
              ElementsAre("Type: VGA controller", "Manufacturer: QEMU", "Device ID: 1234:1111"));
  EXPECT_EQ(answer.Where.Handle, adapter.Handle);
}

TEST_F(Display, AdapterThatIsNotThereIsNotFound) {
  Machine.AddOutput();
  EXPECT_EQ(Ask(ReadDisplay, kHardwareDisplay, Adapter()).Status, EFI_NOT_FOUND);
}

TEST_F(Display, NameIsThatOfTheFirstAdapter) {
  CHAR8 name[40] = "untouched";
  EXPECT_EQ(DisplayName(name, sizeof name), EFI_NOT_FOUND);
  FakePci network(0x8086, 0x15F3, 0x0200);
  network.At(Machine, Place());
  EXPECT_EQ(DisplayName(name, sizeof name), EFI_NOT_FOUND);
  EXPECT_STREQ(name, "untouched");
  FakePci mute(0x8086, 0x1234, 0x0300);
  mute.Failure = EFI_DEVICE_ERROR;
  mute.At(Machine, fake::DevicePath().PciRoot().Pci(3));
  FakePci adapter(0x10DE, 0x2504, 0x0300);
  adapter.At(Machine, Adapter());
  EXPECT_EQ(DisplayName(name, sizeof name), EFI_SUCCESS);
  EXPECT_STREQ(name, "NVIDIA VGA controller");
  adapter.Put16(0, 0x0001);
  EXPECT_EQ(DisplayName(name, sizeof name), EFI_SUCCESS);
  EXPECT_STREQ(name, "VGA controller 0001:2504");
  EXPECT_EQ(DisplayName(name, 4), EFI_SUCCESS);
  EXPECT_STREQ(name, "VGA");
}

TEST_F(Display, ProtocolWithoutAnInterfaceHasNoName) {
  EFI_HANDLE mark = Machine.Install(gEfiPciIoProtocolGuid, nullptr);
  FakePci adapter(0x10DE, 0x2504, 0x0300);
  adapter.At(Machine, Adapter());
  CHAR8 name[40];
  EXPECT_EQ(DisplayName(name, sizeof name), EFI_SUCCESS);
  EXPECT_STREQ(name, "NVIDIA VGA controller");
  Machine.Uninstall(mark, gEfiPciIoProtocolGuid, nullptr);
}

TEST_F(Display, NameNeedsTheFirmwaresMemory) {
  FakePci adapter(0x10DE, 0x2504, 0x0300);
  adapter.At(Machine, Adapter());
  CHAR8 name[40];
  Machine.FailCall(fake::Service::LocateHandleBuffer, 1, EFI_OUT_OF_RESOURCES);
  EXPECT_EQ(DisplayName(name, sizeof name), EFI_NOT_FOUND);
  Machine.FailCall(fake::Service::HandleProtocol, 1, EFI_UNSUPPORTED);
  EXPECT_EQ(DisplayName(name, sizeof name), EFI_NOT_FOUND);
  EXPECT_EQ(DisplayName(name, sizeof name), EFI_SUCCESS);
}

}  // namespace
}  // namespace obv_host
