#include "test/unit/sources/DeviceStage.h"
#include "test/unit/sources/FakeSensor.h"

extern "C" EFI_STATUS EFIAPI ObvDemoSensorsEntryPoint(EFI_HANDLE image, EFI_SYSTEM_TABLE *table);
extern "C" EFI_STATUS EFIAPI ObvDemoSensorsUnload(EFI_HANDLE image);

namespace obv_host {
namespace {

using testing::ElementsAre;

BoardHardware Named(const std::string &name) {
  BoardHardware hardware = {};
  hardware.Kind = kHardwareSensor;
  std::memcpy(hardware.Name, name.data(), name.size());
  return hardware;
}

class Sensor : public DeviceStage {
 protected:
  DeviceAnswer AskNamed(const std::string &name) {
    DeviceAnswer answer = AskSource(ReadSensor, Named(name));
    EXPECT_EQ(BrokenPromise(answer), "");
    return answer;
  }

  DeviceAnswer AskFan() { return AskNamed("CPU fan"); }

  FakeSensor Fan{"CPU fan"};
};

TEST_F(Sensor, ReadingIsToldWithItsUnitAndItsBounds) {
  FakeSensor other("CPU");
  other.At(Machine);
  Fan.At(Machine);
  DeviceAnswer answer = AskFan();
  EXPECT_EQ(answer.Status, EFI_SUCCESS);
  EXPECT_THAT(answer.Lines(), ElementsAre("Speed: 1200 RPM", "Allowed: 600 to 2400 RPM"));
  EXPECT_EQ(answer.Where.Handle, Fan.Handle);
}

TEST_F(Sensor, EachQuantityHasItsUnit) {
  Fan.At(Machine);
  Fan.Reading = {OBV_SENSOR_TEMPERATURE, OBV_SENSOR_WELL, 415, 0, 0};
  EXPECT_THAT(AskFan().Lines(), ElementsAre("Temperature: 41.5 C"));
  Fan.Reading = {OBV_SENSOR_TEMPERATURE, OBV_SENSOR_WELL, -5, -100, 900};
  EXPECT_THAT(AskFan().Lines(), ElementsAre("Temperature: -0.5 C", "Allowed: -10.0 to 90.0 C"));
  Fan.Reading = {OBV_SENSOR_VOLTAGE, OBV_SENSOR_WELL, 12046, 0, 0};
  EXPECT_THAT(AskFan().Lines(), ElementsAre("Voltage: 12.04 V"));
  Fan.Reading = {OBV_SENSOR_POWER, OBV_SENSOR_WELL, 65300, 0, 0};
  EXPECT_THAT(AskFan().Lines(), ElementsAre("Power: 65.3 W"));
}

TEST_F(Sensor, ExtremeValuesAreWritten) {
  Fan.At(Machine);
  Fan.Reading = {OBV_SENSOR_VOLTAGE, OBV_SENSOR_WELL, MIN_INT32, MIN_INT32, MAX_INT32};
  EXPECT_THAT(AskFan().Lines(),
              ElementsAre("Voltage: -2147483.64 V", "Allowed: -2147483.64 to 2147483.64 V"));
}

TEST_F(Sensor, CriticalReadingIsToldAndFails) {
  Fan.Reading.State = OBV_SENSOR_CRITICAL;
  Fan.Reading.Value = 300;
  Fan.At(Machine);
  DeviceAnswer answer = AskFan();
  EXPECT_EQ(answer.Status, EFI_DEVICE_ERROR);
  EXPECT_THAT(answer.Lines(), ElementsAre("Speed: 300 RPM", "Allowed: 600 to 2400 RPM",
                                          "Health: Failing: outside what is allowed"));
}

TEST_F(Sensor, BrokenSensorTellsNoValue) {
  Fan.Reading.State = OBV_SENSOR_FAILED;
  Fan.At(Machine);
  DeviceAnswer answer = AskFan();
  EXPECT_EQ(answer.Status, EFI_DEVICE_ERROR);
  EXPECT_THAT(answer.Lines(), ElementsAre("Health: Failing: the sensor is broken"));
  Fan.Failure = EFI_DEVICE_ERROR;
  EXPECT_THAT(AskFan().Lines(), ElementsAre("Health: Failing: the sensor cannot be read"));
}

TEST_F(Sensor, StartingSensorIsNotReady) {
  Fan.Reading.State = OBV_SENSOR_STARTING;
  Fan.At(Machine);
  DeviceAnswer answer = AskFan();
  EXPECT_EQ(answer.Status, EFI_NOT_READY);
  EXPECT_EQ(answer.Told.Count, 0U);
}

TEST_F(Sensor, UnknownNumbersAreNoSense) {
  Fan.At(Machine);
  Fan.Reading.State = 4;
  EXPECT_THAT(AskFan().Lines(),
              ElementsAre("Health: Failing: the sensor does not answer sensibly"));
  Fan.Reading.State = OBV_SENSOR_WELL;
  Fan.Reading.Quantity = 4;
  EXPECT_THAT(AskFan().Lines(),
              ElementsAre("Health: Failing: the sensor does not answer sensibly"));
}

TEST_F(Sensor, WhatIsNotPluggedInOrNotPublishedIsNotThere) {
  EXPECT_EQ(AskFan().Status, EFI_NOT_FOUND);
  Fan.Failure = EFI_NOT_FOUND;
  Fan.At(Machine);
  EXPECT_EQ(AskFan().Status, EFI_NOT_FOUND);
  EXPECT_EQ(AskNamed("CPU fan 2").Status, EFI_NOT_FOUND);
  EXPECT_EQ(AskNamed("CPU fa").Status, EFI_NOT_FOUND);
}

TEST_F(Sensor, NameWithoutAnEndOrOfNoCharactersIsNobodys) {
  std::string name(OBV_SENSOR_NAME_SIZE, 'x');
  FakeSensor unending(name.c_str());
  unending.At(Machine);
  EXPECT_EQ(AskNamed(name).Status, EFI_NOT_FOUND);
  EXPECT_EQ(AskNamed(name + "y").Status, EFI_NOT_FOUND);
  FakeSensor nameless("");
  nameless.At(Machine);
  EXPECT_EQ(AskNamed("").Status, EFI_NOT_FOUND);
}

TEST_F(Sensor, SensorThatLeavesDuringTheSearchIsNotThere) {
  Fan.At(Machine);
  Machine.At(fake::Service::HandleProtocol, 1, [&] { Fan.Leave(); });
  EXPECT_EQ(AskFan().Status, EFI_NOT_FOUND);
}

TEST_F(Sensor, ProtocolWithoutAnInterfaceIsNoSensor) {
  EFI_HANDLE mark = Machine.Install(gObvSensorProtocolGuid, nullptr);
  EXPECT_EQ(AskFan().Status, EFI_NOT_FOUND);
  Fan.At(Machine);
  EXPECT_EQ(AskFan().Where.Handle, Fan.Handle);
  Machine.Uninstall(mark, gObvSensorProtocolGuid, nullptr);
}

TEST(SensorFailures, FailingServicesGetSoundAnswers) {
  uint64_t runs = 0;
  std::string complaints = AnswersDespiteFailures(
      [](fake::Firmware &machine) {
        static FakeSensor fan("CPU fan");
        fan.At(machine);
        return AskSource(ReadSensor, Named("CPU fan"));
      },
      &runs);
  EXPECT_EQ(complaints, "");
  EXPECT_EQ(runs, 2U);
}

class DemoSensors : public Sensor {};

TEST_F(DemoSensors, TheyCanBeReadAndLeaveAgain) {
  size_t handles = Machine.Handles.HandleCount();
  ASSERT_EQ(ObvDemoSensorsEntryPoint(Machine.ImageHandle, &Machine.SystemTable), EFI_SUCCESS);
  DeviceAnswer processor = AskNamed("CPU fan");
  EXPECT_EQ(processor.Status, EFI_SUCCESS);
  EXPECT_THAT(processor.Line("Speed"), testing::MatchesRegex("1[2-8].0 RPM"));
  EXPECT_EQ(AskNamed("Case fan").Status, EFI_DEVICE_ERROR);
  EXPECT_THAT(AskNamed("Board").Line("Temperature"), testing::MatchesRegex("3[4-8]\\.. C"));
  EXPECT_EQ(AskNamed("Pump").Status, EFI_NOT_FOUND);
  EXPECT_EQ(ObvDemoSensorsUnload(Machine.ImageHandle), EFI_SUCCESS);
  EXPECT_EQ(Machine.Handles.HandleCount(), handles);
}

TEST_F(DemoSensors, LoadThatFailsLeavesNone) {
  size_t handles = Machine.Handles.HandleCount();
  Machine.FailCall(fake::Service::InstallProtocolInterface, 3, EFI_OUT_OF_RESOURCES);
  EXPECT_EQ(ObvDemoSensorsEntryPoint(Machine.ImageHandle, &Machine.SystemTable),
            EFI_OUT_OF_RESOURCES);
  EXPECT_EQ(Machine.Handles.HandleCount(), handles);
}

TEST_F(DemoSensors, UnloadThatFailsCanBeTriedAgain) {
  size_t handles = Machine.Handles.HandleCount();
  ASSERT_EQ(ObvDemoSensorsEntryPoint(Machine.ImageHandle, &Machine.SystemTable), EFI_SUCCESS);
  Machine.FailCall(fake::Service::UninstallProtocolInterface, 2, EFI_ACCESS_DENIED);
  EXPECT_EQ(ObvDemoSensorsUnload(Machine.ImageHandle), EFI_ACCESS_DENIED);
  EXPECT_EQ(ObvDemoSensorsUnload(Machine.ImageHandle), EFI_SUCCESS);
  EXPECT_EQ(Machine.Handles.HandleCount(), handles);
}

}  // namespace
}  // namespace obv_host
