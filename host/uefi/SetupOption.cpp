#include "host/uefi/SetupOption.h"

namespace obv_host {
namespace {

OBV_SETUP_PROTOCOL *FindSetup() {
  EFI_GUID protocolGuid = OBV_SETUP_PROTOCOL_GUID;
  VOID *setup = nullptr;
  EFI_STATUS status = gBS->LocateProtocol(&protocolGuid, nullptr, &setup);
  return EFI_ERROR(status) ? nullptr : static_cast<OBV_SETUP_PROTOCOL *>(setup);
}

EFI_HII_DATABASE_PROTOCOL *FindDatabase() {
  VOID *database = nullptr;
  EFI_STATUS status = gBS->LocateProtocol(&gEfiHiiDatabaseProtocolGuid, nullptr, &database);
  return EFI_ERROR(status) ? nullptr : static_cast<EFI_HII_DATABASE_PROTOCOL *>(database);
}

/// The package list of a handle in pool memory; NULL when there is none.
VOID *ExportList(EFI_HII_DATABASE_PROTOCOL *database, EFI_HII_HANDLE handle, UINTN *size) {
  *size = 0;
  EFI_STATUS status = database->ExportPackageLists(database, handle, size, nullptr);
  if (status != EFI_BUFFER_TOO_SMALL) {
    return nullptr;
  }
  VOID *list = AllocatePool(*size);
  if (list == nullptr) {
    return nullptr;
  }
  status = database->ExportPackageLists(database, handle, size,
                                        static_cast<EFI_HII_PACKAGE_LIST_HEADER *>(list));
  if (EFI_ERROR(status)) {
    FreePool(list);
    return nullptr;
  }
  return list;
}

bool FindInList(EFI_HII_DATABASE_PROTOCOL *database, EFI_HII_HANDLE handle, UINT16 token,
                const EFI_GUID *formset, OBV_SETUP_OPTION *option) {
  UINTN size = 0;
  VOID *list = ExportList(database, handle, &size);
  if (list == nullptr) {
    return false;
  }
  bool found = FindQuestion(list, size, token, formset, option);
  FreePool(list);
  return found;
}

/// The handles of everyone who has forms, in pool memory; NULL when there are none.
EFI_HII_HANDLE *ListForms(EFI_HII_DATABASE_PROTOCOL *database, UINTN *count) {
  UINTN size = 0;
  EFI_STATUS status =
      database->ListPackageLists(database, EFI_HII_PACKAGE_FORMS, nullptr, &size, nullptr);
  if (status != EFI_BUFFER_TOO_SMALL) {
    return nullptr;
  }
  auto *handles = static_cast<EFI_HII_HANDLE *>(AllocatePool(size));
  if (handles == nullptr) {
    return nullptr;
  }
  status = database->ListPackageLists(database, EFI_HII_PACKAGE_FORMS, nullptr, &size, handles);
  if (EFI_ERROR(status)) {
    FreePool(handles);
    return nullptr;
  }
  *count = size / sizeof(EFI_HII_HANDLE);
  return handles;
}

EFI_STATUS FindOption(UINT16 token, const EFI_GUID &preferred, OBV_SETUP_OPTION *option) {
  EFI_HII_DATABASE_PROTOCOL *database = FindDatabase();
  UINTN count = 0;
  EFI_HII_HANDLE *handles = database == nullptr ? nullptr : ListForms(database, &count);
  if (handles == nullptr) {
    return EFI_NOT_FOUND;
  }
  bool found = false;
  for (UINTN i = 0; i < count && !found; ++i) {
    found = FindInList(database, handles[i], token, &preferred, option);
  }
  for (UINTN i = 0; i < count && !found; ++i) {
    found = FindInList(database, handles[i], token, nullptr, option);
  }
  FreePool(handles);
  return found ? EFI_SUCCESS : EFI_NOT_FOUND;
}

}  // namespace

EFI_STATUS OpenSetupOption(UINT16 token, OBV_SETUP_OPTION *option) {
  OBV_SETUP_PROTOCOL *setup = FindSetup();
  if (setup == nullptr) {
    return EFI_UNSUPPORTED;
  }
  EFI_STATUS status = FindOption(token, setup->FormSet, option);
  if (EFI_ERROR(status)) {
    (void)setup->OpenOption(setup, nullptr);
    return status;
  }
  return setup->OpenOption(setup, option);
}

}  // namespace obv_host
