#include "host/sources/SmbiosFacts.h"
#include "host/sources/Source.h"

namespace obv_host {
namespace {

using Record = SMBIOS_TABLE_TYPE17;

constexpr UINT16 kUnknownSize = 0xFFFF;
constexpr UINT16 kSizeIsExtended = 0x7FFF;
constexpr UINT16 kSizeInKilobytes = 0x8000;
constexpr UINT16 kSpeedIsExtended = 0xFFFF;
constexpr UINT32 kExtendedMask = 0x7FFFFFFF;

constexpr SmbiosWord kTypes[] = {
    {0x03, "DRAM"},   {0x0F, "SDRAM"},  {0x11, "RDRAM"},  {0x12, "DDR"},  {0x13, "DDR2"},
    {0x14, "DDR2"},   {0x18, "DDR3"},   {0x19, "FBD2"},   {0x1A, "DDR4"}, {0x1B, "LPDDR"},
    {0x1C, "LPDDR2"}, {0x1D, "LPDDR3"}, {0x1E, "LPDDR4"}, {0x20, "HBM"},  {0x21, "HBM2"},
    {0x22, "DDR5"},   {0x23, "LPDDR5"}, {0x24, "HBM3"},
};

constexpr SmbiosWord kForms[] = {
    {0x05, "Chip"},    {0x09, "DIMM"},     {0x0C, "RIMM"}, {0x0D, "SO-DIMM"},
    {0x0F, "FB-DIMM"}, {0x0B, "Soldered"}, {0x10, "Die"},
};

/// What all memory together comes to.
struct MemorySum {
  UINT64 Kilobytes;
  UINTN Slots;
  UINTN Modules;
  UINT32 LowestSpeed;  ///< 0 while no module tells one.
  UINT8 Type;          ///< Of the first module.
};

bool IsInstalled(const SmbiosStructure &record) {
  return SmbiosField(record, OFFSET_OF(Record, Size), kUnknownSize) != 0;
}

/// 0 when the firmware does not know.
UINT64 KilobytesOf(const SmbiosStructure &record) {
  UINT16 size = SmbiosField(record, OFFSET_OF(Record, Size), kUnknownSize);
  if (size == kUnknownSize) {
    return 0;
  }
  if (size == kSizeIsExtended) {
    UINT32 megabytes = SmbiosField<UINT32>(record, OFFSET_OF(Record, ExtendedSize), 0);
    return static_cast<UINT64>(megabytes & kExtendedMask) * 1024;
  }
  if ((size & kSizeInKilobytes) != 0) {
    return size & ~kSizeInKilobytes;
  }
  return static_cast<UINT64>(size) * 1024;
}

/// In megatransfers a second; 0 when the firmware does not know.
UINT32 SpeedAt(const SmbiosStructure &record, UINTN offset, UINTN extendedOffset) {
  UINT16 speed = SmbiosField<UINT16>(record, offset, 0);
  if (speed != kSpeedIsExtended) {
    return speed;
  }
  return SmbiosField<UINT32>(record, extendedOffset, 0) & kExtendedMask;
}

UINT32 PossibleSpeed(const SmbiosStructure &record) {
  return SpeedAt(record, OFFSET_OF(Record, Speed), OFFSET_OF(Record, ExtendedSpeed));
}

/// The configured one, else the possible one.
UINT32 SpeedOf(const SmbiosStructure &record) {
  UINT32 configured = SpeedAt(record, OFFSET_OF(Record, ConfiguredMemoryClockSpeed),
                              OFFSET_OF(Record, ExtendedConfiguredMemorySpeed));
  return configured != 0 ? configured : PossibleSpeed(record);
}

UINT8 TypeOf(const SmbiosStructure &record) {
  return SmbiosField<UINT8>(record, OFFSET_OF(Record, MemoryType), 0);
}

/// Some firmware lists its own flash chip among the memory.
bool IsFirmwareChip(const SmbiosStructure &record) {
  return TypeOf(record) >= MemoryTypeRom && TypeOf(record) <= MemoryTypeEprom;
}

void TellSize(Facts *facts, const CHAR8 *label, UINT64 kilobytes) {
  constexpr UINT64 kMegabyte = 1024;
  constexpr UINT64 kGigabyte = 1024 * kMegabyte;
  if (kilobytes == 0) {
    return;
  }
  if (kilobytes % kGigabyte == 0) {
    TellFact(facts, OBV_INFO_DESCRIPTION, label, "%ld GB", kilobytes / kGigabyte);
  } else if (kilobytes % kMegabyte == 0) {
    TellFact(facts, OBV_INFO_DESCRIPTION, label, "%ld MB", kilobytes / kMegabyte);
  } else {
    TellFact(facts, OBV_INFO_DESCRIPTION, label, "%ld KB", kilobytes);
  }
}

void TellSpeed(Facts *facts, const SmbiosStructure &record) {
  UINT32 speed = SpeedOf(record);
  UINT32 possible = PossibleSpeed(record);
  if (speed != 0 && speed < possible) {
    TellFact(facts, OBV_INFO_DESCRIPTION, "Speed", "%d MT/s (possible: %d MT/s)", speed, possible);
  } else if (speed != 0) {
    TellFact(facts, OBV_INFO_DESCRIPTION, "Speed", "%d MT/s", speed);
  }
}

void TellModule(Facts *facts, const SmbiosStructure &record) {
  TellSize(facts, "Size", KilobytesOf(record));
  TellWord(facts, OBV_INFO_DESCRIPTION, "Type", WordFor(kTypes, TypeOf(record)));
  TellSpeed(facts, record);
  TellText(facts, OBV_INFO_DESCRIPTION, "Manufacturer", record, OFFSET_OF(Record, Manufacturer));
  TellText(facts, OBV_INFO_SIDE_LIST, "Part number", record, OFFSET_OF(Record, PartNumber));
  TellText(facts, OBV_INFO_SIDE_LIST, "Serial number", record, OFFSET_OF(Record, SerialNumber));
  UINT8 form = SmbiosField<UINT8>(record, OFFSET_OF(Record, FormFactor), 0);
  TellWord(facts, OBV_INFO_SIDE_LIST, "Form", WordFor(kForms, form));
}

bool HasText(const SmbiosStructure &record, UINTN offset, const CHAR8 *wanted) {
  CHAR8 text[kSmbiosTextSize];
  SmbiosTextField(record, offset, text);
  return AsciiStrCmp(text, wanted) == 0;
}

/// An empty bank stands for any.
bool FindModule(const SmbiosTable &table, const BoardHardware &hardware, SmbiosStructure *record) {
  const CHAR8 *locator = reinterpret_cast<const CHAR8 *>(hardware.Name);
  ZeroMem(record, sizeof(*record));
  while (locator[0] != '\0' && NextOfType(table, SMBIOS_TYPE_MEMORY_DEVICE, record)) {
    if (HasText(*record, OFFSET_OF(Record, DeviceLocator), locator) &&
        (hardware.Bank[0] == '\0' ||
         HasText(*record, OFFSET_OF(Record, BankLocator), hardware.Bank))) {
      return true;
    }
  }
  return false;
}

void AddModule(const SmbiosStructure &record, MemorySum *sum) {
  ++sum->Slots;
  if (!IsInstalled(record)) {
    return;
  }
  if (sum->Modules == 0) {
    sum->Type = TypeOf(record);
  }
  ++sum->Modules;
  sum->Kilobytes += KilobytesOf(record);
  UINT32 speed = SpeedOf(record);
  if (speed != 0 && (sum->LowestSpeed == 0 || speed < sum->LowestSpeed)) {
    sum->LowestSpeed = speed;
  }
}

}  // namespace

EFI_STATUS ReadMemory(const BoardHardware &hardware, Facts *facts, Presence *) {
  SmbiosTable table;
  SmbiosStructure record;
  if (EFI_ERROR(FindSmbios(&table)) || !FindModule(table, hardware, &record) ||
      !IsInstalled(record)) {
    return EFI_NOT_FOUND;
  }
  TellModule(facts, record);
  return EFI_SUCCESS;
}

EFI_STATUS ReadMemoryTotal(const BoardHardware &, Facts *facts, Presence *) {
  SmbiosTable table;
  if (EFI_ERROR(FindSmbios(&table))) {
    return EFI_NOT_FOUND;
  }
  MemorySum sum = {0, 0, 0, 0, 0};
  SmbiosStructure record = {0, 0, nullptr, nullptr};
  while (NextOfType(table, SMBIOS_TYPE_MEMORY_DEVICE, &record)) {
    if (!IsFirmwareChip(record)) {
      AddModule(record, &sum);
    }
  }
  if (sum.Modules == 0) {
    return EFI_NOT_FOUND;
  }
  TellSize(facts, "Total Memory", sum.Kilobytes);
  if (sum.LowestSpeed != 0) {
    TellFact(facts, OBV_INFO_DESCRIPTION, "Frequency", "%d MT/s", sum.LowestSpeed);
  }
  TellWord(facts, OBV_INFO_DESCRIPTION, "Type", WordFor(kTypes, sum.Type));
  TellFact(facts, OBV_INFO_DESCRIPTION, "Modules", "%ld in %ld slots", sum.Modules, sum.Slots);
  return EFI_SUCCESS;
}

}  // namespace obv_host
