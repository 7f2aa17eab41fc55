#include "test/unit/sources/SmbiosStage.h"

namespace obv_host {
namespace {

using testing::ElementsAre;

using Fan = SMBIOS_TABLE_TYPE27;
using Probe = SMBIOS_TABLE_TYPE28;

/// The upper three bits of a status byte.
constexpr UINT8 kOk = 3 << 5;

class HostFan : public SmbiosStage {
 protected:
  EFI_STATUS ReadWith(UINT8 typeAndStatus, UINT16 speed, size_t length = sizeof(Fan)) {
    Fan fan = {};
    std::memcpy(&fan.DeviceTypeAndStatus, &typeAndStatus, 1);
    fan.CoolingUnitGroup = 2;
    fan.NominalSpeed = speed;
    fan.Description = 1;
    Table.Bytes.clear();
    Table.Add(27, fan, {"CPU_FAN"}, length);
    return Read(ReadFan, "CPU_FAN");
  }
};

TEST_F(HostFan, TellsWhatTheFirmwareKnows) {
  EXPECT_EQ(ReadWith(kOk | 5, 1200), EFI_SUCCESS);
  EXPECT_THAT(Lines(),
              ElementsAre("Type: Chip fan", "Nominal speed: 1200 RPM", "Cooling group: 2"));
}

TEST_F(HostFan, IsAbsentWithoutARecordOfItsName) {
  EXPECT_EQ(ReadAgain(ReadFan, "CPU_FAN"), EFI_NOT_FOUND);
  EXPECT_EQ(ReadWith(kOk, 1200), EFI_SUCCESS);
  EXPECT_EQ(Read(ReadFan, "CHA_FAN1"), EFI_NOT_FOUND);
}

TEST_F(HostFan, RecordOfAnOldTableHasNoName) {
  EXPECT_EQ(ReadWith(kOk | 3, 1200, OFFSET_OF(Fan, Description)), EFI_NOT_FOUND);
  EXPECT_EQ(Read(ReadFan, ""), EFI_NOT_FOUND);
}

TEST_F(HostFan, UnknownSpeedIsNotTold) {
  for (UINT16 speed : {UINT16{0x8000}, UINT16{0}}) {
    EXPECT_EQ(ReadWith(kOk | 3, speed), EFI_SUCCESS);
    EXPECT_EQ(Line("Nominal speed"), "-");
  }
}

TEST_F(HostFan, HealthFollowsTheStatus) {
  const EFI_STATUS answers[] = {EFI_SUCCESS, EFI_SUCCESS,      EFI_SUCCESS,      EFI_SUCCESS,
                                EFI_SUCCESS, EFI_DEVICE_ERROR, EFI_DEVICE_ERROR, EFI_SUCCESS};
  const char *lines[] = {"-",
                         "-",
                         "-",
                         "-",
                         "Warning: outside its usual range",
                         "Failing: critical",
                         "Failed: cannot recover",
                         "-"};
  for (UINT8 status = 0; status < 8; status++) {
    EXPECT_EQ(ReadWith(static_cast<UINT8>(status << 5 | 3), 1200), answers[status]) << int(status);
    EXPECT_EQ(Line("Health"), lines[status]) << int(status);
    EXPECT_EQ(Line("Type"), "Fan");
  }
}

class HostProbe : public SmbiosStage {
 protected:
  static Probe Usual() {
    Probe probe = {};
    probe.Description = 1;
    SetLocation(&probe, kOk | 3);
    probe.NominalValue = 425;
    probe.MinimumValue = static_cast<UINT16>(-55);
    probe.MaximumValue = 950;
    return probe;
  }

  static void SetLocation(Probe *probe, UINT8 locationAndStatus) {
    std::memcpy(&probe->LocationAndStatus, &locationAndStatus, 1);
  }

  EFI_STATUS ReadWith(const Probe &probe, size_t length = sizeof(Probe)) {
    Table.Bytes.clear();
    Table.Add(28, probe, {"CPU Temp"}, length);
    return Read(ReadProbe, "CPU Temp");
  }

  std::string NominalWith(int tenths) {
    Probe probe = Usual();
    probe.NominalValue = static_cast<UINT16>(tenths);
    EXPECT_EQ(ReadWith(probe), EFI_SUCCESS);
    return Line("Nominal temperature");
  }
};

TEST_F(HostProbe, TellsWhatTheFirmwareKnows) {
  EXPECT_EQ(ReadWith(Usual()), EFI_SUCCESS);
  EXPECT_THAT(Lines(), ElementsAre("Nominal temperature: 42.5 C", "Lowest allowed: -5.5 C",
                                   "Highest allowed: 95 C", "Location: Processor"));
}

TEST_F(HostProbe, IsAbsentWithoutARecordOfItsName) {
  EXPECT_EQ(ReadAgain(ReadProbe, "CPU Temp"), EFI_NOT_FOUND);
  EXPECT_EQ(ReadWith(Usual()), EFI_SUCCESS);
  EXPECT_EQ(Read(ReadProbe, "VRM Temp"), EFI_NOT_FOUND);
}

TEST_F(HostProbe, TemperaturesAreTenthsOfADegree) {
  EXPECT_EQ(NominalWith(0), "0 C");
  EXPECT_EQ(NominalWith(410), "41 C");
  EXPECT_EQ(NominalWith(5), "0.5 C");
  EXPECT_EQ(NominalWith(-5), "-0.5 C");
  EXPECT_EQ(NominalWith(-10), "-1 C");
  EXPECT_EQ(NominalWith(0x7FFF), "3276.7 C");
  EXPECT_EQ(NominalWith(-0x7FFF), "-3276.7 C");
  EXPECT_EQ(NominalWith(0x8000), "-");
}

TEST_F(HostProbe, CriticalOnesFail) {
  Probe probe = Usual();
  SetLocation(&probe, 5 << 5 | 7);
  EXPECT_EQ(ReadWith(probe), EFI_DEVICE_ERROR);
  EXPECT_EQ(Line("Health"), "Failing: critical");
  EXPECT_EQ(Line("Location"), "Mainboard");
  SetLocation(&probe, 6 << 5 | 1);
  EXPECT_EQ(ReadWith(probe), EFI_DEVICE_ERROR);
  EXPECT_EQ(Line("Health"), "Failed: cannot recover");
  EXPECT_EQ(Line("Location"), "-");
}

TEST_F(HostProbe, EveryLengthOfTheRecordIsRead) {
  for (size_t length = 4; length <= sizeof(Probe); length++) {
    EFI_STATUS status = ReadWith(Usual(), length);
    EXPECT_EQ(status, length > OFFSET_OF(Probe, Description) ? EFI_SUCCESS : EFI_NOT_FOUND);
    EXPECT_EQ(Line("Nominal temperature"), length == sizeof(Probe) ? "42.5 C" : "-") << length;
  }
}

}  // namespace
}  // namespace obv_host
