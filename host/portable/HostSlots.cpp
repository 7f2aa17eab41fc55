#include "host/portable/HostSlots.h"

#include "host/portable/ComponentBuilder.h"
#include "host/portable/HostLog.h"
#include "host/portable/StatusSource.h"

namespace obv_host {
namespace {

static_assert(OFFSET_OF(Host, Protocol) == 0, "HostOf relies on it");

Host *HostOf(OBV_PROTOCOL *This) { return reinterpret_cast<Host *>(This); }

bool HasBoard(const Host &host) { return host.ActiveBoard.Picture != nullptr; }

/// The record as the user wants it now. The setup may have changed since the last run.
void ApplyLook(Host *host) {
  if (host->Services.ReadLook == nullptr) {
    return;
  }
  const LookChoice choice = host->Services.ReadLook(host->Services.Context);
  const BoardHeader &header = host->ActiveBoard.Header;
  FillAppearance(header.Logo, header.MarkerTheme, &host->Config);
  AdaptAppearance(choice, &host->Config);
  for (UINTN i = 0; i < header.StyleCount; ++i) {
    host->Styles[i] = StyleAt(host->ActiveBoard, i);
    AdaptStyle(choice, &host->Styles[i]);
  }
}

EFI_STATUS OpenOption(const Host &host, UINTN index) {
  const HostServices &services = host.Services;
  UINT16 token = host.Shared.JumpSearchTokenId;
  OBV_SETUP_OPTION option = {};
  EFI_STATUS status = services.FindOption == nullptr
                          ? EFI_UNSUPPORTED
                          : services.FindOption(services.Context, token, &option);
  const CHAR16 *name = host.Components[index].Name;
  if (status == EFI_UNSUPPORTED) {
    HostDebugPrint(OBV_LOG_INFO, "[Host] Setup would show option 0x%X of component %d, %S\n", token,
                   index, name);
    return EFI_SUCCESS;
  }
  if (EFI_ERROR(status)) {
    HostDebugPrint(OBV_LOG_ERROR, "[Host] Option 0x%X of component %d, %S, cannot be shown: %r\n",
                   token, index, name, status);
    return status;
  }
  HostDebugPrint(OBV_LOG_INFO,
                 "[Host] Setup shows option 0x%X of component %d, %S: form 0x%X of %g\n", token,
                 index, name, option.FormId, &option.FormSet);
  return EFI_SUCCESS;
}

}  // namespace

UINT64 EFIAPI HostGetTime(OBV_PROTOCOL *This) {
  const HostServices &services = HostOf(This)->Services;
  return services.ReadClock(services.Context);
}

EFI_STATUS EFIAPI HostParseComponents(OBV_PROTOCOL *This, OBV_COMPONENT **components,
                                      UINT16 pictureHeight, UINT16 pictureWidth, UINT16 viewHeight,
                                      UINT16 viewWidth, double pictureShare, double scaleX,
                                      double scaleY) {
  Host *host = HostOf(This);
  if (components == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  if (!HasBoard(*host)) {
    return EFI_NOT_READY;
  }
  if (host->Services.MeetHardware != nullptr) {
    host->Services.MeetHardware(host->Services.Context);
  }
  ApplyLook(host);
  const ViewRequest view = {
      .Mapping = MapPicture(pictureHeight, pictureWidth, viewHeight, viewWidth, pictureShare),
      .ScaleX = scaleX,
      .ScaleY = scaleY,
  };
  UINT16 count = host->ActiveBoard.Header.ComponentCount;
  for (UINTN i = 0; i < count; ++i) {
    BuildComponent(host->ActiveBoard, i, view, host->Styles, &host->Components[i]);
  }
  *components = host->Components;
  host->Shared.ComponentCount = count;
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI HostFinishParse(OBV_PROTOCOL *This) {
  HostDebugPrint(OBV_LOG_INFO, "[Host] Board \"%S\", %d components\n",
                 HostOf(This)->ActiveBoard.Header.Title, HostOf(This)->Shared.ComponentCount);
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI HostGetResourceData(OBV_PROTOCOL *This, VOID **data, UINTN *size) {
  const Host *host = HostOf(This);
  if (data == nullptr || size == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  if (!HasBoard(*host)) {
    return EFI_NOT_READY;
  }
  *data = const_cast<UINT8 *>(host->ActiveBoard.Picture);
  *size = host->ActiveBoard.Header.PictureSize;
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI HostGetFontData(OBV_PROTOCOL *This, UINT8 fontIndex, CHAR8 **name, VOID **data,
                                  UINTN *size) {
  const Host *host = HostOf(This);
  if (name == nullptr || data == nullptr || size == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  if (fontIndex >= kFaceCount || host->Fonts[fontIndex].Data == nullptr) {
    return EFI_NOT_FOUND;
  }
  *name = const_cast<CHAR8 *>(kFaceNames[fontIndex]);
  *data = const_cast<void *>(host->Fonts[fontIndex].Data);
  *size = host->Fonts[fontIndex].Size;
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI HostGetGop(OBV_PROTOCOL *This, EFI_GRAPHICS_OUTPUT_PROTOCOL **gop) {
  const HostServices &services = HostOf(This)->Services;
  if (gop == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  return services.FindGop(services.Context, gop);
}

EFI_STATUS EFIAPI HostQueryComponentStatus(OBV_PROTOCOL *This, CHAR16 *name, UINT32 type,
                                           UINTN capacity, UINT64 *infoCount,
                                           OBV_COMPONENT_INFO *infos) {
  return QueryStatus(HostOf(This), name, type, capacity, infoCount, infos);
}

EFI_STATUS EFIAPI HostFindBiosOption(OBV_PROTOCOL *This) {
  const Host *host = HostOf(This);
  UINTN index = host->Shared.JumpComponentIndex;
  if (index >= host->Shared.ComponentCount) {
    HostDebugPrint(OBV_LOG_ERROR, "[Host] There is no component %d to find an option for\n", index);
    return EFI_NOT_FOUND;
  }
  return OpenOption(*host, index);
}

EFI_STATUS EFIAPI HostAfterAppLife(OBV_PROTOCOL *This) {
  const OBV_SHARED_STATE &shared = HostOf(This)->Shared;
  HostDebugPrint(OBV_LOG_INFO,
                 "[Host] Application ended: jump %d, focus %d, category %d, pointer %d %d\n",
                 shared.JumpRequested, shared.FocusIndex, shared.SelectedCategory, shared.PointerX,
                 shared.PointerY);
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI HostUnsupportedResolution(OBV_PROTOCOL *) {
  HostDebugPrint(OBV_LOG_ERROR, "[Host] No display mode suits the view\n");
  return EFI_SUCCESS;
}

}  // namespace obv_host
