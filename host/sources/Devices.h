/** @file
  Finding devices: handles that carry a protocol, by what their device path says.

  Device paths of the handle database come from drivers: a node of an impossible
  length and a path without an end are no path.
**/

#pragma once

#include "host/sources/Source.h"

namespace obv_host {

/// A device path that takes more is none, in bytes without its end node.
inline constexpr UINTN kDevicePathLimit = 4096;
/// More devices than this are not looked at by one search.
inline constexpr UINTN kDeviceLimit = 32;
/// How long a command may take, in units of 100 ns: a second.
inline constexpr UINT64 kCommandTimeout = 10'000'000;

/// Nodes of a device path, without an end node. Refers to the path. Path is NULL
/// for a path that is none.
struct PathNodes {
  const UINT8 *Path;
  UINTN Size;
};

/// The nodes of a path up to its end node.
PathNodes NodesOf(const void *path);

/// Size of the node at the start of nodes, which must not be empty.
UINTN FirstNodeSize(const PathNodes &nodes);

/// nodes without the last of them, which goes to last; both must have been found
/// by NodesOf, and not be empty.
PathNodes WithoutLast(const PathNodes &nodes, PathNodes *last);

bool StartsWith(const PathNodes &nodes, const PathNodes &prefix);
bool SameNodes(const PathNodes &one, const PathNodes &other);

/// Whether there is a node, and it is of this type and subtype and at least size
/// bytes long.
bool IsNode(const PathNodes &nodes, UINT8 type, UINT8 subType, UINTN size);

/// Whether a handle is wanted whose path goes on like this behind the searched
/// place.
using AcceptRest = bool (*)(const PathNodes &rest, const void *context);

bool AcceptNothing(const PathNodes &rest, const void *context);   ///< At the place itself.
bool AcceptAnything(const PathNodes &rest, const void *context);  ///< There or anywhere below.
bool AcceptPciNode(const PathNodes &rest, const void *context);   ///< One Pci node, no more.
bool AcceptPciNodes(const PathNodes &rest, const void *context);  ///< Any number of Pci nodes.

struct DeviceSearch {
  const EFI_GUID *Protocol;
  PathNodes Place;
  AcceptRest Accept;
  const void *Context;
};

/// The devices that a search finds, in the order of the handle database. Returns
/// how many were written to found, capacity at most. What leaves meanwhile and what
/// the firmware has no memory to tell is not found.
UINTN FindDevices(const DeviceSearch &search, Presence *found, UINTN capacity);

/// The first of them; EFI_NOT_FOUND without one, presence is as it was then.
EFI_STATUS FindDevice(const DeviceSearch &search, Presence *presence);

/// The nodes of the path of a device; none when it has no path.
PathNodes NodesOfDevice(const Presence &device);

/// Memory that a controller can write to, at a page boundary and zeroed. NULL without
/// memory, and for an alignment that pages do not have.
UINT8 *AllocateForController(UINTN pages, UINT32 alignment);

}  // namespace obv_host
