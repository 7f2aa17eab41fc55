#include "setup/uefi/PlatformLanguage.h"

#include "setup/portable/Language.h"

namespace obv_setup {
namespace {

constexpr const char16_t *kName = u"PlatformLang";
constexpr UINT32 kAttributes =
    EFI_VARIABLE_NON_VOLATILE | EFI_VARIABLE_BOOTSERVICE_ACCESS | EFI_VARIABLE_RUNTIME_ACCESS;
constexpr UINTN kLongestCode = 64;

}  // namespace

UINT8 GetPlatformLanguage() {
  CHAR8 code[kLongestCode];
  UINTN size = sizeof(code);
  EFI_STATUS status = gRT->GetVariable(Ucs2(kName), &gEfiGlobalVariableGuid, nullptr, &size, code);
  return LanguageIndex(code, EFI_ERROR(status) ? 0 : size);
}

EFI_STATUS SetPlatformLanguage(UINT8 language) {
  const CHAR8 *code = kLanguageCodes[language];
  return gRT->SetVariable(Ucs2(kName), &gEfiGlobalVariableGuid, kAttributes, AsciiStrSize(code),
                          const_cast<CHAR8 *>(code));
}

}  // namespace obv_setup
