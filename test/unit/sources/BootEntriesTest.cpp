#include "test/unit/sources/BootVariables.h"
#include "test/unit/sources/SmbiosStage.h"

#include "host/sources/BootEntries.h"

namespace obv_host {
namespace {

class HostBootEntries : public SmbiosStage {
 protected:
  /// What boots first; "-" when nothing does.
  std::string First(UINTN size = 64) {
    std::vector<CHAR8> name(size, 'X');
    EFI_STATUS status = FirstBootEntry(name.data(), name.size());
    EXPECT_EQ(status == EFI_NOT_FOUND, name[0] == '\0');
    return EFI_ERROR(status) ? "-" : name.data();
  }

  BootVariables Variables{Machine};
};

TEST_F(HostBootEntries, FirstOfTheOrderCounts) {
  Variables.SetOrder({0x0003, 0x0001});
  Variables.SetEntry(0x0001, u"Windows Boot Manager");
  Variables.SetEntry(0x0003, u"debian");
  EXPECT_EQ(First(), "debian");
}

TEST_F(HostBootEntries, NumbersAreFourCapitalDigits) {
  Variables.SetOrder({0xABCD});
  Variables.SetEntry(0xABCD, u"high");
  EXPECT_EQ(First(), "high");
}

TEST_F(HostBootEntries, EntriesThatAreNotActiveArePassedOver) {
  Variables.SetOrder({1, 2, 3});
  Variables.SetEntry(1, u"off", LOAD_OPTION_HIDDEN);
  Variables.SetEntry(2, u"application", LOAD_OPTION_ACTIVE | LOAD_OPTION_CATEGORY_APP);
  Variables.SetEntry(3, u"on", LOAD_OPTION_ACTIVE | LOAD_OPTION_FORCE_RECONNECT);
  EXPECT_EQ(First(), "on");
}

TEST_F(HostBootEntries, WithoutAnOrderNothingBoots) {
  Variables.SetEntry(0, u"entry");
  EXPECT_EQ(First(), "-");
  Variables.SetOrder({5});
  EXPECT_EQ(First(), "-");
}

TEST_F(HostBootEntries, OddOrderIsReadAsFarAsItGoes) {
  Variables.SetEntry(1, u"entry");
  Variables.Set(u"BootOrder", {1});
  EXPECT_EQ(First(), "-");
  Variables.Set(u"BootOrder", {7, 0, 1, 0, 9});
  EXPECT_EQ(First(), "entry");
}

TEST_F(HostBootEntries, OrderWithoutEndIsLeft) {
  std::vector<UINT16> order(300, 7);
  order[255] = 1;
  Variables.SetEntry(1, u"entry");
  Variables.SetOrder(order);
  EXPECT_EQ(First(), "entry");
  order[255] = 7;
  order[256] = 1;
  Variables.SetOrder(order);
  EXPECT_EQ(First(), "-");
}

TEST_F(HostBootEntries, EntryWithoutADescriptionHasItsOwnName) {
  Variables.SetOrder({0x1F});
  Variables.SetEntry(0x1F, u"");
  EXPECT_EQ(First(), "Boot001F");
}

TEST_F(HostBootEntries, DescriptionIsPrintableAndCut) {
  Variables.SetOrder({1});
  Variables.SetEntry(1, u"L\u00FCfter\u4E2D\n#1");
  EXPECT_EQ(First(), "L?fter??#1");
  Variables.SetEntry(1, std::u16string(100, u'x'));
  EXPECT_EQ(First(), std::string(63, 'x'));
  EXPECT_EQ(First(9), std::string(8, 'x'));
}

TEST_F(HostBootEntries, EveryCutEntryIsPassedOver) {
  Variables.SetOrder({1, 2});
  Variables.SetEntry(2, u"next");
  const std::vector<UINT8> whole = BootVariables::Entry(u"cut");
  for (size_t size = 1; size < whole.size(); size++) {
    Variables.Set(u"Boot0001", {whole.begin(), whole.begin() + static_cast<ptrdiff_t>(size)});
    EXPECT_EQ(First(), "next") << size;
  }
  Variables.Set(u"Boot0001", whole);
  EXPECT_EQ(First(), "cut");
}

TEST_F(HostBootEntries, PathsBeyondTheEntryAreABrokenEntry) {
  Variables.SetOrder({1, 2});
  Variables.SetEntry(2, u"next");
  std::vector<UINT8> entry = BootVariables::Entry(u"far");
  entry[4]++;
  Variables.Set(u"Boot0001", entry);
  EXPECT_EQ(First(), "next");
}

TEST_F(HostBootEntries, DescriptionWithoutATerminatorIsABrokenEntry) {
  Variables.SetOrder({1, 2});
  Variables.SetEntry(2, u"next");
  Variables.Set(u"Boot0001", {1, 0, 0, 0, 0, 0, 'A', 0, 'B', 0, 'C'});
  EXPECT_EQ(First(), "next");
}

TEST_F(HostBootEntries, FailingVariablesArePassedOver) {
  Variables.SetOrder({1, 2});
  Variables.SetEntry(1, u"first");
  Variables.SetEntry(2, u"second");
  const char *const expected[] = {"-", "-", "second", "second", "first"};
  for (UINT64 call = 1; call <= 5; call++) {
    Machine.FailCall(fake::Service::RtGetVariable, call, EFI_DEVICE_ERROR);
    EXPECT_EQ(First(), expected[call - 1]) << call;
    Machine.Faults.Clear();
  }
}

TEST_F(HostBootEntries, VariableThatGrowsInBetweenIsPassedOver) {
  Variables.SetOrder({1, 2});
  Variables.SetEntry(1, u"first");
  Variables.SetEntry(2, u"second");
  Machine.At(fake::Service::RtGetVariable, 4,
             [&] { Variables.SetEntry(1, u"first, with much more of a description"); });
  EXPECT_EQ(First(), "second");
}

TEST_F(HostBootEntries, VariableThatShrinksInBetweenIsReadAsItIs) {
  Variables.SetOrder({1});
  Variables.SetEntry(1, u"a long description");
  Machine.At(fake::Service::RtGetVariable, 4, [&] { Variables.SetEntry(1, u"short"); });
  EXPECT_EQ(First(), "short");
}

TEST_F(HostBootEntries, WithoutMemoryEntriesArePassedOver) {
  Variables.SetOrder({1, 2});
  Variables.SetEntry(1, u"first");
  Variables.SetEntry(2, u"second");
  const char *const expected[] = {"-", "second", "first"};
  for (UINT64 call = 1; call <= 3; call++) {
    Machine.FailCall(fake::Service::AllocatePool, call, EFI_OUT_OF_RESOURCES);
    EXPECT_EQ(First(), expected[call - 1]) << call;
    Machine.Faults.Clear();
  }
}

/// Firmware whose GetVariable keeps to no rule.
EFI_STATUS EFIAPI GetHugeVariable(CHAR16 *, EFI_GUID *, UINT32 *, UINTN *size, VOID *) {
  *size = MAX_UINTN;
  return EFI_BUFFER_TOO_SMALL;
}

EFI_STATUS EFIAPI GetMoreThanThereIsRoom(CHAR16 *, EFI_GUID *, UINT32 *, UINTN *size, VOID *data) {
  *size = data == nullptr ? 2 : 4096;
  return data == nullptr ? EFI_BUFFER_TOO_SMALL : EFI_SUCCESS;
}

EFI_STATUS EFIAPI GetNothing(CHAR16 *, EFI_GUID *, UINT32 *, UINTN *, VOID *) {
  return EFI_SUCCESS;
}

TEST_F(HostBootEntries, FirmwareThatStatesWrongSizesIsNotBelieved) {
  for (EFI_GET_VARIABLE answer : {GetHugeVariable, GetMoreThanThereIsRoom, GetNothing}) {
    Machine.RuntimeServices.GetVariable = answer;
    EXPECT_EQ(First(), "-");
  }
}

}  // namespace
}  // namespace obv_host
