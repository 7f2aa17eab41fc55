#include "platform/GraphicsOutput.h"

#include "app/base/Geometry.h"
#include "app/base/HostClient.h"
#include "app/base/MemoryPool.h"
#include "app/base/Run.h"

namespace {

/// Enumerates on behalf of an operation, which logs a failure as its own.
EFI_STATUS ListOutputs(const CHAR8 *operation, GopList *list) {
  ZeroMem(list, sizeof(*list));
  EFI_STATUS status = GetAllGopPrrotocol(list);
  if (EFI_ERROR(status)) {
    LogOperationError(operation, status);
  }
  return status;
}

bool ModeMatches(EFI_GRAPHICS_OUTPUT_PROTOCOL *gop, UINT32 mode, UINT16 height, UINT16 width) {
  EFI_GRAPHICS_OUTPUT_MODE_INFORMATION *info = nullptr;
  UINTN size = 0;
  EFI_STATUS status = gop->QueryMode(gop, mode, &size, &info);
  if (EFI_ERROR(status) || info == nullptr) {
    return false;
  }
  bool matches = info->VerticalResolution == height && info->HorizontalResolution == width;
  (void)gBS->FreePool(info);
  return matches;
}

}  // namespace

EFI_STATUS GetAllGopPrrotocol(GopList *list) {
  UINTN handleCount = 0;
  EFI_HANDLE *handles = nullptr;
  EFI_STATUS status = gBS->LocateHandleBuffer(ByProtocol, &gEfiGraphicsOutputProtocolGuid, nullptr,
                                              &handleCount, &handles);
  if (EFI_ERROR(status)) {
    LogOperationError("GetAllGopPrrotocol", status);
    return status;
  }
  UINTN used = 0;
  for (UINTN i = 0; i < handleCount; ++i) {
    VOID *interface = nullptr;
    status = gBS->HandleProtocol(handles[i], &gEfiGraphicsOutputProtocolGuid, &interface);
    if (!EFI_ERROR(status) && used < kMaxGops) {
      list->Outputs[used++] = static_cast<EFI_GRAPHICS_OUTPUT_PROTOCOL *>(interface);
    }
  }
  (void)gBS->FreePool(handles);
  return status;
}

EFI_HANDLE FindGopHandle(const EFI_GRAPHICS_OUTPUT_PROTOCOL *gop) {
  UINTN handleCount = 0;
  EFI_HANDLE *handles = nullptr;
  if (EFI_ERROR(gBS->LocateHandleBuffer(ByProtocol, &gEfiGraphicsOutputProtocolGuid, nullptr,
                                        &handleCount, &handles))) {
    return nullptr;
  }
  EFI_HANDLE found = nullptr;
  for (UINTN i = 0; i < handleCount && found == nullptr; ++i) {
    VOID *interface = nullptr;
    EFI_STATUS status =
        gBS->HandleProtocol(handles[i], &gEfiGraphicsOutputProtocolGuid, &interface);
    if (!EFI_ERROR(status) && interface == gop) {
      found = handles[i];
    }
  }
  (void)gBS->FreePool(handles);
  return found;
}

UINT32 FindGopMode(EFI_GRAPHICS_OUTPUT_PROTOCOL *gop, UINT16 height, UINT16 width) {
  for (UINT32 mode = 0; mode < gop->Mode->MaxMode; ++mode) {
    if (ModeMatches(gop, mode, height, width)) {
      return mode;
    }
  }
  return kNoGopMode;
}

EFI_STATUS SetAllGopMode(UINT16 height, UINT16 width) {
  GopList list;
  EFI_STATUS status = ListOutputs("SetAllGopMode", &list);
  if (EFI_ERROR(status)) {
    return status;
  }
  ForEachOutput(list, [=](EFI_GRAPHICS_OUTPUT_PROTOCOL *gop) {
    UINT32 mode = FindGopMode(gop, height, width);
    if (mode != kNoGopMode && mode != gop->Mode->Mode) {
      // An output that refuses stays as it is.
      (void)gop->SetMode(gop, mode);
    }
  });
  return EFI_SUCCESS;
}

EFI_STATUS BackupScreenShots(EFI_GRAPHICS_OUTPUT_PROTOCOL *gop,
                             EFI_GRAPHICS_OUTPUT_BLT_PIXEL **buffer) {
  if (gop == nullptr || buffer == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  UINTN width = gop->Mode->Info->HorizontalResolution;
  UINTN height = gop->Mode->Info->VerticalResolution;
  if (*buffer == nullptr) {
    *buffer = static_cast<EFI_GRAPHICS_OUTPUT_BLT_PIXEL *>(
        malloc(width * height * sizeof(EFI_GRAPHICS_OUTPUT_BLT_PIXEL)));
  }
  // Without a buffer the output is not asked: one that does not test it would write to address 0.
  EFI_STATUS status = EFI_OUT_OF_RESOURCES;
  if (*buffer != nullptr) {
    status = gop->Blt(gop, *buffer, EfiBltVideoToBltBuffer, 0, 0, 0, 0, width, height, 0);
  }
  if (EFI_ERROR(status)) {
    LogOperationError("BackupScreenShots", status);
  }
  return status;
}

EFI_STATUS ClearAllScreen() {
  GopList list;
  EFI_STATUS status = ListOutputs("ClearAllScreen", &list);
  if (EFI_ERROR(status)) {
    return status;
  }
  ForEachOutput(list, [](EFI_GRAPHICS_OUTPUT_PROTOCOL *gop) {
    EFI_GRAPHICS_OUTPUT_BLT_PIXEL black = {};
    const EFI_GRAPHICS_OUTPUT_MODE_INFORMATION *mode = gop->Mode->Info;
    (void)gop->Blt(gop, &black, EfiBltVideoFill, 0, 0, 0, 0, mode->HorizontalResolution,
                   mode->VerticalResolution, 0);
  });
  return EFI_SUCCESS;
}

EFI_STATUS RecoverScreenContent(UINT16, UINT16) {
  GopList list;
  EFI_STATUS status = ListOutputs("RecoverScreenContent", &list);
  if (EFI_ERROR(status)) {
    return status;
  }
  if (gRun.ScreenBackup == nullptr) {
    return EFI_SUCCESS;  // Nothing was saved; the setup draws itself anew.
  }
  const OBV_SHARED_STATE *shared = gHost.SharedState;
  bool everywhere = shared->RestoreAllOutputsB != 0 || shared->RestoreAllOutputsA != 0;
  EFI_GRAPHICS_OUTPUT_PROTOCOL *inUse = gHost.Gop;
  bool found = false;
  ForEachOutput(list, [=, &found](EFI_GRAPHICS_OUTPUT_PROTOCOL *gop) {
    // One interface may stand on two handles.
    if (everywhere || (gop == inUse && !found)) {
      found = true;
      (void)gop->Blt(gop, gRun.ScreenBackup, EfiBltBufferToVideo, 0, 0, 0, 0,
                     gGeometry.PreviousWidth, gGeometry.PreviousHeight, 0);
    }
  });
  return EFI_SUCCESS;
}
