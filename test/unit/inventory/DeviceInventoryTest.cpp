// The inventory of devices: USB, disks, sensors, and what cannot be named or read.

#include "test/unit/inventory/InventoryStage.h"
#include "test/unit/sources/DeviceAnswer.h"
#include "test/unit/sources/FakeAta.h"
#include "test/unit/sources/FakePci.h"
#include "test/unit/sources/FakeSensor.h"
#include "test/unit/sources/FakeUsb.h"

namespace obv_host {
namespace {

using testing::HasSubstr;

fake::DevicePath UsbController() { return fake::DevicePath().PciRoot().Pci(0x14); }

fake::DevicePath SataController() { return fake::DevicePath().PciRoot().Pci(0x17); }

/// Bridges behind bridges.
fake::DevicePath Deep(int bridges) {
  fake::DevicePath path = fake::DevicePath().PciRoot();
  for (int i = 0; i < bridges; i++) {
    path.Pci(0x1F, 7);
  }
  return path;
}

size_t CountOf(const std::string &text, const std::string &wanted) {
  size_t count = 0;
  for (size_t at = text.find(wanted); at != std::string::npos; at = text.find(wanted, at + 1)) {
    count++;
  }
  return count;
}

class DeviceInventory : public InventoryStage {
 protected:
  FakeUsb Keyboard;
  FakeAta Disk;
  FakeSensor Fan{"CPU fan"};
  FakePci Card{0x8086, 0x15F3, 0x0200};
};

TEST_F(DeviceInventory, NamesAUsbPortByTheFirstInterfaceOfItsDevice) {
  Keyboard.At(Machine, UsbController().Usb(3, 0));
  FakeUsb second;
  second.At(Machine, UsbController().Usb(3, 1));
  std::string written = Written();
  EXPECT_THAT(written,
              HasSubstr("\n  # Product USB Keyboard, Manufacturer Logitech, Type Keyboard, "
                        "USB version 2.0\n"
                        "  - usb: \"PciRoot(0x0)/Pci(0x14,0x0)/USB(0x3,0x0)\"\n"));
  EXPECT_EQ(CountOf(written, "- usb:"), 1U);
}

TEST_F(DeviceInventory, LeavesOutUsbDevicesThatHangOnNoPort) {
  Keyboard.At(Machine, UsbController());
  EXPECT_THAT(Written(), Not(HasSubstr("usb")));
}

TEST_F(DeviceInventory, ListsTheSataPortsThatHaveADevice) {
  Disk.At(Machine, SataController());
  std::string written = Written();
  EXPECT_THAT(written, HasSubstr("\n  # Model CT512MX500SSD1, Serial number 2034E2A5F00C, "
                                 "Firmware M3CR032, Type SSD\n"
                                 "  - sata: \"PciRoot(0x0)/Pci(0x17,0x0)/"
                                 "Sata(0x2,0xFFFF,0x0)\"\n"));
  EXPECT_EQ(CountOf(written, "- sata:"), 1U);
}

TEST_F(DeviceInventory, ListsTheLastPortThatAControllerCanHave) {
  Disk.Port = 31;
  Disk.At(Machine, SataController());
  EXPECT_THAT(Written(), HasSubstr("/Sata(0x1F,0xFFFF,0x0)\"\n"));
}

TEST_F(DeviceInventory, SaysWhatFails) {
  Disk.Failure = EFI_TIMEOUT;
  Disk.At(Machine, SataController());
  EXPECT_THAT(Written(), HasSubstr("\n  # failing, Health Failing: does not answer\n  - sata:"));
}

TEST_F(DeviceInventory, SaysWhatHasNoDriverYet) {
  FakePci drive(0x144D, 0xA80C, 0x0108);
  drive.At(Machine, fake::DevicePath().PciRoot().Pci(0x1D).Pci(0));
  EXPECT_THAT(Written(), HasSubstr("\n  # without its driver\n"
                                   "  - nvme: \"PciRoot(0x0)/Pci(0x1D,0x0)/Pci(0x0,0x0)\"\n"));
}

TEST_F(DeviceInventory, ListsSensorsWithWhatTheyMeasure) {
  Fan.At(Machine);
  EXPECT_THAT(Written(), HasSubstr("\n  # Speed 1200 RPM, Allowed 600 to 2400 RPM\n"
                                   "  - sensor: \"CPU fan\"\n"));
}

TEST_F(DeviceInventory, ListsSensorsThatHaveNothingToMeasure) {
  Fan.Failure = EFI_NOT_FOUND;
  Fan.At(Machine);
  EXPECT_THAT(Written(), HasSubstr("\n  # empty\n  - sensor: \"CPU fan\"\n"));
}

TEST_F(DeviceInventory, LeavesOutSensorsThatNoBoardCanName) {
  FakeSensor nameless("");
  nameless.At(Machine);
  FakeSensor unprintable("fan\x01");
  unprintable.At(Machine);
  FakeSensor unending(std::string(OBV_SENSOR_NAME_SIZE, 'x').c_str());
  unending.At(Machine);
  EXPECT_THAT(Written(), Not(HasSubstr("sensor")));
}

TEST_F(DeviceInventory, ListsTheLongestNameOfASensor) {
  std::string name(OBV_SENSOR_NAME_SIZE - 1, 'x');
  FakeSensor longest(name.c_str());
  longest.At(Machine);
  EXPECT_THAT(Written(), HasSubstr("RPM\n  - sensor: \"" + name + "\"\n"));
}

TEST_F(DeviceInventory, LeavesOutDevicesWithoutAPath) {
  Keyboard.AtRaw(Machine, nullptr);
  Disk.AtRaw(Machine, nullptr);
  Card.AtRaw(Machine, nullptr);
  std::string written = Written();
  for (const char *word : {"usb", "sata", "network"}) {
    EXPECT_THAT(written, Not(HasSubstr(word)));
  }
}

TEST_F(DeviceInventory, ListsTheDeepestPathThatABoardHasRoomFor) {
  Card.At(Machine, Deep(18));
  EXPECT_THAT(Written(), HasSubstr("/Pci(0x1F,0x7)\"\n"));
}

TEST_F(DeviceInventory, LeavesOutPathsThatABoardHasNoRoomFor) {
  Card.At(Machine, Deep(19));
  Disk.At(Machine, Deep(18));
  Keyboard.At(Machine, Deep(18).Usb(1));
  FakePci deeper(0x8086, 0x15F3, 0x0200);
  deeper.At(Machine, Deep(150));
  EXPECT_THAT(Written(), Not(HasSubstr("PciRoot")));
}

TEST_F(DeviceInventory, LeavesOutDevicesThatBeginAtNoRoot) {
  Card.At(Machine, fake::DevicePath().Pci(0x1F));
  EXPECT_THAT(Written(), Not(HasSubstr("network")));
}

TEST_F(DeviceInventory, LeavesOutPciDevicesThatCannotBeRead) {
  Card.Failure = EFI_DEVICE_ERROR;
  Card.At(Machine, fake::DevicePath().PciRoot().Pci(0x1F, 6));
  EXPECT_THAT(Written(), Not(HasSubstr("Pci(")));
}

// A driver that installs a protocol as a mark, without a table.
TEST_F(DeviceInventory, LeavesOutProtocolsWithoutAnInterface) {
  std::vector<std::pair<EFI_GUID, EFI_HANDLE>> marks;
  for (const EFI_GUID &guid : {gEfiPciIoProtocolGuid, gEfiAtaPassThruProtocolGuid,
                               gEfiUsbIoProtocolGuid, gObvSensorProtocolGuid}) {
    marks.push_back({guid, Machine.Install(guid, nullptr)});
  }
  Fan.At(Machine);
  EXPECT_EQ(CountOf(Written(), "\n  - "), 1U);
  for (const auto &[guid, handle] : marks) {
    Machine.Uninstall(handle, guid, nullptr);
  }
}

TEST_F(DeviceInventory, LeavesOutADeviceThatLeavesInTheMiddle) {
  // The device's protocol, its path.
  for (uint64_t call : {1, 2}) {
    Keyboard.At(Machine, UsbController().Usb(3));
    Machine.At(fake::Service::HandleProtocol, call, [&] { Keyboard.Leave(); });
    EXPECT_THAT(Written(), Not(HasSubstr("usb"))) << call;
    EXPECT_FALSE(Keyboard.IsThere()) << call;
  }
}

TEST_F(DeviceInventory, HasTheTablesHardwareWhenDevicesCannotBeListed) {
  AddModule(8192, "DIMM 0", "BANK 0");
  Keyboard.At(Machine, UsbController().Usb(3));
  Machine.FailCall(fake::Service::LocateHandleBuffer, 1, EFI_OUT_OF_RESOURCES, fake::kForever);
  std::string written = Written();
  EXPECT_THAT(written, HasSubstr("- memory:"));
  EXPECT_THAT(written, Not(HasSubstr("usb")));
}

}  // namespace
}  // namespace obv_host
