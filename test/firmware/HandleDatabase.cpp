#include "test/firmware/HandleDatabase.h"

#include "test/firmware/DevicePath.h"
#include "test/firmware/Guids.h"

namespace fake {

HandleDatabase::Handle *HandleDatabase::Find(EFI_HANDLE handle) const {
  for (const std::unique_ptr<Handle> &candidate : handles_) {
    if (candidate.get() == handle) {
      return candidate.get();
    }
  }
  return nullptr;
}

HandleDatabase::Entry *HandleDatabase::FindEntry(const Handle &handle, const EFI_GUID &guid) {
  for (const std::unique_ptr<Entry> &entry : handle.Protocols) {
    if (SameGuid(entry->Guid, guid)) {
      return entry.get();
    }
  }
  return nullptr;
}

HandleDatabase::Registration *HandleDatabase::FindRegistration(VOID *key) const {
  for (const std::unique_ptr<Registration> &registration : registrations_) {
    if (registration.get() == key) {
      return registration.get();
    }
  }
  return nullptr;
}

EFI_STATUS HandleDatabase::Install(EFI_HANDLE *handle, const EFI_GUID *protocol, VOID *interface) {
  if (handle == nullptr || protocol == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  Handle *target = Find(*handle);
  if (*handle != nullptr && (target == nullptr || FindEntry(*target, *protocol) != nullptr)) {
    return EFI_INVALID_PARAMETER;
  }
  if (target == nullptr) {
    handles_.push_back(std::make_unique<Handle>());
    target = handles_.back().get();
  }
  target->Protocols.push_back(std::make_unique<Entry>(Entry{*protocol, interface, {}}));
  *handle = target;
  Announce(*handle, *protocol);
  return EFI_SUCCESS;
}

void HandleDatabase::Announce(EFI_HANDLE handle, const EFI_GUID &guid) {
  std::vector<EFI_EVENT> events;
  for (const std::unique_ptr<Registration> &registration : registrations_) {
    if (SameGuid(registration->Guid, guid)) {
      registration->News.push_back(handle);
      events.push_back(registration->Event);
    }
  }
  for (EFI_EVENT event : events) {
    signal_(event);
  }
}

EFI_STATUS HandleDatabase::Reinstall(EFI_HANDLE handle, const EFI_GUID *protocol,
                                     VOID *oldInterface, VOID *newInterface) {
  Handle *target = Find(handle);
  if (target == nullptr || protocol == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  Entry *entry = FindEntry(*target, *protocol);
  if (entry == nullptr || entry->Interface != oldInterface) {
    return EFI_NOT_FOUND;
  }
  entry->Interface = newInterface;
  Announce(handle, *protocol);
  return EFI_SUCCESS;
}

EFI_STATUS HandleDatabase::Uninstall(EFI_HANDLE handle, const EFI_GUID *protocol, VOID *interface) {
  Handle *target = Find(handle);
  if (target == nullptr || protocol == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  Entry *entry = FindEntry(*target, *protocol);
  if (entry == nullptr || entry->Interface != interface) {
    return EFI_NOT_FOUND;
  }
  constexpr UINT32 kHeld = EFI_OPEN_PROTOCOL_BY_DRIVER | EFI_OPEN_PROTOCOL_BY_CHILD_CONTROLLER |
                           EFI_OPEN_PROTOCOL_EXCLUSIVE;
  for (const OpenEntry &open : entry->Opens) {
    if ((open.Attributes & kHeld) != 0) {
      return EFI_ACCESS_DENIED;
    }
  }
  std::erase_if(target->Protocols, [&](const auto &item) { return item.get() == entry; });
  for (const std::unique_ptr<Registration> &registration : registrations_) {
    if (SameGuid(registration->Guid, *protocol)) {
      std::erase(registration->News, handle);
    }
  }
  if (target->Protocols.empty()) {
    std::erase_if(handles_, [&](const auto &item) { return item.get() == target; });
  }
  return EFI_SUCCESS;
}

EFI_STATUS HandleDatabase::RegisterNotify(const EFI_GUID *protocol, EFI_EVENT event,
                                          VOID **registration) {
  if (protocol == nullptr || event == nullptr || registration == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  registrations_.push_back(std::make_unique<Registration>(Registration{*protocol, event, {}}));
  *registration = registrations_.back().get();
  return EFI_SUCCESS;
}

void HandleDatabase::DropEvent(EFI_EVENT event) {
  std::erase_if(registrations_, [&](const auto &item) { return item->Event == event; });
}

EFI_STATUS HandleDatabase::Search(EFI_LOCATE_SEARCH_TYPE type, const EFI_GUID *protocol,
                                  VOID *registration, std::vector<EFI_HANDLE> *found) {
  found->clear();
  if (type == ByRegisterNotify) {
    Registration *known = FindRegistration(registration);
    if (known == nullptr) {
      return EFI_INVALID_PARAMETER;
    }
    // One new handle per search, as the UEFI specification has it.
    if (!known->News.empty()) {
      found->push_back(known->News.front());
    }
  } else if (type == AllHandles || (type == ByProtocol && protocol != nullptr)) {
    for (const std::unique_ptr<Handle> &handle : handles_) {
      if (type == AllHandles || FindEntry(*handle, *protocol) != nullptr) {
        found->push_back(handle.get());
      }
    }
  } else {
    return EFI_INVALID_PARAMETER;
  }
  return found->empty() ? EFI_NOT_FOUND : EFI_SUCCESS;
}

EFI_STATUS HandleDatabase::LocateProtocol(const EFI_GUID *protocol, VOID *registration,
                                          VOID **interface) {
  if (protocol == nullptr || interface == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  *interface = nullptr;
  std::vector<EFI_HANDLE> found;
  EFI_LOCATE_SEARCH_TYPE type = registration == nullptr ? ByProtocol : ByRegisterNotify;
  if (Search(type, protocol, registration, &found) != EFI_SUCCESS) {
    return EFI_NOT_FOUND;
  }
  if (registration != nullptr) {
    TakeNews(registration);
  }
  *interface = Interface(found.front(), *protocol);
  return EFI_SUCCESS;
}

void HandleDatabase::TakeNews(VOID *registration) {
  Registration *known = FindRegistration(registration);
  if (known != nullptr && !known->News.empty()) {
    known->News.pop_front();
  }
}

EFI_STATUS HandleDatabase::LocateDevicePath(const EFI_GUID *protocol,
                                            EFI_DEVICE_PATH_PROTOCOL **path,
                                            EFI_HANDLE *handle) const {
  if (protocol == nullptr || path == nullptr || *path == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  std::optional<size_t> best;
  EFI_HANDLE bestHandle = nullptr;
  for (const std::unique_ptr<Handle> &candidate : handles_) {
    const Entry *own = FindEntry(*candidate, kDevicePathGuid);
    if (own == nullptr || FindEntry(*candidate, *protocol) == nullptr) {
      continue;
    }
    const auto *ownPath = static_cast<const EFI_DEVICE_PATH_PROTOCOL *>(own->Interface);
    size_t size = DevicePathSizeWithoutEnd(ownPath);
    bool prefix = size <= DevicePathSizeWithoutEnd(*path) && std::memcmp(ownPath, *path, size) == 0;
    if (prefix && (!best || size > *best)) {
      best = size;
      bestHandle = candidate.get();
    }
  }
  if (!best) {
    return EFI_NOT_FOUND;
  }
  if (handle == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  *handle = bestHandle;
  *path = reinterpret_cast<EFI_DEVICE_PATH_PROTOCOL *>(reinterpret_cast<uint8_t *>(*path) + *best);
  return EFI_SUCCESS;
}

EFI_STATUS HandleDatabase::Protocols(EFI_HANDLE handle,
                                     std::vector<const EFI_GUID *> *protocols) const {
  const Handle *target = Find(handle);
  if (target == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  for (const std::unique_ptr<Entry> &entry : target->Protocols) {
    protocols->push_back(&entry->Guid);
  }
  return EFI_SUCCESS;
}

VOID *HandleDatabase::Interface(EFI_HANDLE handle, const EFI_GUID &protocol) const {
  const Handle *target = Find(handle);
  const Entry *entry = target == nullptr ? nullptr : FindEntry(*target, protocol);
  return entry == nullptr ? nullptr : entry->Interface;
}

}  // namespace fake
