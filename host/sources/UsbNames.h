/** @file
  Words for the numbers by which USB devices call themselves.
**/

#pragma once

#include "host/portable/Firmware.h"

namespace obv_host {

/// USB class codes that are looked at.
inline constexpr UINT8 kUsbClassOfInterface = 0x00;
inline constexpr UINT8 kUsbClassHid = 0x03;
inline constexpr UINT8 kUsbClassHub = 0x09;
inline constexpr UINT8 kUsbClassMiscellaneous = 0xEF;

/// What the device or the interface is: "Keyboard". Never NULL.
const CHAR8 *UsbClassName(UINT8 usbClass, UINT8 protocol);

}  // namespace obv_host
