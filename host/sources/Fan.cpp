#include "host/sources/SmbiosFacts.h"
#include "host/sources/Source.h"

namespace obv_host {
namespace {

using Record = SMBIOS_TABLE_TYPE27;

constexpr UINT16 kUnknownSpeed = 0x8000;

constexpr SmbiosWord kDevices[] = {
    {0x03, "Fan"},
    {0x04, "Centrifugal blower"},
    {0x05, "Chip fan"},
    {0x06, "Cabinet fan"},
    {0x07, "Power supply fan"},
    {0x08, "Heat pipe"},
    {0x09, "Integrated refrigeration"},
    {0x10, "Active cooling"},
    {0x11, "Passive cooling"},
};

}  // namespace

EFI_STATUS ReadFan(const BoardHardware &hardware, Facts *facts, Presence *) {
  SmbiosTable table;
  SmbiosStructure record;
  if (EFI_ERROR(FindSmbios(&table)) ||
      !FindStructure(table, SMBIOS_TYPE_COOLING_DEVICE, OFFSET_OF(Record, Description),
                     reinterpret_cast<const CHAR8 *>(hardware.Name), &record)) {
    return EFI_NOT_FOUND;
  }
  UINT8 device = SmbiosField<UINT8>(record, OFFSET_OF(Record, DeviceTypeAndStatus), 0);
  EFI_STATUS status = TellHealth(facts, device);
  TellWord(facts, OBV_INFO_DESCRIPTION, "Type", WordFor(kDevices, TypeBits(device)));
  UINT16 speed = SmbiosField(record, OFFSET_OF(Record, NominalSpeed), kUnknownSpeed);
  if (speed != kUnknownSpeed && speed != 0) {
    TellFact(facts, OBV_INFO_DESCRIPTION, "Nominal speed", "%d RPM", speed);
  }
  UINT8 group = SmbiosField<UINT8>(record, OFFSET_OF(Record, CoolingUnitGroup), 0);
  if (group != 0) {
    TellFact(facts, OBV_INFO_SIDE_LIST, "Cooling group", "%d", group);
  }
  return status;
}

}  // namespace obv_host
