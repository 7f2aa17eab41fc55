// The inventory: what it lists, and in which words.

#include "test/unit/inventory/InventoryStage.h"
#include "test/unit/sources/DeviceAnswer.h"
#include "test/unit/sources/FakePci.h"

#include "host/inventory/PathText.h"

namespace obv_host {
namespace {

using testing::HasSubstr;

class Inventory : public InventoryStage {};

TEST_F(Inventory, ListsMemorySlotsWithTheirBanks) {
  AddModule(8192, "DIMM 0", "BANK 0");
  AddModule(0, "DIMM 1", "BANK 0");
  std::string written = Written();
  EXPECT_THAT(written, HasSubstr("  # Size 8 GB\n"
                                 "  - memory: {locator: \"DIMM 0\", bank: \"BANK 0\"}\n"
                                 "  # empty\n"
                                 "  - memory: {locator: \"DIMM 1\", bank: \"BANK 0\"}\n"));
}

TEST_F(Inventory, LeavesOutTheBankWhereThereIsNone) {
  AddModule(8192, "DIMM 0", "");
  EXPECT_THAT(Written(), HasSubstr("\n  - memory: \"DIMM 0\"\n"));
}

TEST_F(Inventory, QuotesNames) {
  AddModule(8192, "A \"left\" \\ slot: #1", "");
  EXPECT_THAT(Written(), HasSubstr("\n  - memory: \"A \\\"left\\\" \\\\ slot: #1\"\n"));
}

TEST_F(Inventory, LeavesOutWhatHasNoName) {
  AddModule(8192, "", "BANK 0");
  EXPECT_THAT(Written(), Not(HasSubstr("memory")));
}

TEST_F(Inventory, SaysThatThereAreNoTables) {
  EXPECT_THAT(WrittenAgain(), HasSubstr("hardware:\n  # The firmware has no SMBIOS tables.\n"));
}

TEST_F(Inventory, LeavesOutABankThatABoardHasNoRoomFor) {
  AddModule(8192, "DIMM 0", std::string(kHardwareBankSize, 'B'));
  AddModule(8192, "DIMM 1", std::string(kHardwareBankSize - 1, 'B'));
  std::string written = Written();
  EXPECT_THAT(written, HasSubstr("\n  - memory: \"DIMM 0\"\n"));
  EXPECT_THAT(written, HasSubstr("\n  - memory: {locator: \"DIMM 1\", bank: \"BBBB"));
}

TEST_F(Inventory, ListsOtherHardwareOfTheTablesByItsName) {
  SMBIOS_TABLE_TYPE27 fan = {};
  fan.Description = 1;
  fan.NominalSpeed = 1200;
  Table.Add(27, fan, {"CPU_FAN"});
  fan.NominalSpeed = 0;
  Table.Add(27, fan, {"CHA_FAN"});
  EXPECT_THAT(Written(), HasSubstr("\n  # Nominal speed 1200 RPM\n"
                                   "  - fan: \"CPU_FAN\"\n"
                                   "  - fan: \"CHA_FAN\"\n"));
}

TEST_F(Inventory, ListsPciDevicesByWhatTheyAre) {
  const std::pair<UINT16, std::string> kinds[] = {
      {0x0604, "pcie"},    {0x0108, "nvme"},    {0x0200, "network"},
      {0x0280, "network"}, {0x0300, "display"}, {0x0403, "audio"},
  };
  for (const auto &[pciClass, word] : kinds) {
    FakePci device(0x8086, 0x1234, pciClass);
    device.At(Machine, fake::DevicePath().PciRoot().Pci(0x1F, 2));
    EXPECT_THAT(Written(), HasSubstr("\n  - " + word + ": \"PciRoot(0x0)/Pci(0x1F,0x2)\"\n"));
    device.Leave();
  }
}

TEST_F(Inventory, LeavesOutPciDevicesThatNoComponentNames) {
  FakePci device(0x8086, 0x1234, 0x0601);
  device.At(Machine, fake::DevicePath().PciRoot().Pci(0x1F, 0));
  EXPECT_THAT(Written(), Not(HasSubstr("Pci(")));
  device.Leave();
}

TEST_F(Inventory, HoldsWholeLinesWhenTheRoomEnds) {
  AddModule(8192, "DIMM 0", "BANK 0");
  std::string whole = Written();
  EXPECT_FALSE(Full());
  for (size_t room = 0; room < whole.size(); room++) {
    std::string part = WrittenAgain(room);
    EXPECT_TRUE(Full());
    EXPECT_EQ(part, whole.substr(0, part.size()));
    EXPECT_TRUE(part.empty() || part.back() == '\n') << part;
  }
  EXPECT_EQ(WrittenAgain(whole.size()), whole);
}

TEST(PathText, IsTheOneThatADescriptionTakes) {
  CHAR8 text[kPathTextSize];
  fake::DevicePath usb = fake::DevicePath().PciRoot().Pci(0x14, 0).Usb(9, 0);
  ASSERT_TRUE(WritePathText(NodesOf(usb.Get()), text));
  EXPECT_STREQ(text, "PciRoot(0x0)/Pci(0x14,0x0)/USB(0x9,0x0)");
}

TEST(PathText, NamesSataPorts) {
  CHAR8 text[kPathTextSize];
  fake::DevicePath sata = fake::DevicePath().PciRoot(1).Pci(0x17, 0).Sata(5);
  ASSERT_TRUE(WritePathText(NodesOf(sata.Get()), text));
  EXPECT_STREQ(text, "PciRoot(0x1)/Pci(0x17,0x0)/Sata(0x5,0xFFFF,0x0)");
}

/// An ACPI node of this hardware ID, of the first of its kind.
fake::DevicePath Acpi(UINT32 hid) {
  std::vector<uint8_t> body(8);
  std::memcpy(body.data(), &hid, sizeof hid);
  return fake::DevicePath().Node(ACPI_DEVICE_PATH, ACPI_DP, body);
}

TEST(PathText, TellsRootsOfPciExpressFromThoseOfPci) {
  CHAR8 text[kPathTextSize];
  fake::DevicePath express = Acpi(EISA_PNP_ID(0x0A08)).Pci(2);
  ASSERT_TRUE(WritePathText(NodesOf(express.Get()), text));
  EXPECT_STREQ(text, "PcieRoot(0x0)/Pci(0x2,0x0)");
  fake::DevicePath floppy = Acpi(EISA_PNP_ID(0x0604)).Pci(2);
  EXPECT_FALSE(WritePathText(NodesOf(floppy.Get()), text));
}

TEST(PathText, ThereIsNoneForAPartition) {
  CHAR8 text[kPathTextSize];
  fake::DevicePath partition = fake::DevicePath().PciRoot().Pci(0x17).Sata(1).HardDrive(1);
  EXPECT_FALSE(WritePathText(NodesOf(partition.Get()), text));
}

TEST(QuotedName, IsThereForPrintableTextThatFits) {
  CHAR8 quoted[8];
  EXPECT_TRUE(QuoteName("fan ~", quoted, sizeof quoted));
  EXPECT_STREQ(quoted, "fan ~");
  EXPECT_FALSE(QuoteName("fan\t1", quoted, sizeof quoted));
  EXPECT_FALSE(QuoteName("fan\x7F", quoted, sizeof quoted));
  EXPECT_FALSE(QuoteName("L\xC3\xBC", quoted, sizeof quoted)) << "not ASCII";
  EXPECT_FALSE(QuoteName("", quoted, sizeof quoted));
  EXPECT_FALSE(QuoteName("fan number one", quoted, sizeof quoted));
  EXPECT_FALSE(QuoteName("\"\"\"\"", quoted, sizeof quoted)) << "twice as long, and an end";
}

TEST(PathText, ThereIsNoneForNodesThatABoardCannotName) {
  CHAR8 text[kPathTextSize];
  fake::DevicePath odd = fake::DevicePath().Pci(0x14, 0);
  EXPECT_FALSE(WritePathText(NodesOf(odd.Get()), text));
  fake::DevicePath empty;
  EXPECT_FALSE(WritePathText(NodesOf(empty.Get()), text));
  EXPECT_FALSE(WritePathText(NodesOf(nullptr), text));
}

TEST(PathText, ThereIsNoneForAPathThatABoardHasNoRoomFor) {
  CHAR8 text[kPathTextSize];
  fake::DevicePath path = fake::DevicePath().PciRoot();
  // 12 bytes of the root and 6 of each bridge, with the end node in 128.
  for (int i = 0; i < 18; i++) {
    path.Pci(1, 0);
  }
  EXPECT_TRUE(WritePathText(NodesOf(path.Get()), text));
  path.Pci(1, 0);
  EXPECT_FALSE(WritePathText(NodesOf(path.Get()), text));
}

}  // namespace
}  // namespace obv_host
