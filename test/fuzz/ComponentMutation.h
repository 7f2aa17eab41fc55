/** @file
  Changes of a ComponentFuzz input that keep its form: one record, field, text or list at a time.
  Bytes changed at random would mostly shift all records that follow.
**/

#pragma once

#include "test/fuzz/ComponentInput.h"

/// libFuzzer's own mutator; null where there is no libFuzzer.
extern "C" __attribute__((weak)) size_t LLVMFuzzerMutate(std::uint8_t *data, size_t size,
                                                         size_t maxSize);

namespace fuzz {

class ComponentMutation {
 public:
  explicit ComponentMutation(unsigned seed) : state_(seed * 2 + 1) {}

  void Change(ComponentInput *input) {
    switch (Pick(8)) {
      case 0:
        return Bytes(&input->What, 1);
      case 1:
        return ChangeLooks(input);
      case 2:
        return Bytes(&input->Status, 1);
      case 3:
        return ChangeLines(input);
      case 4:
        return ChangeList(&input->Components, ComponentInput::kMostComponents);
      default:
        return ChangeComponent(input);
    }
  }

 private:
  /// A generator of our own: the seed alone decides.
  size_t Pick(size_t count) {
    state_ = state_ * 6364136223846793005U + 1442695040888963407U;
    return static_cast<size_t>(state_ >> 33) % count;
  }

  void Bytes(void *data, size_t size) {
    // Fewer bytes may come back; the others stay.
    (void)LLVMFuzzerMutate(static_cast<std::uint8_t *>(data), size, size);
  }

  /// Of any length up to `most` units.
  void Text(ComponentInput::Text *text, size_t most) {
    size_t size = (text->size() - 1) * sizeof(CHAR16);
    text->resize(most + 1);
    size = LLVMFuzzerMutate(reinterpret_cast<std::uint8_t *>(text->data()), size,
                            most * sizeof(CHAR16));
    text->resize(size / sizeof(CHAR16));
    text->resize(static_cast<size_t>(std::find(text->begin(), text->end(), 0) - text->begin()) + 1);
  }

  void Points(ComponentInput::Bytes *points, size_t most) {
    size_t size = points->size();
    points->resize(4 * most);
    points->resize(LLVMFuzzerMutate(points->data(), size, points->size()) / 4 * 4);
  }

  /// Doubles one, drops one, or swaps two.
  template <typename Record>
  void ChangeList(std::vector<Record> *list, size_t most) {
    if (list->empty()) {
      list->emplace_back();
      return;
    }
    size_t at = Pick(list->size());
    size_t how = Pick(3);
    if (how == 0 && list->size() < most) {
      list->push_back((*list)[at]);
    } else if (how == 1) {
      list->erase(list->begin() + static_cast<ptrdiff_t>(at));
    } else {
      std::swap((*list)[at], (*list)[Pick(list->size())]);
    }
  }

  void ChangeLooks(ComponentInput *input) {
    if (Pick(2) == 0) {
      input->What = static_cast<UINT8>(input->What / 16 * 16 + 7);
      return Bytes(&input->Config, sizeof input->Config);
    }
    input->What |= 1;
    Bytes(Pick(2) == 0 ? &input->DefaultStyle : &input->FocusStyle, sizeof input->DefaultStyle);
  }

  void ChangeLines(ComponentInput *input) {
    if (input->Lines.empty() || Pick(3) == 0) {
      ChangeList(&input->Lines, OBV_INFO_CAPACITY);
      input->LineCount = static_cast<UINT8>(input->Lines.size());
      return;
    }
    ComponentInput::Line &line = input->Lines[Pick(input->Lines.size())];
    switch (Pick(3)) {
      case 0:
        return Bytes(&line.Kind, 1);
      case 1:
        return Text(&line.Label, OBV_INFO_LABEL_LENGTH - 1);
      default:
        return Text(&line.Value, OBV_INFO_VALUE_LENGTH - 1);
    }
  }

  void ChangeComponent(ComponentInput *input) {
    if (input->Components.empty()) {
      input->Components.emplace_back();
    }
    ComponentInput::Component &component = input->Components[Pick(input->Components.size())];
    switch (Pick(6)) {
      case 0:
        return Text(&component.Name, OBV_NAME_LENGTH - 1);
      case 1:
        return Points(&component.Vertices, OBV_VERTEX_CAPACITY);
      case 2:
        return Points(&component.Points, OBV_LEADER_POINT_CAPACITY);
      default: {
        // A field's worth; most fields have two or four bytes.
        size_t size = size_t{1} << Pick(3);
        return Bytes(&component.Head[Pick(component.Head.size() - size)], size);
      }
    }
  }

  std::uint64_t state_;
};

}  // namespace fuzz
