#include "test/unit/sources/SmbiosTableStage.h"

namespace obv_host {
namespace {

using testing::ElementsAre;

class HostSmbios : public SmbiosTableStage {};

TEST_F(HostSmbios, WalkMeetsEveryStructureOnce) {
  AddNamed(1, "one");
  Table.Add(2, Named{{}, 0}, {}, kNamedLength);
  Table.AddRaw({kOemType, 4, 0, 0}, {"text"});
  Table.AddRaw({126, 6, 0, 0, 1, 2}, {"a", "b", "c"});
  EXPECT_THAT(Walk(), ElementsAre(1, 2, kOemType, 126));
}

TEST_F(HostSmbios, WalkStopsAtTheEndOfTable) {
  AddNamed(1, "one");
  Table.End();
  AddNamed(2, "hidden");
  EXPECT_THAT(Walk(), ElementsAre(1));
}

TEST_F(HostSmbios, StructureShorterThanItsHeaderEndsTheWalk) {
  for (UINT8 length = 0; length < 4; length++) {
    Table.Bytes.clear();
    AddNamed(1, "one");
    size_t broken = Table.Bytes.size();
    AddNamed(2, "two");
    AddNamed(3, "three");
    Table.Bytes[broken + 1] = length;
    EXPECT_THAT(Walk(), ElementsAre(1)) << int(length);
  }
}

TEST_F(HostSmbios, StructureBeyondTheTableEndsTheWalk) {
  AddNamed(1, "one");
  size_t broken = Table.Bytes.size();
  AddNamed(2, "two");
  for (UINT8 length : {10, 11, 12, 100, 255}) {
    Table.Bytes[broken + 1] = length;
    EXPECT_THAT(Walk(), ElementsAre(1)) << int(length);
  }
}

TEST_F(HostSmbios, EveryCutTableIsWalkedWithoutReadingBeyond) {
  AddNamed(1, "one");
  AddNamed(2, "two");
  const std::vector<UINT8> whole = Table.Bytes;
  for (size_t size = 1; size < whole.size(); size++) {
    Table.Bytes.assign(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(size));
    EXPECT_THAT(Walk(), size < whole.size() / 2 ? std::vector<int>() : std::vector<int>{1}) << size;
  }
}

TEST_F(HostSmbios, CutOldTableIsWalkedWithoutReadingBeyond) {
  AddNamed(1, "one");
  AddNamed(2, "two");
  Table.Bytes.pop_back();
  InstallOld();
  SmbiosTable table;
  ASSERT_EQ(FindSmbios(&table), EFI_SUCCESS);
  SmbiosStructure structure = {};
  EXPECT_TRUE(NextStructure(table, &structure));
  EXPECT_FALSE(NextStructure(table, &structure));
}

TEST_F(HostSmbios, TextsAreFoundByTheirNumbers) {
  Table.Add(1, Named{}, {"first", "second", "third"}, kNamedLength);
  EXPECT_EQ(TextOf(1), "first");
  EXPECT_EQ(TextOf(2), "second");
  EXPECT_EQ(TextOf(3), "third");
}

TEST_F(HostSmbios, TextsThatAreNotThereAreEmpty) {
  Table.Add(1, Named{}, {"first", "second"}, kNamedLength);
  AddNamed(2, "another structure's");
  EXPECT_EQ(TextOf(0), "");
  EXPECT_EQ(TextOf(3), "");
  EXPECT_EQ(TextOf(4), "");
  EXPECT_EQ(TextOf(255), "");
}

TEST_F(HostSmbios, StructureWithoutStringsHasNoText) {
  Table.Add(1, Named{}, {}, kNamedLength);
  AddNamed(2, "another structure's");
  EXPECT_EQ(TextOf(1), "");
  EXPECT_EQ(TextOf(2), "");
}

TEST_F(HostSmbios, NoStructureHasNoText) {
  CHAR8 text[kSmbiosTextSize] = "before";
  SmbiosText(SmbiosStructure{}, 1, text, sizeof(text));
  EXPECT_STREQ(text, "");
}

TEST_F(HostSmbios, TextsAreTrimmedAndPrintable) {
  Table.Add(1, Named{}, {"  two words \t ", "a\x01\x7F\xE9z", "   "}, kNamedLength);
  EXPECT_EQ(TextOf(1), "two words");
  EXPECT_EQ(TextOf(2), "a???z");
  EXPECT_EQ(TextOf(3), "");
}

TEST_F(HostSmbios, LongTextsAreCut) {
  Table.Add(1, Named{}, {std::string(300, 'x')}, kNamedLength);
  EXPECT_EQ(TextOf(1), std::string(127, 'x'));
  EXPECT_EQ(TextOf(1, 5), "xxxx");
  EXPECT_EQ(TextOf(1, 1), "");
}

TEST_F(HostSmbios, FieldBeyondTheStructureIsAbsent) {
  Table.AddRaw({1, 7, 0, 0, 0x34, 0x12, 0x56}, {"text"});
  SmbiosTable table = Find();
  SmbiosStructure structure = {};
  ASSERT_TRUE(NextStructure(table, &structure));
  EXPECT_EQ(SmbiosField<UINT16>(structure, 4, 0xAAAA), 0x1234);
  EXPECT_EQ(SmbiosField<UINT16>(structure, 5, 0xAAAA), 0x5612);
  EXPECT_EQ(SmbiosField<UINT16>(structure, 6, 0xAAAA), 0xAAAA);
  EXPECT_EQ(SmbiosField<UINT8>(structure, 6, 0xAA), 0x56);
  EXPECT_EQ(SmbiosField<UINT8>(structure, 7, 0xAA), 0xAA);
}

TEST_F(HostSmbios, StructureIsFoundByTypeAndName) {
  AddNamed(1, "name");
  AddNamed(2, "other");
  AddNamed(2, " name ");
  SmbiosTable table = Find();
  SmbiosStructure structure;
  EXPECT_TRUE(FindStructure(table, 2, 4, "name", &structure));
  EXPECT_EQ(structure.Type, 2);
  EXPECT_EQ(structure.Data - table.Data, 11 + 12);
  EXPECT_FALSE(FindStructure(table, 3, 4, "name", &structure));
  EXPECT_FALSE(FindStructure(table, 2, 4, "Name", &structure));
  EXPECT_FALSE(FindStructure(table, 2, 4, "nam", &structure));
  EXPECT_FALSE(FindStructure(table, 2, 5, "name", &structure));
}

TEST_F(HostSmbios, EmptyNameFindsNothing) {
  Table.Add(2, Named{{}, 0}, {}, kNamedLength);
  SmbiosTable table = Find();
  SmbiosStructure structure;
  EXPECT_FALSE(FindStructure(table, 2, 4, "", &structure));
}

}  // namespace
}  // namespace obv_host
