#include "host/portable/Host.h"

#include "host/portable/BoardReader.h"
#include "host/portable/HostLog.h"
#include "host/portable/HostSlots.h"
#include "host/portable/Texts.h"

namespace obv_host {
namespace {

void WireSlots(OBV_PROTOCOL *protocol) {
  protocol->GetTime = HostGetTime;
  protocol->ParseComponents = HostParseComponents;
  protocol->FinishParse = HostFinishParse;
  protocol->GetResourceData = HostGetResourceData;
  protocol->GetFontData = HostGetFontData;
  protocol->GetGop = HostGetGop;
  protocol->QueryComponentStatus = HostQueryComponentStatus;
  protocol->DebugPrint = HostDebugPrint;
  protocol->FindBiosOption = HostFindBiosOption;
  protocol->AfterAppLife = HostAfterAppLife;
  protocol->UnsupportedResolution = HostUnsupportedResolution;
}

/// Gop stays NULL: the application then asks GetGop at each start, so that an
/// output that went away is never handed out. The recolour texts stay empty,
/// as recolouring is off.
void FillSharedState(Host *host) {
  OBV_SHARED_STATE &shared = host->Shared;
  shared.ViewColorText = kCloseFocusColor;
  shared.Config = &host->Config;
  for (UINTN i = 0; i < OBV_STRING_COUNT; ++i) {
    shared.StringIds[i] = TextId(i);
  }
}

void *Allocate(const Host &host, UINTN size) {
  return host.Services.Allocate(host.Services.Context, size);
}

void Free(const Host &host, void *memory) {
  if (memory != nullptr) {
    host.Services.Free(host.Services.Context, memory);
  }
}

/// A board without components or styles takes one unused record of each: a
/// request for no memory could not be told from a failing one.
UINTN AtLeastOne(UINTN count) { return count == 0 ? 1 : count; }

void AdoptBoard(Host *host, const Board &board, BoardStyle *styles, OBV_COMPONENT *components) {
  Free(*host, host->Styles);
  Free(*host, host->Components);
  CopyMem(&host->ActiveBoard, &board, sizeof(board));
  host->Styles = styles;
  host->Components = components;
  for (UINTN i = 0; i < board.Header.StyleCount; ++i) {
    host->Styles[i] = StyleAt(board, i);
  }
  host->Shared.ComponentCount = 0;
  CopyMem(host->Shared.SystemInfo, board.Header.SystemInfo, sizeof(host->Shared.SystemInfo));
  FillAppearance(board.Header.Logo, board.Header.MarkerTheme, &host->Config);
}

}  // namespace

void InitializeHost(Host *host, const HostServices &services, const FontFile (&fonts)[kFaceCount]) {
  ZeroMem(host, sizeof(*host));
  host->Services = services;
  for (UINTN i = 0; i < kFaceCount; ++i) {
    host->Fonts[i] = fonts[i];
  }
  WireSlots(&host->Protocol);
  FillSharedState(host);
  host->Protocol.SharedState = &host->Shared;
  gHostLog.Services = &host->Services;
}

EFI_STATUS UseBoard(Host *host, const CHAR8 *origin, const void *data, UINTN size) {
  Board board;
  BoardFault fault;
  EFI_STATUS status = OpenBoard(data, size, &board, &fault);
  if (EFI_ERROR(status)) {
    HostDebugPrint(OBV_LOG_ERROR, "[Host] %a refused: %a\n", origin, fault.Text);
    return status;
  }
  void *styles = Allocate(*host, AtLeastOne(board.Header.StyleCount) * sizeof(BoardStyle));
  void *components =
      Allocate(*host, AtLeastOne(board.Header.ComponentCount) * sizeof(OBV_COMPONENT));
  if (styles == nullptr || components == nullptr) {
    Free(*host, styles);
    Free(*host, components);
    HostDebugPrint(OBV_LOG_ERROR, "[Host] %a refused: not enough memory\n", origin);
    return EFI_OUT_OF_RESOURCES;
  }
  AdoptBoard(host, board, static_cast<BoardStyle *>(styles),
             static_cast<OBV_COMPONENT *>(components));
  return EFI_SUCCESS;
}

void ReleaseHost(Host *host) {
  Free(*host, host->Styles);
  Free(*host, host->Components);
  if (gHostLog.Services == &host->Services) {
    gHostLog.Services = nullptr;
  }
  ZeroMem(host, sizeof(*host));
}

}  // namespace obv_host
