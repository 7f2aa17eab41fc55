// The part of the handle database that keeps account of who opened which protocol.

#include "test/firmware/Guids.h"
#include "test/firmware/HandleDatabase.h"

namespace fake {

namespace {

// Opens with these attributes are never closed by their makers.
constexpr UINT32 kUnaccounted = EFI_OPEN_PROTOCOL_BY_HANDLE_PROTOCOL |
                                EFI_OPEN_PROTOCOL_GET_PROTOCOL | EFI_OPEN_PROTOCOL_TEST_PROTOCOL;

bool KnownAttributes(UINT32 attributes) {
  switch (attributes) {
    case EFI_OPEN_PROTOCOL_BY_HANDLE_PROTOCOL:
    case EFI_OPEN_PROTOCOL_GET_PROTOCOL:
    case EFI_OPEN_PROTOCOL_TEST_PROTOCOL:
    case EFI_OPEN_PROTOCOL_BY_CHILD_CONTROLLER:
    case EFI_OPEN_PROTOCOL_BY_DRIVER:
    case EFI_OPEN_PROTOCOL_EXCLUSIVE:
    case EFI_OPEN_PROTOCOL_BY_DRIVER | EFI_OPEN_PROTOCOL_EXCLUSIVE:
      return true;
    default:
      return false;
  }
}

}  // namespace

EFI_STATUS HandleDatabase::CheckOpen(const Entry &entry, const OpenRequest &request) const {
  constexpr UINT32 kOwning = EFI_OPEN_PROTOCOL_BY_DRIVER | EFI_OPEN_PROTOCOL_EXCLUSIVE;
  bool needsAgent = (request.Attributes & (kOwning | EFI_OPEN_PROTOCOL_BY_CHILD_CONTROLLER)) != 0;
  if (needsAgent && Find(request.Agent) == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  bool needsController = (request.Attributes & (EFI_OPEN_PROTOCOL_BY_DRIVER |
                                                EFI_OPEN_PROTOCOL_BY_CHILD_CONTROLLER)) != 0;
  if (needsController && Find(request.Controller) == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  if ((request.Attributes & kOwning) == 0) {
    return EFI_SUCCESS;
  }
  for (const OpenEntry &open : entry.Opens) {
    if ((open.Attributes & kOwning) != 0) {
      return open.Agent == request.Agent && open.Attributes == request.Attributes
                 ? EFI_ALREADY_STARTED
                 : EFI_ACCESS_DENIED;
    }
  }
  return EFI_SUCCESS;
}

EFI_STATUS HandleDatabase::Open(EFI_HANDLE handle, const EFI_GUID *protocol, VOID **interface,
                                const OpenRequest &request) {
  bool test = request.Attributes == EFI_OPEN_PROTOCOL_TEST_PROTOCOL;
  Handle *target = Find(handle);
  if (protocol == nullptr || target == nullptr || (interface == nullptr && !test) ||
      !KnownAttributes(request.Attributes)) {
    return EFI_INVALID_PARAMETER;
  }
  Entry *entry = FindEntry(*target, *protocol);
  if (entry == nullptr) {
    if (interface != nullptr && !test) {
      *interface = nullptr;
    }
    return EFI_UNSUPPORTED;
  }
  EFI_STATUS status = CheckOpen(*entry, request);
  if (EFI_ERROR(status) && status != EFI_ALREADY_STARTED) {
    return status;
  }
  if (!test) {
    *interface = entry->Interface;
  }
  if (status == EFI_ALREADY_STARTED) {
    return status;
  }
  for (OpenEntry &open : entry->Opens) {
    if (open.Agent == request.Agent && open.Controller == request.Controller &&
        open.Attributes == request.Attributes) {
      open.Count++;
      return EFI_SUCCESS;
    }
  }
  entry->Opens.push_back({request.Agent, request.Controller, request.Attributes, 1});
  return EFI_SUCCESS;
}

EFI_STATUS HandleDatabase::Close(EFI_HANDLE handle, const EFI_GUID *protocol, EFI_HANDLE agent,
                                 EFI_HANDLE controller) {
  Handle *target = Find(handle);
  if (target == nullptr || protocol == nullptr || Find(agent) == nullptr ||
      (controller != nullptr && Find(controller) == nullptr)) {
    return EFI_INVALID_PARAMETER;
  }
  Entry *entry = FindEntry(*target, *protocol);
  if (entry == nullptr) {
    return EFI_NOT_FOUND;
  }
  auto closed = std::erase_if(entry->Opens, [&](const OpenEntry &open) {
    return open.Agent == agent && open.Controller == controller;
  });
  return closed == 0 ? EFI_NOT_FOUND : EFI_SUCCESS;
}

EFI_STATUS HandleDatabase::OpenInformation(
    EFI_HANDLE handle, const EFI_GUID *protocol,
    std::vector<EFI_OPEN_PROTOCOL_INFORMATION_ENTRY> *entries) const {
  const Handle *target = Find(handle);
  if (target == nullptr || protocol == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  const Entry *entry = FindEntry(*target, *protocol);
  if (entry == nullptr) {
    return EFI_NOT_FOUND;
  }
  for (const OpenEntry &open : entry->Opens) {
    entries->push_back({open.Agent, open.Controller, open.Attributes, open.Count});
  }
  return EFI_SUCCESS;
}

size_t HandleDatabase::UnclosedCount() const {
  size_t count = 0;
  for (const std::unique_ptr<Handle> &handle : handles_) {
    for (const std::unique_ptr<Entry> &entry : handle->Protocols) {
      for (const OpenEntry &open : entry->Opens) {
        count += (open.Attributes & kUnaccounted) != 0 ? 0 : open.Count;
      }
    }
  }
  return count;
}

}  // namespace fake
