#include "test/unit/sources/DeviceStage.h"
#include "test/unit/sources/FakePci.h"

#include "host/sources/Devices.h"

namespace obv_host {
namespace {

using testing::ElementsAre;

fake::DevicePath RootPort() { return fake::DevicePath().PciRoot().Pci(0x1C, 4); }

fake::DevicePath Slot(UINT8 function = 0) { return RootPort().Pci(0, function); }

class Pcie : public DeviceStage {
 protected:
  Pcie() { port_.At(Machine, RootPort()); }

  DeviceAnswer AskSlot() { return Ask(ReadPcie, kHardwarePcie, RootPort()); }

 private:
  FakePci port_{0x8086, 0x7AB8, 0x0604};
};

TEST_F(Pcie, CardTellsWhatItIsAndHowItsLinkRuns) {
  FakePci card(0x10DE, 0x2504, 0x0300);
  card.AddLink(3, 8, 4, 16);
  card.At(Machine, Slot());
  DeviceAnswer answer = AskSlot();
  EXPECT_EQ(answer.Status, EFI_SUCCESS);
  EXPECT_THAT(answer.Lines(),
              ElementsAre("Type: VGA controller", "Manufacturer: NVIDIA", "Device ID: 10DE:2504",
                          "Link: 8.0 GT/s x8 (possible: 16.0 GT/s x16)"));
  EXPECT_EQ(answer.Where.Handle, card.Handle);
  EXPECT_EQ(answer.Where.Protocol, &gEfiPciIoProtocolGuid);
}

TEST_F(Pcie, FirstFunctionSpeaksForAllAndTheirNumberIsTold) {
  FakePci sound(0x1002, 0xAB28, 0x0403);
  sound.At(Machine, Slot(1));
  FakePci screen(0x1002, 0x73DF, 0x0300);
  screen.At(Machine, Slot(0));
  DeviceAnswer answer = AskSlot();
  EXPECT_EQ(answer.Line("Device ID"), "1002:73DF");
  EXPECT_EQ(answer.Line("Functions"), "2");
  EXPECT_EQ(answer.Where.Handle, screen.Handle);
}

TEST_F(Pcie, EmptySlotIsNotThere) { EXPECT_EQ(AskSlot().Status, EFI_NOT_FOUND); }

TEST_F(Pcie, DeviceBehindAnotherPortOrFurtherBehindIsNotTheSlots) {
  FakePci elsewhere(0x8086, 0x15F3, 0x0200);
  elsewhere.At(Machine, fake::DevicePath().PciRoot().Pci(0x1C, 5).Pci(0));
  FakePci further(0x8086, 0x15F3, 0x0200);
  further.At(Machine, Slot().Pci(1));
  EXPECT_EQ(AskSlot().Status, EFI_NOT_FOUND);
}

TEST_F(Pcie, DeviceWhoseSpaceReadsAsAllOnesHasLeft) {
  FakePci card(0xFFFF, 0xFFFF, 0xFFFF);
  card.Space.fill(0xFF);
  card.At(Machine, Slot());
  EXPECT_EQ(AskSlot().Status, EFI_NOT_FOUND);
}

TEST_F(Pcie, DeviceThatCannotBeReadFails) {
  FakePci card(0x8086, 0x15F3, 0x0200);
  card.Failure = EFI_DEVICE_ERROR;
  card.At(Machine, Slot());
  DeviceAnswer answer = AskSlot();
  EXPECT_EQ(answer.Status, EFI_DEVICE_ERROR);
  EXPECT_EQ(answer.Line("Health"), "Failing: does not answer");
}

TEST_F(Pcie, MakerWithoutANameIsLeftOut) {
  FakePci card(0x0001, 0x0002, 0xFE00);
  card.At(Machine, Slot());
  EXPECT_THAT(AskSlot().Lines(),
              ElementsAre("Type: Device of an unknown class", "Device ID: 0001:0002"));
}

TEST_F(Pcie, CapabilitiesInACircleHaveNoLink) {
  FakePci card(0x8086, 0x15F3, 0x0200);
  card.AddLink(3, 1, 3, 1);
  card.Put16(0x40, 0x4001);
  card.At(Machine, Slot());
  EXPECT_EQ(AskSlot().Line("Link"), "(none)");
}

TEST_F(Pcie, CapabilitiesOutsideTheirPartOfTheSpaceHaveNoLink) {
  FakePci card(0x8086, 0x15F3, 0x0200);
  card.AddLink(3, 1, 3, 1);
  card.At(Machine, Slot());
  ASSERT_EQ(AskSlot().Line("Link"), "8.0 GT/s x1 (possible: 8.0 GT/s x1)");
  card.Put8(0x34, 0x10);
  EXPECT_EQ(AskSlot().Line("Link"), "(none)");
  card.Put8(0x34, 0xFC);
  card.Put16(0xFC, 0x0010);
  EXPECT_EQ(AskSlot().Line("Link"), "(none)") << "the capability would not fit";
}

TEST_F(Pcie, ListWithoutItsBitIsNone) {
  FakePci card(0x8086, 0x15F3, 0x0200);
  card.AddLink(3, 1, 3, 1);
  card.Put16(0x06, 0x0000);
  card.At(Machine, Slot());
  EXPECT_EQ(AskSlot().Line("Link"), "(none)");
}

TEST_F(Pcie, LinkOfNoWidthOrAnUndefinedSpeedIsNotTold) {
  FakePci card(0x8086, 0x15F3, 0x0200);
  card.AddLink(3, 0, 3, 1);
  card.At(Machine, Slot());
  EXPECT_EQ(AskSlot().Line("Link"), "(none)");
  card.AddLink(15, 1, 3, 1);
  EXPECT_EQ(AskSlot().Line("Link"), "(none)");
  card.AddLink(6, 16, 15, 16);
  EXPECT_EQ(AskSlot().Line("Link"), "64.0 GT/s x16");
}

TEST_F(Pcie, DeviceThatLeavesBetweenSearchAndReadingIsNotThere) {
  FakePci card(0x8086, 0x15F3, 0x0200);
  card.At(Machine, Slot());
  card.OnCall = [&](int) { card.Leave(); };
  EXPECT_EQ(AskSlot().Status, EFI_NOT_FOUND);
}

TEST_F(Pcie, DeviceThatLeavesDuringTheSearchIsNotThere) {
  FakePci card(0x8086, 0x15F3, 0x0200);
  // The root port's path, the card's path, the card's PciIo.
  for (uint64_t call : {2, 3}) {
    card.At(Machine, Slot());
    Machine.At(fake::Service::HandleProtocol, call, [&] { card.Leave(); });
    EXPECT_EQ(AskSlot().Status, EFI_NOT_FOUND) << call;
    EXPECT_FALSE(card.IsThere()) << call;
  }
}

TEST_F(Pcie, PathsThatAreNoneAreNotCompared) {
  FakePci unending(0x8086, 1, 0x0200);
  std::vector<UINT8> nodes(kDevicePathLimit);
  for (size_t i = 0; i < nodes.size(); i += 4) {
    nodes[i] = HARDWARE_DEVICE_PATH;
    nodes[i + 2] = 4;
  }
  unending.AtRaw(Machine, nodes.data());
  FakePci still(0x8086, 2, 0x0200);
  UINT8 noLength[] = {HARDWARE_DEVICE_PATH, HW_PCI_DP, 0, 0, 0, 0};
  still.AtRaw(Machine, noLength);
  FakePci nothing(0x8086, 3, 0x0200);
  nothing.AtRaw(Machine, nullptr);
  FakePci card(0x8086, 4, 0x0200);
  card.At(Machine, Slot());
  EXPECT_EQ(AskSlot().Line("Device ID"), "8086:0004");
}

TEST(PcieFailures, FailingServicesGetSoundAnswers) {
  uint64_t runs = 0;
  std::string complaints = AnswersDespiteFailures(
      [](fake::Firmware &machine) {
        static FakePci card(0x8086, 0x15F3, 0x0200);
        card.At(machine, Slot());
        return AskSource(ReadPcie, HardwareAtPath(kHardwarePcie, RootPort()));
      },
      &runs);
  EXPECT_EQ(complaints, "");
  EXPECT_EQ(runs, 3U);
}

PathNodes NodesOfPath(fake::DevicePath &path) { return NodesOf(path.Get()); }

TEST(DevicePaths, PrefixEndsWhereANodeEnds) {
  fake::DevicePath longer = fake::DevicePath().PciRoot().Pci(2).Pci(0);
  fake::DevicePath shorter = fake::DevicePath().PciRoot().Pci(2);
  fake::DevicePath other = fake::DevicePath().PciRoot().Pci(3);
  EXPECT_TRUE(StartsWith(NodesOfPath(longer), NodesOfPath(shorter)));
  EXPECT_FALSE(StartsWith(NodesOfPath(shorter), NodesOfPath(longer)));
  EXPECT_FALSE(StartsWith(NodesOfPath(longer), NodesOfPath(other)));
  EXPECT_TRUE(SameNodes(NodesOfPath(shorter), NodesOfPath(shorter)));
  EXPECT_FALSE(SameNodes(NodesOfPath(longer), NodesOfPath(shorter)));
}

TEST(DevicePaths, LastNodeIsTakenOff) {
  fake::DevicePath path = fake::DevicePath().PciRoot().Pci(2).Usb(3, 1);
  PathNodes last;
  PathNodes front = WithoutLast(NodesOfPath(path), &last);
  EXPECT_EQ(front.Size, 12U + 6U);
  EXPECT_TRUE(IsNode(last, MESSAGING_DEVICE_PATH, MSG_USB_DP, 6));
  EXPECT_EQ(last.Path[4], 3);
}

TEST(DevicePaths, LongestPathIsOneAndALongerIsNone) {
  fake::DevicePath path;
  path.Node(HARDWARE_DEVICE_PATH, HW_VENDOR_DP, std::vector<uint8_t>(kDevicePathLimit - 4 - 4));
  EXPECT_EQ(NodesOfPath(path).Size, kDevicePathLimit - 4);
  path.Node(HARDWARE_DEVICE_PATH, HW_VENDOR_DP, {0});
  EXPECT_EQ(NodesOfPath(path).Path, nullptr);
}

}  // namespace
}  // namespace obv_host
