/** @file
  Package lists with forms, as any driver of the firmware may install them. What is found must stand
  in the list; nothing outside of the list is looked at.
**/

#include "test/fuzz/Fuzz.h"

#include "host/portable/FormSearch.h"

namespace {

/// Whether the two bytes of a number stand anywhere in the list.
bool Holds(const std::vector<UINT8> &list, UINT16 number) {
  for (size_t i = 0; i + 1 < list.size(); i++) {
    if (list[i] == (number & 0xFF) && list[i + 1] == number >> 8) {
      return true;
    }
  }
  return false;
}

/// The length of the list, which the input would seldom get right; the packages lie as they like.
void RepairLength(std::vector<UINT8> *list) {
  constexpr size_t kLengthOffset = sizeof(EFI_GUID);
  if (list->size() >= sizeof(EFI_HII_PACKAGE_LIST_HEADER)) {
    auto size = static_cast<UINT32>(list->size());
    std::memcpy(list->data() + kLengthOffset, &size, sizeof size);
  }
}

void RequirePlace(const std::vector<UINT8> &list, UINT16 question, const OBV_SETUP_OPTION &option) {
  fuzz::Require(option.QuestionId == question, "the question is the one that was asked for");
  fuzz::Require(option.FormId != 0, "a form has a number");
  fuzz::Require(Holds(list, question), "the question stands in the list");
  fuzz::Require(Holds(list, option.FormId), "the form stands in the list");
}

void Search(fuzz::Reader input) {
  UINT16 question = input.Take<UINT16>();
  bool repaired = input.Byte() % 4 != 0;
  std::vector<UINT8> list = input.Bytes(input.Left());
  if (repaired) {
    RepairLength(&list);
  }
  OBV_SETUP_OPTION option = {};
  if (!obv_host::FindQuestion(list.data(), list.size(), question, nullptr, &option)) {
    return;
  }
  RequirePlace(list, question, option);
  OBV_SETUP_OPTION again = {};
  fuzz::Require(
      obv_host::FindQuestion(list.data(), list.size(), question, &option.FormSet, &again) &&
          std::memcmp(&again, &option, sizeof again) == 0,
      "in its formset, the question is found as well");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  Search(fuzz::Reader(data, size));
  return 0;
}
