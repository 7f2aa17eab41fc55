#include "host/sources/SmbiosFacts.h"
#include "host/sources/Source.h"

namespace obv_host {
namespace {

using Record = SMBIOS_TABLE_TYPE8;

constexpr SmbiosWord kPorts[] = {
    {0x01, "Parallel"},
    {0x02, "Parallel, PS/2"},
    {0x03, "Parallel, ECP"},
    {0x04, "Parallel, EPP"},
    {0x05, "Parallel, ECP and EPP"},
    {0x06, "Serial"},
    {0x07, "Serial, 16450"},
    {0x08, "Serial, 16550"},
    {0x09, "Serial, 16550A"},
    {0x0A, "SCSI"},
    {0x0B, "MIDI"},
    {0x0C, "Joystick"},
    {0x0D, "Keyboard"},
    {0x0E, "Mouse"},
    {0x10, "USB"},
    {0x11, "FireWire"},
    {0x1C, "Video"},
    {0x1D, "Audio"},
    {0x1E, "Modem"},
    {0x1F, "Network"},
    {0x20, "SATA"},
    {0x21, "SAS"},
    {0x22, "Multi-function display"},
    {0x23, "Thunderbolt"},
};

constexpr SmbiosWord kConnectors[] = {
    {0x01, "Centronics"},
    {0x02, "Mini Centronics"},
    {0x03, "Proprietary"},
    {0x04, "DB-25, male"},
    {0x05, "DB-25, female"},
    {0x06, "DB-15, male"},
    {0x07, "DB-15, female"},
    {0x08, "DB-9, male"},
    {0x09, "DB-9, female"},
    {0x0A, "RJ-11"},
    {0x0B, "RJ-45"},
    {0x0D, "Mini DIN"},
    {0x0E, "Micro DIN"},
    {0x0F, "PS/2"},
    {0x10, "Infrared"},
    {0x12, "USB"},
    {0x16, "IDE"},
    {0x17, "Floppy"},
    {0x18, "9 pins in two rows"},
    {0x19, "25 pins in two rows"},
    {0x1A, "50 pins in two rows"},
    {0x1B, "68 pins in two rows"},
    {0x1C, "Sound input from a drive"},
    {0x1F, "Mini jack"},
    {0x20, "BNC"},
    {0x21, "IEEE 1394"},
    {0x22, "SAS/SATA"},
    {0x23, "USB Type-C"},
};

/// By what stands on the back panel, else by what stands on the board.
bool FindPort(const SmbiosTable &table, const CHAR8 *name, SmbiosStructure *record) {
  return FindStructure(table, SMBIOS_TYPE_PORT_CONNECTOR_INFORMATION,
                       OFFSET_OF(Record, ExternalReferenceDesignator), name, record) ||
         FindStructure(table, SMBIOS_TYPE_PORT_CONNECTOR_INFORMATION,
                       OFFSET_OF(Record, InternalReferenceDesignator), name, record);
}

void TellConnector(Facts *facts, const CHAR8 *label, const SmbiosStructure &record, UINTN offset) {
  TellWord(facts, OBV_INFO_DESCRIPTION, label,
           WordFor(kConnectors, SmbiosField<UINT8>(record, offset, 0)));
}

}  // namespace

EFI_STATUS ReadPort(const BoardHardware &hardware, Facts *facts, Presence *) {
  SmbiosTable table;
  SmbiosStructure record;
  if (EFI_ERROR(FindSmbios(&table)) ||
      !FindPort(table, reinterpret_cast<const CHAR8 *>(hardware.Name), &record)) {
    return EFI_NOT_FOUND;
  }
  UINT8 type = SmbiosField<UINT8>(record, OFFSET_OF(Record, PortType), 0);
  TellWord(facts, OBV_INFO_DESCRIPTION, "Type", WordFor(kPorts, type));
  TellConnector(facts, "Connector", record, OFFSET_OF(Record, ExternalConnectorType));
  TellConnector(facts, "On the board", record, OFFSET_OF(Record, InternalConnectorType));
  TellText(facts, OBV_INFO_SIDE_LIST, "External name", record,
           OFFSET_OF(Record, ExternalReferenceDesignator));
  TellText(facts, OBV_INFO_SIDE_LIST, "Internal name", record,
           OFFSET_OF(Record, InternalReferenceDesignator));
  return EFI_SUCCESS;
}

}  // namespace obv_host
