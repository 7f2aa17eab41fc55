#include "test/unit/host/HostBoardBytes.h"
#include "test/unit/sources/SmbiosStage.h"

#include "host/sources/Knowledge.h"

namespace obv_host {
namespace {

/// A sensor as a platform driver publishes it.
struct FakeSensor {
  explicit FakeSensor(const std::string &name) {
    Protocol.Read = Answer;
    name.copy(Protocol.Name, sizeof(Protocol.Name) - 1);
  }

  static EFI_STATUS EFIAPI Answer(OBV_SENSOR_PROTOCOL *This, OBV_SENSOR_READING *reading) {
    static_assert(OFFSET_OF(FakeSensor, Protocol) == 0);
    auto *sensor = reinterpret_cast<FakeSensor *>(This);
    sensor->Readings++;
    if (!sensor->Plugged) {
      return EFI_NOT_FOUND;
    }
    *reading = {OBV_SENSOR_SPEED, sensor->State, sensor->Value, 0, 0};
    return EFI_SUCCESS;
  }

  OBV_SENSOR_PROTOCOL Protocol = {};
  UINT32 State = OBV_SENSOR_WELL;
  INT32 Value = 1200;
  int Readings = 0;
  bool Plugged = true;
};

/// Knowledge of a board on a machine with a clock.
class HostKnowledge : public SmbiosStage {
 protected:
  HostKnowledge() {
    services_ = {};
    services_.Context = this;
    services_.ReadClock = [](void *context) -> UINT64 {
      return Stage(context).Machine.Clock.Milliseconds();
    };
    services_.Allocate = [](void *context, UINTN size) -> void * {
      VOID *memory = nullptr;
      HostKnowledge &stage = Stage(context);
      return EFI_ERROR(stage.Machine.Pool.Allocate(EfiBootServicesData, size, &memory)) ? nullptr
                                                                                        : memory;
    };
    services_.Free = [](void *context, void *memory) {
      EXPECT_EQ(Stage(context).Machine.Pool.Free(memory), EFI_SUCCESS);
    };
    events_ = Machine.Events.LiveCount();
  }

  ~HostKnowledge() override {
    StopKnowledge(&Known);
    EXPECT_EQ(Machine.Events.LiveCount(), events_);
  }

  /// Begins with the board that Parts describe.
  EFI_STATUS Start() {
    bytes_ = Parts.Bytes();
    BoardFault fault;
    EXPECT_EQ(OpenBoard(bytes_.data(), bytes_.size(), &board_, &fault), EFI_SUCCESS) << fault.Text;
    return StartKnowledge(services_, board_, &Known);
  }

  EFI_STATUS Ask(UINTN component = kFan) { return AskKnowledge(&Known, component, &Told); }

  EFI_HANDLE Plug(FakeSensor *sensor) {
    EFI_HANDLE handle = Machine.Install(gObvSensorProtocolGuid, &sensor->Protocol);
    Settle();
    return handle;
  }

  void Unplug(EFI_HANDLE handle, FakeSensor *sensor) {
    Machine.Uninstall(handle, gObvSensorProtocolGuid, &sensor->Protocol);
  }

  /// Lets the notifications that are due run, as firmware does after any service.
  void Settle() { Machine.Events.Dispatch(); }

  void AddModule(const std::string &locator) {
    SMBIOS_TABLE_TYPE17 record = {};
    record.Size = 1024;
    record.DeviceLocator = 1;
    Table.Add(17, record, {locator});
    Table.Install(Machine);
  }

  /// Components of the sound board.
  static constexpr UINTN kProcessor = 0;
  static constexpr UINTN kFan = 1;

  BoardParts Parts = BoardParts::Sound();
  Knowledge Known = {};

 private:
  static HostKnowledge &Stage(void *context) { return *static_cast<HostKnowledge *>(context); }

  HostServices services_;
  size_t events_ = 0;
  std::vector<UINT8> bytes_;
  Board board_ = {};
};

TEST_F(HostKnowledge, BoardWithoutHardwareTakesNothing) {
  size_t events = Machine.Events.LiveCount();
  EXPECT_EQ(Start(), EFI_SUCCESS);
  EXPECT_EQ(Machine.Pool.LiveBlocks(), 0U);
  EXPECT_EQ(Machine.Events.LiveCount(), events);
  ReadHardwareOnce(&Known);
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
  FakeSensor sensor("FAN");
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
  FakeSensor sensor("FAN");
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
  FakeSensor sensor("FAN");
  Plug(&sensor);
  ASSERT_EQ(Start(), EFI_SUCCESS);
  ReadHardwareOnce(&Known);
  ReadHardwareOnce(&Known);
  EXPECT_EQ(Ask(), EFI_SUCCESS);
  EXPECT_EQ(sensor.Readings, 1);
}

TEST_F(HostKnowledge, ArrivalIsNoticedAtTheNextQuestion) {
  Parts.AddHardware(kFan, kHardwareSensor, "FAN");
  ASSERT_EQ(Start(), EFI_SUCCESS);
  EXPECT_EQ(Ask(), EFI_NOT_FOUND);
  FakeSensor sensor("FAN");
  Plug(&sensor);
  EXPECT_EQ(Ask(), EFI_SUCCESS);
  EXPECT_EQ(sensor.Readings, 1);
}

TEST_F(HostKnowledge, ArrivalOfAnotherKindIsNoReasonToReadAgain) {
  Parts.AddHardware(kFan, kHardwareSensor, "FAN");
  FakeSensor sensor("FAN");
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
  FakeSensor sensor("FAN");
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
  FakeSensor first("FAN");
  FakeSensor second("FAN");
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
  FakeSensor first("FAN");
  FakeSensor second("FAN");
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

TEST_F(HostKnowledge, FactsAgeAtHalfAMinute) {
  Parts.AddHardware(kFan, kHardwareSensor, "FAN");
  FakeSensor sensor("FAN");
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
  FakeSensor one("ONE");
  FakeSensor two("TWO");
  Plug(&one);
  Plug(&two);
  ASSERT_EQ(Start(), EFI_SUCCESS);
  ReadHardwareOnce(&Known);
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

// As a fan that is put onto its header: its sensor was there all the time.
TEST_F(HostKnowledge, WhatASensorMissesIsAskedForAgainWhenItsAnswerIsOld) {
  Parts.AddHardware(kFan, kHardwareSensor, "FAN");
  Parts.AddHardware(kFan, kHardwareMemory, "DIMM");
  FakeSensor sensor("FAN");
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
  FakeSensor sensor("FAN");
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

TEST_F(HostKnowledge, FirstAlternativeThatIsThereAnswers) {
  Parts.AddHardware(kFan, kHardwareMemory, "DIMM A1");
  Parts.AddHardware(kFan, kHardwareSensor, "ONE");
  Parts.AddHardware(kFan, kHardwareSensor, "TWO");
  FakeSensor one("ONE");
  FakeSensor two("TWO");
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
  FakeSensor sensor("FAN");
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
