#include "host/sources/SmbiosFacts.h"
#include "host/sources/Source.h"

namespace obv_host {
namespace {

using Record = SMBIOS_TABLE_TYPE28;

/// In the place of a temperature that the firmware does not know.
constexpr UINT16 kUnknownValue = 0x8000;

constexpr SmbiosWord kLocations[] = {
    {0x03, "Processor"},        {0x04, "Disk"},
    {0x05, "Peripheral bay"},   {0x06, "System management module"},
    {0x07, "Mainboard"},        {0x08, "Memory module"},
    {0x09, "Processor module"}, {0x0A, "Power unit"},
    {0x0B, "Add-in card"},      {0x0C, "Front panel"},
    {0x0D, "Back panel"},       {0x0E, "Power system board"},
    {0x0F, "Drive back plane"},
};

/// value in tenths of a degree, two's complement.
void TellTemperature(Facts *facts, UINT32 kind, const CHAR8 *label, UINT16 value) {
  if (value == kUnknownValue) {
    return;
  }
  bool negative = value > kUnknownValue;
  UINT32 tenths = negative ? 0x10000U - value : value;
  const CHAR8 *sign = negative ? "-" : "";
  if (tenths % 10 == 0) {
    TellFact(facts, kind, label, "%a%d C", sign, tenths / 10);
  } else {
    TellFact(facts, kind, label, "%a%d.%d C", sign, tenths / 10, tenths % 10);
  }
}

}  // namespace

EFI_STATUS ReadProbe(const BoardHardware &hardware, Facts *facts, Presence *) {
  SmbiosTable table;
  SmbiosStructure record;
  if (EFI_ERROR(FindSmbios(&table)) ||
      !FindStructure(table, SMBIOS_TYPE_TEMPERATURE_PROBE, OFFSET_OF(Record, Description),
                     reinterpret_cast<const CHAR8 *>(hardware.Name), &record)) {
    return EFI_NOT_FOUND;
  }
  UINT8 location = SmbiosField<UINT8>(record, OFFSET_OF(Record, LocationAndStatus), 0);
  EFI_STATUS status = TellHealth(facts, location);
  TellTemperature(facts, OBV_INFO_DESCRIPTION, "Nominal temperature",
                  SmbiosField(record, OFFSET_OF(Record, NominalValue), kUnknownValue));
  TellTemperature(facts, OBV_INFO_DESCRIPTION, "Lowest allowed",
                  SmbiosField(record, OFFSET_OF(Record, MinimumValue), kUnknownValue));
  TellTemperature(facts, OBV_INFO_DESCRIPTION, "Highest allowed",
                  SmbiosField(record, OFFSET_OF(Record, MaximumValue), kUnknownValue));
  TellWord(facts, OBV_INFO_SIDE_LIST, "Location", WordFor(kLocations, TypeBits(location)));
  return status;
}

}  // namespace obv_host
