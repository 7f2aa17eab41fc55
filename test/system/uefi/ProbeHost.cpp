#include "ProbeHost.h"

namespace {

constexpr double kPictureShare = 0.75;
constexpr UINTN kLineSize = 600;        // room for the most points there can be
constexpr UINTN kPngWidthOffset = 16;   // in the header that opens each PNG file
constexpr UINTN kPngHeightOffset = 20;  // both big-endian
constexpr UINTN kPngHeaderSize = 24;

struct PictureSize {
  UINT16 Width;
  UINT16 Height;
};

EFI_STATUS ReadPictureSize(OBV_PROTOCOL *host, PictureSize *picture) {
  void *data = nullptr;
  UINTN size = 0;
  EFI_STATUS status = host->GetResourceData(host, &data, &size);
  if (EFI_ERROR(status)) {
    return status;
  }
  if (size < kPngHeaderSize) {
    return EFI_VOLUME_CORRUPTED;
  }
  const UINT8 *bytes = static_cast<const UINT8 *>(data);
  picture->Width =
      static_cast<UINT16>(bytes[kPngWidthOffset + 2] << 8 | bytes[kPngWidthOffset + 3]);
  picture->Height =
      static_cast<UINT16>(bytes[kPngHeightOffset + 2] << 8 | bytes[kPngHeightOffset + 3]);
  return EFI_SUCCESS;
}

/// One log line that grows: what does not fit is cut.
struct Line {
  CHAR8 Text[kLineSize];
  UINTN Length;
};

void LogComponent(OBV_PROTOCOL *host, const OBV_COMPONENT &component, UINTN index) {
  host->DebugPrint(OBV_LOG_INFO, "[Probe] component %d %d %d %d %d %S\n", index,
                   static_cast<UINTN>(component.Type), static_cast<UINTN>(component.SearchTokenId),
                   static_cast<UINTN>(component.NotSelectable == 0),
                   static_cast<UINTN>(component.CalloutSide), component.Name);
}

void AddPoint(Line *line, INTN x, INTN y) {
  line->Length += AsciiSPrint(line->Text + line->Length, kLineSize - line->Length, " %d,%d", x, y);
}

void LogOutline(OBV_PROTOCOL *host, const OBV_COMPONENT &component) {
  Line line = {};
  for (UINTN i = 0; i < component.HotspotVertexCount && i < OBV_VERTEX_CAPACITY; i++) {
    AddPoint(&line, component.HotspotVertices[i].X, component.HotspotVertices[i].Y);
  }
  host->DebugPrint(OBV_LOG_INFO, "[Probe] outline%a\n", line.Text);
}

void LogLeader(OBV_PROTOCOL *host, const OBV_COMPONENT &component) {
  Line line = {};
  for (UINTN i = 0; i < component.LeaderPointCount && i < OBV_LEADER_POINT_CAPACITY; i++) {
    AddPoint(&line, component.LeaderPoints[i].X, component.LeaderPoints[i].Y);
  }
  host->DebugPrint(OBV_LOG_INFO, "[Probe] leader%a\n", line.Text);
}

}  // namespace

OBV_PROTOCOL *FindHost() {
  EFI_GUID guid = OBV_PROTOCOL_GUID;
  void *host = nullptr;
  EFI_STATUS status = gBS->LocateProtocol(&guid, nullptr, &host);
  return EFI_ERROR(status) ? nullptr : static_cast<OBV_PROTOCOL *>(host);
}

EFI_STATUS ForgetSavedState() {
  OBV_PROTOCOL *host = FindHost();
  if (host == nullptr) {
    return EFI_NOT_FOUND;
  }
  OBV_SHARED_STATE *shared = host->SharedState;
  shared->UiStateSaved = 0;
  shared->FocusIndex = 0;
  shared->SelectedCategory = 0;
  shared->PointerX = 0;
  shared->PointerY = 0;
  return EFI_SUCCESS;
}

EFI_STATUS RestoreAllOutputs(bool all) {
  OBV_PROTOCOL *host = FindHost();
  if (host == nullptr) {
    return EFI_NOT_FOUND;
  }
  host->SharedState->RestoreAllOutputsA = all ? 1 : 0;
  return EFI_SUCCESS;
}

EFI_STATUS ParseForSize(OBV_PROTOCOL *host, UINTN width, UINTN height, OBV_COMPONENT **components) {
  PictureSize picture = {};
  EFI_STATUS status = ReadPictureSize(host, &picture);
  if (EFI_ERROR(status)) {
    return status;
  }
  // The one layout that is not a pure reduction has factors of its own.
  bool small = width == 1024 && height == 768;
  double scaleX = small ? 0.7 : static_cast<double>(width) / 1920.0;
  double scaleY = small ? 0.8 : static_cast<double>(height) / 1080.0;
  return host->ParseComponents(host, components, picture.Height, picture.Width,
                               static_cast<UINT16>(height), static_cast<UINT16>(width),
                               kPictureShare, scaleX, scaleY);
}

EFI_STATUS LogComponents(UINTN width, UINTN height) {
  OBV_PROTOCOL *host = FindHost();
  if (host == nullptr) {
    return EFI_NOT_FOUND;
  }
  OBV_COMPONENT *components = nullptr;
  EFI_STATUS status = ParseForSize(host, width, height, &components);
  if (EFI_ERROR(status)) {
    return status;
  }
  for (UINTN i = 0; i < host->SharedState->ComponentCount; i++) {
    LogComponent(host, components[i], i);
    LogOutline(host, components[i]);
    LogLeader(host, components[i]);
  }
  return EFI_SUCCESS;
}
