#include "host/sources/SmbiosFacts.h"

namespace obv_host {
namespace {

constexpr const CHAR8 *kPlaceholders[] = {
    "To Be Filled By O.E.M.",
    "To Be Filled By OEM",
    "Default string",
    "Not Specified",
    "Not Available",
    "Not Applicable",
    "Not Provided",
    "None",
    "N/A",
    "Unknown",
    "Undefined",
    "Empty",
    "O.E.M.",
    "System Product Name",
    "System Serial Number",
    "System Version",
    "Base Board Serial Number",
};

enum HealthBits : UINT8 { kNonCritical = 4, kCritical = 5, kNonRecoverable = 6 };

}  // namespace

bool IsPlaceholder(const CHAR8 *text) {
  for (const CHAR8 *placeholder : kPlaceholders) {
    if (AsciiStriCmp(text, placeholder) == 0) {
      return true;
    }
  }
  return text[0] == '\0';
}

void TellText(Facts *facts, UINT32 kind, const CHAR8 *label, const SmbiosStructure &structure,
              UINTN offset) {
  CHAR8 text[kSmbiosTextSize];
  SmbiosTextField(structure, offset, text);
  if (!IsPlaceholder(text)) {
    TellField(facts, kind, label, text, sizeof(text));
  }
}

void TellWord(Facts *facts, UINT32 kind, const CHAR8 *label, const CHAR8 *word) {
  if (word != nullptr) {
    TellFact(facts, kind, label, "%a", word);
  }
}

EFI_STATUS TellHealth(Facts *facts, UINT8 typeAndStatus) {
  switch (typeAndStatus >> 5) {
    case kNonCritical:
      TellFact(facts, OBV_INFO_DESCRIPTION, "Health", "Warning: outside its usual range");
      return EFI_SUCCESS;
    case kCritical:
      TellFact(facts, OBV_INFO_DESCRIPTION, "Health", "Failing: critical");
      return EFI_DEVICE_ERROR;
    case kNonRecoverable:
      TellFact(facts, OBV_INFO_DESCRIPTION, "Health", "Failed: cannot recover");
      return EFI_DEVICE_ERROR;
    default:
      return EFI_SUCCESS;
  }
}

}  // namespace obv_host
