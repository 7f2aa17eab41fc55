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
    // The key that ended the view may still repeat, and would answer the message unread.
    (void)gST->ConIn->Reset(gST->ConIn, FALSE);
    (void)popup->CreatePopup(popup, EfiHiiPopupStyleError, EfiHiiPopupTypeOk, pages,
                             MessageOf(trouble), nullptr);
  }
}

}  // namespace obv_setup
