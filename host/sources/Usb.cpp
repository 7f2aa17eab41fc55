#include "host/sources/UsbDevice.h"
#include "host/sources/UsbNames.h"

namespace obv_host {
namespace {

/// Names of devices at a hub; more would fill the panel.
constexpr UINTN kNamedAtHub = 8;

EFI_USB_IO_PROTOCOL *UsbOf(const Presence &device) {
  return static_cast<EFI_USB_IO_PROTOCOL *>(device.Interface);
}

bool IsUsbNode(const PathNodes &nodes) {
  return IsNode(nodes, MESSAGING_DEVICE_PATH, MSG_USB_DP, sizeof(USB_DEVICE_PATH));
}

USB_DEVICE_PATH UsbNode(const PathNodes &nodes) {
  USB_DEVICE_PATH node;
  CopyMem(&node, nodes.Path, sizeof(node));
  return node;
}

/// One USB node, no more.
bool AcceptUsbNode(const PathNodes &rest, const void *) {
  return IsUsbNode(rest) && FirstNodeSize(rest) == rest.Size;
}

/// An interface of the device at the port to which context points.
bool AcceptUsbPort(const PathNodes &rest, const void *context) {
  return AcceptUsbNode(rest, nullptr) &&
         UsbNode(rest).ParentPortNumber == *static_cast<const UINT8 *>(context);
}

void TellText(EFI_USB_IO_PROTOCOL *usb, UINT8 number, UINT32 kind, const CHAR8 *label,
              Facts *facts) {
  UsbText text;
  ReadUsbText(usb, number, &text);
  TellField(facts, kind, label, text.Text, sizeof(text.Text));
}

/// A device of USB 3 at a port of USB 2 says that it is one of USB 2.
void TellSpeed(const EFI_USB_DEVICE_DESCRIPTOR &descriptor, Facts *facts) {
  constexpr UINT16 kUsb3 = 0x0300;
  constexpr UINT8 kSuperSpeedPacket = 9;  // 2 to the power of this: 512 bytes
  UINT32 version = descriptor.BcdUSB;
  TellFact(facts, OBV_INFO_SIDE_LIST, "USB version", "%x.%x", version >> 8, version >> 4 & 0xF);
  if (version >= kUsb3 && descriptor.MaxPacketSize0 == kSuperSpeedPacket) {
    TellFact(facts, OBV_INFO_DESCRIPTION, "Speed", "5 Gb/s or more");
  }
}

void TellType(EFI_USB_IO_PROTOCOL *usb, const EFI_USB_DEVICE_DESCRIPTOR &descriptor, Facts *facts) {
  UINT8 usbClass = descriptor.DeviceClass;
  UINT8 protocol = descriptor.DeviceProtocol;
  EFI_USB_INTERFACE_DESCRIPTOR interface;
  bool asksInterface = usbClass == kUsbClassOfInterface || usbClass == kUsbClassMiscellaneous;
  if (asksInterface && !EFI_ERROR(ReadUsbInterface(usb, &interface))) {
    usbClass = interface.InterfaceClass;
    protocol = interface.InterfaceProtocol;
  }
  TellFact(facts, OBV_INFO_DESCRIPTION, "Type", "%a", UsbClassName(usbClass, protocol));
}

void TellProduct(EFI_USB_IO_PROTOCOL *usb, Facts *facts) {
  EFI_USB_DEVICE_DESCRIPTOR descriptor;
  if (EFI_ERROR(ReadUsbDescriptor(usb, &descriptor))) {
    TellFact(facts, OBV_INFO_SIDE_LIST, "", "A device that does not answer");
    return;
  }
  UINTN before = facts->Count;
  TellText(usb, descriptor.StrProduct, OBV_INFO_SIDE_LIST, "", facts);
  if (facts->Count == before) {
    TellFact(facts, OBV_INFO_SIDE_LIST, "", "%04X:%04X", descriptor.IdVendor, descriptor.IdProduct);
  }
}

/// Whether one of the devices before this one has its port: another interface of it.
bool IsKnownPort(const Presence *devices, UINTN index, UINT8 *ports) {
  PathNodes nodes = NodesOfDevice(devices[index]);
  if (nodes.Size == 0) {
    return true;
  }
  PathNodes last;
  WithoutLast(nodes, &last);
  UINT8 port = IsUsbNode(last) ? UsbNode(last).ParentPortNumber : 0;
  bool known = (ports[port / 8] >> (port % 8) & 1) != 0;
  ports[port / 8] |= static_cast<UINT8>(1U << (port % 8));
  return known;
}

void TellHub(const Presence &hub, Facts *facts) {
  Presence devices[kDeviceLimit];
  UINTN count = FindDevices({&gEfiUsbIoProtocolGuid, NodesOfDevice(hub), AcceptUsbNode, nullptr},
                            devices, kDeviceLimit);
  UINT8 ports[(MAX_UINT8 + 1) / 8] = {};
  UINTN kept = 0;
  for (UINTN i = 0; i < count; ++i) {
    if (!IsKnownPort(devices, i, ports)) {
      devices[kept++] = devices[i];
    }
  }
  TellFact(facts, OBV_INFO_DESCRIPTION, "Devices", "%u", static_cast<UINT32>(kept));
  for (UINTN i = 0; i < kept && i < kNamedAtHub; ++i) {
    TellProduct(UsbOf(devices[i]), facts);
  }
}

EFI_STATUS ReadDevice(const Presence &device, Facts *facts) {
  EFI_USB_IO_PROTOCOL *usb = UsbOf(device);
  EFI_USB_DEVICE_DESCRIPTOR descriptor;
  if (EFI_ERROR(ReadUsbDescriptor(usb, &descriptor))) {
    TellFact(facts, OBV_INFO_DESCRIPTION, "Health", "Failing: does not describe itself");
    return EFI_DEVICE_ERROR;
  }
  TellText(usb, descriptor.StrProduct, OBV_INFO_DESCRIPTION, "Product", facts);
  TellText(usb, descriptor.StrManufacturer, OBV_INFO_DESCRIPTION, "Manufacturer", facts);
  TellType(usb, descriptor, facts);
  TellSpeed(descriptor, facts);
  TellText(usb, descriptor.StrSerialNumber, OBV_INFO_SIDE_LIST, "Serial number", facts);
  TellFact(facts, OBV_INFO_SIDE_LIST, "Device ID", "%04X:%04X", descriptor.IdVendor,
           descriptor.IdProduct);
  if (descriptor.DeviceClass == kUsbClassHub) {
    TellHub(device, facts);
  }
  return EFI_SUCCESS;
}

}  // namespace

EFI_STATUS ReadUsb(const BoardHardware &hardware, Facts *facts, Presence *presence) {
  PathNodes nodes = NodesOf(hardware.Name);
  if (nodes.Size == 0) {
    return EFI_NOT_FOUND;
  }
  PathNodes last;
  PathNodes place = WithoutLast(nodes, &last);
  if (!IsUsbNode(last)) {
    return EFI_NOT_FOUND;
  }
  UINT8 port = UsbNode(last).ParentPortNumber;
  EFI_STATUS status = FindDevice({&gEfiUsbIoProtocolGuid, place, AcceptUsbPort, &port}, presence);
  return EFI_ERROR(status) ? EFI_NOT_FOUND : ReadDevice(*presence, facts);
}

}  // namespace obv_host
