#include "setup/uefi/SettingsVariable.h"

#include "setup/uefi/DriverFirmware.h"

namespace obv_setup {
namespace {

constexpr const char16_t *kName = u"ObvSetup";
constexpr UINT32 kAttributes = EFI_VARIABLE_NON_VOLATILE | EFI_VARIABLE_BOOTSERVICE_ACCESS;

EFI_STATUS Write(const Settings &settings) {
  EFI_GUID vendor = OBV_SETUP_VARIABLE_GUID;
  return gRT->SetVariable(Ucs2(kName), &vendor, kAttributes, sizeof(settings),
                          const_cast<Settings *>(&settings));
}

}  // namespace

void LoadSettings(Settings *settings) {
  EFI_GUID vendor = OBV_SETUP_VARIABLE_GUID;
  UINT8 data[OBV_SETUP_VARIABLE_LIMIT];
  UINTN size = sizeof(data);
  EFI_STATUS status = gRT->GetVariable(Ucs2(kName), &vendor, nullptr, &size, data);
  ReadSettings(EFI_ERROR(status) ? nullptr : data, size, settings);
}

EFI_STATUS SaveSettings(const Settings &settings) {
  EFI_STATUS status = Write(settings);
  if (status != EFI_INVALID_PARAMETER) {
    return status;
  }
  // An operating system may have left one with attributes of its own, which stand in the way.
  EFI_GUID vendor = OBV_SETUP_VARIABLE_GUID;
  (void)gRT->SetVariable(Ucs2(kName), &vendor, 0, 0, nullptr);
  return Write(settings);
}

}  // namespace obv_setup
