#include "setup/uefi/Popup.h"

namespace obv_setup {
namespace {

EFI_STRING_ID MessageOf(Trouble trouble) {
  switch (trouble) {
    case Trouble::kNoFile:
      return STRING_TOKEN(STR_ERROR_MISSING);
    case Trouble::kRefused:
      return STRING_TOKEN(STR_ERROR_REFUSED);
    case Trouble::kNoHost:
      return STRING_TOKEN(STR_ERROR_NO_HOST);
    case Trouble::kNoOption:
      return STRING_TOKEN(STR_ERROR_NO_OPTION);
    case Trouble::kFailed:
      return STRING_TOKEN(STR_ERROR_FAILED);
  }
  return STRING_TOKEN(STR_ERROR_FAILED);
}

}  // namespace

void ShowTrouble(EFI_HII_HANDLE pages, Trouble trouble) {
  EFI_HII_POPUP_PROTOCOL *popup = nullptr;
  EFI_STATUS status =
      gBS->LocateProtocol(&gEfiHiiPopupProtocolGuid, nullptr, reinterpret_cast<VOID **>(&popup));
  if (!EFI_ERROR(status)) {
    // Without a place for the answer nobody would wait for one.
    EFI_HII_POPUP_SELECTION answer = EfiHiiPopupSelectionOk;
    (void)popup->CreatePopup(popup, EfiHiiPopupStyleError, EfiHiiPopupTypeOk, pages,
                             MessageOf(trouble), &answer);
  }
}

}  // namespace obv_setup
