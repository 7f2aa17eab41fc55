#include "host/sources/Connecting.h"

#include "host/sources/Devices.h"

namespace obv_host {

ConnectionRecord gConnections;

namespace {

/// Controllers that one call connects with all that hangs on them; a board has few.
constexpr UINTN kRecursiveLimit = 32;

struct Connected {
  EFI_HANDLE Handles[kRecursiveLimit];
  UINTN Count;
};

/// False for what was tried before.
bool Begins(UINTN index) {
  UINT8 bit = static_cast<UINT8>(1U << (index % 8));
  if ((gConnections.Tried[index / 8] & bit) != 0) {
    return false;
  }
  gConnections.Tried[index / 8] |= bit;
  return true;
}

/// Whether its name is a device path: so it is for what firmware's drivers bring up.
bool HasDevicePath(UINT16 kind) { return kind >= kHardwarePcie && kind <= kHardwareDisplay; }

UINTN NodeCount(const PathNodes &nodes) {
  UINTN count = 0;
  for (UINTN offset = 0; offset < nodes.Size; ++count) {
    offset += FirstNodeSize({nodes.Path + offset, nodes.Size - offset});
  }
  return count;
}

/// Whether the way on from a controller is its own bus: ports of USB or SATA, or nothing.
/// What it needs is then brought up with everything on that bus.
bool IsOwnBus(const EFI_DEVICE_PATH_PROTOCOL *rest) {
  return rest->Type == END_DEVICE_PATH_TYPE || rest->Type == MESSAGING_DEVICE_PATH;
}

void ConnectAll(EFI_HANDLE controller, Connected *connected) {
  for (UINTN i = 0; i < connected->Count; ++i) {
    if (connected->Handles[i] == controller) {
      return;
    }
  }
  if (connected->Count < kRecursiveLimit) {
    connected->Handles[connected->Count++] = controller;
  }
  // That no driver wants it is no failure; what is there now is looked for later.
  (void)gBS->ConnectController(controller, nullptr, nullptr, TRUE);
}

/// Each round brings up the controller that is nearest to the named one, until the
/// named one or the bus of its last controller is there. A round that brings up
/// nothing nearer is the last: its device is not there.
void ConnectPath(UINT8 *name, Connected *connected) {
  UINTN rounds = NodeCount(NodesOf(name));
  auto *reached = reinterpret_cast<EFI_DEVICE_PATH_PROTOCOL *>(name);
  for (UINTN i = 0; i < rounds; ++i) {
    auto *rest = reinterpret_cast<EFI_DEVICE_PATH_PROTOCOL *>(name);
    EFI_HANDLE nearest = nullptr;
    EFI_STATUS status = gBS->LocateDevicePath(&gEfiDevicePathProtocolGuid, &rest, &nearest);
    if (EFI_ERROR(status) || (i > 0 && rest == reached)) {
      return;
    }
    if (IsOwnBus(rest)) {
      ConnectAll(nearest, connected);
      return;
    }
    reached = rest;
    (void)gBS->ConnectController(nearest, nullptr, rest, FALSE);
  }
}

}  // namespace

void ConnectHardware(const Board &board) {
  Connected connected = {};
  for (UINTN i = 0; i < board.Header.HardwareCount; ++i) {
    BoardHardware hardware = HardwareAt(board, i);
    if (HasDevicePath(hardware.Kind) && Begins(i)) {
      ConnectPath(hardware.Name, &connected);
    }
  }
}

}  // namespace obv_host
