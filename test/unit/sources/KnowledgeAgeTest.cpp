// What the host asks again because time has passed.

#include "test/unit/sources/KnowledgeStage.h"

namespace obv_host {
namespace {

TEST_F(HostKnowledge, FactsAgeAtHalfAMinute) {
  Parts.AddHardware(kFan, kHardwareSensor, "FAN");
  CountedSensor sensor("FAN");
  Plug(&sensor);
  ASSERT_EQ(Start(), EFI_SUCCESS);
  EXPECT_EQ(Ask(), EFI_SUCCESS);
  Machine.Clock.Advance(29'999);
  EXPECT_EQ(Ask(), EFI_SUCCESS);
  EXPECT_EQ(sensor.Readings, 1);
  Machine.Clock.Advance(1);
  sensor.State = OBV_SENSOR_FAILED;
  EXPECT_EQ(Ask(), EFI_DEVICE_ERROR);
  EXPECT_EQ(sensor.Readings, 2);
  Machine.Clock.Advance(29'999);
  EXPECT_EQ(Ask(), EFI_DEVICE_ERROR);
  EXPECT_EQ(sensor.Readings, 2);
}

TEST_F(HostKnowledge, OneReadingASecondIsForAge) {
  Parts.AddHardware(kProcessor, kHardwareSensor, "ONE");
  Parts.AddHardware(kFan, kHardwareSensor, "TWO");
  CountedSensor one("ONE");
  CountedSensor two("TWO");
  Plug(&one);
  Plug(&two);
  ASSERT_EQ(Start(), EFI_SUCCESS);
  ReadHardwareAtStart(&Known);
  Machine.Clock.Advance(30'000);
  Ask(kProcessor);
  Ask(kFan);
  EXPECT_EQ(one.Readings, 2);
  EXPECT_EQ(two.Readings, 1);
  Machine.Clock.Advance(999);
  Ask(kFan);
  EXPECT_EQ(two.Readings, 1);
  Machine.Clock.Advance(1);
  Ask(kFan);
  EXPECT_EQ(two.Readings, 2);
}

// For most categories the view asks at its start alone.
TEST_F(HostKnowledge, LaterViewReadsAnewWhateverIsOld) {
  Parts.AddHardware(kProcessor, kHardwareSensor, "ONE");
  Parts.AddHardware(kFan, kHardwareSensor, "TWO");
  CountedSensor one("ONE");
  CountedSensor two("TWO");
  Plug(&one);
  Plug(&two);
  ASSERT_EQ(Start(), EFI_SUCCESS);
  ReadHardwareAtStart(&Known);
  Machine.Clock.Advance(29'999);
  ReadHardwareAtStart(&Known);
  EXPECT_EQ(one.Readings, 1);
  EXPECT_EQ(two.Readings, 1);
  Machine.Clock.Advance(1);
  ReadHardwareAtStart(&Known);
  EXPECT_EQ(one.Readings, 2);
  EXPECT_EQ(two.Readings, 2);
}

// As a fan that is put onto its header: its sensor was there all the time.
TEST_F(HostKnowledge, WhatASensorMissesIsAskedForAgainWhenItsAnswerIsOld) {
  Parts.AddHardware(kFan, kHardwareSensor, "FAN");
  Parts.AddHardware(kFan, kHardwareMemory, "DIMM");
  CountedSensor sensor("FAN");
  sensor.Plugged = false;
  Plug(&sensor);
  AddModule("DIMM");
  ASSERT_EQ(Start(), EFI_SUCCESS);
  EXPECT_EQ(Ask(), EFI_SUCCESS);
  EXPECT_EQ(Line("Size"), "1 GB");
  sensor.Plugged = true;
  Machine.Clock.Advance(30'000);
  EXPECT_EQ(Ask(), EFI_SUCCESS);
  EXPECT_EQ(Line("Speed"), "1200 RPM");
}

TEST_F(HostKnowledge, DeviceThatStartsIsAskedAgainWhenItsAnswerIsOld) {
  Parts.AddHardware(kFan, kHardwareSensor, "FAN");
  CountedSensor sensor("FAN");
  sensor.State = OBV_SENSOR_STARTING;
  Plug(&sensor);
  ASSERT_EQ(Start(), EFI_SUCCESS);
  EXPECT_EQ(Ask(), EFI_NOT_READY);
  sensor.State = OBV_SENSOR_WELL;
  Machine.Clock.Advance(29'999);
  EXPECT_EQ(Ask(), EFI_NOT_READY);
  Machine.Clock.Advance(1);
  EXPECT_EQ(Ask(), EFI_SUCCESS);
}

TEST_F(HostKnowledge, FactsOfTheTablesDoNotAge) {
  Parts.AddHardware(kFan, kHardwareMemory, "DIMM A1");
  AddModule("DIMM A1");
  ASSERT_EQ(Start(), EFI_SUCCESS);
  EXPECT_EQ(Ask(), EFI_SUCCESS);
  Table.Bytes.clear();
  Table.End();
  Table.Install(Machine);
  Machine.Clock.Advance(3'600'000);
  EXPECT_EQ(Ask(), EFI_SUCCESS);
  EXPECT_EQ(Line("Size"), "1 GB");
}

}  // namespace
}  // namespace obv_host
