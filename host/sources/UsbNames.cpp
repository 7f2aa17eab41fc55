#include "host/sources/UsbNames.h"

namespace obv_host {
namespace {

struct ClassName {
  UINT8 Class;
  const CHAR8 *Name;
};

constexpr ClassName kClasses[] = {
    {0x01, "Audio device"},
    {0x02, "Communication device"},
    {kUsbClassHid, "Input device"},
    {0x05, "Physical input device"},
    {0x06, "Camera"},
    {0x07, "Printer"},
    {0x08, "Storage device"},
    {kUsbClassHub, "Hub"},
    {0x0A, "Communication device"},
    {0x0B, "Smart card reader"},
    {0x0D, "Content security"},
    {0x0E, "Video device"},
    {0x0F, "Health device"},
    {0x10, "Audio and video device"},
    {0x11, "Billboard"},
    {0xDC, "Diagnostic device"},
    {0xE0, "Wireless controller"},
    {kUsbClassMiscellaneous, "Composite device"},
    {0xFE, "Special device"},
    {0xFF, "Device of its maker's own kind"},
};

/// Of HID interfaces that the firmware can use without their description.
constexpr UINT8 kKeyboard = 1;
constexpr UINT8 kMouse = 2;

}  // namespace

const CHAR8 *UsbClassName(UINT8 usbClass, UINT8 protocol) {
  if (usbClass == kUsbClassHid && protocol == kKeyboard) {
    return "Keyboard";
  }
  if (usbClass == kUsbClassHid && protocol == kMouse) {
    return "Mouse";
  }
  for (const ClassName &row : kClasses) {
    if (row.Class == usbClass) {
      return row.Name;
    }
  }
  return "Device of an unknown class";
}

}  // namespace obv_host
