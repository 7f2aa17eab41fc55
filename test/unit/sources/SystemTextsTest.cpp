#include "test/unit/host/HostBoardBytes.h"
#include "test/unit/sources/BootVariables.h"
#include "test/unit/sources/SmbiosStage.h"

namespace obv_host {
namespace {

constexpr UINTN kFirstBoot = 0;
constexpr UINTN kDisplay = 1;
constexpr UINTN kMachine = 2;

class HostSystemTexts : public SmbiosStage {
 protected:
  void AddFirmware(const std::string &version) {
    SMBIOS_TABLE_TYPE0 record = {};
    record.BiosVersion = 1;
    Table.Add(0, record, {version});
  }

  void AddSystem(const std::string &name, const std::string &serial) {
    SMBIOS_TABLE_TYPE1 record = {};
    record.ProductName = 1;
    record.SerialNumber = 2;
    Table.Add(1, record, {name, serial});
  }

  void AddBoard(const std::string &name, const std::string &serial) {
    SMBIOS_TABLE_TYPE2 record = {};
    record.ProductName = 1;
    record.SerialNumber = 2;
    Table.Add(2, record, {name, serial});
  }

  /// The text in this place once the texts were filled in.
  std::string Fill(UINTN index) {
    if (!Table.Bytes.empty()) {
      Table.Install(Machine);
    }
    FillSystemTexts(Described, &Shared);
    return Text(Shared.SystemInfo[index]);
  }

  BootVariables Variables{Machine};
  Board Described = {};
  OBV_SHARED_STATE Shared = {};
};

TEST_F(HostSystemTexts, FirstBootIsTheBootMenusFirst) {
  EXPECT_EQ(Fill(kFirstBoot), "");
  Variables.SetOrder({1});
  Variables.SetEntry(1, u"Disk #1");
  EXPECT_EQ(Fill(kFirstBoot), "Disk ##1");
  Variables.SetEntry(1, u"Stick");
  EXPECT_EQ(Fill(kFirstBoot), "Stick");
}

TEST_F(HostSystemTexts, TextsOfTheBoardStay) {
  Variables.SetOrder({1});
  Variables.SetEntry(1, u"debian");
  AddBoard("EX-1", "0815");
  for (UINTN i : {kFirstBoot, kDisplay, kMachine}) {
    PutText(Described.Header.SystemInfo[i], u"described");
    PutText(Shared.SystemInfo[i], u"described");
  }
  for (UINTN i : {kFirstBoot, kDisplay, kMachine}) {
    EXPECT_EQ(Fill(i), "described");
  }
}

TEST_F(HostSystemTexts, NoOtherTextIsTouched) {
  Variables.SetOrder({1});
  Variables.SetEntry(1, u"debian");
  AddBoard("EX-1", "0815");
  for (UINTN i = 3; i < OBV_SYSTEM_INFO_COUNT; i++) {
    EXPECT_EQ(Fill(i), "");
  }
}

TEST_F(HostSystemTexts, DisplayIsEmptyWithoutOne) {
  PutText(Shared.SystemInfo[kDisplay], u"one that left");
  EXPECT_EQ(Fill(kDisplay), "");
}

TEST_F(HostSystemTexts, MachineIsBoardFirmwareAndSerialNumber) {
  AddFirmware("1.07");
  AddSystem("System", "S-1");
  AddBoard("EX-1", "0815");
  EXPECT_EQ(Fill(kMachine), "EX-1, firmware 1.07, S/N 0815");
}

TEST_F(HostSystemTexts, WhatTheBoardDoesNotSayTheComputerSays) {
  AddFirmware("1.07");
  AddSystem("System", "S-1");
  AddBoard("To Be Filled By O.E.M.", "Default string");
  EXPECT_EQ(Fill(kMachine), "System, firmware 1.07, S/N S-1");
}

TEST_F(HostSystemTexts, PlaceholdersCountAsNothing) {
  for (const char *placeholder :
       {"To Be Filled By O.E.M.", "to be filled by o.e.m.", "Default string", "Not Specified",
        "None", "Unknown", "System Serial Number", "  ", ""}) {
    Table.Bytes.clear();
    AddBoard("EX-1", placeholder);
    AddSystem(placeholder, placeholder);
    EXPECT_EQ(Fill(kMachine), "EX-1") << placeholder;
  }
}

TEST_F(HostSystemTexts, MissingPartsLeaveNoComma) {
  EXPECT_EQ(Fill(kMachine), "");
  AddFirmware("1.07");
  EXPECT_EQ(Fill(kMachine), "firmware 1.07");
  AddBoard("None", "0815");
  EXPECT_EQ(Fill(kMachine), "firmware 1.07, S/N 0815");
  Table.Bytes.clear();
  AddBoard("None", "0815");
  EXPECT_EQ(Fill(kMachine), "S/N 0815");
}

TEST_F(HostSystemTexts, LaterRecordsSpeakWhereTheFirstIsEmpty) {
  AddBoard("Default string", "None");
  AddBoard("EX-2", "0816");
  EXPECT_EQ(Fill(kMachine), "EX-2, S/N 0816");
}

TEST_F(HostSystemTexts, MachineHoldsNoDirective) {
  AddBoard("100% #1", "%s%n");
  EXPECT_EQ(Fill(kMachine), "100? #1, S/N ?s?n");
}

TEST_F(HostSystemTexts, FirstBootMayHoldPercentSigns) {
  Variables.SetOrder({1});
  Variables.SetEntry(1, u"100%");
  EXPECT_EQ(Fill(kFirstBoot), "100%");
}

TEST_F(HostSystemTexts, MachineIsCutAtItsLimit) {
  AddBoard(std::string(200, 'x'), "0815");
  EXPECT_EQ(Fill(kMachine), std::string(49, 'x'));
  Table.Bytes.clear();
  AddBoard(std::string(48, 'x') + "#", "0815");
  EXPECT_EQ(Fill(kMachine), std::string(48, 'x') + "#");
  Table.Bytes.clear();
  AddBoard(std::string(127, 'x'), std::string(127, 'y'));
  EXPECT_EQ(Fill(kMachine), std::string(49, 'x'));
}

TEST_F(HostSystemTexts, FirstBootIsCutAtItsLimit) {
  Variables.SetOrder({1});
  Variables.SetEntry(1, std::u16string(500, u'x'));
  EXPECT_EQ(Fill(kFirstBoot), std::string(127, 'x'));
  Variables.SetEntry(1, std::u16string(500, u'#'));
  EXPECT_EQ(Fill(kFirstBoot), std::string(126, '#'));
}

TEST_F(HostSystemTexts, ShorterTextLeavesNothingOfTheLongerOne) {
  AddBoard("A long name", "0815");
  Fill(kMachine);
  Table.Bytes.clear();
  AddBoard("B", "None");
  EXPECT_EQ(Fill(kMachine), "B");
  EXPECT_EQ(+Shared.SystemInfo[kMachine][5], 0);
}

}  // namespace
}  // namespace obv_host
