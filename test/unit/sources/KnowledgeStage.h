/** @file
  What the host knows of a board's hardware, on a machine with a clock and sensors.
**/

#pragma once

#include "test/unit/host/HostBoardBytes.h"
#include "test/unit/sources/SmbiosStage.h"

#include "host/sources/Knowledge.h"

namespace obv_host {

/// A sensor as a platform driver publishes it.
struct CountedSensor {
  explicit CountedSensor(const std::string &name) {
    Protocol.Read = Answer;
    name.copy(Protocol.Name, sizeof(Protocol.Name) - 1);
  }

  static EFI_STATUS EFIAPI Answer(OBV_SENSOR_PROTOCOL *This, OBV_SENSOR_READING *reading) {
    static_assert(OFFSET_OF(CountedSensor, Protocol) == 0);
    auto *sensor = reinterpret_cast<CountedSensor *>(This);
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

  EFI_HANDLE Plug(CountedSensor *sensor) {
    EFI_HANDLE handle = Machine.Install(gObvSensorProtocolGuid, &sensor->Protocol);
    Settle();
    return handle;
  }

  void Unplug(EFI_HANDLE handle, CountedSensor *sensor) {
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

}  // namespace obv_host
