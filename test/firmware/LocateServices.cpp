// Boot services that search the handle database, and the rest of the table.

#include "test/firmware/Run.h"
#include "test/firmware/ServiceTables.h"

namespace fake {

namespace {

HandleDatabase &Handles() { return Firmware::Current().Handles; }

EFI_STATUS EFIAPI RegisterProtocolNotify(EFI_GUID *protocol, EFI_EVENT event, VOID **registration) {
  Call call(Service::RegisterProtocolNotify, nullptr, static_cast<const EFI_GUID *>(protocol));
  return call.Run([&]() -> EFI_STATUS {
    if (!Firmware::Current().Events.IsEvent(event)) {
      return EFI_INVALID_PARAMETER;
    }
    return Handles().RegisterNotify(protocol, event, registration);
  });
}

EFI_STATUS EFIAPI LocateHandle(EFI_LOCATE_SEARCH_TYPE type, EFI_GUID *protocol, VOID *key,
                               UINTN *size, EFI_HANDLE *buffer) {
  Call call(Service::LocateHandle, nullptr, type, static_cast<const EFI_GUID *>(protocol));
  return call.Run([&]() -> EFI_STATUS {
    if (size == nullptr) {
      return EFI_INVALID_PARAMETER;
    }
    std::vector<EFI_HANDLE> found;
    EFI_STATUS status = Handles().Search(type, protocol, key, &found);
    if (EFI_ERROR(status)) {
      return status;
    }
    UINTN needed = found.size() * sizeof(EFI_HANDLE);
    if (std::exchange(*size, needed) < needed) {
      return EFI_BUFFER_TOO_SMALL;
    }
    if (buffer == nullptr) {
      return EFI_INVALID_PARAMETER;
    }
    std::copy(found.begin(), found.end(), buffer);
    if (type == ByRegisterNotify) {
      Handles().TakeNews(key);
    }
    return EFI_SUCCESS;
  });
}

EFI_STATUS EFIAPI LocateHandleBuffer(EFI_LOCATE_SEARCH_TYPE type, EFI_GUID *protocol, VOID *key,
                                     UINTN *count, EFI_HANDLE **buffer) {
  Call call(Service::LocateHandleBuffer, nullptr, type, static_cast<const EFI_GUID *>(protocol));
  return call.Run([&]() -> EFI_STATUS {
    if (count == nullptr || buffer == nullptr) {
      return EFI_INVALID_PARAMETER;
    }
    *count = 0;
    *buffer = nullptr;
    std::vector<EFI_HANDLE> found;
    EFI_STATUS status = Handles().Search(type, protocol, key, &found);
    if (EFI_ERROR(status)) {
      return status;
    }
    VOID *copy =
        Firmware::Current().Pool.Duplicate(found.data(), found.size() * sizeof(EFI_HANDLE));
    if (copy == nullptr) {
      return EFI_OUT_OF_RESOURCES;
    }
    if (type == ByRegisterNotify) {
      Handles().TakeNews(key);
    }
    *buffer = static_cast<EFI_HANDLE *>(copy);
    *count = found.size();
    return EFI_SUCCESS;
  });
}

EFI_STATUS EFIAPI LocateProtocol(EFI_GUID *protocol, VOID *registration, VOID **interface) {
  Call call(Service::LocateProtocol, nullptr, static_cast<const EFI_GUID *>(protocol));
  return call.Run([&] { return Handles().LocateProtocol(protocol, registration, interface); });
}

EFI_STATUS EFIAPI LocateDevicePath(EFI_GUID *protocol, EFI_DEVICE_PATH_PROTOCOL **path,
                                   EFI_HANDLE *handle) {
  Call call(Service::LocateDevicePath, nullptr, static_cast<const EFI_GUID *>(protocol));
  return call.Run([&] { return Handles().LocateDevicePath(protocol, path, handle); });
}

EFI_STATUS EFIAPI InstallConfigurationTable(EFI_GUID *guid, VOID *table) {
  Call call(Service::InstallConfigurationTable, nullptr, static_cast<const EFI_GUID *>(guid));
  return call.Run([&]() -> EFI_STATUS {
    return guid == nullptr ? EFI_INVALID_PARAMETER
                           : Firmware::Current().SetConfigurationTable(*guid, table);
  });
}

// Nothing here is driven by a driver that could be connected.
EFI_STATUS EFIAPI ConnectController(EFI_HANDLE controller, EFI_HANDLE *, EFI_DEVICE_PATH_PROTOCOL *,
                                    BOOLEAN recursive) {
  Call call(Service::ConnectController, nullptr, recursive);
  return call.Run([&]() -> EFI_STATUS {
    return Handles().IsHandle(controller) ? EFI_NOT_FOUND : EFI_INVALID_PARAMETER;
  });
}

EFI_STATUS EFIAPI DisconnectController(EFI_HANDLE controller, EFI_HANDLE, EFI_HANDLE) {
  Call call(Service::DisconnectController, nullptr);
  return call.Run([&]() -> EFI_STATUS {
    return Handles().IsHandle(controller) ? EFI_SUCCESS : EFI_INVALID_PARAMETER;
  });
}

EFI_STATUS EFIAPI Exit(EFI_HANDLE image, EFI_STATUS exitStatus, UINTN, CHAR16 *) {
  EFI_STATUS status = EFI_SUCCESS;
  {
    // Ends before the jump, which runs no destructor.
    Call call(Service::Exit, nullptr, StatusName(exitStatus));
    status = call.Run([&]() -> EFI_STATUS {
      return image == Firmware::Current().ImageHandle ? EFI_SUCCESS : EFI_INVALID_PARAMETER;
    });
  }
  if (!EFI_ERROR(status)) {
    LeaveApplication(exitStatus);
  }
  return status;
}

}  // namespace

void FillLocateServices(EFI_BOOT_SERVICES *table) {
  table->RegisterProtocolNotify = &RegisterProtocolNotify;
  table->LocateHandle = &LocateHandle;
  table->LocateHandleBuffer = &LocateHandleBuffer;
  table->LocateProtocol = &LocateProtocol;
  table->LocateDevicePath = &LocateDevicePath;
  table->InstallConfigurationTable = &InstallConfigurationTable;
  table->ConnectController = &ConnectController;
  table->DisconnectController = &DisconnectController;
  Unprovide<Service::LoadImage>(table->LoadImage);
  Unprovide<Service::StartImage>(table->StartImage);
  table->Exit = &Exit;
  Unprovide<Service::UnloadImage>(table->UnloadImage);
  Unprovide<Service::ExitBootServices>(table->ExitBootServices);
}

void FillBootServices(EFI_BOOT_SERVICES *table) {
  table->Hdr.Signature = EFI_BOOT_SERVICES_SIGNATURE;
  table->Hdr.Revision = EFI_BOOT_SERVICES_REVISION;
  table->Hdr.HeaderSize = sizeof *table;
  FillMemoryServices(table);
  FillEventServices(table);
  FillProtocolServices(table);
  FillLocateServices(table);
}

}  // namespace fake
