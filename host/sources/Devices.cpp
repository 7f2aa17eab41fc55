#include "host/sources/Devices.h"

namespace obv_host {
namespace {

constexpr UINTN kNodeHeader = sizeof(EFI_DEVICE_PATH_PROTOCOL);

UINTN NodeSize(const UINT8 *node) { return node[2] | static_cast<UINTN>(node[3]) << 8; }

PathNodes Behind(const PathNodes &nodes, UINTN size) {
  return {nodes.Path + size, nodes.Size - size};
}

bool IsWanted(const DeviceSearch &search, EFI_HANDLE handle) {
  VOID *path = nullptr;
  if (EFI_ERROR(gBS->HandleProtocol(handle, &gEfiDevicePathProtocolGuid, &path))) {
    return false;
  }
  PathNodes nodes = NodesOf(path);
  return nodes.Path != nullptr && StartsWith(nodes, search.Place) &&
         search.Accept(Behind(nodes, search.Place.Size), search.Context);
}

bool OpenDevice(const DeviceSearch &search, EFI_HANDLE handle, Presence *presence) {
  VOID *interface = nullptr;
  EFI_STATUS status =
      gBS->HandleProtocol(handle, const_cast<EFI_GUID *>(search.Protocol), &interface);
  if (EFI_ERROR(status) || interface == nullptr) {
    return false;
  }
  *presence = {handle, search.Protocol, interface};
  return true;
}

}  // namespace

PathNodes NodesOf(const void *path) {
  const UINT8 *bytes = static_cast<const UINT8 *>(path);
  UINTN size = 0;
  while (bytes != nullptr && size <= kDevicePathLimit - kNodeHeader) {
    const UINT8 *node = bytes + size;
    if (node[0] == END_DEVICE_PATH_TYPE) {
      return {bytes, size};
    }
    if (NodeSize(node) < kNodeHeader) {
      break;
    }
    size += NodeSize(node);
  }
  return {nullptr, 0};
}

UINTN FirstNodeSize(const PathNodes &nodes) { return NodeSize(nodes.Path); }

PathNodes WithoutLast(const PathNodes &nodes, PathNodes *last) {
  *last = nodes;
  while (FirstNodeSize(*last) < last->Size) {
    *last = Behind(*last, FirstNodeSize(*last));
  }
  return {nodes.Path, nodes.Size - last->Size};
}

bool StartsWith(const PathNodes &nodes, const PathNodes &prefix) {
  // A prefix of nodes of the same bytes ends where a node ends.
  return prefix.Path != nullptr && nodes.Size >= prefix.Size &&
         CompareMem(nodes.Path, prefix.Path, prefix.Size) == 0;
}

bool SameNodes(const PathNodes &one, const PathNodes &other) {
  return one.Size == other.Size && StartsWith(one, other);
}

bool IsNode(const PathNodes &nodes, UINT8 type, UINT8 subType, UINTN size) {
  return nodes.Size >= size && nodes.Path[0] == type && nodes.Path[1] == subType &&
         FirstNodeSize(nodes) >= size;
}

bool AcceptNothing(const PathNodes &rest, const void *) { return rest.Size == 0; }

bool AcceptAnything(const PathNodes &, const void *) { return true; }

bool AcceptPciNode(const PathNodes &rest, const void *) {
  return IsNode(rest, HARDWARE_DEVICE_PATH, HW_PCI_DP, sizeof(PCI_DEVICE_PATH)) &&
         FirstNodeSize(rest) == rest.Size;
}

bool AcceptPciNodes(const PathNodes &rest, const void *) {
  PathNodes left = rest;
  while (IsNode(left, HARDWARE_DEVICE_PATH, HW_PCI_DP, sizeof(PCI_DEVICE_PATH))) {
    left = Behind(left, FirstNodeSize(left));
  }
  return left.Size == 0;
}

UINTN FindDevices(const DeviceSearch &search, Presence *found, UINTN capacity) {
  UINTN count = 0;
  EFI_HANDLE *handles = nullptr;
  EFI_STATUS status = gBS->LocateHandleBuffer(ByProtocol, const_cast<EFI_GUID *>(search.Protocol),
                                              nullptr, &count, &handles);
  if (EFI_ERROR(status)) {
    return 0;
  }
  UINTN number = 0;
  for (UINTN i = 0; i < count && number < capacity; ++i) {
    if (IsWanted(search, handles[i]) && OpenDevice(search, handles[i], &found[number])) {
      ++number;
    }
  }
  gBS->FreePool(handles);
  return number;
}

EFI_STATUS FindDevice(const DeviceSearch &search, Presence *presence) {
  return FindDevices(search, presence, 1) == 1 ? EFI_SUCCESS : EFI_NOT_FOUND;
}

PathNodes NodesOfDevice(const Presence &device) {
  VOID *path = nullptr;
  EFI_STATUS status = gBS->HandleProtocol(device.Handle, &gEfiDevicePathProtocolGuid, &path);
  return NodesOf(EFI_ERROR(status) ? nullptr : path);
}

UINT8 *AllocateForController(UINTN pages, UINT32 alignment) {
  if (alignment > EFI_PAGE_SIZE) {
    return nullptr;
  }
  VOID *memory = AllocatePages(pages);
  if (memory != nullptr) {
    ZeroMem(memory, EFI_PAGES_TO_SIZE(pages));
  }
  return static_cast<UINT8 *>(memory);
}

}  // namespace obv_host
