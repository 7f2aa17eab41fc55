#include "test/unit/sources/KnowledgeStage.h"

namespace obv_host {
namespace {

TEST_F(HostKnowledge, BoardWithoutHardwareTakesNothing) {
  size_t events = Machine.Events.LiveCount();
  EXPECT_EQ(Start(), EFI_SUCCESS);
  EXPECT_EQ(Machine.Pool.LiveBlocks(), 0U);
  EXPECT_EQ(Machine.Events.LiveCount(), events);
  ReadHardwareAtStart(&Known);
  EXPECT_EQ(Ask(), EFI_NOT_FOUND);
}

TEST_F(HostKnowledge, HardwareOfNoComponentTakesNothing) {
  Parts.AddHardware(kFan, kHardwareSensor, "FAN");
  Parts.Components.clear();
  EXPECT_EQ(Start(), EFI_SUCCESS);
  EXPECT_EQ(Machine.Pool.LiveBlocks(), 0U);
}

TEST_F(HostKnowledge, WithoutMemoryNothingBegins) {
  size_t events = Machine.Events.LiveCount();
  Parts.AddHardware(kFan, kHardwareSensor, "FAN");
  Machine.Pool.Capacity = Machine.Pool.LiveBytes();
  EXPECT_EQ(Start(), EFI_OUT_OF_RESOURCES);
  EXPECT_EQ(Machine.Events.LiveCount(), events);
  EXPECT_EQ(Ask(), EFI_NOT_FOUND);
}

TEST_F(HostKnowledge, StopLeavesNoEventAndNoMemory) {
  size_t events = Machine.Events.LiveCount();
  Parts.AddHardware(kFan, kHardwareSensor, "FAN");
  ASSERT_EQ(Start(), EFI_SUCCESS);
  EXPECT_GT(Machine.Events.LiveCount(), events);
  EXPECT_EQ(Machine.Pool.LiveBlocks(), 1U);
  StopKnowledge(&Known);
  EXPECT_EQ(Machine.Events.LiveCount(), events);
  EXPECT_EQ(Machine.Pool.LiveBlocks(), 0U);
  EXPECT_EQ(Ask(), EFI_NOT_FOUND);
  // What arrives afterwards tells nobody.
  CountedSensor sensor("FAN");
  Plug(&sensor);
}

TEST_F(HostKnowledge, WatchesThatFailAreLeftOut) {
  Parts.AddHardware(kFan, kHardwareSensor, "FAN");
  for (fake::Service service :
       {fake::Service::CreateEvent, fake::Service::RegisterProtocolNotify}) {
    size_t events = Machine.Events.LiveCount();
    Machine.FailCall(service, 1, EFI_OUT_OF_RESOURCES, fake::kForever);
    EXPECT_EQ(Start(), EFI_SUCCESS);
    EXPECT_EQ(Machine.Events.LiveCount(), events);
    EXPECT_EQ(Ask(), EFI_NOT_FOUND);
    Machine.Faults.Clear();
    StopKnowledge(&Known);
  }
}

TEST_F(HostKnowledge, DeviceIsReadOnceAndItsAnswerKept) {
  Parts.AddHardware(kFan, kHardwareSensor, "FAN");
  CountedSensor sensor("FAN");
  Plug(&sensor);
  ASSERT_EQ(Start(), EFI_SUCCESS);
  for (int i = 0; i < 5; i++) {
    EXPECT_EQ(Ask(), EFI_SUCCESS);
    EXPECT_GT(Told.Count, 0U);
    Machine.Clock.Advance(1000);
  }
  EXPECT_EQ(sensor.Readings, 1);
}

TEST_F(HostKnowledge, ReadingOnceReadsWhatWasNotReadYet) {
  Parts.AddHardware(kFan, kHardwareSensor, "FAN");
  CountedSensor sensor("FAN");
  Plug(&sensor);
  ASSERT_EQ(Start(), EFI_SUCCESS);
  ReadHardwareAtStart(&Known);
  ReadHardwareAtStart(&Known);
  EXPECT_EQ(Ask(), EFI_SUCCESS);
  EXPECT_EQ(sensor.Readings, 1);
}

TEST_F(HostKnowledge, ComponentWithoutHardwareIsNotReadBeforeItIsAskedFor) {
  Parts.AddHardware(kFan, kHardwareSensor, "FAN");
  ASSERT_EQ(Start(), EFI_SUCCESS);
  ReadHardwareAtStart(&Known);
  EXPECT_TRUE(Known.Components[kFan].Read);
  EXPECT_FALSE(Known.Components[kProcessor].Read);
  EXPECT_EQ(Ask(kProcessor), EFI_NOT_FOUND);
}

TEST_F(HostKnowledge, ArrivalIsNoticedAtTheNextQuestion) {
  Parts.AddHardware(kFan, kHardwareSensor, "FAN");
  ASSERT_EQ(Start(), EFI_SUCCESS);
  EXPECT_EQ(Ask(), EFI_NOT_FOUND);
  CountedSensor sensor("FAN");
  Plug(&sensor);
  EXPECT_EQ(Ask(), EFI_SUCCESS);
  EXPECT_EQ(sensor.Readings, 1);
}

TEST_F(HostKnowledge, ArrivalOfAnotherKindIsNoReasonToReadAgain) {
  Parts.AddHardware(kFan, kHardwareSensor, "FAN");
  CountedSensor sensor("FAN");
  Plug(&sensor);
  ASSERT_EQ(Start(), EFI_SUCCESS);
  EXPECT_EQ(Ask(), EFI_SUCCESS);
  EFI_HANDLE handle = Machine.Install(gEfiUsbIoProtocolGuid, this);
  Settle();
  EXPECT_EQ(Ask(), EFI_SUCCESS);
  EXPECT_EQ(sensor.Readings, 1);
  Machine.Uninstall(handle, gEfiUsbIoProtocolGuid, this);
}

TEST_F(HostKnowledge, DepartureIsNoticedAtTheNextQuestion) {
  Parts.AddHardware(kFan, kHardwareSensor, "FAN");
  CountedSensor sensor("FAN");
  EFI_HANDLE handle = Plug(&sensor);
  ASSERT_EQ(Start(), EFI_SUCCESS);
  EXPECT_EQ(Ask(), EFI_SUCCESS);
  Unplug(handle, &sensor);
  EXPECT_EQ(Ask(), EFI_NOT_FOUND);
  EXPECT_EQ(Told.Count, 0U);
  EXPECT_EQ(sensor.Readings, 1);
}

TEST_F(HostKnowledge, ReplacementIsReadAnew) {
  Parts.AddHardware(kFan, kHardwareSensor, "FAN");
  CountedSensor first("FAN");
  CountedSensor second("FAN");
  second.State = OBV_SENSOR_FAILED;
  EFI_HANDLE handle = Plug(&first);
  ASSERT_EQ(Start(), EFI_SUCCESS);
  EXPECT_EQ(Ask(), EFI_SUCCESS);
  Unplug(handle, &first);
  Plug(&second);
  EXPECT_EQ(Ask(), EFI_DEVICE_ERROR);
  EXPECT_EQ(first.Readings, 1);
  EXPECT_EQ(second.Readings, 1);
}

TEST_F(HostKnowledge, ReplacementInPlaceIsNoticedWithoutAWatch) {
  Parts.AddHardware(kFan, kHardwareSensor, "FAN");
  CountedSensor first("FAN");
  CountedSensor second("FAN");
  EFI_HANDLE handle = Plug(&first);
  Machine.Install(gEfiUsbIoProtocolGuid, this, handle);  // Keeps the handle alive.
  Machine.FailCall(fake::Service::RegisterProtocolNotify, 1, EFI_OUT_OF_RESOURCES, fake::kForever);
  ASSERT_EQ(Start(), EFI_SUCCESS);
  EXPECT_EQ(Ask(), EFI_SUCCESS);
  Unplug(handle, &first);
  Machine.Install(gObvSensorProtocolGuid, &second.Protocol, handle);
  EXPECT_EQ(Ask(), EFI_SUCCESS);
  EXPECT_EQ(first.Readings, 1);
  EXPECT_EQ(second.Readings, 1);
}

TEST_F(HostKnowledge, FirstAlternativeThatIsThereAnswers) {
  Parts.AddHardware(kFan, kHardwareMemory, "DIMM A1");
  Parts.AddHardware(kFan, kHardwareSensor, "ONE");
  Parts.AddHardware(kFan, kHardwareSensor, "TWO");
  CountedSensor one("ONE");
  CountedSensor two("TWO");
  one.State = OBV_SENSOR_FAILED;
  Plug(&two);
  ASSERT_EQ(Start(), EFI_SUCCESS);
  EXPECT_EQ(Ask(), EFI_SUCCESS);
  EXPECT_EQ(two.Readings, 1);
  EFI_HANDLE handle = Plug(&one);
  EXPECT_EQ(Ask(), EFI_DEVICE_ERROR) << "a failing one is there, too";
  EXPECT_EQ(two.Readings, 1);
  Unplug(handle, &one);
  EXPECT_EQ(Ask(), EFI_SUCCESS);
  EXPECT_EQ(two.Readings, 2);
}

TEST_F(HostKnowledge, WithoutTheNeededProcessorThereIsNoMapping) {
  Parts.AddHardware(kFan, kHardwareNeedsProcessor, "Processor 9000");
  Parts.AddHardware(kFan, kHardwareSensor, "FAN");
  CountedSensor sensor("FAN");
  Plug(&sensor);
  ASSERT_EQ(Start(), EFI_SUCCESS);
  EXPECT_EQ(Ask(), EFI_SUCCESS);
  StopKnowledge(&Known);
  gProcessor.SetBrand("Example(R) Processor 8000");
  ASSERT_EQ(Start(), EFI_SUCCESS);
  EXPECT_EQ(Ask(), EFI_NO_MAPPING);
  EXPECT_EQ(Told.Count, 0U);
  EXPECT_EQ(sensor.Readings, 1);
}

TEST_F(HostKnowledge, ConditionAloneNamesNoHardware) {
  Parts.AddHardware(kFan, kHardwareNeedsProcessor, "Processor 9000");
  ASSERT_EQ(Start(), EFI_SUCCESS);
  EXPECT_EQ(Ask(), EFI_NOT_FOUND);
}

TEST_F(HostKnowledge, EveryKindButTheConditionHasItsSource) {
  for (UINT16 kind = 1; kind < kHardwareNeedsProcessor; kind++) {
    ASSERT_NE(SourceOf(kind), nullptr) << kind;
    EXPECT_EQ(SourceOf(kind)->Kind, kind);
    EXPECT_NE(SourceOf(kind)->Read, nullptr);
  }
  EXPECT_EQ(SourceOf(0), nullptr);
  EXPECT_EQ(SourceOf(kHardwareNeedsProcessor), nullptr);
  EXPECT_EQ(SourceOf(0xFFFF), nullptr);
}

}  // namespace
}  // namespace obv_host
