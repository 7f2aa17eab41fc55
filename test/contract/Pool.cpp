#include "test/contract/Contract.h"

namespace contract {

void AskAboutPool(const Report &report) {
  void *block = nullptr;
  EFI_STATUS status = gBS->AllocatePool(EfiBootServicesData, 1, &block);
  Say(report, "allocate 1 byte", status);
  SayNumber(report, "its address modulo 8", reinterpret_cast<UINTN>(block) % 8);
  Say(report, "free it", gBS->FreePool(block));

  status = gBS->AllocatePool(EfiBootServicesData, 0, &block);
  Say(report, "allocate 0 bytes", status);
  if (!EFI_ERROR(status)) {
    Say(report, "free them", gBS->FreePool(block));
  }
  Say(report, "allocate to nowhere", gBS->AllocatePool(EfiBootServicesData, 1, nullptr));
  Say(report, "allocate of an unknown kind", gBS->AllocatePool(EfiMaxMemoryType, 1, &block));
  Say(report, "allocate everything", gBS->AllocatePool(EfiBootServicesData, MAX_UINTN / 2, &block));
  Say(report, "free nothing", gBS->FreePool(nullptr));
}

}  // namespace contract
