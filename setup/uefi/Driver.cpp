#include "setup/uefi/Driver.h"

#include "setup/portable/SelectionRecord.h"
#include "setup/portable/SetupPages.h"
#include "setup/uefi/DamagedStack.h"

// Written by EDK2's form compiler. The array of the texts is in AutoGen.h.
extern "C" UINT8 ObvSetupFormsBin[];

namespace obv_setup {

ConfigAccess gAccess;

namespace {

/// The form browser finds a driver's values by the device path of its handle.
struct SetupDevicePath {
  VENDOR_DEVICE_PATH Vendor;
  EFI_DEVICE_PATH_PROTOCOL End;
};

constinit SetupDevicePath gDevicePath = {
    .Vendor = {.Header = {.Type = HARDWARE_DEVICE_PATH,
                          .SubType = HW_VENDOR_DP,
                          .Length = {sizeof(VENDOR_DEVICE_PATH), 0}},
               .Guid = OBV_SETUP_FORMSET_GUID},
    .End = {.Type = END_DEVICE_PATH_TYPE,
            .SubType = END_ENTIRE_DEVICE_PATH_SUBTYPE,
            .Length = {END_DEVICE_PATH_LENGTH, 0}},
};

bool AnotherSetupIsThere() {
  EFI_GUID protocolGuid = OBV_SETUP_PROTOCOL_GUID;
  VOID *other = nullptr;
  return !EFI_ERROR(gBS->LocateProtocol(&protocolGuid, nullptr, &other));
}

EFI_STATUS InstallProtocols() {
  EFI_GUID setupGuid = OBV_SETUP_PROTOCOL_GUID;
  EFI_GUID handlerGuid = VELT_SETUP_EVENT_HANDLER_PROTOCOL_GUID;
  return gBS->InstallMultipleProtocolInterfaces(
      &gAccess.Handle, &gEfiDevicePathProtocolGuid, &gDevicePath, &gEfiHiiConfigAccessProtocolGuid,
      &gAccess.Protocol, &setupGuid, &gAccess.Link.Protocol, &handlerGuid,
      &gSelectionRecord.Handler, nullptr);
}

EFI_STATUS UninstallProtocols() {
  EFI_GUID setupGuid = OBV_SETUP_PROTOCOL_GUID;
  EFI_GUID handlerGuid = VELT_SETUP_EVENT_HANDLER_PROTOCOL_GUID;
  return gBS->UninstallMultipleProtocolInterfaces(
      gAccess.Handle, &gEfiDevicePathProtocolGuid, &gDevicePath, &gEfiHiiConfigAccessProtocolGuid,
      &gAccess.Protocol, &setupGuid, &gAccess.Link.Protocol, &handlerGuid,
      &gSelectionRecord.Handler, nullptr);
}

EFI_STATUS AddPages() {
  EFI_GUID listGuid = OBV_SETUP_FORMSET_GUID;
  gAccess.Pages = HiiAddPackages(&listGuid, gAccess.Handle, ObvSetupStrings, ObvSetupFormsBin,
                                 const_cast<UINT8 *>(kGlyphPackages), nullptr);
  return gAccess.Pages == nullptr ? EFI_OUT_OF_RESOURCES : EFI_SUCCESS;
}

}  // namespace
}  // namespace obv_setup

using namespace obv_setup;

// Not guarded, nor part of a caller that is: the guard's value changes under it.
extern "C" __attribute__((no_stack_protector, noinline)) EFI_STATUS EFIAPI
ObvSetupEntryPoint(EFI_HANDLE imageHandle, EFI_SYSTEM_TABLE *) {
  SeedStackGuard();
  if (AnotherSetupIsThere()) {
    return EFI_ALREADY_STARTED;
  }
  InitializeConfigAccess(imageHandle, &gAccess);
  InitializeSelectionRecord();
  EFI_STATUS status = InstallProtocols();
  if (EFI_ERROR(status)) {
    return status;
  }
  status = AddPages();
  if (EFI_ERROR(status)) {
    (void)UninstallProtocols();
  }
  return status;
}

extern "C" EFI_STATUS EFIAPI ObvSetupUnload(EFI_HANDLE) {
  EFI_STATUS status = UninstallProtocols();
  if (EFI_ERROR(status)) {
    return status;
  }
  HiiRemovePackages(gAccess.Pages);
  ZeroMem(&gAccess, sizeof(gAccess));
  return EFI_SUCCESS;
}
