#include "host/sources/Smbios.h"

namespace obv_host {
namespace {

/// Entry points of later versions may be longer; none is as long as this.
constexpr UINTN kEntryPointLimit = 64;
/// SMBIOS 2.1 gave the length of its entry point one byte too small.
constexpr UINTN kShortestEntryPoint2 = sizeof(SMBIOS_TABLE_ENTRY_POINT) - 1;
constexpr UINTN kIntermediateOffset = OFFSET_OF(SMBIOS_TABLE_ENTRY_POINT, IntermediateAnchorString);
constexpr UINTN kIntermediateSize = 15;
/// SMBIOS 3 states an upper limit alone; no real table comes near this one.
constexpr UINTN kTableLimit = 1024 * 1024;

bool HasAnchor(const void *at, const CHAR8 *anchor, UINTN size) {
  return CompareMem(at, anchor, size) == 0;
}

bool SumsToZero(const void *data, UINTN size) {
  return CalculateSum8(static_cast<const UINT8 *>(data), size) == 0;
}

EFI_STATUS UseTable(UINT64 address, UINTN size, SmbiosTable *table) {
  UINTN used = size > kTableLimit ? kTableLimit : size;
  if (address == 0 || used == 0 || address > MAX_UINTN - used) {
    return EFI_NOT_FOUND;
  }
  table->Data = reinterpret_cast<const UINT8 *>(static_cast<UINTN>(address));
  table->Size = used;
  return EFI_SUCCESS;
}

EFI_STATUS ReadEntryPoint3(const void *at, SmbiosTable *table) {
  SMBIOS_TABLE_3_0_ENTRY_POINT entry;
  if (!HasAnchor(at, "_SM3_", sizeof(entry.AnchorString))) {
    return EFI_NOT_FOUND;
  }
  CopyMem(&entry, at, sizeof(entry));
  if (entry.EntryPointLength < sizeof(entry) || entry.EntryPointLength > kEntryPointLimit ||
      !SumsToZero(at, entry.EntryPointLength)) {
    return EFI_NOT_FOUND;
  }
  return UseTable(entry.TableAddress, entry.TableMaximumSize, table);
}

EFI_STATUS ReadEntryPoint2(const void *at, SmbiosTable *table) {
  SMBIOS_TABLE_ENTRY_POINT entry;
  if (!HasAnchor(at, "_SM_", sizeof(entry.AnchorString))) {
    return EFI_NOT_FOUND;
  }
  CopyMem(&entry, at, sizeof(entry));
  if (entry.EntryPointLength < kShortestEntryPoint2 || entry.EntryPointLength > kEntryPointLimit ||
      !SumsToZero(at, entry.EntryPointLength)) {
    return EFI_NOT_FOUND;
  }
  if (!HasAnchor(entry.IntermediateAnchorString, "_DMI_", sizeof(entry.IntermediateAnchorString)) ||
      !SumsToZero(static_cast<const UINT8 *>(at) + kIntermediateOffset, kIntermediateSize)) {
    return EFI_NOT_FOUND;
  }
  return UseTable(entry.TableAddress, entry.TableLength, table);
}

const void *ConfigurationTable(const EFI_GUID &guid) {
  for (UINTN i = 0; i < gST->NumberOfTableEntries; ++i) {
    if (CompareGuid(&gST->ConfigurationTable[i].VendorGuid, &guid)) {
      return gST->ConfigurationTable[i].VendorTable;
    }
  }
  return nullptr;
}

/// The last NUL of the strings that begin at start: the first of two in a row, or
/// what stands in for it where there are no strings. NULL when the table ends before.
const UINT8 *EndOfStrings(const UINT8 *start, const UINT8 *tableEnd) {
  for (const UINT8 *at = start; tableEnd - at >= 2; ++at) {
    if (at[0] == 0 && at[1] == 0) {
      return at + 1;
    }
  }
  return nullptr;
}

bool IsBlank(UINT8 character) { return character == ' ' || character == '\t'; }

/// What is left of length bytes at *text without blanks at either end.
UINTN Trim(const UINT8 **text, UINTN length) {
  while (length > 0 && IsBlank((*text)[length - 1])) {
    --length;
  }
  while (length > 0 && IsBlank(**text)) {
    ++*text;
    --length;
  }
  return length;
}

UINTN LengthOf(const UINT8 *text, const UINT8 *end) {
  UINTN length = 0;
  while (text + length < end && text[length] != 0) {
    ++length;
  }
  return length;
}

}  // namespace

EFI_STATUS FindSmbios(SmbiosTable *table) {
  ZeroMem(table, sizeof(*table));
  const void *entry = ConfigurationTable(gEfiSmbios3TableGuid);
  if (entry != nullptr && !EFI_ERROR(ReadEntryPoint3(entry, table))) {
    return EFI_SUCCESS;
  }
  entry = ConfigurationTable(gEfiSmbiosTableGuid);
  return entry == nullptr ? EFI_NOT_FOUND : ReadEntryPoint2(entry, table);
}

bool NextStructure(const SmbiosTable &table, SmbiosStructure *structure) {
  const UINT8 *start = structure->Data == nullptr ? table.Data : structure->End + 1;
  const UINT8 *tableEnd = table.Data + table.Size;
  ZeroMem(structure, sizeof(*structure));
  if (static_cast<UINTN>(tableEnd - start) < sizeof(SMBIOS_STRUCTURE)) {
    return false;
  }
  UINT8 type = start[OFFSET_OF(SMBIOS_STRUCTURE, Type)];
  UINT8 length = start[OFFSET_OF(SMBIOS_STRUCTURE, Length)];
  if (type == SMBIOS_TYPE_END_OF_TABLE || length < sizeof(SMBIOS_STRUCTURE) ||
      length > tableEnd - start) {
    return false;
  }
  const UINT8 *end = EndOfStrings(start + length, tableEnd);
  if (end == nullptr) {
    return false;
  }
  structure->Type = type;
  structure->Length = length;
  structure->Data = start;
  structure->End = end;
  return true;
}

bool NextOfType(const SmbiosTable &table, UINT8 type, SmbiosStructure *structure) {
  while (NextStructure(table, structure)) {
    if (structure->Type == type) {
      return true;
    }
  }
  return false;
}

bool FindStructure(const SmbiosTable &table, UINT8 type, UINTN nameField, const CHAR8 *name,
                   SmbiosStructure *structure) {
  ZeroMem(structure, sizeof(*structure));
  while (name[0] != '\0' && NextOfType(table, type, structure)) {
    CHAR8 text[kSmbiosTextSize];
    SmbiosTextField(*structure, nameField, text);
    if (AsciiStrCmp(text, name) == 0) {
      return true;
    }
  }
  return false;
}

void SmbiosText(const SmbiosStructure &structure, UINT8 number, CHAR8 *buffer, UINTN size) {
  buffer[0] = '\0';
  if (number == 0 || structure.Data == nullptr) {
    return;
  }
  const UINT8 *text = structure.Data + structure.Length;
  for (UINT8 passed = 1; passed < number && text < structure.End; ++passed) {
    text += LengthOf(text, structure.End) + 1;
  }
  // At the end, nothing is left to measure.
  UINTN length = Trim(&text, LengthOf(text, structure.End));
  UINTN kept = length < size ? length : size - 1;
  for (UINTN i = 0; i < kept; ++i) {
    bool drawn = text[i] >= 0x20 && text[i] <= 0x7E;
    buffer[i] = drawn ? static_cast<CHAR8>(text[i]) : '?';
  }
  buffer[kept] = '\0';
}

}  // namespace obv_host
