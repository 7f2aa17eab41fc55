/** @file
  What EDK2's build generates for the application: the order of the library constructors, which
  script/build compares with EDK2's own, and the way to the entry function.
**/

#include <Uefi.h>

#include <Library/UefiApplicationEntryPoint.h>

EFI_STATUS EFIAPI UefiBootServicesTableLibConstructor(EFI_HANDLE, EFI_SYSTEM_TABLE *);
EFI_STATUS EFIAPI UefiRuntimeServicesTableLibConstructor(EFI_HANDLE, EFI_SYSTEM_TABLE *);
EFI_STATUS EFIAPI UefiLibConstructor(EFI_HANDLE, EFI_SYSTEM_TABLE *);
EFI_STATUS EFIAPI HobLibConstructor(EFI_HANDLE, EFI_SYSTEM_TABLE *);
EFI_STATUS EFIAPI UefiHiiServicesLibConstructor(EFI_HANDLE, EFI_SYSTEM_TABLE *);
EFI_STATUS EFIAPI VeltBoardscopeAppEntryPoint(EFI_HANDLE, EFI_SYSTEM_TABLE *);

const UINT32 _gUefiDriverRevision = 0;

VOID EFIAPI ProcessLibraryConstructorList(EFI_HANDLE ImageHandle, EFI_SYSTEM_TABLE *SystemTable) {
  UefiBootServicesTableLibConstructor(ImageHandle, SystemTable);
  UefiRuntimeServicesTableLibConstructor(ImageHandle, SystemTable);
  UefiLibConstructor(ImageHandle, SystemTable);
  HobLibConstructor(ImageHandle, SystemTable);
  UefiHiiServicesLibConstructor(ImageHandle, SystemTable);
}

VOID EFIAPI ProcessLibraryDestructorList(EFI_HANDLE ImageHandle, EFI_SYSTEM_TABLE *SystemTable) {
  (void)ImageHandle;
  (void)SystemTable;
}

EFI_STATUS EFIAPI ProcessModuleEntryPointList(EFI_HANDLE ImageHandle,
                                              EFI_SYSTEM_TABLE *SystemTable) {
  return VeltBoardscopeAppEntryPoint(ImageHandle, SystemTable);
}
