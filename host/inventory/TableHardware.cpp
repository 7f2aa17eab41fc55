#include "host/inventory/Inventory.h"
#include "host/sources/Smbios.h"

namespace obv_host {
namespace {

/// Where the structures of a type keep the text by which a board names them.
struct NamedType {
  const CHAR8 *Word;
  HardwareKind Kind;
  UINT8 Type;
  UINT8 NameField;
  UINT8 BankField;  ///< 0: there is none.
};

constexpr NamedType kNamedTypes[] = {
    {"processor", kHardwareProcessor, SMBIOS_TYPE_PROCESSOR_INFORMATION,
     OFFSET_OF(SMBIOS_TABLE_TYPE4, Socket), 0},
    {"memory", kHardwareMemory, SMBIOS_TYPE_MEMORY_DEVICE,
     OFFSET_OF(SMBIOS_TABLE_TYPE17, DeviceLocator), OFFSET_OF(SMBIOS_TABLE_TYPE17, BankLocator)},
    {"fan", kHardwareFan, SMBIOS_TYPE_COOLING_DEVICE, OFFSET_OF(SMBIOS_TABLE_TYPE27, Description),
     0},
    {"probe", kHardwareProbe, SMBIOS_TYPE_TEMPERATURE_PROBE,
     OFFSET_OF(SMBIOS_TABLE_TYPE28, Description), 0},
    {"slot", kHardwareSlot, SMBIOS_TYPE_SYSTEM_SLOTS,
     OFFSET_OF(SMBIOS_TABLE_TYPE9, SlotDesignation), 0},
    {"port", kHardwarePort, SMBIOS_TYPE_PORT_CONNECTOR_INFORMATION,
     OFFSET_OF(SMBIOS_TABLE_TYPE8, ExternalReferenceDesignator), 0},
};

void CopyName(const CHAR8 *name, void *field, UINTN size) {
  UINTN length = AsciiStrLen(name);
  if (length < size) {
    CopyMem(field, name, length);
  }
}

void WriteOfType(const SmbiosTable &table, const NamedType &named, InventoryWork *work,
                 InventoryText *text) {
  SmbiosStructure structure = {};
  while (NextOfType(table, named.Type, &structure)) {
    CHAR8 name[kSmbiosTextSize];
    ZeroMem(&work->Hardware, sizeof(work->Hardware));
    work->Hardware.Kind = named.Kind;
    SmbiosTextField(structure, named.NameField, name);
    CopyName(name, work->Hardware.Name, sizeof(work->Hardware.Name));
    if (named.BankField != 0) {
      SmbiosTextField(structure, named.BankField, name);
      CopyName(name, work->Hardware.Bank, sizeof(work->Hardware.Bank));
    }
    WriteHardware(named.Word, Places::kAll, work, text);
  }
}

}  // namespace

void WriteTableHardware(InventoryWork *work, InventoryText *text) {
  SmbiosTable table;
  if (EFI_ERROR(FindSmbios(&table))) {
    AddLine(text, "  # The firmware has no SMBIOS tables.");
    return;
  }
  for (const NamedType &named : kNamedTypes) {
    WriteOfType(table, named, work, text);
  }
}

}  // namespace obv_host
