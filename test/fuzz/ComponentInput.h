/** @file
  The input of ComponentFuzz as the records it stands for: read from bytes, changed record by
  record, and written back.
**/

#pragma once

#include "test/fuzz/Fuzz.h"

#include <Protocol/ObvComponent.h>
#include <Protocol/ObvConfig.h>

namespace fuzz {

struct ComponentInput {
  using Bytes = std::vector<UINT8>;
  using Text = std::vector<CHAR16>;

  struct Line {
    UINT8 Kind = 0;
    Text Label = {0};
    Text Value = {0};
  };
  struct Component {
    /// Flags, counts, sizes and places.
    std::array<UINT8, OFFSET_OF(OBV_COMPONENT, InfoCount)> Head{};
    Text Name = {0};
    Bytes Vertices;
    Bytes Points;
  };

  static constexpr size_t kMostComponents = 6;

  bool HasStyles() const { return What % 2 != 0; }
  bool HasConfig() const { return What % 16 == 7; }

  UINT8 What = 0;
  OBV_COMPONENT_STYLE DefaultStyle{};
  OBV_COMPONENT_STYLE FocusStyle{};
  OBV_CONFIG Config{};
  UINT8 Status = 0;
  UINT8 LineCount = 0;  ///< May be more than there is room for.
  std::vector<Line> Lines;
  std::vector<Component> Components;
};

inline ComponentInput ReadComponentInput(Reader input) {
  ComponentInput read;
  read.What = input.Byte();
  if (read.HasStyles()) {
    input.Fill(&read.DefaultStyle, sizeof read.DefaultStyle);
    input.Fill(&read.FocusStyle, sizeof read.FocusStyle);
  }
  if (read.HasConfig()) {
    input.Fill(&read.Config, sizeof read.Config);
  }
  read.Status = input.Byte();
  read.LineCount = input.Byte();
  read.Lines.resize(std::min<size_t>(read.LineCount, OBV_INFO_CAPACITY));
  for (ComponentInput::Line &line : read.Lines) {
    line.Kind = input.Byte();
    line.Label = input.Text<CHAR16>(OBV_INFO_LABEL_LENGTH - 1);
    line.Value = input.Text<CHAR16>(OBV_INFO_VALUE_LENGTH - 1);
  }
  while (input.Left() != 0 && read.Components.size() < ComponentInput::kMostComponents) {
    ComponentInput::Component &component = read.Components.emplace_back();
    input.Fill(component.Head.data(), component.Head.size());
    component.Name = input.Text<CHAR16>(OBV_NAME_LENGTH - 1);
    component.Vertices = input.Bytes(4 * (input.Byte() % (OBV_VERTEX_CAPACITY + 1)));
    component.Points = input.Bytes(4 * (input.Byte() % (OBV_LEADER_POINT_CAPACITY + 1)));
  }
  return read;
}

/// The bytes from which the same records are read.
class ComponentWriter {
 public:
  std::vector<UINT8> Write(const ComponentInput &input) {
    Put(input.What);
    if (input.HasStyles()) {
      Put(input.DefaultStyle);
      Put(input.FocusStyle);
    }
    if (input.HasConfig()) {
      Put(input.Config);
    }
    Put(input.Status);
    Put(input.LineCount);
    for (const ComponentInput::Line &line : input.Lines) {
      Put(line.Kind);
      PutText(line.Label);
      PutText(line.Value);
    }
    for (const ComponentInput::Component &component : input.Components) {
      Put(component.Head);
      PutText(component.Name);
      PutPoints(component.Vertices);
      PutPoints(component.Points);
    }
    return std::move(bytes_);
  }

 private:
  void Append(const void *data, size_t size) {
    const auto *bytes = static_cast<const UINT8 *>(data);
    bytes_.insert(bytes_.end(), bytes, bytes + size);
  }
  template <typename Value>
  void Put(const Value &value) {
    Append(&value, sizeof value);
  }
  void PutText(const ComponentInput::Text &text) {
    Put(static_cast<UINT16>(text.size() - 1));
    Append(text.data(), (text.size() - 1) * sizeof(CHAR16));
  }
  void PutPoints(const ComponentInput::Bytes &points) {
    Put(static_cast<UINT8>(points.size() / 4));
    Append(points.data(), points.size() / 4 * 4);
  }

  std::vector<UINT8> bytes_;
};

}  // namespace fuzz
