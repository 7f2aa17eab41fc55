#include "host/inventory/Inventory.h"
#include "host/sources/PciFacts.h"

namespace obv_host {
namespace {

/// What a PCI device of this class is named as.
struct NamedClass {
  const CHAR8 *Word;
  HardwareKind Kind;
  UINT8 BaseClass;
  UINT8 SubClass;
};

constexpr UINT8 kAnySubClass = 0xFF;
constexpr UINT8 kNvmeSubClass = 0x08;
constexpr UINT8 kHdAudioSubClass = 0x03;

constexpr NamedClass kNamedClasses[] = {
    {"pcie", kHardwarePcie, PCI_CLASS_BRIDGE, PCI_CLASS_BRIDGE_P2P},
    {"nvme", kHardwareNvme, PCI_CLASS_MASS_STORAGE, kNvmeSubClass},
    {"network", kHardwareNetwork, PCI_CLASS_NETWORK, kAnySubClass},
    {"display", kHardwareDisplay, PCI_CLASS_DISPLAY, kAnySubClass},
    {"audio", kHardwareAudio, PCI_CLASS_MEDIA, PCI_CLASS_MEDIA_AUDIO},
    {"audio", kHardwareAudio, PCI_CLASS_MEDIA, kHdAudioSubClass},
};

/// False when the path has no room in a board.
bool NameByNodes(HardwareKind kind, const PathNodes &nodes, BoardHardware *hardware) {
  constexpr EFI_DEVICE_PATH_PROTOCOL kEnd = {
      END_DEVICE_PATH_TYPE, END_ENTIRE_DEVICE_PATH_SUBTYPE, {sizeof(kEnd), 0}};
  if (nodes.Path == nullptr || nodes.Size + sizeof(kEnd) > sizeof(hardware->Name)) {
    return false;
  }
  ZeroMem(hardware, sizeof(*hardware));
  hardware->Kind = kind;
  CopyMem(hardware->Name, nodes.Path, nodes.Size);
  CopyMem(hardware->Name + nodes.Size, &kEnd, sizeof(kEnd));
  return true;
}

using WriteDevice = void (*)(const Presence &device, InventoryWork *work, InventoryText *text);

void ForEachDevice(EFI_GUID *protocol, WriteDevice write, InventoryWork *work,
                   InventoryText *text) {
  UINTN count = 0;
  EFI_HANDLE *handles = nullptr;
  if (EFI_ERROR(gBS->LocateHandleBuffer(ByProtocol, protocol, nullptr, &count, &handles))) {
    return;
  }
  for (UINTN i = 0; i < count; ++i) {
    Presence device = {.Handle = handles[i], .Protocol = protocol, .Interface = nullptr};
    EFI_STATUS status = gBS->HandleProtocol(handles[i], protocol, &device.Interface);
    if (!EFI_ERROR(status) && device.Interface != nullptr) {
      write(device, work, text);
    }
  }
  gBS->FreePool(handles);
}

void WritePci(const Presence &device, InventoryWork *work, InventoryText *text) {
  PciIdentity identity = {};
  if (EFI_ERROR(ReadPciIdentity(device, &identity))) {
    return;
  }
  for (const NamedClass &named : kNamedClasses) {
    bool is = named.BaseClass == identity.BaseClass &&
              (named.SubClass == kAnySubClass || named.SubClass == identity.SubClass);
    if (is && NameByNodes(named.Kind, NodesOfDevice(device), &work->Hardware)) {
      WriteHardware(named.Word, Places::kAll, work, text);
    }
  }
}

/// Devices have an interface each, or several: the first one names the port.
void WriteUsb(const Presence &device, InventoryWork *work, InventoryText *text) {
  PathNodes nodes = NodesOfDevice(device);
  if (nodes.Size == 0) {
    return;
  }
  PathNodes last = {};
  (void)WithoutLast(nodes, &last);
  if (!IsNode(last, MESSAGING_DEVICE_PATH, MSG_USB_DP, sizeof(USB_DEVICE_PATH))) {
    return;
  }
  USB_DEVICE_PATH node;
  CopyMem(&node, last.Path, sizeof(node));
  if (node.InterfaceNumber == 0 && NameByNodes(kHardwareUsb, nodes, &work->Hardware)) {
    WriteHardware("usb", Places::kAll, work, text);
  }
}

void WriteSataPort(const PathNodes &controller, UINT16 port, InventoryWork *work,
                   InventoryText *text) {
  constexpr UINT16 kNoMultiplier = 0xFFFF;
  const SATA_DEVICE_PATH node = {
      .Header = {MESSAGING_DEVICE_PATH, MSG_SATA_DP, {sizeof(node), 0}},
      .HBAPortNumber = port,
      .PortMultiplierPortNumber = kNoMultiplier,
      .Lun = 0,
  };
  UINT8 path[kHardwareNameSize];
  if (controller.Path == nullptr || controller.Size + sizeof(node) > sizeof(path)) {
    return;
  }
  CopyMem(path, controller.Path, controller.Size);
  CopyMem(path + controller.Size, &node, sizeof(node));
  PathNodes nodes = {.Path = path, .Size = controller.Size + sizeof(node)};
  if (NameByNodes(kHardwareSata, nodes, &work->Hardware)) {
    WriteHardware("sata", Places::kUsed, work, text);
  }
}

/// Every port that AHCI can have: EDK2's driver lists those with disks alone.
void WriteSata(const Presence &device, InventoryWork *work, InventoryText *text) {
  constexpr UINT16 kPorts = 32;
  PathNodes controller = NodesOfDevice(device);
  for (UINT16 port = 0; port < kPorts; ++port) {
    WriteSataPort(controller, port, work, text);
  }
}

void WriteSensor(const Presence &device, InventoryWork *work, InventoryText *text) {
  const auto *sensor = static_cast<const OBV_SENSOR_PROTOCOL *>(device.Interface);
  UINTN length = AsciiStrnLenS(sensor->Name, sizeof(sensor->Name));
  if (length == sizeof(sensor->Name)) {
    return;  // Without an end: no board can name it.
  }
  ZeroMem(&work->Hardware, sizeof(work->Hardware));
  work->Hardware.Kind = kHardwareSensor;
  CopyMem(work->Hardware.Name, sensor->Name, length);
  WriteHardware("sensor", Places::kAll, work, text);
}

}  // namespace

void WriteDeviceHardware(InventoryWork *work, InventoryText *text) {
  ForEachDevice(&gEfiPciIoProtocolGuid, WritePci, work, text);
  ForEachDevice(&gEfiAtaPassThruProtocolGuid, WriteSata, work, text);
  ForEachDevice(&gEfiUsbIoProtocolGuid, WriteUsb, work, text);
  ForEachDevice(&gObvSensorProtocolGuid, WriteSensor, work, text);
}

}  // namespace obv_host
