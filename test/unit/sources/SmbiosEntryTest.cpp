// The entry points that lead to the SMBIOS table.

#include "test/unit/sources/SmbiosTableStage.h"

namespace obv_host {
namespace {

class HostSmbiosEntry : public SmbiosTableStage {};

TEST_F(HostSmbiosEntry, ThereIsNoTableWithoutAnEntryPoint) { EXPECT_EQ(Search(), EFI_NOT_FOUND); }

TEST_F(HostSmbiosEntry, TableOfEitherVersionIsFound) {
  AddNamed(1, "one");
  InstallOld();
  SmbiosTable table;
  ASSERT_EQ(FindSmbios(&table), EFI_SUCCESS);
  EXPECT_EQ(reinterpret_cast<UINTN>(table.Data), Table.Entry2.TableAddress);
  EXPECT_EQ(table.Size, Table.Bytes.size());
  Table.Install(Machine);
  ASSERT_EQ(FindSmbios(&table), EFI_SUCCESS);
  EXPECT_EQ(reinterpret_cast<UINTN>(table.Data), Table.Entry3.TableAddress);
}

TEST_F(HostSmbiosEntry, EntryPointOfVersion2MayBeStatedOneByteTooShort) {
  AddNamed(1, "one");
  InstallOld();
  Table.Entry2.EntryPointLength = 0x1E;
  Table.Publish2(Machine);
  EXPECT_EQ(Search(), EFI_SUCCESS);
}

TEST_F(HostSmbiosEntry, BrokenEntryPointOfVersion3FallsBackToVersion2) {
  AddNamed(1, "one");
  Table.Install(Machine);
  InstallOld();
  Table.Entry3.EntryPointStructureChecksum++;
  Table.PublishAsIs3(Machine);
  SmbiosTable table;
  ASSERT_EQ(FindSmbios(&table), EFI_SUCCESS);
  EXPECT_EQ(reinterpret_cast<UINTN>(table.Data), Table.Entry2.TableAddress);
}

TEST_F(HostSmbiosEntry, EveryFlippedBitOfAnEntryPointIsNoticed) {
  AddNamed(1, "one");
  Table.Install(Machine);
  const SMBIOS_TABLE_3_0_ENTRY_POINT sound = Table.Entry3;
  for (size_t bit = 0; bit < sizeof(sound) * 8; bit++) {
    Table.Entry3 = sound;
    reinterpret_cast<UINT8 *>(&Table.Entry3)[bit / 8] ^= static_cast<UINT8>(1 << bit % 8);
    // A length beyond the block would have the checksum read what is not there.
    if (Table.Entry3.EntryPointLength <= sizeof(sound) || Table.Entry3.EntryPointLength > 64) {
      Table.PublishAsIs3(Machine);
      EXPECT_EQ(Search(), EFI_NOT_FOUND) << bit;
    }
  }
}

TEST_F(HostSmbiosEntry, EveryFlippedBitOfAnOldEntryPointIsNoticed) {
  AddNamed(1, "one");
  InstallOld();
  const SMBIOS_TABLE_ENTRY_POINT sound = Table.Entry2;
  for (size_t bit = 0; bit < sizeof(sound) * 8; bit++) {
    Table.Entry2 = sound;
    reinterpret_cast<UINT8 *>(&Table.Entry2)[bit / 8] ^= static_cast<UINT8>(1 << bit % 8);
    if (Table.Entry2.EntryPointLength <= sizeof(sound) || Table.Entry2.EntryPointLength > 64) {
      Table.PublishAsIs2(Machine);
      EXPECT_EQ(Search(), EFI_NOT_FOUND) << bit;
    }
  }
}

TEST_F(HostSmbiosEntry, AnchorsAreComparedWhateverTheChecksums) {
  AddNamed(1, "one");
  Table.Install(Machine);
  Table.Entry3.AnchorString[4] = '-';
  Table.Publish3(Machine);
  EXPECT_EQ(Search(), EFI_NOT_FOUND);
  InstallOld();
  Table.Entry2.AnchorString[3] = '-';
  Table.Publish2(Machine);
  EXPECT_EQ(Search(), EFI_NOT_FOUND);
  InstallOld();
  Table.Entry2.IntermediateAnchorString[0] = '-';
  Table.Publish2(Machine);
  EXPECT_EQ(Search(), EFI_NOT_FOUND);
}

TEST_F(HostSmbiosEntry, EntryPointsOfWrongLengthsAreRefused) {
  AddNamed(1, "one");
  Table.Install(Machine);
  for (UINT8 length : {0, 1, 23, 65, 255}) {
    Table.Entry3.EntryPointLength = length;
    Table.Publish3(Machine);
    EXPECT_EQ(Search(), EFI_NOT_FOUND) << int(length);
  }
  InstallOld();
  for (UINT8 length : {0, 1, 0x1D, 65, 255}) {
    Table.Entry2.EntryPointLength = length;
    Table.Publish2(Machine);
    EXPECT_EQ(Search(), EFI_NOT_FOUND) << int(length);
  }
}

TEST_F(HostSmbiosEntry, TablesThatLieNowhereAreRefused) {
  AddNamed(1, "one");
  Table.Install(Machine);
  Table.Entry3.TableMaximumSize = 0;
  Table.Publish3(Machine);
  EXPECT_EQ(Search(), EFI_NOT_FOUND);
  Table.Install(Machine);
  Table.Entry3.TableAddress = 0;
  Table.Publish3(Machine);
  EXPECT_EQ(Search(), EFI_NOT_FOUND);
  Table.Install(Machine);
  Table.Entry3.TableAddress = MAX_UINT64 - 3;
  Table.Publish3(Machine);
  EXPECT_EQ(Search(), EFI_NOT_FOUND);
}

TEST_F(HostSmbiosEntry, SizeWithoutReasonIsLimited) {
  AddNamed(1, "one");
  Table.End();
  Table.Install(Machine);
  Table.Entry3.TableMaximumSize = MAX_UINT32;
  Table.Publish3(Machine);
  SmbiosTable table;
  ASSERT_EQ(FindSmbios(&table), EFI_SUCCESS);
  EXPECT_EQ(table.Size, 1024U * 1024U);
}

}  // namespace
}  // namespace obv_host
