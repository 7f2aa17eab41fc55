#include "app/base/LocalizedStrings.h"

#include "app/base/HostClient.h"
#include "app/base/MemoryPool.h"
#include "app/base/Utf8.h"

LocalizedStringState gLocalizedStrings;

namespace {

constexpr CHAR8 kDefaultLanguage[] = "en-US";
constexpr UINTN kLanguageSize = 256;

/// Fills the buffer of kLanguageSize zeroed bytes. True when the variable ends as it should, or is
/// absent: then the HII library may read it, too.
bool ReadPlatformLanguage(CHAR8 *language) {
  VOID *value = nullptr;
  UINTN size = 0;
  EFI_STATUS status = GetEfiGlobalVariable2(Ucs2(u"PlatformLang"), &value, &size);
  if (EFI_ERROR(status)) {
    CopyMem(language, kDefaultLanguage, sizeof(kDefaultLanguage));
    return true;
  }
  // The variable may lack its terminator, or be longer than any language code.
  CopyMem(language, value, MIN(size, kLanguageSize - 1));
  bool ends = ScanMem8(value, size, 0) != nullptr;
  (void)gBS->FreePool(value);
  return ends;
}

EFI_STRING FetchText(EFI_HII_HANDLE package, EFI_STRING_ID id, const CHAR8 *language, bool safe) {
  if (safe) {
    return HiiGetString(package, id, language);
  }
  // To find a language that is close enough, that function reads the variable once more, and beyond
  // its end where it has no terminator.
  return HiiGetStringEx(package, id, language, FALSE);
}

CHAR8 *LoadText(EFI_HII_HANDLE package, EFI_STRING_ID id, const CHAR8 *language, bool safe) {
  EFI_STRING text = FetchText(package, id, language, safe);
  if (text == nullptr) {
    text = FetchText(package, id, kDefaultLanguage, safe);
  }
  UINTN units = text == nullptr ? 0 : StrLen(text);
  UINTN capacity = units * 4 + 1;
  auto *converted = static_cast<CHAR8 *>(malloc(capacity));
  if (text != nullptr) {
    if (converted != nullptr) {
      ConvertUtf16ToUtf8(text, units, converted, capacity);
    }
    (void)gBS->FreePool(text);
  }
  return converted;
}

}  // namespace

EFI_STATUS LoadLocalizedStrings() {
  EFI_GUID guid = OBV_STRING_PACKAGE_LIST_GUID;
  // The library takes the HII protocols for granted; firmware may lack them.
  bool hasHii = gHiiDatabase != nullptr && gHiiString != nullptr;
  EFI_HII_HANDLE *packages = hasHii ? HiiGetHiiHandles(&guid) : nullptr;
  if (packages == nullptr) {
    LogError("Load multilangage string fail\n");
    return EFI_NOT_FOUND;
  }
  // Spelt like this, and at the error level, for those who search logs for it.
  LogError("Load multilangage string success\n");

  auto *buffer = static_cast<CHAR8 *>(malloc(kLanguageSize));
  bool ends = buffer != nullptr && ReadPlatformLanguage(buffer);
  const CHAR8 *language = buffer != nullptr ? buffer : kDefaultLanguage;
  for (UINTN i = 0; i < OBV_STRING_COUNT; ++i) {
    gLocalizedStrings.Texts[i] =
        LoadText(packages[0], gHost.SharedState->StringIds[i], language, ends);
  }
  (void)gBS->FreePool(packages);
  free(buffer);
  return EFI_SUCCESS;
}

const CHAR8 *LocalizedText(TextId id) {
  const CHAR8 *text = gLocalizedStrings.Texts[static_cast<UINTN>(id)];
  return text != nullptr ? text : "";
}
