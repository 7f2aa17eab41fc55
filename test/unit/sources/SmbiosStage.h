/** @file
  A machine whose SMBIOS table and processor a test makes, and the sources that read them.
**/

#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "test/firmware/Run.h"
#include "test/unit/sources/HostCpuid.h"
#include "test/unit/sources/LowMemory.h"
#include "test/unit/sources/SmbiosTable.h"

#include "host/sources/Smbios.h"
#include "host/sources/Source.h"

namespace obv_host {

class SmbiosStage : public testing::Test {
 protected:
  SmbiosStage() {
    gProcessor = FakeProcessor::Usual();
    fake::RunLibraryConstructors(Machine);
  }

  ~SmbiosStage() override { EXPECT_EQ(Machine.Leftovers(), ""); }

  /// Publishes the table and asks one source, by the rules of Source.h.
  EFI_STATUS Read(ReadHardware read, const std::string &name = "", const std::string &bank = "") {
    Table.Install(Machine);
    return ReadAgain(read, name, bank);
  }

  /// Publishes the table as one of SMBIOS 2.
  void InstallOld() { Table.Install2(Machine, low_.Place(Table.Bytes)); }

  /// Asks without publishing the table.
  EFI_STATUS ReadAgain(ReadHardware read, const std::string &name = "",
                       const std::string &bank = "") {
    BoardHardware hardware = {};
    name.copy(reinterpret_cast<char *>(hardware.Name), sizeof(hardware.Name) - 1);
    bank.copy(hardware.Bank, sizeof(hardware.Bank) - 1);
    Told = {};
    Presence presence = {};
    EFI_STATUS status = read(hardware, &Told, &presence);
    EXPECT_EQ(presence.Handle, nullptr) << "nothing of SMBIOS can leave";
    if (status == EFI_NOT_FOUND) {
      EXPECT_EQ(Told.Count, 0U);
    }
    return status;
  }

  /// What was told, as "Label: value".
  std::vector<std::string> Lines() const {
    std::vector<std::string> lines;
    for (UINTN i = 0; i < Told.Count; i++) {
      lines.push_back(Text(Told.Lines[i].Label) + ": " + Text(Told.Lines[i].Value));
    }
    return lines;
  }

  /// The value of the line with this label; "-" without one.
  std::string Line(const std::string &label) const {
    for (UINTN i = 0; i < Told.Count; i++) {
      if (Text(Told.Lines[i].Label) == label) {
        return Text(Told.Lines[i].Value);
      }
    }
    return "-";
  }

  static std::string Text(const CHAR16 *text) {
    std::string result;
    for (; *text != 0; text++) {
      result += *text < 0x80 ? static_cast<char>(*text) : '!';
    }
    return result;
  }

  fake::Firmware Machine;
  SmbiosBuilder Table;
  Facts Told = {};

 private:
  LowMemory low_;
};

}  // namespace obv_host
