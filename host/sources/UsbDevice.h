/** @file
  What a USB device says of itself.
**/

#pragma once

#include "host/sources/Devices.h"

namespace obv_host {

/// Longest text of a string descriptor, in characters.
inline constexpr UINTN kUsbTextLength = 126;

/// A text of a device in ASCII: '?' for every other character. Empty without one.
struct UsbText {
  CHAR8 Text[kUsbTextLength + 1];
};

/// Reads the text of this number in the first language that the device has.
void ReadUsbText(EFI_USB_IO_PROTOCOL *usb, UINT8 number, UsbText *text);

/// EFI_DEVICE_ERROR: the device does not answer, or with something that is no device
/// descriptor.
[[nodiscard]] EFI_STATUS ReadUsbDescriptor(EFI_USB_IO_PROTOCOL *usb,
                                           EFI_USB_DEVICE_DESCRIPTOR *descriptor);

/// The same for the interface that usb stands for.
[[nodiscard]] EFI_STATUS ReadUsbInterface(EFI_USB_IO_PROTOCOL *usb,
                                          EFI_USB_INTERFACE_DESCRIPTOR *descriptor);

}  // namespace obv_host
