#include "test/unit/sources/SmbiosStage.h"

namespace obv_host {
namespace {

using testing::ElementsAre;

using Record = SMBIOS_TABLE_TYPE4;

constexpr UINT8 kPopulated = 0x40;
constexpr UINT8 kEnabled = 1;
constexpr size_t kLengthOf25 = OFFSET_OF(Record, ProcessorFamily2);

class HostProcessor : public SmbiosStage {
 protected:
  /// As firmware writes it for the usual processor of HostCpuid.h, but with two cores more.
  static Record Usual() {
    Record record = {};
    record.Socket = 1;
    record.ProcessorFamily = 0xC6;
    record.ProcessorVersion = 2;
    record.MaxSpeed = 4700;
    record.CurrentSpeed = 3800;
    record.Status = kPopulated | kEnabled;
    record.CoreCount = 6;
    record.EnabledCoreCount = 6;
    record.ThreadCount = 12;
    return record;
  }

  void AddProcessor(const Record &record, const std::string &socket,
                    size_t length = sizeof(Record)) {
    Table.Add(4, record, {socket, "Version by the firmware"}, length);
  }

  EFI_STATUS ReadWith(const Record &record, size_t length = sizeof(Record)) {
    Table.Bytes.clear();
    AddProcessor(record, "AM4", length);
    return Read(ReadProcessor, "AM4");
  }
};

TEST_F(HostProcessor, TellsWhatFirmwareAndProcessorSay) {
  AddProcessor(Usual(), "AM4");
  EXPECT_EQ(Read(ReadProcessor, "AM4"), EFI_SUCCESS);
  EXPECT_THAT(Lines(), ElementsAre("Brand: Example(R) Processor 9000 @ 3.60GHz", "Speed: 3800 MHz",
                                   "Cores: 6", "Threads: 12", "Family: Core i7", "Socket: AM4"));
}

TEST_F(HostProcessor, BootProcessorNeedsNoTable) {
  EXPECT_EQ(ReadAgain(ReadProcessor), EFI_SUCCESS);
  EXPECT_THAT(Lines(), ElementsAre("Brand: Example(R) Processor 9000 @ 3.60GHz", "Speed: 3600 MHz",
                                   "Cores: 4", "Threads: 8", "Family: 6, model 158, stepping 10"));
}

TEST_F(HostProcessor, BootProcessorIsInTheFirstSocketInUse) {
  Record empty = Usual();
  empty.Status = 0;
  AddProcessor(empty, "CPU0");
  Record disabled = Usual();
  disabled.Status = kPopulated | 3;
  AddProcessor(disabled, "CPU1");
  AddProcessor(Usual(), "CPU2");
  AddProcessor(Usual(), "CPU3");
  EXPECT_EQ(Read(ReadProcessor), EFI_SUCCESS);
  EXPECT_EQ(Line("Socket"), "CPU2");
}

TEST_F(HostProcessor, SocketThatNobodyKnowsIsAbsent) {
  EXPECT_EQ(ReadAgain(ReadProcessor, "AM4"), EFI_NOT_FOUND);
  AddProcessor(Usual(), "AM4");
  EXPECT_EQ(Read(ReadProcessor, "AM5"), EFI_NOT_FOUND);
}

TEST_F(HostProcessor, EmptySocketIsAbsent) {
  Record record = Usual();
  record.Status = kEnabled;
  EXPECT_EQ(ReadWith(record), EFI_NOT_FOUND);
}

TEST_F(HostProcessor, DisabledProcessorFailsAndSaysWhy) {
  Record record = Usual();
  record.Status = kPopulated | 2;
  EXPECT_EQ(ReadWith(record), EFI_DEVICE_ERROR);
  EXPECT_THAT(Lines(), ElementsAre("Health: Disabled in the setup"));
  record.Status = kPopulated | 3;
  EXPECT_EQ(ReadWith(record), EFI_DEVICE_ERROR);
  EXPECT_THAT(Lines(), ElementsAre("Health: Failing: disabled by its self-test"));
}

TEST_F(HostProcessor, OtherStatusesAreWell) {
  Record record = Usual();
  for (UINT8 status : {0, 1, 4, 7}) {
    record.Status = kPopulated | status;
    EXPECT_EQ(ReadWith(record), EFI_SUCCESS) << int(status);
  }
}

TEST_F(HostProcessor, SpeedIsTheCurrentElseTheHighestElseTheProcessors) {
  Record record = Usual();
  record.CurrentSpeed = 0;
  ReadWith(record);
  EXPECT_EQ(Line("Speed"), "4700 MHz");
  record.MaxSpeed = 0;
  ReadWith(record);
  EXPECT_EQ(Line("Speed"), "3600 MHz");
  gProcessor.Leaf(0).Eax = 0x15;
  ReadWith(record);
  EXPECT_EQ(Line("Speed"), "-");
}

TEST_F(HostProcessor, LargeCountsStandInFieldsOfTheirOwn) {
  Record record = Usual();
  record.CoreCount = 0xFF;
  record.EnabledCoreCount = 0xFF;
  record.ThreadCount = 0xFF;
  record.CoreCount2 = 320;
  record.EnabledCoreCount2 = 300;
  record.ThreadCount2 = 640;
  ReadWith(record);
  EXPECT_EQ(Line("Cores"), "320 (enabled: 300)");
  EXPECT_EQ(Line("Threads"), "640");
}

TEST_F(HostProcessor, LargestCountOfAnOldTableIsACount) {
  Record record = Usual();
  record.CoreCount = 0xFF;
  record.EnabledCoreCount = 0xFF;
  record.ThreadCount = 0xFF;
  EXPECT_EQ(ReadWith(record, kLengthOf25), EFI_SUCCESS);
  EXPECT_EQ(Line("Cores"), "255");
  EXPECT_EQ(Line("Threads"), "255");
}

TEST_F(HostProcessor, CountsThatTheFirmwareDoesNotKnowAreTheProcessors) {
  Record record = Usual();
  record.CoreCount = 0;
  record.EnabledCoreCount = 0;
  record.ThreadCount = 0;
  ReadWith(record);
  EXPECT_EQ(Line("Cores"), "4");
  EXPECT_EQ(Line("Threads"), "8");
}

TEST_F(HostProcessor, CountsOfAShortRecordAreTheProcessors) {
  EXPECT_EQ(ReadWith(Usual(), OFFSET_OF(Record, CoreCount)), EFI_SUCCESS);
  EXPECT_EQ(Line("Cores"), "4");
  EXPECT_EQ(Line("Threads"), "8");
}

TEST_F(HostProcessor, WithoutTopologyThreadsAreCountedAlone) {
  gProcessor.Leaves.erase({0xB, 0});
  EXPECT_EQ(ReadAgain(ReadProcessor), EFI_SUCCESS);
  EXPECT_EQ(Line("Cores"), "-");
  EXPECT_EQ(Line("Threads"), "16");
  gProcessor.Leaf(1).Edx = 0;
  ReadAgain(ReadProcessor);
  EXPECT_EQ(Line("Threads"), "1");
}

TEST_F(HostProcessor, TopologyWithoutEndIsLeft) {
  for (uint32_t level = 2; level < 300; level++) {
    gProcessor.Leaf(0xB, level) = {.Ebx = 100 + level, .Ecx = 0x500 | level};
  }
  EXPECT_EQ(ReadAgain(ReadProcessor), EFI_SUCCESS);
  EXPECT_EQ(Line("Threads"), "107");
}

TEST_F(HostProcessor, TopologyOfMoreThreadsInACoreThanInAll) {
  gProcessor.Leaf(0xB, 0).Ebx = 16;
  EXPECT_EQ(ReadAgain(ReadProcessor), EFI_SUCCESS);
  EXPECT_EQ(Line("Cores"), "-");
}

TEST_F(HostProcessor, ProcessorWithoutLeavesTellsNothing) {
  gProcessor.Leaves.clear();
  EXPECT_EQ(ReadAgain(ReadProcessor), EFI_SUCCESS);
  EXPECT_THAT(Lines(), ElementsAre());
}

TEST_F(HostProcessor, FamilyIsWhatTheProcessorSaysUnlessTheFirmwareNamesIt) {
  Record record = Usual();
  record.ProcessorFamily = 0x01;
  ReadWith(record);
  EXPECT_EQ(Line("Family"), "6, model 158, stepping 10");
  record.ProcessorFamily = 0xFE;
  ReadWith(record);
  EXPECT_EQ(Line("Family"), "6, model 158, stepping 10");
  gProcessor.Leaf(1).Eax = 0x00A20F12;
  ReadWith(record);
  EXPECT_EQ(Line("Family"), "25, model 33, stepping 2");
  gProcessor.Leaf(1).Eax = 0x00000543;
  ReadWith(record);
  EXPECT_EQ(Line("Family"), "5, model 4, stepping 3");
}

TEST_F(HostProcessor, BrandIsTheFirmwaresWhereTheProcessorTellsNone) {
  gProcessor.Leaf(0x80000000).Eax = 0x80000003;
  ReadWith(Usual());
  EXPECT_EQ(Line("Brand"), "Version by the firmware");
  gProcessor.Leaf(0x80000000).Eax = 0xFFFFFFFF;  // No number of a leaf.
  ReadWith(Usual());
  EXPECT_EQ(Line("Brand"), "Version by the firmware");
  gProcessor.SetBrand("     ");
  ReadWith(Usual());
  EXPECT_EQ(Line("Brand"), "Version by the firmware");
}

TEST_F(HostProcessor, LongestBrandIsToldWhole) {
  gProcessor.SetBrand(std::string(48, 'x'));
  ReadAgain(ReadProcessor);
  EXPECT_EQ(Line("Brand"), std::string(48, 'x'));
}

TEST_F(HostProcessor, PlaceholderIsNoSocketsName) {
  Table.Add(4, Usual(), {"To Be Filled By O.E.M.", "None"});
  EXPECT_EQ(Read(ReadProcessor), EFI_SUCCESS);
  EXPECT_EQ(Line("Socket"), "-");
}

TEST_F(HostProcessor, EveryLengthOfTheRecordIsRead) {
  for (size_t length = 4; length <= sizeof(Record); length++) {
    EFI_STATUS status = ReadWith(Usual(), length);
    EXPECT_EQ(status, length > OFFSET_OF(Record, Socket) ? EFI_SUCCESS : EFI_NOT_FOUND) << length;
  }
}

TEST_F(HostProcessor, BrandIsSearchedLetterForLetter) {
  EXPECT_TRUE(BrandContains("Processor 9000"));
  EXPECT_TRUE(BrandContains("Example(R) Processor 9000 @ 3.60GHz"));
  EXPECT_FALSE(BrandContains("processor"));
  EXPECT_FALSE(BrandContains("Processor  "));
  EXPECT_FALSE(BrandContains("9001"));
  gProcessor.Leaf(0x80000000).Eax = 0;
  EXPECT_FALSE(BrandContains("Processor"));
}

}  // namespace
}  // namespace obv_host
