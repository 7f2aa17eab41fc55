#include "host/inventory/InventoryFile.h"
#include "host/uefi/DamagedStack.h"

extern "C" {
#include <Library/UefiLib.h>
}

// Not guarded, nor part of a caller that is: the guard's value changes under it.
extern "C" __attribute__((no_stack_protector, noinline)) EFI_STATUS EFIAPI
BoardscopeInventoryEntryPoint(EFI_HANDLE imageHandle, EFI_SYSTEM_TABLE *) {
  obv_host::SeedStackGuard();
  EFI_STATUS status = obv_host::WriteInventoryFile(imageHandle);
  if (status == EFI_BUFFER_TOO_SMALL) {
    AsciiPrint("inventory.yaml has no room for all of this PC's hardware.\n");
  } else if (EFI_ERROR(status)) {
    AsciiPrint("inventory.yaml cannot be written to the volume of this program: %r\n", status);
  } else {
    AsciiPrint("inventory.yaml is written to the volume of this program.\n");
  }
  return status;
}
