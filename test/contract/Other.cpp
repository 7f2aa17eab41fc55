#include "test/contract/Contract.h"

namespace contract {

namespace {

EFI_GUID gOurs = {0x7B0D43A2, 0x61CE, 0x4F98, {0x8E, 0x02, 0x3F, 0x95, 0xD1, 0x6A, 0x27, 0xBC}};
constexpr char16_t kName[] = u"BoardscopeContract";
constexpr UINT32 kAttributes = EFI_VARIABLE_BOOTSERVICE_ACCESS;

EFI_STATUS Get(UINTN *size, void *data) {
  return gRT->GetVariable(Ucs2(kName), &gOurs, nullptr, size, data);
}

}  // namespace

void AskAboutVariables(const Report &report) {
  CHAR8 data[8] = {};
  UINTN size = sizeof(data);
  Say(report, "a variable that is not there", Get(&size, data));
  CHAR8 value[] = "en-US";
  Say(report, "set it", gRT->SetVariable(Ucs2(kName), &gOurs, kAttributes, sizeof(value), value));
  size = 0;
  Say(report, "get it without room", Get(&size, nullptr));
  SayNumber(report, "room that it takes", size);
  size = 2;
  Say(report, "get it with little room", Get(&size, data));
  SayNumber(report, "room that it takes", size);
  size = sizeof(data);
  Say(report, "get it", Get(&size, data));
  SayNumber(report, "its size", size);
  Say(report, "get it to nowhere", Get(&size, nullptr));
  Say(report, "get one without a name", gRT->GetVariable(nullptr, &gOurs, nullptr, &size, data));
  Say(report, "remove it", gRT->SetVariable(Ucs2(kName), &gOurs, kAttributes, 0, nullptr));
  size = sizeof(data);
  Say(report, "get it once removed", Get(&size, data));
}

void AskAboutKeyboard(const Report &report) {
  EFI_INPUT_KEY key = {};
  Say(report, "a key when there is none", gST->ConIn->ReadKeyStroke(gST->ConIn, &key));
  Say(report, "the time to nowhere", gRT->GetTime(nullptr, nullptr));
}

}  // namespace contract
