// Boot services that install, remove and open protocols.

#include "test/firmware/ServiceTables.h"

namespace fake {

namespace {

HandleDatabase &Handles() { return Firmware::Current().Handles; }

EFI_STATUS EFIAPI Install(EFI_HANDLE *handle, EFI_GUID *protocol, EFI_INTERFACE_TYPE type,
                          VOID *interface) {
  Call call(Service::InstallProtocolInterface, nullptr, static_cast<const EFI_GUID *>(protocol));
  return call.Run([&]() -> EFI_STATUS {
    if (type != EFI_NATIVE_INTERFACE) {
      return EFI_INVALID_PARAMETER;
    }
    return Handles().Install(handle, protocol, interface);
  });
}

EFI_STATUS EFIAPI Reinstall(EFI_HANDLE handle, EFI_GUID *protocol, VOID *oldInterface,
                            VOID *newInterface) {
  Call call(Service::ReinstallProtocolInterface, nullptr, static_cast<const EFI_GUID *>(protocol));
  return call.Run(
      [&] { return Handles().Reinstall(handle, protocol, oldInterface, newInterface); });
}

EFI_STATUS EFIAPI Uninstall(EFI_HANDLE handle, EFI_GUID *protocol, VOID *interface) {
  Call call(Service::UninstallProtocolInterface, nullptr, static_cast<const EFI_GUID *>(protocol));
  return call.Run([&] { return Handles().Uninstall(handle, protocol, interface); });
}

struct GuidAndInterface {
  EFI_GUID *Guid;
  VOID *Interface;
};

// The pairs of the two Multiple services, up to the null GUID.
std::vector<GuidAndInterface> Pairs(VA_LIST list) {
  std::vector<GuidAndInterface> pairs;
  while (EFI_GUID *guid = VA_ARG(list, EFI_GUID *)) {
    pairs.push_back({guid, VA_ARG(list, VOID *)});
  }
  return pairs;
}

EFI_STATUS InstallAll(EFI_HANDLE *handle, const std::vector<GuidAndInterface> &pairs) {
  if (handle == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  EFI_HANDLE old = *handle;
  for (size_t i = 0; i < pairs.size(); i++) {
    EFI_STATUS status = Handles().Install(handle, pairs[i].Guid, pairs[i].Interface);
    if (EFI_ERROR(status)) {
      while (i-- > 0) {
        Handles().Uninstall(*handle, pairs[i].Guid, pairs[i].Interface);
      }
      *handle = old;
      return status;
    }
  }
  return EFI_SUCCESS;
}

EFI_STATUS UninstallAll(EFI_HANDLE handle, const std::vector<GuidAndInterface> &pairs) {
  for (size_t i = 0; i < pairs.size(); i++) {
    EFI_STATUS status = Handles().Uninstall(handle, pairs[i].Guid, pairs[i].Interface);
    if (EFI_ERROR(status)) {
      while (i-- > 0) {
        Handles().Install(&handle, pairs[i].Guid, pairs[i].Interface);
      }
      return EFI_INVALID_PARAMETER;
    }
  }
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI InstallMultiple(EFI_HANDLE *handle, ...) {
  VA_LIST list;
  VA_START(list, handle);
  std::vector<GuidAndInterface> pairs = Pairs(list);
  VA_END(list);
  Call call(Service::InstallMultiple, nullptr, pairs.size());
  return call.Run([&] { return InstallAll(handle, pairs); });
}

EFI_STATUS EFIAPI UninstallMultiple(EFI_HANDLE handle, ...) {
  VA_LIST list;
  VA_START(list, handle);
  std::vector<GuidAndInterface> pairs = Pairs(list);
  VA_END(list);
  Call call(Service::UninstallMultiple, nullptr, pairs.size());
  return call.Run([&] { return UninstallAll(handle, pairs); });
}

EFI_STATUS EFIAPI HandleProtocol(EFI_HANDLE handle, EFI_GUID *protocol, VOID **interface) {
  Call call(Service::HandleProtocol, nullptr, static_cast<const EFI_GUID *>(protocol));
  return call.Run([&] { return Handles().Open(handle, protocol, interface, {}); });
}

EFI_STATUS EFIAPI OpenProtocol(EFI_HANDLE handle, EFI_GUID *protocol, VOID **interface,
                               EFI_HANDLE agent, EFI_HANDLE controller, UINT32 attributes) {
  Call call(Service::OpenProtocol, nullptr, static_cast<const EFI_GUID *>(protocol), attributes);
  return call.Run([&] {
    return Handles().Open(handle, protocol, interface, {agent, controller, attributes});
  });
}

EFI_STATUS EFIAPI CloseProtocol(EFI_HANDLE handle, EFI_GUID *protocol, EFI_HANDLE agent,
                                EFI_HANDLE controller) {
  Call call(Service::CloseProtocol, nullptr, static_cast<const EFI_GUID *>(protocol));
  return call.Run([&] { return Handles().Close(handle, protocol, agent, controller); });
}

EFI_STATUS EFIAPI OpenInformation(EFI_HANDLE handle, EFI_GUID *protocol,
                                  EFI_OPEN_PROTOCOL_INFORMATION_ENTRY **entries, UINTN *count) {
  Call call(Service::OpenProtocolInformation, nullptr, static_cast<const EFI_GUID *>(protocol));
  return call.Run([&]() -> EFI_STATUS {
    std::vector<EFI_OPEN_PROTOCOL_INFORMATION_ENTRY> found;
    EFI_STATUS status = Handles().OpenInformation(handle, protocol, &found);
    if (EFI_ERROR(status)) {
      return status;
    }
    VOID *copy = Firmware::Current().Pool.Duplicate(found.data(), found.size() * sizeof found[0]);
    if (copy == nullptr) {
      return EFI_OUT_OF_RESOURCES;
    }
    *entries = static_cast<EFI_OPEN_PROTOCOL_INFORMATION_ENTRY *>(copy);
    *count = found.size();
    return EFI_SUCCESS;
  });
}

EFI_STATUS EFIAPI ProtocolsPerHandle(EFI_HANDLE handle, EFI_GUID ***protocols, UINTN *count) {
  Call call(Service::ProtocolsPerHandle, nullptr);
  return call.Run([&]() -> EFI_STATUS {
    std::vector<const EFI_GUID *> found;
    if (protocols == nullptr || count == nullptr) {
      return EFI_INVALID_PARAMETER;
    }
    EFI_STATUS status = Handles().Protocols(handle, &found);
    if (EFI_ERROR(status)) {
      return status;
    }
    VOID *copy = Firmware::Current().Pool.Duplicate(found.data(), found.size() * sizeof found[0]);
    if (copy == nullptr) {
      return EFI_OUT_OF_RESOURCES;
    }
    *protocols = static_cast<EFI_GUID **>(copy);
    *count = found.size();
    return EFI_SUCCESS;
  });
}

}  // namespace

void FillProtocolServices(EFI_BOOT_SERVICES *table) {
  table->InstallProtocolInterface = &Install;
  table->ReinstallProtocolInterface = &Reinstall;
  table->UninstallProtocolInterface = &Uninstall;
  table->InstallMultipleProtocolInterfaces = &InstallMultiple;
  table->UninstallMultipleProtocolInterfaces = &UninstallMultiple;
  table->HandleProtocol = &HandleProtocol;
  table->OpenProtocol = &OpenProtocol;
  table->CloseProtocol = &CloseProtocol;
  table->OpenProtocolInformation = &OpenInformation;
  table->ProtocolsPerHandle = &ProtocolsPerHandle;
}

}  // namespace fake
