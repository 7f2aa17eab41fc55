/** @file
  The variable PlatformLang and the texts in the languages that the host has: any bytes, any length.
**/

#include "test/fuzz/Fuzz.h"

#include "test/firmware/Run.h"
#include "test/unit/stage/ApplicationPool.h"

#include "app/base/HostClient.h"
#include "app/base/LocalizedStrings.h"

namespace {

constexpr char kDefault[] = "en-US";
constexpr size_t kMostLanguages = 4;
constexpr size_t kMostTexts = 4;

/// Every text begins with this, so that a missing one shows.
constexpr char16_t kMark = u'x';

std::map<EFI_STRING_ID, std::u16string> ReadTexts(fuzz::Reader &input) {
  std::map<EFI_STRING_ID, std::u16string> texts{{1, u"Language"}};
  for (size_t left = input.Byte() % (kMostTexts + 1); left > 0; left--) {
    EFI_STRING_ID id = static_cast<EFI_STRING_ID>(2 + input.Byte() % OBV_STRING_COUNT);
    std::vector<CHAR16> text = input.Text<CHAR16>(300);
    texts[id] = kMark + std::u16string(text.begin(), text.end() - 1);
  }
  return texts;
}

fake::StringTable ReadLanguages(fuzz::Reader &input) {
  fake::StringTable table{{kDefault, ReadTexts(input)}};
  while (input.Left() != 0 && table.size() < kMostLanguages) {
    std::vector<CHAR8> code = input.Text<CHAR8>(20);
    if (code.size() > 1) {
      table[code.data()] = ReadTexts(input);
    }
  }
  return table;
}

/// Absent for one input in eight.
void SetVariable(fuzz::Reader &input, fake::Firmware *machine) {
  constexpr UINT32 kAttributes =
      EFI_VARIABLE_NON_VOLATILE | EFI_VARIABLE_BOOTSERVICE_ACCESS | EFI_VARIABLE_RUNTIME_ACCESS;
  UINT16 size = input.Take<UINT16>();
  if (size % 8 == 7) {
    return;
  }
  std::vector<UINT8> language = input.Bytes(size / 8 % 600);
  const std::u16string name = u"PlatformLang";
  machine->Variables.Set(reinterpret_cast<const CHAR16 *>(name.c_str()), &gEfiGlobalVariableGuid,
                         kAttributes, language.size(), language.data());
}

void Load(fuzz::Reader input) {
  fake::Firmware machine;
  OBV_SHARED_STATE shared = {};
  for (UINT16 i = 0; i < OBV_STRING_COUNT; i++) {
    shared.StringIds[i] = static_cast<UINT16>(2 + i);
  }
  SetVariable(input, &machine);
  fake::StringTable table = ReadLanguages(input);
  EFI_HII_HANDLE texts = machine.Hii.AddStrings(fake::kObvStringListGuid, table);
  fake::RunLibraryConstructors(machine);
  gHost = {nullptr, &shared, nullptr};
  fuzz::Require(LoadLocalizedStrings() == EFI_SUCCESS, "there are texts");
  for (UINT16 i = 0; i < OBV_STRING_COUNT; i++) {
    const CHAR8 *text = LocalizedText(static_cast<TextId>(i));
    bool there = table[kDefault].contains(static_cast<EFI_STRING_ID>(2 + i));
    fuzz::Require(!there || text[0] == static_cast<CHAR8>(kMark),
                  "a text that the default language has is there in each");
  }
  ReportMemoryLeaks();
  machine.Hii.Remove(texts);
  fuzz::Require(machine.Leftovers().empty(), machine.Leftovers().c_str());
  gHost = {};
  gLocalizedStrings = {};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  Load(fuzz::Reader(data, size));
  return 0;
}
