#include "host/sources/UsbDevice.h"

namespace obv_host {
namespace {

/// The first language that the device has texts in; 0 without texts.
UINT16 FirstLanguage(EFI_USB_IO_PROTOCOL *usb) {
  UINT16 *languages = nullptr;
  UINT16 size = 0;
  EFI_STATUS status = usb->UsbGetSupportedLanguages(usb, &languages, &size);
  if (EFI_ERROR(status) || languages == nullptr || size < sizeof(UINT16)) {
    return 0;
  }
  // The bus driver keeps the table.
  return ReadUnaligned16(languages);
}

void CopyText(const CHAR16 *from, UsbText *text) {
  for (UINTN i = 0; i < kUsbTextLength && from[i] != 0; ++i) {
    text->Text[i] = from[i] < 0x80 ? static_cast<CHAR8>(from[i]) : '?';
  }
}

}  // namespace

void ReadUsbText(EFI_USB_IO_PROTOCOL *usb, UINT8 number, UsbText *text) {
  ZeroMem(text, sizeof(*text));
  UINT16 language = number == 0 ? 0 : FirstLanguage(usb);
  if (language == 0) {
    return;
  }
  CHAR16 *string = nullptr;
  EFI_STATUS status = usb->UsbGetStringDescriptor(usb, language, number, &string);
  if (EFI_ERROR(status) || string == nullptr) {
    return;
  }
  CopyText(string, text);
  gBS->FreePool(string);
}

EFI_STATUS ReadUsbDescriptor(EFI_USB_IO_PROTOCOL *usb, EFI_USB_DEVICE_DESCRIPTOR *descriptor) {
  ZeroMem(descriptor, sizeof(*descriptor));
  EFI_STATUS status = usb->UsbGetDeviceDescriptor(usb, descriptor);
  bool sound = descriptor->Length == sizeof(*descriptor) &&
               descriptor->DescriptorType == USB_DESC_TYPE_DEVICE;
  return !EFI_ERROR(status) && sound ? EFI_SUCCESS : EFI_DEVICE_ERROR;
}

EFI_STATUS ReadUsbInterface(EFI_USB_IO_PROTOCOL *usb, EFI_USB_INTERFACE_DESCRIPTOR *descriptor) {
  ZeroMem(descriptor, sizeof(*descriptor));
  EFI_STATUS status = usb->UsbGetInterfaceDescriptor(usb, descriptor);
  bool sound = descriptor->Length == sizeof(*descriptor) &&
               descriptor->DescriptorType == USB_DESC_TYPE_INTERFACE;
  return !EFI_ERROR(status) && sound ? EFI_SUCCESS : EFI_DEVICE_ERROR;
}

}  // namespace obv_host
