/** @file
  A sensor with a value of its own: a fan's speed, a temperature, a voltage.

  A platform driver that can read one installs this protocol, on a handle of its
  own for each sensor. The reference host shows the sensor whose name a board
  gives. Plain C.
**/

#ifndef BOARDSCOPE_OBV_SENSOR_H_
#define BOARDSCOPE_OBV_SENSOR_H_

#include <Uefi.h>

/// 3B1C2A58-6E0F-4B57-9D0C-51C7A2F4E9B6
#define OBV_SENSOR_PROTOCOL_GUID \
  { 0x3B1C2A58, 0x6E0F, 0x4B57, { 0x9D, 0x0C, 0x51, 0xC7, 0xA2, 0xF4, 0xE9, 0xB6 } }

/// Room for a sensor's name with its terminator.
#define OBV_SENSOR_NAME_SIZE  32

/// Values of OBV_SENSOR_READING.Quantity.
#define OBV_SENSOR_SPEED        0  ///< Revolutions per minute.
#define OBV_SENSOR_TEMPERATURE  1  ///< Tenths of a degree Celsius.
#define OBV_SENSOR_VOLTAGE      2  ///< Millivolts.
#define OBV_SENSOR_POWER        3  ///< Milliwatts.

/// Values of OBV_SENSOR_READING.State.
#define OBV_SENSOR_WELL      0
#define OBV_SENSOR_CRITICAL  1  ///< Outside what its maker allows.
#define OBV_SENSOR_FAILED    2  ///< The value means nothing.
#define OBV_SENSOR_STARTING  3  ///< No value yet.

typedef struct _OBV_SENSOR_PROTOCOL OBV_SENSOR_PROTOCOL;

typedef struct {
  UINT32    Quantity;  ///< OBV_SENSOR_*, which names the unit, too.
  UINT32    State;     ///< OBV_SENSOR_WELL and so on.
  INT32     Value;
  INT32     Lowest;    ///< Bounds of the healthy range; both 0 when unknown.
  INT32     Highest;
} OBV_SENSOR_READING;

/// Reads the sensor. Called at TPL_APPLICATION, some times a second at most, and
/// must not wait. EFI_NOT_FOUND: what the sensor measures is not plugged in; any
/// other error: it cannot be read.
typedef EFI_STATUS (EFIAPI *OBV_SENSOR_READ)(
  OBV_SENSOR_PROTOCOL  *This,
  OBV_SENSOR_READING   *Reading
  );

struct _OBV_SENSOR_PROTOCOL {
  OBV_SENSOR_READ    Read;
  /// Printable ASCII with a terminator; one sensor has one name.
  CHAR8              Name[OBV_SENSOR_NAME_SIZE];
};

extern EFI_GUID  gObvSensorProtocolGuid;

#endif
