// A platform driver's sensor.

#pragma once

#include "test/unit/sources/FakeDevice.h"

extern "C" {
#include <Protocol/ObvSensor.h>
}

namespace obv_host {

class FakeSensor : public FakeDevice {
 public:
  explicit FakeSensor(const char *name) {
    io_.Owner = this;
    io_.Protocol.Read = Read;
    std::strncpy(io_.Protocol.Name, name, sizeof io_.Protocol.Name);
  }

  FakeSensor &At(fake::Firmware &machine) {
    Place(machine, gObvSensorProtocolGuid, &io_.Protocol, fake::DevicePath().PciRoot());
    return *this;
  }

  OBV_SENSOR_READING Reading = {OBV_SENSOR_SPEED, OBV_SENSOR_WELL, 1200, 600, 2400};
  EFI_STATUS Failure = EFI_SUCCESS;

 private:
  struct Io {
    OBV_SENSOR_PROTOCOL Protocol;
    FakeSensor *Owner;
  };

  static EFI_STATUS EFIAPI Read(OBV_SENSOR_PROTOCOL *self, OBV_SENSOR_READING *reading) {
    FakeSensor *sensor = reinterpret_cast<Io *>(self)->Owner;
    sensor->Called();
    if (!EFI_ERROR(sensor->Failure)) {
      *reading = sensor->Reading;
    }
    return sensor->Failure;
  }

  Io io_ = {};
};

}  // namespace obv_host
