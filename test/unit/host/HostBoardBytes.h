/** @file
  Board binaries for the tests of the reference host, built byte by byte without the board tool.
**/

#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "host/portable/BoardReader.h"

namespace obv_host {

/// Copies text into a fixed field; the field stays terminated only if text leaves room.
template <typename Field>
void PutText(Field &field, const std::u16string &text) {
  std::memset(&field, 0, sizeof(field));
  std::memcpy(&field, text.data(), std::min(text.size() * 2, sizeof(field)));
}

inline void PutColor(CHAR8 (&field)[OBV_COLOR_TEXT_SIZE], const std::string &text) {
  std::memset(field, 0, sizeof(field));
  std::memcpy(field, text.data(), std::min(text.size(), sizeof(field)));
}

/// The parts of a board binary, for a test to spoil before Bytes() joins them.
struct BoardParts {
  BoardHeader Header = {};
  std::vector<BoardStyle> Styles;
  std::vector<BoardComponent> Components;
  std::vector<OBV_COMPONENT_INFO> Infos;
  std::vector<BoardHardware> Hardware;
  std::vector<UINT8> Picture;

  /// Two components that share a style; the first has both lines.
  static BoardParts Sound(UINT16 width = 320, UINT16 height = 180) {
    BoardParts parts;
    parts.Header.PictureWidth = width;
    parts.Header.PictureHeight = height;
    PutText(parts.Header.Title, u"Parts");
    parts.AddStyle();
    parts.AddComponent(u"CPU", OBV_TYPE_PROCESSOR);
    parts.AddComponent(u"FAN 1", OBV_TYPE_FAN);
    parts.AddInfo(0, OBV_INFO_DESCRIPTION, u"Brand", u"Example");
    parts.AddInfo(0, OBV_INFO_SIDE_LIST, u"Cores", u"8");
    parts.Picture = PngStart(width, height);
    return parts;
  }

  void AddStyle() {
    BoardStyle style = {};
    for (OBV_COMPONENT_STYLE *look : {&style.Default, &style.Focus}) {
      PutColor(look->TextColor, "1,2,3");
      PutColor(look->BackgroundColor, "4,5,6");
      PutColor(look->MarkColor, "7,8,9");
      PutColor(look->BorderColor, "255,255,255");
    }
    Styles.push_back(style);
  }

  void AddComponent(const std::u16string &name, UINT8 type) {
    BoardComponent component = {};
    PutText(component.Name, name);
    component.Type = type;
    component.CalloutSide = OBV_CALLOUT_BOTTOM;
    component.TextAlign = OBV_TEXT_CENTER;
    component.SearchTokenId = 0x1234;
    component.Marker = {11, 12};
    component.VertexCount = 3;
    component.Vertices[0] = {10, 10};
    component.Vertices[1] = {20, 10};
    component.Vertices[2] = {15, 20};
    component.LeaderPointCount = 2;
    component.LeaderPoints[0] = {15, 12};
    component.LeaderPoints[1] = {30, 40};
    component.FirstInfo = static_cast<UINT32>(Infos.size());
    component.FirstHardware = static_cast<UINT32>(Hardware.size());
    Components.push_back(component);
  }

  /// Lines go to the components in order: a later component's lines stand behind.
  void AddInfo(size_t index, UINT32 kind, const std::u16string &label,
               const std::u16string &value) {
    OBV_COMPONENT_INFO info = {};
    info.Kind = kind;
    PutText(info.Label, label);
    PutText(info.Value, value);
    Infos.push_back(info);
    Components[index].InfoCount++;
    for (size_t i = index + 1; i < Components.size(); i++) {
      Components[i].FirstInfo++;
    }
  }

  /// Hardware names go to the components in order, too. name may hold a device path.
  BoardHardware &AddHardware(size_t index, UINT16 kind, const std::string &name = "",
                             const std::string &bank = "") {
    BoardHardware hardware = {};
    hardware.Kind = kind;
    std::memcpy(hardware.Name, name.data(), std::min(name.size(), sizeof(hardware.Name)));
    std::memcpy(hardware.Bank, bank.data(), std::min(bank.size(), sizeof(hardware.Bank)));
    Components[index].HardwareCount++;
    for (size_t i = index + 1; i < Components.size(); i++) {
      Components[i].FirstHardware++;
    }
    Hardware.push_back(hardware);
    return Hardware.back();
  }

  /// The first 33 bytes of a PNG; nobody decodes it here.
  static std::vector<UINT8> PngStart(UINT32 width, UINT32 height) {
    std::vector<UINT8> png = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n',
                              0,    0,   0,   13,  'I',  'H',  'D',  'R'};
    for (UINT32 value : {width, height}) {
      for (int shift = 24; shift >= 0; shift -= 8) {
        png.push_back(static_cast<UINT8>(value >> shift));
      }
    }
    png.insert(png.end(), {8, 6, 0, 0, 0, 0, 0, 0, 0});
    return png;
  }

  /// The file, with the counts and sizes of its parts and the right checksum.
  std::vector<UINT8> Bytes() {
    std::memcpy(Header.Magic, kBoardMagic, sizeof(kBoardMagic));
    Header.Version = kBoardVersion;
    Header.HeaderSize = sizeof(BoardHeader);
    Header.StyleCount = static_cast<UINT16>(Styles.size());
    Header.ComponentCount = static_cast<UINT16>(Components.size());
    Header.InfoCount = static_cast<UINT32>(Infos.size());
    Header.HardwareCount = static_cast<UINT16>(Hardware.size());
    Header.PictureSize = static_cast<UINT32>(Picture.size());
    std::vector<UINT8> bytes;
    Append(bytes, &Header, sizeof(Header));
    Append(bytes, Styles.data(), Styles.size() * sizeof(BoardStyle));
    Append(bytes, Components.data(), Components.size() * sizeof(BoardComponent));
    Append(bytes, Infos.data(), Infos.size() * sizeof(OBV_COMPONENT_INFO));
    Append(bytes, Hardware.data(), Hardware.size() * sizeof(BoardHardware));
    Append(bytes, Picture.data(), Picture.size());
    SetField<UINT32>(bytes, OFFSET_OF(BoardHeader, TotalSize), static_cast<UINT32>(bytes.size()));
    Reseal(bytes);
    return bytes;
  }

  template <typename Value>
  static void SetField(std::vector<UINT8> &bytes, size_t offset, Value value) {
    std::memcpy(bytes.data() + offset, &value, sizeof(value));
  }

  /// Makes the checksum fit what was changed: an enemy would do so too.
  static void Reseal(std::vector<UINT8> &bytes) {
    constexpr size_t kStart = OFFSET_OF(BoardHeader, TotalSize);
    SetField<UINT32>(bytes, OFFSET_OF(BoardHeader, Checksum),
                     CalculateCrc32(bytes.data() + kStart, bytes.size() - kStart));
  }

 private:
  static void Append(std::vector<UINT8> &bytes, const void *data, size_t size) {
    const UINT8 *start = static_cast<const UINT8 *>(data);
    bytes.insert(bytes.end(), start, start + size);
  }
};

}  // namespace obv_host
