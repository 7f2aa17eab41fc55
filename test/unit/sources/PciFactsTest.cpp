// PCI devices that answer some questions only, and cards of several functions.

#include "test/unit/sources/DeviceStage.h"
#include "test/unit/sources/FakePci.h"

#include "host/sources/Devices.h"

namespace obv_host {
namespace {

fake::DevicePath RootPort() { return fake::DevicePath().PciRoot().Pci(0x1C, 4); }

class PciFacts : public DeviceStage {
 protected:
  PciFacts() { Card.AddLink(3, 4, 4, 16); }

  DeviceAnswer AskSlot() { return Ask(ReadPcie, kHardwarePcie, RootPort()); }

  FakePci Card{0x10DE, 0x2504, 0x0300};
};

TEST_F(PciFacts, DeviceThatFallsSilentTellsWhatItAnsweredBefore) {
  // Numbers, class, status, list, two capabilities, and of the link what is possible and what is.
  constexpr int kReads = 8;
  Card.At(Machine, RootPort().Pci(0));
  for (int silent = 1; silent <= kReads + 1; silent++) {
    int reads = 0;
    Card.Failure = EFI_SUCCESS;
    Card.OnCall = [&](int) {
      if (++reads == silent) {
        Card.Failure = EFI_DEVICE_ERROR;
      }
    };
    DeviceAnswer answer = AskSlot();
    EXPECT_EQ(answer.Status, silent <= 2 ? EFI_DEVICE_ERROR : EFI_SUCCESS) << silent;
    EXPECT_EQ(answer.Line("Device ID"), silent <= 2 ? "(none)" : "10DE:2504") << silent;
    EXPECT_EQ(answer.Line("Link") != "(none)", silent > kReads) << silent;
  }
}

TEST_F(PciFacts, LinkWiderThanThereAreIsNotTold) {
  Card.At(Machine, RootPort().Pci(0));
  Card.AddLink(3, 33, 4, 33);
  EXPECT_EQ(AskSlot().Line("Link"), "(none)");
  Card.AddLink(3, 32, 4, 32);
  EXPECT_EQ(AskSlot().Line("Link"), "8.0 GT/s x32 (possible: 16.0 GT/s x32)");
}

TEST_F(PciFacts, FirstFunctionSpeaksInWhateverOrderTheyAppeared) {
  FakePci sound(0x10DE, 0x228E, 0x0403);
  Card.At(Machine, RootPort().Pci(0, 0));
  sound.At(Machine, RootPort().Pci(0, 1));
  DeviceAnswer answer = AskSlot();
  EXPECT_EQ(answer.Line("Device ID"), "10DE:2504");
  EXPECT_EQ(answer.Where.Handle, Card.Handle);
}

TEST_F(PciFacts, FunctionThatLosesItsPathDoesNotSpeakForTheOthers) {
  FakePci sound(0x10DE, 0x228E, 0x0403);
  Card.At(Machine, RootPort().Pci(0, 0));
  sound.At(Machine, RootPort().Pci(0, 1));
  // For the search two calls each; then each is asked for its place.
  Machine.At(fake::Service::HandleProtocol, 5, [&] { Card.Leave(); });
  DeviceAnswer answer = AskSlot();
  EXPECT_EQ(answer.Line("Device ID"), "10DE:228E");
  EXPECT_EQ(answer.Where.Handle, sound.Handle);
}

TEST_F(PciFacts, ProtocolWithoutAnInterfaceIsNoDevice) {
  fake::DevicePath path = RootPort().Pci(0);
  EFI_HANDLE handle = Machine.Install(fake::kDevicePathGuid, path.Get());
  Machine.Install(gEfiPciIoProtocolGuid, nullptr, handle);
  EXPECT_EQ(AskSlot().Status, EFI_NOT_FOUND);
}

TEST(PathNodes, NodesOfTheSameLengthAreComparedByTheirBytes) {
  fake::DevicePath one = fake::DevicePath().PciRoot().Pci(2);
  fake::DevicePath other = fake::DevicePath().PciRoot().Pci(3);
  EXPECT_FALSE(SameNodes(NodesOf(one.Get()), NodesOf(other.Get())));
}

TEST(PathNodes, NodeThatIsShorterThanItsKindIsNone) {
  fake::DevicePath path = fake::DevicePath().Node(HARDWARE_DEVICE_PATH, HW_PCI_DP, {0}).Pci(1);
  EXPECT_FALSE(IsNode(NodesOf(path.Get()), HARDWARE_DEVICE_PATH, HW_PCI_DP, 6));
  EXPECT_TRUE(IsNode(NodesOf(path.Get()), HARDWARE_DEVICE_PATH, HW_PCI_DP, 5));
  EXPECT_FALSE(IsNode(NodesOf(path.Get()), HARDWARE_DEVICE_PATH, HW_VENDOR_DP, 5));
  EXPECT_FALSE(IsNode(NodesOf(path.Get()), MESSAGING_DEVICE_PATH, HW_PCI_DP, 5));
}

}  // namespace
}  // namespace obv_host
