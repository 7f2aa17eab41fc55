#include "ProbeCycle.h"

#include "ProbeDebug.h"
#include "ProbeHardware.h"

namespace {

struct Census {
  UINTN Handles;
  UINT64 Pages;
};

// Not on the heap: it is what is counted.
alignas(8) UINT8 gMap[64 * 1024];

EFI_STATUS CountPages(UINT64 *pages) {
  UINTN size = sizeof(gMap);
  UINTN key = 0;
  UINTN stride = 0;
  UINT32 version = 0;
  auto *first = reinterpret_cast<EFI_MEMORY_DESCRIPTOR *>(gMap);
  EFI_STATUS status = gBS->GetMemoryMap(&size, first, &key, &stride, &version);
  if (EFI_ERROR(status)) {
    return status;
  }
  for (UINTN at = 0; at + stride <= size; at += stride) {
    const auto *descriptor = reinterpret_cast<const EFI_MEMORY_DESCRIPTOR *>(gMap + at);
    *pages += descriptor->Type == EfiConventionalMemory ? 0 : descriptor->NumberOfPages;
  }
  return EFI_SUCCESS;
}

EFI_STATUS Count(Census *census) {
  EFI_HANDLE *handles = nullptr;
  EFI_STATUS status =
      gBS->LocateHandleBuffer(AllHandles, nullptr, nullptr, &census->Handles, &handles);
  if (EFI_ERROR(status)) {
    return status;
  }
  gBS->FreePool(handles);
  return CountPages(&census->Pages);
}

EFI_STATUS Start(EFI_HANDLE probe, const CHAR16 *name, EFI_HANDLE *driver) {
  EFI_STATUS status = LoadProgram(probe, name, driver);
  return EFI_ERROR(status) ? status : gBS->StartImage(*driver, nullptr, nullptr);
}

EFI_STATUS LoadAskUnload(EFI_HANDLE probe, const CHAR16 *host, const CHAR16 *setup) {
  EFI_HANDLE drivers[2] = {};
  EFI_STATUS status = Start(probe, host, &drivers[0]);
  if (!EFI_ERROR(status)) {
    status = Start(probe, setup, &drivers[1]);
  }
  if (!EFI_ERROR(status)) {
    status = LogStates();
  }
  for (UINTN i = ARRAY_SIZE(drivers); i-- > 0;) {
    EFI_STATUS unloaded = drivers[i] == nullptr ? EFI_SUCCESS : gBS->UnloadImage(drivers[i]);
    status = EFI_ERROR(status) ? status : unloaded;
  }
  return status;
}

}  // namespace

EFI_STATUS CycleHostAndSetup(EFI_HANDLE probe, const CHAR16 *host, const CHAR16 *setup) {
  Census before = {};
  Census after = {};
  EFI_STATUS status = LoadAskUnload(probe, host, setup);
  if (!EFI_ERROR(status)) {
    status = Count(&before);
  }
  if (!EFI_ERROR(status)) {
    status = LoadAskUnload(probe, host, setup);
  }
  if (!EFI_ERROR(status)) {
    status = Count(&after);
  }
  if (!EFI_ERROR(status)) {
    Print(Ucs2(u"handles %d %d, pages %ld %ld\n"), before.Handles, after.Handles, before.Pages,
          after.Pages);
  }
  return status;
}
