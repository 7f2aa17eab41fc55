/** @file
  The SMBIOS table as the sources find it and walk over it.
**/

#pragma once

#include "test/unit/sources/SmbiosStage.h"

namespace obv_host {

inline constexpr UINT8 kOemType = 0x80;

/// A structure of nothing but its header and the number of a string.
struct Named {
  SMBIOS_STRUCTURE Hdr;
  UINT8 Name;
};

class SmbiosTableStage : public SmbiosStage {
 protected:
  /// Adds a structure of this type named name.
  void AddNamed(UINT8 type, const std::string &name) {
    Table.Add(type, Named{{}, 1}, {name}, kNamedLength);
  }

  /// The table as it is found, once published.
  SmbiosTable Find() {
    Table.Install(Machine);
    SmbiosTable table;
    EXPECT_EQ(FindSmbios(&table), EFI_SUCCESS);
    return table;
  }

  /// The types of all structures that a walk meets.
  std::vector<int> Walk() {
    SmbiosTable table = Find();
    SmbiosStructure structure = {};
    std::vector<int> types;
    while (NextStructure(table, &structure)) {
      types.push_back(structure.Type);
    }
    EXPECT_EQ(structure.Data, nullptr);
    return types;
  }

  std::string TextOf(UINT8 number, UINTN size = kSmbiosTextSize) {
    SmbiosTable table = Find();
    SmbiosStructure structure = {};
    EXPECT_TRUE(NextStructure(table, &structure));
    std::vector<CHAR8> buffer(size, 'X');
    SmbiosText(structure, number, buffer.data(), buffer.size());
    return buffer.data();
  }

  EFI_STATUS Search() {
    SmbiosTable table;
    EFI_STATUS status = FindSmbios(&table);
    EXPECT_EQ(table.Size == 0, status == EFI_NOT_FOUND);
    return status;
  }

  static constexpr size_t kNamedLength = 5;
};

}  // namespace obv_host
