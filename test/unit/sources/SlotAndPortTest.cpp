#include "test/unit/sources/SmbiosStage.h"

namespace obv_host {
namespace {

using testing::ElementsAre;

using Slot = SMBIOS_TABLE_TYPE9;
using Port = SMBIOS_TABLE_TYPE8;

class HostSlot : public SmbiosStage {
 protected:
  static Slot Usual() {
    Slot slot = {};
    slot.SlotDesignation = 1;
    slot.SlotType = SlotTypePciExpressGen4X16;
    slot.SlotDataBusWidth = SlotDataBusWidth8X;
    slot.CurrentUsage = SlotUsageInUse;
    slot.SlotLength = SlotLengthLong;
    slot.SegmentGroupNum = 0;
    slot.BusNum = 0x2B;
    slot.DevFuncNum = 0x1C << 3 | 5;
    return slot;
  }

  EFI_STATUS ReadWith(const Slot &slot, size_t length = sizeof(Slot)) {
    Table.Bytes.clear();
    Table.Add(9, slot, {"PCIEX16_1"}, length);
    return Read(ReadSlot, "PCIEX16_1");
  }

  std::string TypeWith(int type) {
    Slot slot = Usual();
    slot.SlotType = static_cast<UINT8>(type);
    EXPECT_EQ(ReadWith(slot), EFI_SUCCESS);
    return Line("Type");
  }
};

TEST_F(HostSlot, TellsWhatTheFirmwareKnows) {
  EXPECT_EQ(ReadWith(Usual()), EFI_SUCCESS);
  EXPECT_THAT(Lines(), ElementsAre("Type: PCI Express 4.0 x16", "Width: x8", "Usage: In use",
                                   "Length: Long", "Address: 0000:2B:1C.5"));
}

TEST_F(HostSlot, IsAbsentWithoutARecordOfItsName) {
  EXPECT_EQ(ReadAgain(ReadSlot, "PCIEX16_1"), EFI_NOT_FOUND);
  EXPECT_EQ(ReadWith(Usual()), EFI_SUCCESS);
  EXPECT_EQ(Read(ReadSlot, "PCIEX1_1"), EFI_NOT_FOUND);
}

TEST_F(HostSlot, AnswerFollowsTheUsage) {
  Slot slot = Usual();
  for (UINT8 usage : {SlotUsageAvailable, SlotUsageUnavailable}) {
    slot.CurrentUsage = usage;
    EXPECT_EQ(ReadWith(slot), EFI_NOT_FOUND) << int(usage);
  }
  for (UINT8 usage : {0, 1, 2, 6, 255}) {
    slot.CurrentUsage = usage;
    EXPECT_EQ(ReadWith(slot), EFI_SUCCESS) << int(usage);
    EXPECT_EQ(Line("Usage"), "Unknown");
  }
}

TEST_F(HostSlot, TypesAreNamed) {
  EXPECT_EQ(TypeWith(0x06), "PCI");
  EXPECT_EQ(TypeWith(0x17), "M.2 socket 3");
  EXPECT_EQ(TypeWith(0xA4), "-");
  EXPECT_EQ(TypeWith(0xA5), "PCI Express");
  EXPECT_EQ(TypeWith(0xA6), "PCI Express x1");
  EXPECT_EQ(TypeWith(0xAA), "PCI Express x16");
  EXPECT_EQ(TypeWith(0xAB), "PCI Express 2.0");
  EXPECT_EQ(TypeWith(0xB4), "PCI Express 3.0 x4");
  EXPECT_EQ(TypeWith(0xB7), "-");
  EXPECT_EQ(TypeWith(0xBC), "PCI Express 4.0 x8");
  EXPECT_EQ(TypeWith(0xC3), "PCI Express 5.0 x16");
  EXPECT_EQ(TypeWith(0xC4), "PCI Express 6.0");
  EXPECT_EQ(TypeWith(0xFF), "-");
}

TEST_F(HostSlot, UnknownAddressIsNotTold) {
  Slot slot = Usual();
  slot.SegmentGroupNum = 0xFFFF;
  ReadWith(slot);
  EXPECT_EQ(Line("Address"), "-");
  slot.SegmentGroupNum = 0;
  slot.BusNum = 0xFF;
  slot.DevFuncNum = 0xFF;
  ReadWith(slot);
  EXPECT_EQ(Line("Address"), "-");
  ReadWith(Usual(), OFFSET_OF(Slot, DevFuncNum));
  EXPECT_EQ(Line("Address"), "-");
}

TEST_F(HostSlot, EveryLengthOfTheRecordIsRead) {
  for (size_t length = 4; length <= sizeof(Slot); length++) {
    EFI_STATUS status = ReadWith(Usual(), length);
    EXPECT_EQ(status, length > OFFSET_OF(Slot, SlotDesignation) ? EFI_SUCCESS : EFI_NOT_FOUND);
    EXPECT_EQ(Line("Length"), length > OFFSET_OF(Slot, SlotLength) ? "Long" : "-") << length;
  }
}

class HostPort : public SmbiosStage {
 protected:
  static Port Usual() {
    Port port = {};
    port.InternalReferenceDesignator = 1;
    port.InternalConnectorType = PortConnectorTypeNone;
    port.ExternalReferenceDesignator = 2;
    port.ExternalConnectorType = PortConnectorTypeRJ45;
    port.PortType = PortTypeNetworkPort;
    return port;
  }
};

TEST_F(HostPort, TellsWhatTheFirmwareKnows) {
  Table.Add(8, Usual(), {"J5A1", "LAN"});
  EXPECT_EQ(Read(ReadPort, "LAN"), EFI_SUCCESS);
  EXPECT_THAT(Lines(), ElementsAre("Type: Network", "Connector: RJ-45", "External name: LAN",
                                   "Internal name: J5A1"));
}

TEST_F(HostPort, IsFoundByItsInternalNameWhereNoneIsNamedSoOutside) {
  Table.Add(8, Usual(), {"USB", "LAN"});
  Port header = Usual();
  header.InternalConnectorType = PortConnectorType9PinDualInline;
  header.ExternalConnectorType = PortConnectorTypeNone;
  header.PortType = PortTypeUsb;
  Table.Add(8, header, {"F_USB1", "Not Specified"});
  EXPECT_EQ(Read(ReadPort, "F_USB1"), EFI_SUCCESS);
  EXPECT_THAT(Lines(), ElementsAre("Type: USB", "On the board: 9 pins in two rows",
                                   "Internal name: F_USB1"));
  Table.Add(8, header, {"J1", "USB"});
  EXPECT_EQ(Read(ReadPort, "USB"), EFI_SUCCESS);
  EXPECT_EQ(Line("Internal name"), "J1");
}

TEST_F(HostPort, IsAbsentWithoutARecordOfItsName) {
  EXPECT_EQ(ReadAgain(ReadPort, "LAN"), EFI_NOT_FOUND);
  Table.Add(8, Usual(), {"J5A1", "LAN"});
  EXPECT_EQ(Read(ReadPort, "LAN2"), EFI_NOT_FOUND);
}

TEST_F(HostPort, UnknownNumbersAreNotTold) {
  Port port = Usual();
  port.ExternalConnectorType = 0xFF;
  port.PortType = 0xFF;
  Table.Add(8, port, {"J5A1", "LAN"});
  EXPECT_EQ(Read(ReadPort, "LAN"), EFI_SUCCESS);
  EXPECT_THAT(Lines(), ElementsAre("External name: LAN", "Internal name: J5A1"));
}

TEST_F(HostPort, EveryLengthOfTheRecordIsRead) {
  for (size_t length = 4; length <= sizeof(Port); length++) {
    Table.Bytes.clear();
    Table.Add(8, Usual(), {"J5A1", "LAN"}, length);
    bool named = length > OFFSET_OF(Port, ExternalReferenceDesignator);
    EXPECT_EQ(Read(ReadPort, "LAN"), named ? EFI_SUCCESS : EFI_NOT_FOUND) << length;
    EXPECT_EQ(Line("Type"), length == sizeof(Port) ? "Network" : "-") << length;
  }
}

}  // namespace
}  // namespace obv_host
