#include "ProbePages.h"

namespace {

EFI_GUID kFormSet = OBV_SETUP_FORMSET_GUID;

bool HoldsFormSet(EFI_HII_HANDLE handle) {
  EFI_IFR_FORM_SET *formSet = nullptr;
  UINTN size = 0;
  if (EFI_ERROR(HiiGetFormSetFromHiiHandle(handle, &formSet, &size))) {
    return false;
  }
  bool holds = CompareGuid(&formSet->Guid, &kFormSet) != FALSE;
  gBS->FreePool(formSet);
  return holds;
}

/// NULL when no package list holds the formset.
EFI_HII_HANDLE FindPages() {
  EFI_HII_HANDLE *handles = HiiGetHiiHandles(nullptr);
  if (handles == nullptr) {
    return nullptr;
  }
  EFI_HII_HANDLE found = nullptr;
  for (UINTN i = 0; handles[i] != nullptr && found == nullptr; i++) {
    found = HoldsFormSet(handles[i]) ? handles[i] : nullptr;
  }
  gBS->FreePool(handles);
  return found;
}

}  // namespace

EFI_STATUS OpenSetupPages() {
  EFI_HII_HANDLE pages = FindPages();
  void *interface = nullptr;
  EFI_STATUS status = gBS->LocateProtocol(&gEfiFormBrowser2ProtocolGuid, nullptr, &interface);
  if (pages == nullptr || EFI_ERROR(status)) {
    return EFI_NOT_FOUND;
  }
  auto *browser = static_cast<EFI_FORM_BROWSER2_PROTOCOL *>(interface);
  return browser->SendForm(browser, &pages, 1, &kFormSet, 0, nullptr, nullptr);
}
