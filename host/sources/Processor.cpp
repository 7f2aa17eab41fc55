#include "host/sources/SmbiosFacts.h"
#include "host/sources/Source.h"

namespace obv_host {
namespace {

using Record = SMBIOS_TABLE_TYPE4;

constexpr UINT32 kLeafSignature = 0x01;
constexpr UINT32 kLeafTopology = 0x0B;
constexpr UINT32 kLeafFrequency = 0x16;
constexpr UINT32 kLeafExtended = 0x80000000;
constexpr UINT32 kLeafBrand = 0x80000002;
constexpr UINT32 kBrandLeaves = 3;
constexpr UINT32 kHasThreads = 1U << 28;  // Of EDX, as threads a package in EBX.

/// A level of the topology leaf, bits 15:8 of ECX.
constexpr UINT32 kLevelOfThreads = 1;
constexpr UINT32 kTopologyLevels = 8;

constexpr UINTN kBrandSize = kBrandLeaves * 16 + 1;

constexpr UINT8 kPopulated = 0x40;
constexpr UINT8 kStatusMask = 0x07;
constexpr UINT8 kEnabled = 1;
constexpr UINT8 kDisabledByUser = 2;
constexpr UINT8 kDisabledByFirmware = 3;

constexpr UINT8 kCountIsExtended = 0xFF;
constexpr UINT8 kFamilyIsExtended = 0xFE;

constexpr SmbiosWord kFamilies[] = {
    {0x0F, "Celeron"}, {0x1D, "Athlon"},  {0x2D, "Core m3"}, {0x2E, "Core m5"},   {0x2F, "Core m7"},
    {0x3F, "AMD FX"},  {0x48, "AMD A"},   {0x6B, "Zen"},     {0x83, "Athlon 64"}, {0x84, "Opteron"},
    {0xB3, "Xeon"},    {0xBF, "Core 2"},  {0xC6, "Core i7"}, {0xC7, "Celeron"},   {0xCD, "Core i5"},
    {0xCE, "Core i3"}, {0xCF, "Core i9"},
};

struct Registers {
  UINT32 Eax;
  UINT32 Ebx;
  UINT32 Ecx;
  UINT32 Edx;
};

Registers Cpuid(UINT32 leaf) {
  Registers out;
  AsmCpuid(leaf, &out.Eax, &out.Ebx, &out.Ecx, &out.Edx);
  return out;
}

Registers CpuidEx(UINT32 leaf, UINT32 subleaf) {
  Registers out;
  AsmCpuidEx(leaf, subleaf, &out.Eax, &out.Ebx, &out.Ecx, &out.Edx);
  return out;
}

bool HasLeaf(UINT32 leaf) { return Cpuid(leaf & kLeafExtended).Eax >= leaf; }

/// Without blanks at its ends, and with one blank where there are several.
void SqueezeBlanks(CHAR8 *text) {
  UINTN written = 0;
  for (UINTN i = 0; text[i] != '\0'; ++i) {
    if (text[i] != ' ' || (written > 0 && text[written - 1] != ' ')) {
      text[written++] = text[i];
    }
  }
  if (written > 0 && text[written - 1] == ' ') {
    --written;
  }
  text[written] = '\0';
}

/// Empty when the processor tells none.
void ReadBrand(CHAR8 (&brand)[kBrandSize]) {
  ZeroMem(brand, sizeof(brand));
  // A processor without extended leaves answers with any number.
  UINT32 last = Cpuid(kLeafExtended).Eax;
  if (last < kLeafBrand + kBrandLeaves - 1 || last > kLeafExtended + 0xFFFF) {
    return;
  }
  for (UINT32 i = 0; i < kBrandLeaves; ++i) {
    Registers part = Cpuid(kLeafBrand + i);
    CopyMem(brand + i * sizeof(part), &part, sizeof(part));
  }
  SqueezeBlanks(brand);
}

struct Counts {
  UINT32 Cores;
  UINT32 Enabled;
  UINT32 Threads;
};

/// Logical processors of the last level, and of a core; 0 without the leaf.
Counts CountByTopology() {
  Counts counts = {0, 0, 0};
  UINT32 inCore = 0;
  for (UINT32 level = 0; HasLeaf(kLeafTopology) && level < kTopologyLevels; ++level) {
    Registers out = CpuidEx(kLeafTopology, level);
    UINT32 kind = out.Ecx >> 8 & 0xFF;
    UINT32 logical = out.Ebx & 0xFFFF;
    if (kind == 0 || logical == 0) {
      break;
    }
    inCore = kind == kLevelOfThreads ? logical : inCore;
    counts.Threads = logical;
  }
  counts.Cores = inCore == 0 ? 0 : counts.Threads / inCore;
  return counts;
}

Counts CountByCpuid() {
  Counts counts = CountByTopology();
  if (counts.Threads == 0 && HasLeaf(kLeafSignature)) {
    Registers signature = Cpuid(kLeafSignature);
    counts.Threads = (signature.Edx & kHasThreads) != 0 ? signature.Ebx >> 16 & 0xFF : 1;
  }
  return counts;
}

/// A count of one byte, or the one of two bytes that SMBIOS 3.0 added; 0 when the
/// firmware does not know.
UINT32 CountAt(const SmbiosStructure &record, UINTN offset, UINTN extendedOffset) {
  UINT8 count = SmbiosField<UINT8>(record, offset, 0);
  return count != kCountIsExtended ? count
                                   : SmbiosField<UINT16>(record, extendedOffset, kCountIsExtended);
}

Counts CountByRecord(const SmbiosStructure &record) {
  return {
      CountAt(record, OFFSET_OF(Record, CoreCount), OFFSET_OF(Record, CoreCount2)),
      CountAt(record, OFFSET_OF(Record, EnabledCoreCount), OFFSET_OF(Record, EnabledCoreCount2)),
      CountAt(record, OFFSET_OF(Record, ThreadCount), OFFSET_OF(Record, ThreadCount2)),
  };
}

void TellCounts(Facts *facts, const SmbiosStructure &record) {
  Counts told = CountByRecord(record);
  Counts counted = CountByCpuid();
  UINT32 cores = told.Cores != 0 ? told.Cores : counted.Cores;
  UINT32 threads = told.Threads != 0 ? told.Threads : counted.Threads;
  if (told.Enabled != 0 && told.Enabled < cores) {
    TellFact(facts, OBV_INFO_DESCRIPTION, "Cores", "%d (enabled: %d)", cores, told.Enabled);
  } else if (cores != 0) {
    TellFact(facts, OBV_INFO_DESCRIPTION, "Cores", "%d", cores);
  }
  if (threads != 0) {
    TellFact(facts, OBV_INFO_DESCRIPTION, "Threads", "%d", threads);
  }
}

/// In megahertz; 0 when nobody knows.
UINT32 SpeedOf(const SmbiosStructure &record) {
  UINT32 speed = SmbiosField<UINT16>(record, OFFSET_OF(Record, CurrentSpeed), 0);
  if (speed == 0) {
    speed = SmbiosField<UINT16>(record, OFFSET_OF(Record, MaxSpeed), 0);
  }
  if (speed == 0 && HasLeaf(kLeafFrequency)) {
    speed = Cpuid(kLeafFrequency).Eax & 0xFFFF;
  }
  return speed;
}

/// The kind that the firmware tells, else the processor's own numbers.
void TellFamily(Facts *facts, const SmbiosStructure &record) {
  UINT8 number = SmbiosField<UINT8>(record, OFFSET_OF(Record, ProcessorFamily), 0);
  const CHAR8 *family = number == kFamilyIsExtended ? nullptr : WordFor(kFamilies, number);
  if (family != nullptr) {
    TellWord(facts, OBV_INFO_SIDE_LIST, "Family", family);
    return;
  }
  if (!HasLeaf(kLeafSignature)) {
    return;
  }
  UINT32 signature = Cpuid(kLeafSignature).Eax;
  UINT32 base = signature >> 8 & 0xF;
  UINT32 model = signature >> 4 & 0xF;
  if (base == 0x6 || base == 0xF) {
    model |= signature >> 12 & 0xF0;
  }
  TellFact(facts, OBV_INFO_SIDE_LIST, "Family", "%d, model %d, stepping %d",
           base == 0xF ? base + (signature >> 20 & 0xFF) : base, model, signature & 0xF);
}

void TellBrand(Facts *facts, const SmbiosStructure &record) {
  CHAR8 brand[kBrandSize];
  ReadBrand(brand);
  if (brand[0] == '\0') {
    TellText(facts, OBV_INFO_DESCRIPTION, "Brand", record, OFFSET_OF(Record, ProcessorVersion));
  } else {
    TellField(facts, OBV_INFO_DESCRIPTION, "Brand", brand, sizeof(brand));
  }
}

UINT8 StatusOf(const SmbiosStructure &record) {
  return SmbiosField<UINT8>(record, OFFSET_OF(Record, Status), kPopulated | kEnabled);
}

bool IsDisabled(UINT8 status) {
  UINT8 state = status & kStatusMask;
  return state == kDisabledByUser || state == kDisabledByFirmware;
}

/// The first record of a processor that runs; all zero when no record tells.
void FindBootProcessor(const SmbiosTable &table, SmbiosStructure *record) {
  ZeroMem(record, sizeof(*record));
  while (NextOfType(table, SMBIOS_TYPE_PROCESSOR_INFORMATION, record)) {
    if ((StatusOf(*record) & kPopulated) != 0 && !IsDisabled(StatusOf(*record))) {
      return;
    }
  }
}

EFI_STATUS TellDisabled(Facts *facts, UINT8 status) {
  bool byUser = (status & kStatusMask) == kDisabledByUser;
  TellFact(facts, OBV_INFO_DESCRIPTION, "Health",
           byUser ? "Disabled in the setup" : "Failing: disabled by its self-test");
  return EFI_DEVICE_ERROR;
}

void TellProcessor(Facts *facts, const SmbiosStructure &record) {
  TellBrand(facts, record);
  UINT32 speed = SpeedOf(record);
  if (speed != 0) {
    TellFact(facts, OBV_INFO_DESCRIPTION, "Speed", "%d MHz", speed);
  }
  TellCounts(facts, record);
  TellFamily(facts, record);
  TellText(facts, OBV_INFO_SIDE_LIST, "Socket", record, OFFSET_OF(Record, Socket));
}

}  // namespace

EFI_STATUS ReadProcessor(const BoardHardware &hardware, Facts *facts, Presence *) {
  const CHAR8 *socket = reinterpret_cast<const CHAR8 *>(hardware.Name);
  SmbiosTable table;
  SmbiosStructure record;
  (void)FindSmbios(&table);  // Without one, the table is empty.
  if (socket[0] == '\0') {
    FindBootProcessor(table, &record);
    TellProcessor(facts, record);
    return EFI_SUCCESS;
  }
  if (!FindStructure(table, SMBIOS_TYPE_PROCESSOR_INFORMATION, OFFSET_OF(Record, Socket), socket,
                     &record) ||
      (StatusOf(record) & kPopulated) == 0) {
    return EFI_NOT_FOUND;
  }
  if (IsDisabled(StatusOf(record))) {
    return TellDisabled(facts, StatusOf(record));
  }
  TellProcessor(facts, record);
  return EFI_SUCCESS;
}

bool BrandContains(const CHAR8 *text) {
  CHAR8 brand[kBrandSize];
  ReadBrand(brand);
  return AsciiStrStr(brand, text) != nullptr;
}

}  // namespace obv_host
