#include "test/unit/sources/SmbiosStage.h"

namespace obv_host {
namespace {

using testing::ElementsAre;

using Record = SMBIOS_TABLE_TYPE17;

class HostMemory : public SmbiosStage {
 protected:
  static Record Usual() {
    Record record = {};
    record.Size = 16 * 1024;
    record.FormFactor = MemoryFormFactorDimm;
    record.DeviceLocator = 1;
    record.BankLocator = 2;
    record.MemoryType = MemoryTypeDdr4;
    record.Speed = 3200;
    record.Manufacturer = 3;
    record.SerialNumber = 4;
    record.PartNumber = 5;
    record.ConfiguredMemoryClockSpeed = 3200;
    return record;
  }

  void AddModule(const Record &record, const std::string &locator,
                 const std::string &bank = "BANK 0", size_t length = sizeof(Record)) {
    Table.Add(17, record, {locator, bank, "Example", "0123ABCD", "EX4-3200#16 "}, length);
  }

  /// What the module is told to be.
  EFI_STATUS ReadWith(const Record &record, size_t length = sizeof(Record)) {
    Table.Bytes.clear();
    AddModule(record, "DIMM A1", "BANK 0", length);
    return Read(ReadMemory, "DIMM A1");
  }

  std::string SizeWith(UINT16 size, UINT32 extended = 0) {
    Record record = Usual();
    record.Size = size;
    record.ExtendedSize = extended;
    EXPECT_EQ(ReadWith(record), EFI_SUCCESS);
    return Line("Size");
  }

  std::string SpeedWith(UINT16 possible, UINT16 configured) {
    Record record = Usual();
    record.Speed = possible;
    record.ConfiguredMemoryClockSpeed = configured;
    record.ExtendedSpeed = 70000;
    record.ExtendedConfiguredMemorySpeed = 66000;
    EXPECT_EQ(ReadWith(record), EFI_SUCCESS);
    return Line("Speed");
  }
};

TEST_F(HostMemory, TellsWhatTheModuleIs) {
  AddModule(Usual(), "DIMM A1");
  EXPECT_EQ(Read(ReadMemory, "DIMM A1"), EFI_SUCCESS);
  EXPECT_THAT(Lines(),
              ElementsAre("Size: 16 GB", "Type: DDR4", "Speed: 3200 MT/s", "Manufacturer: Example",
                          "Part number: EX4-3200##16", "Serial number: 0123ABCD", "Form: DIMM"));
}

TEST_F(HostMemory, EmptySlotIsAbsent) {
  Record record = Usual();
  record.Size = 0;
  EXPECT_EQ(ReadWith(record), EFI_NOT_FOUND);
}

TEST_F(HostMemory, UnknownLocatorIsAbsent) {
  EXPECT_EQ(ReadAgain(ReadMemory, "DIMM A1"), EFI_NOT_FOUND);
  AddModule(Usual(), "DIMM A1");
  EXPECT_EQ(Read(ReadMemory, "DIMM A2"), EFI_NOT_FOUND);
  EXPECT_EQ(Read(ReadMemory, ""), EFI_NOT_FOUND);
}

TEST_F(HostMemory, BankTellsNamesakesApart) {
  AddModule(Usual(), "DIMM 0", "P0 CHANNEL A");
  Record other = Usual();
  other.Size = 8 * 1024;
  AddModule(other, "DIMM 0", "P0 CHANNEL B");
  EXPECT_EQ(Read(ReadMemory, "DIMM 0", "P0 CHANNEL B"), EFI_SUCCESS);
  EXPECT_EQ(Line("Size"), "8 GB");
  EXPECT_EQ(Read(ReadMemory, "DIMM 0", "P0 CHANNEL A"), EFI_SUCCESS);
  EXPECT_EQ(Line("Size"), "16 GB");
  EXPECT_EQ(Read(ReadMemory, "DIMM 0"), EFI_SUCCESS);
  EXPECT_EQ(Line("Size"), "16 GB");
  EXPECT_EQ(Read(ReadMemory, "DIMM 0", "P0 CHANNEL C"), EFI_NOT_FOUND);
}

TEST_F(HostMemory, SizesHaveTheirUnits) {
  EXPECT_EQ(SizeWith(512), "512 MB");
  EXPECT_EQ(SizeWith(1536), "1536 MB");
  EXPECT_EQ(SizeWith(1024), "1 GB");
  EXPECT_EQ(SizeWith(0x8000 | 640), "640 KB");
  EXPECT_EQ(SizeWith(0x8000 | 2048), "2 MB");
  EXPECT_EQ(SizeWith(0x7FFE), "32766 MB");
}

TEST_F(HostMemory, LargeSizesStandInAFieldOfTheirOwn) {
  EXPECT_EQ(SizeWith(0x7FFF, 32 * 1024), "32 GB");
  EXPECT_EQ(SizeWith(0x7FFF, 0x80000000 | 128 * 1024), "128 GB");
  EXPECT_EQ(SizeWith(0x7FFF, 0x7FFFFFFF), "2147483647 MB");
  EXPECT_EQ(SizeWith(0x7FFF, 0), "-");
}

TEST_F(HostMemory, UnknownSizeIsNotTold) {
  EXPECT_EQ(SizeWith(0xFFFF), "-");
  EXPECT_EQ(Line("Type"), "DDR4");
}

TEST_F(HostMemory, SpeedIsTheConfiguredOneBesideThePossible) {
  EXPECT_EQ(SpeedWith(3200, 2666), "2666 MT/s (possible: 3200 MT/s)");
  EXPECT_EQ(SpeedWith(3200, 3600), "3600 MT/s");
  EXPECT_EQ(SpeedWith(3200, 0), "3200 MT/s");
  EXPECT_EQ(SpeedWith(0, 3200), "3200 MT/s");
  EXPECT_EQ(SpeedWith(0, 0), "-");
  EXPECT_EQ(SpeedWith(0xFFFF, 0xFFFF), "66000 MT/s (possible: 70000 MT/s)");
}

TEST_F(HostMemory, TypesAreNamed) {
  Record record = Usual();
  for (auto [type, name] : {std::pair{0x18, "DDR3"}, {0x22, "DDR5"}, {0x23, "LPDDR5"}}) {
    record.MemoryType = static_cast<UINT8>(type);
    ReadWith(record);
    EXPECT_EQ(Line("Type"), name);
  }
  record.MemoryType = MemoryTypeUnknown;
  ReadWith(record);
  EXPECT_EQ(Line("Type"), "-");
}

TEST_F(HostMemory, PlaceholdersAreNotTold) {
  Table.Add(17, Usual(), {"DIMM A1", "BANK 0", "Unknown", "default STRING", "Not Specified"});
  EXPECT_EQ(Read(ReadMemory, "DIMM A1"), EFI_SUCCESS);
  EXPECT_EQ(Line("Manufacturer") + Line("Serial number") + Line("Part number"), "---");
}

TEST_F(HostMemory, EveryLengthOfTheRecordIsRead) {
  for (size_t length = 4; length <= sizeof(Record); length++) {
    EFI_STATUS status = ReadWith(Usual(), length);
    bool named = length > OFFSET_OF(Record, DeviceLocator);
    EXPECT_EQ(status, named ? EFI_SUCCESS : EFI_NOT_FOUND) << length;
    EXPECT_EQ(Line("Part number"), length > OFFSET_OF(Record, PartNumber) ? "EX4-3200##16" : "-");
  }
}

class HostMemoryTotal : public HostMemory {
 protected:
  void AddSized(UINT16 size, UINT16 speed) {
    Record record = Usual();
    record.Size = size;
    record.ConfiguredMemoryClockSpeed = speed;
    AddModule(record, "DIMM");
  }
};

TEST_F(HostMemoryTotal, SumsUpAllModules) {
  AddSized(16 * 1024, 3200);
  AddSized(0, 0);
  AddSized(8 * 1024, 2933);
  AddSized(0, 0);
  EXPECT_EQ(Read(ReadMemoryTotal), EFI_SUCCESS);
  EXPECT_THAT(Lines(), ElementsAre("Total Memory: 24 GB", "Frequency: 2933 MT/s", "Type: DDR4",
                                   "Modules: 2 in 4 slots"));
}

TEST_F(HostMemoryTotal, NoModuleIsNoMemory) {
  EXPECT_EQ(ReadAgain(ReadMemoryTotal), EFI_NOT_FOUND);
  Table.End();
  EXPECT_EQ(Read(ReadMemoryTotal), EFI_NOT_FOUND);
  Table.Bytes.clear();
  AddSized(0, 3200);
  EXPECT_EQ(Read(ReadMemoryTotal), EFI_NOT_FOUND);
}

TEST_F(HostMemoryTotal, ModulesOfUnknownSizeAndSpeedAreCounted) {
  AddSized(0xFFFF, 3200);
  Record unknown = Usual();
  unknown.Size = 4096;
  unknown.Speed = 0;
  unknown.ConfiguredMemoryClockSpeed = 0;
  AddModule(unknown, "DIMM");
  EXPECT_EQ(Read(ReadMemoryTotal), EFI_SUCCESS);
  EXPECT_EQ(Line("Total Memory"), "4 GB");
  EXPECT_EQ(Line("Frequency"), "3200 MT/s");
  EXPECT_EQ(Line("Modules"), "2 in 2 slots");
}

TEST_F(HostMemoryTotal, SpeedThatNoModuleTellsIsLeftOut) {
  Record unknown = Usual();
  unknown.Speed = 0;
  unknown.ConfiguredMemoryClockSpeed = 0;
  unknown.MemoryType = MemoryTypeDram;
  AddModule(unknown, "DIMM");
  EXPECT_EQ(Read(ReadMemoryTotal), EFI_SUCCESS);
  EXPECT_EQ(Line("Total Memory"), "16 GB");
  EXPECT_EQ(Line("Frequency"), "-");
}

TEST_F(HostMemoryTotal, FlashOfTheFirmwareIsNoMemory) {
  AddSized(2048, 3200);
  Record flash = Usual();
  for (UINT8 type : {0x08, 0x09, 0x0C}) {
    flash.MemoryType = type;
    AddModule(flash, "System ROM");
  }
  EXPECT_EQ(Read(ReadMemoryTotal), EFI_SUCCESS);
  EXPECT_EQ(Line("Total Memory"), "2 GB");
  EXPECT_EQ(Line("Modules"), "1 in 1 slots");
}

TEST_F(HostMemoryTotal, LargestSizesDoNotOverflow) {
  Record record = Usual();
  record.Size = 0x7FFF;
  record.ExtendedSize = 0x7FFFFFFF;
  for (int i = 0; i < 64; i++) {
    AddModule(record, "DIMM");
  }
  EXPECT_EQ(Read(ReadMemoryTotal), EFI_SUCCESS);
  EXPECT_EQ(Line("Total Memory"), "137438953408 MB");
}

}  // namespace
}  // namespace obv_host
