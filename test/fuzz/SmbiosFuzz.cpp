/** @file
  The SMBIOS tables and the variables of the boot menu, in any bytes, as the reference host's
  sources read them.

  The input is a table, the boot order and load options, each behind its length. Sources are asked
  for whatever texts the table itself holds, and for one that it may not.
**/

#include "test/fuzz/Fuzz.h"

#include "test/firmware/Run.h"
#include "test/unit/sources/BootVariables.h"
#include "test/unit/sources/SmbiosTable.h"

#include "host/sources/BootEntries.h"
#include "host/sources/Smbios.h"
#include "host/sources/Source.h"

namespace {

using namespace obv_host;

constexpr size_t kMostTable = 4096;
constexpr size_t kMostVariable = 512;
constexpr UINT16 kEntries = 4;

/// A name costs a walk for each source.
constexpr size_t kMostNames = 32;

constexpr ReadHardware kSmbiosSources[] = {
    ReadProcessor, ReadMemory, ReadMemoryTotal, ReadFan, ReadProbe, ReadSlot, ReadPort,
};

bool IsAnswer(EFI_STATUS status) {
  return status == EFI_SUCCESS || status == EFI_DEVICE_ERROR || status == EFI_NOT_FOUND;
}

template <size_t kUnits>
void RequireText(const CHAR16 (&text)[kUnits]) {
  size_t length = 0;
  for (; length < kUnits && text[length] != 0; length++) {
    fuzz::Require(text[length] >= 0x20 && text[length] <= 0x7E, "texts are printable ASCII");
  }
  fuzz::Require(length < kUnits, "texts end within their fields");
}

void RequireFacts(const Facts &facts, EFI_STATUS status) {
  fuzz::Require(IsAnswer(status), "a source knows three answers");
  fuzz::Require(facts.Count <= OBV_INFO_CAPACITY, "there are no more lines than places");
  fuzz::Require(status != EFI_NOT_FOUND || facts.Count == 0, "what is absent tells nothing");
  fuzz::Require(status != EFI_DEVICE_ERROR || facts.Count != 0, "what fails says why");
  for (UINTN i = 0; i < facts.Count; i++) {
    fuzz::Require(facts.Lines[i].Kind <= OBV_INFO_SIDE_LIST, "lines are of a known kind");
    RequireText(facts.Lines[i].Label);
    RequireText(facts.Lines[i].Value);
    fuzz::Require(facts.Lines[i].Label[0] != 0 && facts.Lines[i].Value[0] != 0,
                  "lines have a label and a value");
  }
}

void AskAll(const std::string &name, const std::string &bank) {
  BoardHardware hardware = {};
  name.copy(reinterpret_cast<char *>(hardware.Name), sizeof(hardware.Name) - 1);
  bank.copy(hardware.Bank, sizeof(hardware.Bank) - 1);
  for (ReadHardware read : kSmbiosSources) {
    Facts facts = {};
    Presence presence = {};
    RequireFacts(facts, read(hardware, &facts, &presence));
    fuzz::Require(presence.Handle == nullptr, "nothing of the tables can leave");
  }
}

/// The texts of the first structures, by the numbers that structures use.
std::vector<std::string> Names() {
  std::vector<std::string> names = {"", "a name"};
  SmbiosTable table;
  if (FindSmbios(&table) != EFI_SUCCESS) {
    return names;
  }
  SmbiosStructure structure = {};
  while (names.size() < kMostNames && NextStructure(table, &structure)) {
    for (UINT8 number = 1; number < 6; number++) {
      CHAR8 text[kSmbiosTextSize];
      SmbiosText(structure, number, text, sizeof(text));
      names.emplace_back(text);
    }
  }
  return names;
}

void RequireSystemTexts() {
  Board board = {};
  OBV_SHARED_STATE shared = {};
  FillSystemTexts(board, &shared);
  for (const auto &text : shared.SystemInfo) {
    RequireText(text);
  }
  for (UINTN i = 0; shared.SystemInfo[2][i] != 0; i++) {
    fuzz::Require(i < 49 && shared.SystemInfo[2][i] != u'%',
                  "the machine's text is short and no print format");
  }
}

std::vector<UINT8> TakeBlock(fuzz::Reader *input, size_t most) {
  return input->Bytes(std::min<size_t>(input->Take<UINT16>(), most));
}

void Use(fuzz::Reader input) {
  fake::Firmware machine;
  fake::RunLibraryConstructors(machine);
  SmbiosBuilder table;
  table.Bytes = TakeBlock(&input, kMostTable);
  table.Install(machine);
  BootVariables variables(machine);
  variables.Set(u"BootOrder", TakeBlock(&input, kMostVariable));
  for (UINT16 i = 0; i < kEntries; i++) {
    variables.Set(BootVariables::NameOf(i), TakeBlock(&input, kMostVariable));
  }
  std::string bank;
  for (const std::string &name : Names()) {
    AskAll(name, "");
    AskAll(name, bank);
    bank = name;
  }
  (void)BrandContains("a name");
  RequireSystemTexts();
  fuzz::Require(machine.Leftovers().empty(), machine.Leftovers().c_str());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  Use(fuzz::Reader(data, size));
  return 0;
}
