/** @file
  The board binary, read as the host reads it. Whatever is accepted must keep
  the contract that the application relies on, in every view geometry.
**/

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "test/fuzz/Repair.h"

#include "host/portable/Host.h"
#include "host/portable/HostLog.h"
#include "host/portable/HostSlots.h"

namespace obv_host {
namespace {

UINT64 ReadClock(void *) { return 0; }
void WriteLog(void *, const CHAR8 *line, UINTN size) {
  if (size == 0 || line[size - 1] != '\n') {
    std::abort();
  }
}
EFI_STATUS FindGop(void *, EFI_GRAPHICS_OUTPUT_PROTOCOL **) { return EFI_NOT_FOUND; }
void *Allocate(void *, UINTN size) { return std::malloc(size); }
void Free(void *, void *memory) { std::free(memory); }

void Require(bool condition) {
  if (!condition) {
    std::abort();
  }
}

template <typename Character>
bool Ends(const Character *text, size_t count) {
  for (size_t i = 0; i < count; i++) {
    if (text[i] == 0) {
      return true;
    }
  }
  return false;
}

void RequireLook(const OBV_COMPONENT_STYLE *look) {
  Require(look != nullptr && Ends(look->TextColor, 20) && Ends(look->BackgroundColor, 20) &&
          Ends(look->MarkColor, 20) && Ends(look->BorderColor, 20));
}

void RequirePoints(const OBV_COMPONENT &component, UINT16 width, UINT16 height) {
  for (UINTN i = 0; i < component.HotspotVertexCount; i++) {
    Require(component.HotspotVertices[i].X < width && component.HotspotVertices[i].Y < height);
  }
  for (UINTN i = 0; i < component.LeaderPointCount; i++) {
    const OBV_POINT &point = component.LeaderPoints[i];
    Require(point.X >= 0 && point.X < width && point.Y >= 0 && point.Y < height);
  }
}

void RequireComponent(Host *host, OBV_COMPONENT *component, UINT16 width, UINT16 height) {
  Require(Ends(component->Name, OBV_NAME_LENGTH) && component->Name[0] != 0);
  Require(component->Type <= 9);
  Require(component->CalloutSide >= 0 && component->CalloutSide <= 8);
  Require(component->TextAlign >= 0 && component->TextAlign <= 2);
  Require(component->HotspotVertexCount >= 3 && component->HotspotVertexCount <= 20);
  Require(component->LeaderPointCount >= 1 && component->LeaderPointCount <= 20);
  RequireLook(component->DefaultStyle);
  RequireLook(component->FocusStyle);
  RequirePoints(*component, width, height);
  OBV_PROTOCOL *protocol = &host->Protocol;
  protocol->QueryComponentStatus(protocol, component->Name, component->Type, OBV_INFO_CAPACITY,
                                 &component->InfoCount, component->Info);
  Require(component->InfoCount <= OBV_INFO_CAPACITY);
  for (UINTN i = 0; i < component->InfoCount; i++) {
    Require(component->Info[i].Kind <= OBV_INFO_SIDE_LIST);
    Require(Ends(component->Info[i].Label, OBV_INFO_LABEL_LENGTH));
    Require(Ends(component->Info[i].Value, OBV_INFO_VALUE_LENGTH));
  }
}

void UseView(Host *host, UINT16 width, UINT16 height) {
  const BoardHeader &header = host->ActiveBoard.Header;
  OBV_PROTOCOL *protocol = &host->Protocol;
  OBV_COMPONENT *components = nullptr;
  Require(protocol->ParseComponents(protocol, &components, header.PictureHeight,
                                    header.PictureWidth, height, width, 0.75, width / 1920.0,
                                    height / 1080.0) == EFI_SUCCESS);
  Require(host->Shared.ComponentCount <= OBV_MAX_COMPONENTS);
  for (UINTN i = 0; i < host->Shared.ComponentCount; i++) {
    RequireComponent(host, &components[i], width, height);
  }
  protocol->FinishParse(protocol);
}

void Use(const std::vector<UINT8> &bytes) {
  const HostServices services = {
      nullptr, ReadClock, WriteLog, FindGop, Allocate, Free, nullptr, nullptr,
  };
  const FontFile fonts[kFaceCount] = {};
  Host host;
  InitializeHost(&host, services, fonts);
  if (UseBoard(&host, "fuzzed board", bytes.data(), bytes.size()) == EFI_SUCCESS) {
    UseView(&host, 1024, 768);
    UseView(&host, 3840, 2160);
  }
  ReleaseHost(&host);
}

}  // namespace
}  // namespace obv_host

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, size_t size) {
  std::vector<UINT8> bytes(data, data + size);
  obv_host::Use(bytes);
  fuzz::RepairBoard(&bytes);
  obv_host::Use(bytes);
  return 0;
}
