#include "setup/uefi/ConfigAccess.h"

#include "setup/portable/Callback.h"
#include "setup/uefi/PlatformLanguage.h"
#include "setup/uefi/Popup.h"
#include "setup/uefi/SettingsVariable.h"
#include "setup/uefi/ViewStart.h"

namespace obv_setup {
namespace {

constexpr const char16_t *kVariableName = u"ObvSetup";
/// "&OFFSET=0&WIDTH=" and sixteen digits, with room to spare.
constexpr UINTN kElementLength = 48;

bool IsOurs(CONST EFI_STRING request) {
  EFI_GUID vendor = OBV_SETUP_VARIABLE_GUID;
  return HiiIsConfigHdrMatch(request, &vendor, Ucs2(kVariableName)) != FALSE;
}

static_assert(OFFSET_OF(ConfigAccess, Protocol) == 0, "AccessOf relies on it");

const ConfigAccess &AccessOf(CONST EFI_HII_CONFIG_ACCESS_PROTOCOL *This) {
  return *reinterpret_cast<const ConfigAccess *>(This);
}

/// A request for all values in pool memory, behind the given header or the driver's own; NULL
/// without memory.
CHAR16 *RequestForAll(EFI_HANDLE driver, const CHAR16 *header) {
  EFI_GUID vendor = OBV_SETUP_VARIABLE_GUID;
  CHAR16 *own = nullptr;
  if (header == nullptr) {
    own = HiiConstructConfigHdr(&vendor, Ucs2(kVariableName), driver);
    header = own;
  }
  if (header == nullptr) {
    return nullptr;
  }
  UINTN size = (StrLen(header) + kElementLength) * sizeof(CHAR16);
  auto *request = static_cast<CHAR16 *>(AllocateZeroPool(size));
  if (request != nullptr) {
    UnicodeSPrint(request, size, Ucs2(u"%s&OFFSET=0&WIDTH=%016lx"), header, sizeof(Settings));
  }
  if (own != nullptr) {
    FreePool(own);
  }
  return request;
}

EFI_STATUS Answer(CONST EFI_STRING request, EFI_STRING *progress, EFI_STRING *results) {
  Settings settings;
  LoadSettings(&settings);
  return gHiiConfigRouting->BlockToConfig(gHiiConfigRouting, request,
                                          reinterpret_cast<UINT8 *>(&settings), sizeof(settings),
                                          results, progress);
}

/// The browser may leave out which values it wants, or everything. Progress then points into a
/// request that is not the caller's, and says at least whether all went well.
EFI_STATUS AnswerForAll(EFI_HANDLE driver, CONST EFI_STRING request, EFI_STRING *progress,
                        EFI_STRING *results) {
  CHAR16 *all = RequestForAll(driver, request);
  if (all == nullptr) {
    return EFI_OUT_OF_RESOURCES;
  }
  EFI_STRING inner = nullptr;
  EFI_STATUS status = Answer(all, &inner, results);
  FreePool(all);
  if (!EFI_ERROR(status) && request != nullptr) {
    *progress = request + StrLen(request);
  }
  return status;
}

EFI_STATUS EFIAPI ExtractConfig(CONST EFI_HII_CONFIG_ACCESS_PROTOCOL *This,
                                CONST EFI_STRING request, EFI_STRING *progress,
                                EFI_STRING *results) {
  if (progress == nullptr || results == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  *progress = request;
  if (request != nullptr && !IsOurs(request)) {
    return EFI_NOT_FOUND;
  }
  if (request == nullptr || StrStr(request, Ucs2(u"OFFSET")) == nullptr) {
    return AnswerForAll(AccessOf(This).Handle, request, progress, results);
  }
  return Answer(request, progress, results);
}

EFI_STATUS EFIAPI RouteConfig(CONST EFI_HII_CONFIG_ACCESS_PROTOCOL *,
                              CONST EFI_STRING configuration, EFI_STRING *progress) {
  if (configuration == nullptr || progress == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  *progress = configuration;
  if (!IsOurs(configuration)) {
    return EFI_NOT_FOUND;
  }
  Settings settings;
  LoadSettings(&settings);
  UINTN size = sizeof(settings);
  EFI_STATUS status = gHiiConfigRouting->ConfigToBlock(
      gHiiConfigRouting, configuration, reinterpret_cast<UINT8 *>(&settings), &size, progress);
  if (EFI_ERROR(status)) {
    return status;
  }
  if (!AreValid(settings)) {
    *progress = configuration;
    return EFI_INVALID_PARAMETER;
  }
  return SaveSettings(settings);
}

const ConfigAccess &AccessIn(void *context) { return *static_cast<const ConfigAccess *>(context); }

EFI_STATUS ShowDriverView(void *context, Trouble *trouble) {
  return ShowView(AccessIn(context).Image, trouble);
}
void TellDriverUser(void *context, Trouble trouble) {
  ShowTrouble(AccessIn(context).Pages, trouble);
}
UINT8 GetDriverLanguage(void *) { return GetPlatformLanguage(); }
EFI_STATUS SetDriverLanguage(void *, UINT8 language) { return SetPlatformLanguage(language); }

EFI_STATUS EFIAPI Callback(CONST EFI_HII_CONFIG_ACCESS_PROTOCOL *This, EFI_BROWSER_ACTION action,
                           EFI_QUESTION_ID question, UINT8 type, EFI_IFR_TYPE_VALUE *value,
                           EFI_BROWSER_ACTION_REQUEST *request) {
  // The browser promises not to change the protocol; what lies behind it is ours.
  auto *access = const_cast<ConfigAccess *>(&AccessOf(This));
  const CallbackServices services = {
      .Context = access,
      .ShowView = ShowDriverView,
      .Tell = TellDriverUser,
      .GetLanguage = GetDriverLanguage,
      .SetLanguage = SetDriverLanguage,
  };
  return AnswerBrowser(
      services, &access->Link,
      {.Action = action, .Question = question, .Type = type, .Value = value, .Request = request});
}

}  // namespace

void InitializeConfigAccess(EFI_HANDLE image, ConfigAccess *access) {
  ZeroMem(access, sizeof(*access));
  access->Protocol.ExtractConfig = ExtractConfig;
  access->Protocol.RouteConfig = RouteConfig;
  access->Protocol.Callback = Callback;
  access->Image = image;
  InitializeSetupLink(&access->Link);
}

}  // namespace obv_setup
