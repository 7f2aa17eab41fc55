#include "host/sources/Source.h"

namespace obv_host {
namespace {

/// Whether a sensor has this name. Neither text need end within its field.
bool HasName(const OBV_SENSOR_PROTOCOL *sensor, const UINT8 *name) {
  for (UINTN i = 0; i < OBV_SENSOR_NAME_SIZE; ++i) {
    if (static_cast<UINT8>(sensor->Name[i]) != name[i]) {
      return false;
    }
    if (name[i] == '\0') {
      return i > 0;
    }
  }
  return false;
}

EFI_STATUS FindSensor(const UINT8 *name, Presence *presence) {
  UINTN count = 0;
  EFI_HANDLE *handles = nullptr;
  EFI_STATUS status =
      gBS->LocateHandleBuffer(ByProtocol, &gObvSensorProtocolGuid, nullptr, &count, &handles);
  if (EFI_ERROR(status)) {
    return EFI_NOT_FOUND;
  }
  bool found = false;
  for (UINTN i = 0; i < count && !found; ++i) {
    VOID *sensor = nullptr;
    status = gBS->HandleProtocol(handles[i], &gObvSensorProtocolGuid, &sensor);
    found = !EFI_ERROR(status) && sensor != nullptr &&
            HasName(static_cast<const OBV_SENSOR_PROTOCOL *>(sensor), name);
    if (found) {
      *presence = {handles[i], &gObvSensorProtocolGuid, sensor};
    }
  }
  gBS->FreePool(handles);
  return found ? EFI_SUCCESS : EFI_NOT_FOUND;
}

/// How a value is written: whole parts of Divisor, and Digits of the rest.
struct Quantity {
  const CHAR8 *Label;
  const CHAR8 *Unit;
  UINT32 Divisor;  ///< Of Value, for a unit.
  UINT32 Step;     ///< Of Value, for the last digit that is written.
  UINT32 Digits;
};

/// Indexed by OBV_SENSOR_READING.Quantity.
constexpr Quantity kQuantities[] = {
    {"Speed", "RPM", 1, 1, 0},
    {"Temperature", "C", 10, 1, 1},
    {"Voltage", "V", 1000, 10, 2},
    {"Power", "W", 1000, 100, 1},
};

inline constexpr UINTN kValueSize = 24;

void PrintValue(const Quantity &quantity, INT32 value, CHAR8 *text) {
  // Of the least number there is no positive one of 32 bits.
  UINT32 size = value < 0 ? 0U - static_cast<UINT32>(value) : static_cast<UINT32>(value);
  const CHAR8 *sign = value < 0 ? "-" : "";
  UINT32 whole = size / quantity.Divisor;
  UINT32 rest = size % quantity.Divisor / quantity.Step;
  if (quantity.Digits == 0) {
    AsciiSPrint(text, kValueSize, "%a%u", sign, whole);
  } else {
    AsciiSPrint(text, kValueSize, quantity.Digits == 1 ? "%a%u.%01u" : "%a%u.%02u", sign, whole,
                rest);
  }
}

void TellReading(const Quantity &quantity, const OBV_SENSOR_READING &reading, Facts *facts) {
  CHAR8 value[kValueSize];
  PrintValue(quantity, reading.Value, value);
  TellFact(facts, OBV_INFO_DESCRIPTION, quantity.Label, "%a %a", value, quantity.Unit);
  if (reading.Lowest == 0 && reading.Highest == 0) {
    return;
  }
  CHAR8 lowest[kValueSize];
  CHAR8 highest[kValueSize];
  PrintValue(quantity, reading.Lowest, lowest);
  PrintValue(quantity, reading.Highest, highest);
  TellFact(facts, OBV_INFO_SIDE_LIST, "Allowed", "%a to %a %a", lowest, highest, quantity.Unit);
}

EFI_STATUS TellFailure(const CHAR8 *why, Facts *facts) {
  TellFact(facts, OBV_INFO_DESCRIPTION, "Health", "Failing: %a", why);
  return EFI_DEVICE_ERROR;
}

EFI_STATUS TellState(const OBV_SENSOR_READING &reading, Facts *facts) {
  if (reading.State == OBV_SENSOR_STARTING) {
    return EFI_NOT_READY;
  }
  if (reading.State > OBV_SENSOR_STARTING || reading.Quantity >= ARRAY_SIZE(kQuantities)) {
    return TellFailure("the sensor does not answer sensibly", facts);
  }
  if (reading.State == OBV_SENSOR_FAILED) {
    return TellFailure("the sensor is broken", facts);
  }
  TellReading(kQuantities[reading.Quantity], reading, facts);
  return reading.State == OBV_SENSOR_CRITICAL ? TellFailure("outside what is allowed", facts)
                                              : EFI_SUCCESS;
}

}  // namespace

EFI_STATUS ReadSensor(const BoardHardware &hardware, Facts *facts, Presence *presence) {
  Presence found;
  EFI_STATUS status = FindSensor(hardware.Name, &found);
  if (EFI_ERROR(status)) {
    return EFI_NOT_FOUND;
  }
  auto *sensor = static_cast<OBV_SENSOR_PROTOCOL *>(found.Interface);
  OBV_SENSOR_READING reading = {};
  status = sensor->Read(sensor, &reading);
  if (status == EFI_NOT_FOUND) {
    return EFI_NOT_FOUND;
  }
  *presence = found;
  return EFI_ERROR(status) ? TellFailure("the sensor cannot be read", facts)
                           : TellState(reading, facts);
}

}  // namespace obv_host
