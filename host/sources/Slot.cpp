#include "host/sources/SmbiosFacts.h"
#include "host/sources/Source.h"

namespace obv_host {
namespace {

using Record = SMBIOS_TABLE_TYPE9;

constexpr UINT16 kNoSegment = 0xFFFF;
constexpr UINT8 kNoBus = 0xFF;

constexpr SmbiosWord kTypes[] = {
    {0x03, "ISA"},
    {0x06, "PCI"},
    {0x0E, "PCI, 66 MHz"},
    {0x0F, "AGP"},
    {0x10, "AGP 2x"},
    {0x11, "AGP 4x"},
    {0x12, "PCI-X"},
    {0x13, "AGP 8x"},
    {0x14, "M.2 socket 1-DP"},
    {0x15, "M.2 socket 1-SD"},
    {0x16, "M.2 socket 2"},
    {0x17, "M.2 socket 3"},
    {0x18, "MXM type I"},
    {0x19, "MXM type II"},
    {0x1A, "MXM type III"},
    {0x1B, "MXM type III-HE"},
    {0x1C, "MXM type IV"},
    {0x1D, "MXM 3.0 type A"},
    {0x1E, "MXM 3.0 type B"},
    {0x1F, "U.2, PCI Express 2.0"},
    {0x20, "U.2, PCI Express 3.0"},
    {0x21, "Mini PCI Express"},
    {0x22, "Mini PCI Express"},
    {0x23, "Mini PCI Express, 76 pins"},
    {0x24, "U.2, PCI Express 4.0"},
    {0x25, "U.2, PCI Express 5.0"},
    {0x26, "OCP NIC 3.0, small"},
    {0x27, "OCP NIC 3.0, large"},
    {0x28, "OCP NIC"},
    {0x30, "CXL"},
    {0xC4, "PCI Express 6.0"},
    {0xC5, "EDSFF E1"},
    {0xC6, "EDSFF E3"},
};

/// Six types in a row from First on: without a width, then x1 to x16.
struct ExpressTypes {
  UINT8 First;
  const CHAR8 *Name;
};
constexpr ExpressTypes kExpress[] = {
    {0xA5, "PCI Express"},     {0xAB, "PCI Express 2.0"}, {0xB1, "PCI Express 3.0"},
    {0xB8, "PCI Express 4.0"}, {0xBE, "PCI Express 5.0"},
};
constexpr const CHAR8 *kExpressWidths[] = {"", " x1", " x2", " x4", " x8", " x16"};

constexpr SmbiosWord kWidths[] = {
    {0x03, "8 bits"},   {0x04, "16 bits"}, {0x05, "32 bits"}, {0x06, "64 bits"},
    {0x07, "128 bits"}, {0x08, "x1"},      {0x09, "x2"},      {0x0A, "x4"},
    {0x0B, "x8"},       {0x0C, "x12"},     {0x0D, "x16"},     {0x0E, "x32"},
};

constexpr SmbiosWord kLengths[] = {{0x03, "Short"}, {0x04, "Long"}};

UINT8 ByteAt(const SmbiosStructure &record, UINTN offset) {
  return SmbiosField<UINT8>(record, offset, 0);
}

void TellType(Facts *facts, UINT8 type) {
  for (const ExpressTypes &types : kExpress) {
    if (type >= types.First && type - types.First < static_cast<int>(ARRAY_SIZE(kExpressWidths))) {
      TellFact(facts, OBV_INFO_DESCRIPTION, "Type", "%a%a", types.Name,
               kExpressWidths[type - types.First]);
      return;
    }
  }
  TellWord(facts, OBV_INFO_DESCRIPTION, "Type", WordFor(kTypes, type));
}

void TellAddress(Facts *facts, const SmbiosStructure &record) {
  UINT16 segment = SmbiosField(record, OFFSET_OF(Record, SegmentGroupNum), kNoSegment);
  UINT8 bus = SmbiosField(record, OFFSET_OF(Record, BusNum), kNoBus);
  UINT8 device = SmbiosField(record, OFFSET_OF(Record, DevFuncNum), kNoBus);
  bool known = segment != kNoSegment && (bus != kNoBus || device != kNoBus);
  if (known && HasField(record, OFFSET_OF(Record, DevFuncNum), sizeof(device))) {
    TellFact(facts, OBV_INFO_SIDE_LIST, "Address", "%04x:%02x:%02x.%x", segment, bus, device >> 3,
             device & 7);
  }
}

}  // namespace

EFI_STATUS ReadSlot(const BoardHardware &hardware, Facts *facts, Presence *) {
  SmbiosTable table;
  SmbiosStructure record;
  if (EFI_ERROR(FindSmbios(&table)) ||
      !FindStructure(table, SMBIOS_TYPE_SYSTEM_SLOTS, OFFSET_OF(Record, SlotDesignation),
                     reinterpret_cast<const CHAR8 *>(hardware.Name), &record)) {
    return EFI_NOT_FOUND;
  }
  UINT8 usage = ByteAt(record, OFFSET_OF(Record, CurrentUsage));
  if (usage == SlotUsageAvailable || usage == SlotUsageUnavailable) {
    return EFI_NOT_FOUND;
  }
  TellType(facts, ByteAt(record, OFFSET_OF(Record, SlotType)));
  TellWord(facts, OBV_INFO_DESCRIPTION, "Width",
           WordFor(kWidths, ByteAt(record, OFFSET_OF(Record, SlotDataBusWidth))));
  TellFact(facts, OBV_INFO_DESCRIPTION, "Usage", "%a",
           usage == SlotUsageInUse ? "In use" : "Unknown");
  TellWord(facts, OBV_INFO_SIDE_LIST, "Length",
           WordFor(kLengths, ByteAt(record, OFFSET_OF(Record, SlotLength))));
  TellAddress(facts, record);
  return EFI_SUCCESS;
}

}  // namespace obv_host
