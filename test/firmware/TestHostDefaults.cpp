// What the test host answers when a test scripts nothing else.

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "test/firmware/Png.h"
#include "test/firmware/TestHost.h"

namespace fake {

namespace {

constexpr char kFont[] = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

constexpr EFI_STRING_ID kFirstStringId = 2;  // 1 is the language's own name, by convention.

const std::u16string kEnglish[OBV_STRING_COUNT] = {
    u"Board view",
    u"#%.6x Tab# Move  #%.6x Enter# Jump  #%.6x Ins# Filter  #%.6x F12# Shot  #%.6x Esc# Leave",
    u"Footer of the test host",
    u"Leave",
    u"Category %a",
    u"Choose a volume",
    u"Where shall the picture go?",
    u"Saved",
    u"%a holds %a",
    u"Not saved",
    u"No volume found",
    u"Write protected",
    u"Cannot write",
    u"OK",
    u"Cancel",
};

OBV_FILTER_BUTTON_LOOK FilterLook(const char *text, const char *background, const char *border) {
  OBV_FILTER_BUTTON_LOOK look{};
  CopyText(look.TextColor, text);
  CopyText(look.BackgroundColor, background);
  CopyText(look.BorderColor, border);
  look.BorderWidth = 1;
  look.CornerRadius = 4;
  CopyText(look.Font.Name, "DroidSans");
  look.Font.Size = 16;
  return look;
}

OBV_PANEL_LOOK PanelLook(const char *color, UINT8 size) {
  OBV_PANEL_LOOK look{};
  CopyText(look.Color, color);
  CopyText(look.Font.Name, "DroidSans");
  look.Font.Size = size;
  return look;
}

OBV_FONT_CHOICE FontChoice(UINT8 size) {
  OBV_FONT_CHOICE font{};
  CopyText(font.Name, "DroidSans");
  font.Size = size;
  return font;
}

OBV_COMPONENT_STYLE Style(const char *text, const char *background, const char *border) {
  OBV_COMPONENT_STYLE style{};
  CopyText(style.TextColor, text);
  CopyText(style.BackgroundColor, background);
  CopyText(style.MarkColor, "255,64,64");
  CopyText(style.BorderColor, border);
  style.BorderWidth = 1;
  style.CornerRadius = 3;
  return style;
}

template <typename T>
T Scaled(T value, double factor) {
  return static_cast<T>(value * factor);
}

void Scale(OBV_COMPONENT *component, double x, double y) {
  for (OBV_VERTEX &vertex : component->HotspotVertices) {
    vertex = {Scaled(vertex.X, x), Scaled(vertex.Y, y)};
  }
  for (OBV_POINT &point : component->LeaderPoints) {
    point = {Scaled(point.X, x), Scaled(point.Y, y)};
  }
  component->CalloutX = Scaled(component->CalloutX, x);
  component->CalloutY = Scaled(component->CalloutY, y);
  component->CalloutWidth = Scaled(component->CalloutWidth, x);
  component->CalloutHeight = Scaled(component->CalloutHeight, y);
  component->MarkerX = Scaled(component->MarkerX, x);
  component->MarkerY = Scaled(component->MarkerY, y);
}

std::vector<uint8_t> ReadFile(const char *path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    std::fprintf(stderr, "The test host cannot read %s; install fonts-dejavu-core.\n", path);
    std::exit(1);
  }
  std::vector<uint8_t> bytes(static_cast<size_t>(std::filesystem::file_size(path)));
  file.read(reinterpret_cast<char *>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  return bytes;
}

}  // namespace

void TestHost::FillState() {
  CopyText(State.RecolorLowText, "0,0,0");
  CopyText(State.RecolorHighText, "16,16,16");
  CopyText(State.RecolorNewText, "44,44,44");
  CopyText(State.SystemInfo[0], u"Disk 0");
  CopyText(State.SystemInfo[1], u"Graphics X1");
  for (UINT16 i = 0; i < OBV_STRING_COUNT; i++) {
    State.StringIds[i] = static_cast<UINT16>(kFirstStringId + i);
  }
  // Blue, green, red, alpha in the file, as the frame buffer wants it.
  Picture = MakePng(192, 108, [](uint32_t x, uint32_t y) {
    return 0x400000FF | (x & 0xFF) << 16 | (y & 0xFF) << 8;
  });
}

void TestHost::FillConfig() {
  Config.Logo = OBV_LOGO_A;
  CopyText(Config.TitleColor, "230,230,230");
  Config.TitleFont = FontChoice(20);
  CopyText(Config.KeyHelpKeyColor, "255,200,0");
  CopyText(Config.KeyHelpColor, "200,200,200");
  Config.KeyHelpFont = FontChoice(16);
  CopyText(Config.FooterColor, "150,150,150");
  Config.FooterFont = FontChoice(14);
  CopyText(Config.LeaderColor, "120,120,120");
  CopyText(Config.FocusLeaderColor, "255,200,0");
  CopyText(Config.HotspotColor, "0,160,255");
  Config.MarkerTheme = OBV_MARKER_GREEN;
  Config.CalloutFont = FontChoice(14);
  Config.CloseFocusFont = FontChoice(18);
  Config.Filter = FilterLook("220,220,220", "60,60,60", "120,120,120");
  Config.FocusFilter = FilterLook("0,0,0", "255,200,0", "255,255,255");
  Config.Heading = PanelLook("255,200,0", 20);
  Config.InfoLabel = PanelLook("180,180,180", 16);
  Config.InfoText = PanelLook("240,240,240", 16);
  Config.SideLabel = PanelLook("180,180,180", 14);
  Config.SideText = PanelLook("240,240,240", 14);
}

void TestHost::FillStyles() {
  DefaultStyle = Style("230,230,230", "50,50,50", "120,120,120");
  FocusStyle = Style("0,0,0", "255,200,0", "255,255,255");
}

void TestHost::FillStrings() {
  std::map<EFI_STRING_ID, std::u16string> english{{1, u"English"}};
  for (UINT16 i = 0; i < OBV_STRING_COUNT; i++) {
    english[static_cast<EFI_STRING_ID>(kFirstStringId + i)] = kEnglish[i];
  }
  Strings["en-US"] = std::move(english);
}

OBV_COMPONENT &TestHost::AddComponent(std::u16string_view name, UINT32 type, UINT16 tokenId,
                                      INT16 x, INT16 y) {
  OBV_COMPONENT &component = Components.emplace_back();
  component.SearchTokenId = tokenId;
  component.Type = type;
  CopyText(component.Name, name);
  auto left = static_cast<UINT16>(x);
  auto top = static_cast<UINT16>(y);
  component.HotspotVertexCount = 4;
  component.HotspotVertices[0] = {left, top};
  component.HotspotVertices[1] = {static_cast<UINT16>(left + 80), top};
  component.HotspotVertices[2] = {static_cast<UINT16>(left + 80), static_cast<UINT16>(top + 40)};
  component.HotspotVertices[3] = {left, static_cast<UINT16>(top + 40)};
  component.LeaderPointCount = 2;
  component.LeaderPoints[0] = {static_cast<INT16>(x + 40), y};
  component.LeaderPoints[1] = {static_cast<INT16>(x + 40), static_cast<INT16>(y - 30)};
  component.CalloutSide = OBV_CALLOUT_BOTTOM;
  component.TextAlign = OBV_TEXT_CENTER;
  component.CalloutWidth = 110;
  component.CalloutHeight = 24;
  component.CalloutX = static_cast<INT16>(x - 15);
  component.CalloutY = static_cast<INT16>(y - 54);
  component.MarkerX = static_cast<INT16>(x + 60);
  component.MarkerY = static_cast<INT16>(y + 20);
  component.DefaultStyle = &DefaultStyle;
  component.FocusStyle = &FocusStyle;
  return component;
}

void TestHost::FillComponents() {
  AddComponent(u"CPU", OBV_TYPE_PROCESSOR, 0x101, 500, 300);
  AddComponent(u"DIMM_A1", OBV_TYPE_MEMORY, 0x102, 700, 300);
  AddComponent(u"USB_1", OBV_TYPE_USB, 0x103, 200, 300);
  AddComponent(u"SATA_1", OBV_TYPE_SATA, 0x104, 900, 600);
  AddComponent(u"M2_1", OBV_TYPE_M2, 0x105, 500, 500);
  AddComponent(u"PCIE_1", OBV_TYPE_PCIE, 0x106, 300, 700);
  AddComponent(u"CPU_FAN", OBV_TYPE_FAN, 0, 700, 500);
  AddComponent(u"TPM", OBV_TYPE_UNCATEGORISED, 0x108, 900, 800);
  Answers[u"CPU"].Lines = {{u"Brand", u"Processor P5"}, {u"Speed", u"4.2 GHz"}};
  Answers[u"DIMM_A1"].Lines = {{u"Total Memory", u"16384 MB"}, {u"Frequency", u"3200 MHz"}};
  Answers[u"USB_1"].Lines = {{u"Port", u"Keyboard", OBV_INFO_SIDE_LIST}};
  Answers[u"SATA_1"].Status = EFI_NOT_FOUND;
  Answers[u"M2_1"].Status = EFI_NO_MAPPING;
  Answers[u"PCIE_1"].Status = EFI_NOT_READY;
  Answers[u"CPU_FAN"].Status = EFI_DEVICE_ERROR;
}

void TestHost::FillFonts() {
  std::vector<uint8_t> file = ReadFile(kFont);
  Fonts = {Font{"DejaVuSans", file}, Font{"DroidSans", file}, Font{"DejaVuSansBold", file}};
}

EFI_STATUS TestHost::DefaultParse(OBV_COMPONENT **components, const ParseArguments &arguments) {
  if (ScaleComponents) {
    for (OBV_COMPONENT &component : Components) {
      Scale(&component, arguments.ScaleX, arguments.ScaleY);
    }
  }
  *components = Components.data();
  State.ComponentCount = static_cast<UINT16>(Components.size());
  return EFI_SUCCESS;
}

EFI_STATUS TestHost::DefaultFont(UINT8 index, CHAR8 **name, VOID **data, UINTN *size) {
  if (index >= Fonts.size()) {
    return EFI_INVALID_PARAMETER;
  }
  Font &font = Fonts[index];
  *name = font.Name.data();
  if (font.File.empty()) {
    return EFI_NOT_FOUND;
  }
  *data = font.File.data();
  *size = font.File.size();
  return EFI_SUCCESS;
}

EFI_STATUS TestHost::DefaultQuery(const CHAR16 *name, UINTN capacity, UINT64 *count,
                                  OBV_COMPONENT_INFO *info) {
  std::memset(info, 0, capacity * sizeof *info);
  *count = 0;
  auto found = Answers.find(ToU16(name));
  if (found == Answers.end()) {
    return EFI_SUCCESS;
  }
  ComponentAnswer &answer = found->second;
  for (const InfoLine &line : answer.Lines) {
    if (*count == capacity) {
      break;
    }
    OBV_COMPONENT_INFO &entry = info[(*count)++];
    entry.Kind = line.Kind;
    CopyText(entry.Label, line.Label);
    CopyText(entry.Value, line.Value);
  }
  if (answer.Before.empty()) {
    return answer.Status;
  }
  EFI_STATUS status = answer.Before.front();
  answer.Before.pop_front();
  return status;
}

}  // namespace fake
