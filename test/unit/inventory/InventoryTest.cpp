// The inventory: what it lists, and in which words.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "test/unit/sources/DeviceAnswer.h"
#include "test/unit/sources/FakePci.h"
#include "test/unit/sources/SmbiosStage.h"

#include "host/inventory/Inventory.h"
#include "host/inventory/PathText.h"

namespace obv_host {
namespace {

using testing::HasSubstr;

class Inventory : public SmbiosStage {
 protected:
  std::string Written(size_t room = 64 * 1024) {
    Table.Install(Machine);
    return WrittenAgain(room);
  }

  /// Without publishing the table.
  std::string WrittenAgain(size_t room = 64 * 1024) {
    bytes_.assign(room, '~');
    text_ = {.Bytes = bytes_.data(), .Size = room, .Length = 0, .Full = false};
    WriteInventory(&work_, &text_);
    return {bytes_.data(), text_.Length};
  }

  bool Full() const { return text_.Full; }

  void AddModule(UINT16 megabytes, const std::string &locator, const std::string &bank) {
    SMBIOS_TABLE_TYPE17 module = {};
    module.Size = megabytes;
    module.DeviceLocator = 1;
    module.BankLocator = 2;
    Table.Add(17, module, {locator, bank});
  }

 private:
  std::vector<char> bytes_;
  InventoryText text_ = {};
  InventoryWork work_ = {};
};

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
