#include "test/picture/TestBoard.h"

#include "test/unit/host/HostBoardBytes.h"

#include "test/firmware/Png.h"

namespace picture {

namespace {

using obv_host::BoardComponent;
using obv_host::BoardParts;
using obv_host::BoardPoint;
using obv_host::BoardStyle;

constexpr uint16_t kWidth = 640;
constexpr uint16_t kHeight = 360;

struct Part {
  const char16_t *Name;
  UINT8 Type;
  UINT8 Side;
  UINT8 Status;
  UINT16 Token;
  BoardPoint Corner, Size;
  BoardPoint Anchor;
};

constexpr Part kParts[] = {
    {u"CPU",
     OBV_TYPE_PROCESSOR,
     OBV_CALLOUT_BOTTOM,
     obv_host::kStatusAvailable,
     0x101,
     {250, 90},
     {80, 80},
     {290, 60}},
    {u"DIMM_A1",
     OBV_TYPE_MEMORY,
     OBV_CALLOUT_BOTTOM_LEFT,
     obv_host::kStatusAvailable,
     0x102,
     {380, 60},
     {12, 150},
     {400, 50}},
    {u"DIMM_B1",
     OBV_TYPE_MEMORY,
     OBV_CALLOUT_TOP_LEFT,
     obv_host::kStatusAbsent,
     0x103,
     {410, 60},
     {12, 150},
     {440, 220}},
    {u"USB_1",
     OBV_TYPE_USB,
     OBV_CALLOUT_LEFT,
     obv_host::kStatusAvailable,
     0x104,
     {4, 40},
     {30, 40},
     {60, 60}},
    {u"USB_2",
     OBV_TYPE_USB,
     OBV_CALLOUT_LEFT,
     obv_host::kStatusDeviceError,
     0x105,
     {4, 100},
     {30, 40},
     {60, 120}},
    {u"SATA_1",
     OBV_TYPE_SATA,
     OBV_CALLOUT_RIGHT,
     obv_host::kStatusAvailable,
     0x106,
     {600, 230},
     {30, 16},
     {580, 238}},
    {u"SATA_2",
     OBV_TYPE_SATA,
     OBV_CALLOUT_TOP_RIGHT,
     obv_host::kStatusAbsent,
     0x107,
     {600, 256},
     {30, 16},
     {580, 270}},
    {u"M2_1",
     OBV_TYPE_M2,
     OBV_CALLOUT_TOP,
     obv_host::kStatusNoMapping,
     0x108,
     {240, 200},
     {100, 20},
     {290, 236}},
    {u"PCIE_1",
     OBV_TYPE_PCIE,
     OBV_CALLOUT_BOTTOM_RIGHT,
     obv_host::kStatusNotReady,
     0x109,
     {70, 270},
     {200, 14},
     {60, 262}},
    {u"PCIE_2",
     OBV_TYPE_PCIE,
     OBV_CALLOUT_KEEP,
     obv_host::kStatusAvailable,
     0,
     {70, 310},
     {200, 14},
     {340, 317}},
    {u"CPU_FAN",
     OBV_TYPE_FAN,
     OBV_CALLOUT_LEFT,
     obv_host::kStatusDeviceError,
     0,
     {500, 20},
     {40, 14},
     {556, 27}},
    {u"TPM",
     OBV_TYPE_UNCATEGORISED,
     OBV_CALLOUT_LEFT,
     obv_host::kStatusAvailable,
     0x10C,
     {480, 320},
     {24, 24},
     {530, 332}},
};

// The files' samples are in the order of the frame buffer: blue first.
uint32_t Sample(uint32_t rgb) {
  return (rgb & 0xFF) << 24 | (rgb >> 8 & 0xFF) << 16 | (rgb >> 16 & 0xFF) << 8 | 0xFF;
}

bool Covers(const Part &part, uint32_t x, uint32_t y) {
  return x - part.Corner.X < part.Size.X && y - part.Corner.Y < part.Size.Y;
}

uint32_t BoardColour(uint32_t x, uint32_t y) {
  for (const Part &part : kParts) {
    if (Covers(part, x, y)) {
      return 0x606468 + part.Type * 0x081008;
    }
  }
  if (x < 2 || y < 2 || x >= kWidth - 2 || y >= kHeight - 2) {
    return 0xC0A040;
  }
  // Traces, so that scaling has something to blend.
  return (x + y) % 40 == 0 ? 0x2A6E4E : 0x1E4A38;
}

void SetLook(OBV_COMPONENT_STYLE *look, const char *text, const char *background,
             const char *border) {
  obv_host::PutColor(look->TextColor, text);
  obv_host::PutColor(look->BackgroundColor, background);
  obv_host::PutColor(look->MarkColor, "255,120,0");
  obv_host::PutColor(look->BorderColor, border);
  look->BorderWidth = 1;
  look->CornerRadius = 4;
}

BoardComponent Component(const Part &part, size_t index) {
  BoardComponent component = {};
  obv_host::PutText(component.Name, part.Name);
  component.Type = part.Type;
  component.CalloutSide = part.Side;
  component.TextAlign = static_cast<UINT8>(index % 3);
  component.SearchTokenId = part.Token;
  component.Status = part.Status;
  component.Flags = part.Type == OBV_TYPE_UNCATEGORISED ? obv_host::kBoardNotSelectable : 0;
  const BoardPoint &at = part.Corner;
  auto right = static_cast<UINT16>(at.X + part.Size.X);
  auto bottom = static_cast<UINT16>(at.Y + part.Size.Y);
  component.VertexCount = 6;
  component.Vertices[0] = at;
  component.Vertices[1] = {static_cast<UINT16>(right - 4), at.Y};
  component.Vertices[2] = {right, static_cast<UINT16>(at.Y + 4)};
  component.Vertices[3] = {right, bottom};
  component.Vertices[4] = {static_cast<UINT16>(at.X + 4), bottom};
  component.Vertices[5] = {at.X, static_cast<UINT16>(bottom - 4)};
  component.Marker = {static_cast<UINT16>(right - 6), static_cast<UINT16>(at.Y + 4)};
  component.LeaderPointCount = 2;
  component.LeaderPoints[0] = {static_cast<UINT16>(at.X + part.Size.X / 2),
                               static_cast<UINT16>(at.Y + part.Size.Y / 2)};
  component.LeaderPoints[1] = part.Anchor;
  return component;
}

void AddLines(BoardParts *parts) {
  parts->AddInfo(0, OBV_INFO_DESCRIPTION, u"Brand", u"Example processor");
  parts->AddInfo(0, OBV_INFO_DESCRIPTION, u"Speed", u"4.20 GHz");
  parts->AddInfo(0, OBV_INFO_SIDE_LIST, u"Cores", u"8");
  parts->AddInfo(1, OBV_INFO_DESCRIPTION, u"Size", u"16 GB");
  parts->AddInfo(3, OBV_INFO_SIDE_LIST, u"Device", u"Keyboard");
  parts->AddInfo(5, OBV_INFO_DESCRIPTION, u"Disk", u"Größe 512 GB");
}

}  // namespace

std::vector<uint8_t> TestBoard() {
  BoardParts parts;
  parts.Header.PictureWidth = kWidth;
  parts.Header.PictureHeight = kHeight;
  parts.Header.Logo = OBV_LOGO_A;
  parts.Header.MarkerTheme = OBV_MARKER_GREEN;
  obv_host::PutText(parts.Header.Title, u"Pictures");
  obv_host::PutText(parts.Header.SystemInfo[0], u"Test disk");
  obv_host::PutText(parts.Header.SystemInfo[1], u"Test graphics");
  BoardStyle style = {};
  SetLook(&style.Default, "230,230,230", "50,50,50", "140,140,140");
  SetLook(&style.Focus, "0,0,0", "255,219,75", "255,255,255");
  parts.Styles.push_back(style);
  for (size_t i = 0; i < std::size(kParts); i++) {
    parts.Components.push_back(Component(kParts[i], i));
  }
  AddLines(&parts);
  parts.Picture = fake::MakePng(kWidth, kHeight,
                                [](uint32_t x, uint32_t y) { return Sample(BoardColour(x, y)); });
  return parts.Bytes();
}

std::vector<uint8_t> BareBoard(const std::vector<uint8_t> &png) {
  BoardParts parts;
  auto bigEndian16 = [&](size_t at) { return static_cast<UINT16>(png[at] << 8 | png[at + 1]); };
  parts.Header.PictureWidth = bigEndian16(18);
  parts.Header.PictureHeight = bigEndian16(22);
  obv_host::PutText(parts.Header.Title, u"Picture only");
  parts.Picture = png;
  return parts.Bytes();
}

}  // namespace picture
