#include "setup/portable/SetupLink.h"

namespace obv_setup {
namespace {

static_assert(OFFSET_OF(SetupLink, Protocol) == 0, "OpenOption relies on it");

EFI_STATUS EFIAPI OpenOption(OBV_SETUP_PROTOCOL *This, CONST OBV_SETUP_OPTION *option) {
  bool names = option != nullptr && option->FormId != 0 && option->QuestionId != 0;
  if (This == nullptr || (option != nullptr && !names)) {
    return EFI_INVALID_PARAMETER;
  }
  auto *link = reinterpret_cast<SetupLink *>(This);
  if (!link->Waits) {
    return EFI_NOT_READY;
  }
  link->LacksOption = option == nullptr;
  link->HasOption = option != nullptr;
  if (option == nullptr) {
    return EFI_SUCCESS;
  }
  CopyMem(&link->Option, option, sizeof(link->Option));
  return EFI_SUCCESS;
}

}  // namespace

void InitializeSetupLink(SetupLink *link) {
  ZeroMem(link, sizeof(*link));
  link->Protocol.OpenOption = OpenOption;
  link->Protocol.FormSet = OBV_SETUP_FORMSET_GUID;
}

void BeginVisit(SetupLink *link) {
  link->Waits = true;
  link->HasOption = false;
  link->LacksOption = false;
}

bool EndVisit(SetupLink *link, OBV_SETUP_OPTION *option) {
  bool jumps = link->Waits && link->HasOption;
  if (jumps) {
    CopyMem(option, &link->Option, sizeof(*option));
  }
  link->Waits = false;
  link->HasOption = false;
  return jumps;
}

}  // namespace obv_setup
