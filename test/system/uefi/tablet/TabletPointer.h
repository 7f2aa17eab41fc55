/** @file
  One tablet: its reports, and the absolute pointer that they become.
**/

#pragma once

#include "TabletFirmware.h"

/// Pointer is the first member: its services get their tablet back from This.
struct Tablet {
  EFI_ABSOLUTE_POINTER_PROTOCOL Pointer;
  EFI_ABSOLUTE_POINTER_MODE Mode;
  EFI_ABSOLUTE_POINTER_STATE State;
  BOOLEAN Changed;
  EFI_USB_IO_PROTOCOL *UsbIo;
  EFI_USB_ENDPOINT_DESCRIPTOR Endpoint;
};

/// Sets up the pointer and begins to poll the tablet. UsbIo and Endpoint are
/// set already. On an error nothing is left behind.
[[nodiscard]] EFI_STATUS StartTablet(Tablet *tablet);

/// Ends polling.
void StopTablet(Tablet *tablet);
