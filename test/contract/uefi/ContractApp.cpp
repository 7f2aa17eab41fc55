/** @file
  Puts the questions to this machine's firmware and prints its answers. The
  volume is the one whose label is CONTRACT.
**/

#include "test/contract/Contract.h"

extern "C" {
#include <Library/UefiLib.h>
}

namespace {

constexpr char16_t kLabel[] = u"CONTRACT";
constexpr UINTN kInformationSize = 2088;

bool HasLabel(EFI_FILE_PROTOCOL *root) {
  static UINT64 room[kInformationSize / sizeof(UINT64)];
  auto *info = reinterpret_cast<EFI_FILE_SYSTEM_INFO *>(room);
  UINTN size = sizeof(room);
  EFI_STATUS status = root->GetInfo(root, &gEfiFileSystemInfoGuid, &size, info);
  return !EFI_ERROR(status) && StrCmp(info->VolumeLabel, Ucs2(kLabel)) == 0;
}

EFI_FILE_PROTOCOL *OpenRoot(EFI_HANDLE handle) {
  void *system = nullptr;
  EFI_STATUS status = gBS->HandleProtocol(handle, &gEfiSimpleFileSystemProtocolGuid, &system);
  if (EFI_ERROR(status)) {
    return nullptr;
  }
  EFI_FILE_PROTOCOL *root = nullptr;
  auto *volume = static_cast<EFI_SIMPLE_FILE_SYSTEM_PROTOCOL *>(system);
  return EFI_ERROR(volume->OpenVolume(volume, &root)) ? nullptr : root;
}

EFI_FILE_PROTOCOL *FindVolume() {
  UINTN count = 0;
  EFI_HANDLE *handles = nullptr;
  if (EFI_ERROR(gBS->LocateHandleBuffer(ByProtocol, &gEfiSimpleFileSystemProtocolGuid, nullptr,
                                        &count, &handles))) {
    return nullptr;
  }
  EFI_FILE_PROTOCOL *found = nullptr;
  for (UINTN i = 0; i < count && found == nullptr; i++) {
    EFI_FILE_PROTOCOL *root = OpenRoot(handles[i]);
    if (root != nullptr && HasLabel(root)) {
      found = root;
    } else if (root != nullptr) {
      root->Close(root);
    }
  }
  gBS->FreePool(handles);
  return found;
}

void PrintLine(void *, const CHAR8 *line) { Print(Ucs2(u"| %a\n"), line); }

}  // namespace

extern "C" EFI_STATUS EFIAPI ContractEntryPoint(EFI_HANDLE, EFI_SYSTEM_TABLE *) {
  EFI_FILE_PROTOCOL *root = FindVolume();
  if (root == nullptr) {
    return EFI_NOT_FOUND;
  }
  contract::PutAllQuestions({PrintLine, nullptr}, root);
  return root->Close(root);
}
