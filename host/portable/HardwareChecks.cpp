#include "host/portable/BoardChecks.h"

extern "C" {
#include <Protocol/DevicePath.h>
}

namespace obv_host {
namespace {

bool IsDevicePathKind(UINT16 kind) {
  switch (kind) {
    case kHardwarePcie:
    case kHardwareNvme:
    case kHardwareSata:
    case kHardwareUsb:
    case kHardwareNetwork:
    case kHardwareAudio:
    case kHardwareDisplay:
      return true;
    default:
      return false;
  }
}

/// Printable ASCII that ends within its field.
bool IsText(const void *text, UINTN size) {
  const UINT8 *bytes = static_cast<const UINT8 *>(text);
  for (UINTN i = 0; i < size; ++i) {
    if (bytes[i] == 0) {
      return true;
    }
    if (bytes[i] < 0x20 || bytes[i] > 0x7E) {
      return false;
    }
  }
  return false;
}

/// Nodes of sound lengths up to an end node within the field, and one at least
/// before it: firmware's own functions walk it without a limit.
bool IsDevicePath(const UINT8 *path) {
  constexpr UINTN kNodeHeader = sizeof(EFI_DEVICE_PATH_PROTOCOL);
  UINTN offset = 0;
  while (offset + kNodeHeader <= kHardwareNameSize) {
    UINTN length = path[offset + 2] | static_cast<UINTN>(path[offset + 3]) << 8;
    if (path[offset] == END_DEVICE_PATH_TYPE) {
      return offset > 0 && path[offset + 1] == END_ENTIRE_DEVICE_PATH_SUBTYPE &&
             length == kNodeHeader;
    }
    if (length < kNodeHeader || length > kHardwareNameSize - offset) {
      return false;
    }
    offset += length;
  }
  return false;
}

}  // namespace

bool CheckHardware(const Board &board, BoardFault *fault) {
  for (UINTN i = 0; i < board.Header.HardwareCount; ++i) {
    BoardHardware hardware = HardwareAt(board, i);
    if (hardware.Kind == 0 || hardware.Kind > kHardwareKindLimit || hardware.Reserved != 0) {
      return Refuse(fault, "hardware %d: unknown kind %d", i, hardware.Kind);
    }
    bool isName = IsDevicePathKind(hardware.Kind) ? IsDevicePath(hardware.Name)
                                                  : IsText(hardware.Name, sizeof(hardware.Name));
    if (!isName || !IsText(hardware.Bank, sizeof(hardware.Bank))) {
      return Refuse(fault, "hardware %d: not a name", i);
    }
  }
  return true;
}

}  // namespace obv_host
