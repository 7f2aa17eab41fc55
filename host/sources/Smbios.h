/** @file
  The SMBIOS tables, read as if nobody vouched for them: nothing is taken from
  beyond the table, whatever its lengths and string numbers say.
**/

#pragma once

#include "host/sources/SourceFirmware.h"

namespace obv_host {

/// Room for a text of the tables with its terminator; longer ones are cut.
inline constexpr UINTN kSmbiosTextSize = 128;

/// Where the structures lie. No table: Size is 0.
struct SmbiosTable {
  const UINT8 *Data;
  UINTN Size;
};

/// One structure, inside its table with all its strings. All zero: none.
struct SmbiosStructure {
  UINT8 Type;
  UINT8 Length;       ///< Of the formatted area, 4 at least.
  const UINT8 *Data;  ///< The formatted area, without alignment.
  /// Behind it the strings, one NUL behind each; after the last, one more at End.
  const UINT8 *End;
};

/// Finds the tables by the firmware's configuration tables: of SMBIOS 3, else of
/// SMBIOS 2. EFI_NOT_FOUND: there is none whose entry point is sound.
[[nodiscard]] EFI_STATUS FindSmbios(SmbiosTable *table);

/// Goes on to the structure behind *structure, or to the first when that is all
/// zero. False at the end-of-table structure, at the table's end and at a
/// structure that would reach beyond it; *structure is then all zero.
bool NextStructure(const SmbiosTable &table, SmbiosStructure *structure);

/// Goes on to the next structure of this type, as NextStructure does.
bool NextOfType(const SmbiosTable &table, UINT8 type, SmbiosStructure *structure);

/// Finds the first structure of this type whose string field at offset nameField
/// holds name, apart from blanks at its ends. An empty name finds nothing.
bool FindStructure(const SmbiosTable &table, UINT8 type, UINTN nameField, const CHAR8 *name,
                   SmbiosStructure *structure);

/// The string with this number, without blanks at either end, with '?' for every
/// character that is not printable ASCII, in a buffer of size bytes (1 at least).
/// Empty for number 0 and for strings that are not there.
void SmbiosText(const SmbiosStructure &structure, UINT8 number, CHAR8 *buffer, UINTN size);

/// Whether the formatted area has size bytes at offset.
inline bool HasField(const SmbiosStructure &structure, UINTN offset, UINTN size) {
  return offset + size <= structure.Length;
}

/// The field at offset; absent when the structure is too short to have it.
template <typename Value>
Value SmbiosField(const SmbiosStructure &structure, UINTN offset, Value absent) {
  if (HasField(structure, offset, sizeof(Value))) {
    CopyMem(&absent, structure.Data + offset, sizeof(absent));
  }
  return absent;
}

/// The string whose number stands in the field at offset.
inline void SmbiosTextField(const SmbiosStructure &structure, UINTN offset,
                            CHAR8 (&text)[kSmbiosTextSize]) {
  SmbiosText(structure, SmbiosField<UINT8>(structure, offset, 0), text, sizeof(text));
}

}  // namespace obv_host
