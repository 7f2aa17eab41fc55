/** @file
  Sensors of a machine that does not exist: two fans, a temperature, and a fan that is
  not plugged in. What they measure goes up and down with the processor's time counter.
**/

extern "C" {
#include <Uefi.h>

#include <Library/BaseLib.h>
#include <Library/UefiBootServicesTableLib.h>

#include <Protocol/ObvSensor.h>
}

namespace {

/// Goes from 0 to most and back, by one at each step of the counter.
INT32 Wave(UINT64 counter, UINT32 most) {
  constexpr UINTN kStep = 30;  // Bits below a step: some of them make a second.
  UINT32 phase = static_cast<UINT32>((counter >> kStep) % (2 * most));
  return static_cast<INT32>(phase <= most ? phase : 2 * most - phase);
}

EFI_STATUS EFIAPI ReadProcessorFan(OBV_SENSOR_PROTOCOL *, OBV_SENSOR_READING *reading) {
  *reading = {OBV_SENSOR_SPEED, OBV_SENSOR_WELL, 1200 + 10 * Wave(AsmReadTsc(), 60), 600, 2400};
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI ReadCaseFan(OBV_SENSOR_PROTOCOL *, OBV_SENSOR_READING *reading) {
  *reading = {OBV_SENSOR_SPEED, OBV_SENSOR_CRITICAL, 350, 500, 1500};
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI ReadBoardTemperature(OBV_SENSOR_PROTOCOL *, OBV_SENSOR_READING *reading) {
  *reading = {OBV_SENSOR_TEMPERATURE, OBV_SENSOR_WELL, 340 + Wave(AsmReadTsc(), 40), 0, 850};
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI ReadPumpFan(OBV_SENSOR_PROTOCOL *, OBV_SENSOR_READING *) { return EFI_NOT_FOUND; }

struct DemoSensor {
  OBV_SENSOR_PROTOCOL Protocol;
  EFI_HANDLE Handle;
};

DemoSensor gSensors[] = {
    {{ReadProcessorFan, "CPU fan"}, nullptr},
    {{ReadCaseFan, "Case fan"}, nullptr},
    {{ReadBoardTemperature, "Board"}, nullptr},
    {{ReadPumpFan, "Pump"}, nullptr},
};

}  // namespace

extern "C" EFI_STATUS EFIAPI ObvDemoSensorsUnload(EFI_HANDLE) {
  for (DemoSensor &sensor : gSensors) {
    if (sensor.Handle == nullptr) {
      continue;
    }
    EFI_STATUS status =
        gBS->UninstallProtocolInterface(sensor.Handle, &gObvSensorProtocolGuid, &sensor.Protocol);
    if (EFI_ERROR(status)) {
      return status;
    }
    sensor.Handle = nullptr;
  }
  return EFI_SUCCESS;
}

extern "C" EFI_STATUS EFIAPI ObvDemoSensorsEntryPoint(EFI_HANDLE image, EFI_SYSTEM_TABLE *) {
  for (DemoSensor &sensor : gSensors) {
    EFI_STATUS status = gBS->InstallProtocolInterface(&sensor.Handle, &gObvSensorProtocolGuid,
                                                      EFI_NATIVE_INTERFACE, &sensor.Protocol);
    if (EFI_ERROR(status)) {
      (void)ObvDemoSensorsUnload(image);
      return status;
    }
  }
  return EFI_SUCCESS;
}
