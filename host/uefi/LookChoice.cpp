#include "host/uefi/LookChoice.h"

namespace obv_host {
namespace {

constexpr const char16_t *kVariable = u"ObvSetup";

}  // namespace

LookChoice ReadLookChoice() {
  CHAR16 *name = reinterpret_cast<CHAR16 *>(const_cast<char16_t *>(kVariable));
  EFI_GUID vendor = OBV_SETUP_VARIABLE_GUID;
  UINT8 data[OBV_SETUP_VARIABLE_LIMIT];
  UINTN size = sizeof(data);
  EFI_STATUS status = gRT->GetVariable(name, &vendor, nullptr, &size, data);
  return ParseLookChoice(EFI_ERROR(status) ? nullptr : data, size);
}

}  // namespace obv_host
