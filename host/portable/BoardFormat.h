/** @file
  The board binary: what tool/boardtool writes and the host reads.

  A header, then four arrays of fixed-size records (styles, components,
  information lines, hardware names), then the picture. The counts in the header give every
  position, so that the file holds no offset that could point astray. All
  numbers are little-endian, all texts NUL-terminated within their fields.
  tool/boardtool/binary.py states the same layout for the writer.
**/

#pragma once

#include "host/portable/Firmware.h"

namespace obv_host {

inline constexpr CHAR8 kBoardMagic[8] = {'O', 'B', 'V', 'B', 'O', 'A', 'R', 'D'};
inline constexpr UINT16 kBoardVersion = 3;

inline constexpr UINT32 kBoardNameLength = 20;
inline constexpr UINT32 kBoardVertexCapacity = 20;
inline constexpr UINT32 kBoardMinimumVertices = 3;
inline constexpr UINT32 kBoardLeaderCapacity = OBV_LEADER_POINT_CAPACITY;
inline constexpr UINT32 kBoardStyleCapacity = 99;
inline constexpr UINT32 kBoardTitleLength = 60;
inline constexpr UINT32 kBoardPictureLimit = OBV_MAX_PICTURE_SIZE;

inline constexpr UINT8 kBoardTypeLimit = OBV_TYPE_AUDIO;

/// BoardComponent.Flags.
inline constexpr UINT8 kBoardNotSelectable = 0x01;
inline constexpr UINT8 kBoardInSpecialGroup = 0x02;
inline constexpr UINT8 kBoardKnownFlags = kBoardNotSelectable | kBoardInSpecialGroup;

inline constexpr UINT32 kHardwareNameSize = 128;
inline constexpr UINT32 kHardwareBankSize = 32;

/// BoardHardware.Kind: which source knows the hardware, and what its name is. A
/// designation is a text of the SMBIOS tables. host/sources has a source for each
/// but the last.
enum HardwareKind : UINT16 {
  kHardwareProcessor = 1,        ///< Socket designation; empty for the boot processor.
  kHardwareMemory = 2,           ///< Device locator, and Bank unless that is empty.
  kHardwareMemoryTotal = 3,      ///< No name: all memory together.
  kHardwarePcie = 4,             ///< Device path of the root port or bridge above the slot.
  kHardwareNvme = 5,             ///< Device path of the controller, or of the root port above it.
  kHardwareSata = 6,             ///< Device path of the port: the controller's and a Sata node.
  kHardwareUsb = 7,              ///< Device path of the port: the controller's and its port chain.
  kHardwareNetwork = 8,          ///< PCI device path.
  kHardwareAudio = 9,            ///< PCI device path.
  kHardwareDisplay = 10,         ///< PCI device path.
  kHardwareFan = 11,             ///< Designation of a cooling device.
  kHardwareProbe = 12,           ///< Designation of a temperature probe.
  kHardwareSlot = 13,            ///< Designation of a system slot.
  kHardwarePort = 14,            ///< External designation of a port connector.
  kHardwareSensor = 15,          ///< Name of a sensor that a platform driver publishes.
  kHardwareNeedsProcessor = 16,  ///< No hardware, a condition: the brand string contains this.
};
inline constexpr UINT16 kHardwareKindLimit = kHardwareNeedsProcessor;

/// BoardComponent.Status, the answer of the description. A component that names
/// hardware gets its answer there.
enum BoardStatus : UINT8 {
  kStatusAvailable = 0,
  kStatusDeviceError = 1,
  kStatusNotReady = 2,
  kStatusNoMapping = 3,
  kStatusAbsent = 4,
  kStatusLimit = 4,
};

#pragma pack(1)

struct BoardHeader {
  CHAR8 Magic[8];
  UINT16 Version;
  UINT16 HeaderSize;
  /// CRC-32 of everything that follows this field.
  UINT32 Checksum;
  /// Size of the whole file in bytes.
  UINT32 TotalSize;
  UINT16 ComponentCount;
  UINT16 StyleCount;
  UINT32 InfoCount;
  UINT32 PictureSize;
  UINT16 PictureWidth;
  UINT16 PictureHeight;
  UINT8 Logo;
  UINT8 MarkerTheme;
  UINT16 HardwareCount;
  CHAR16 Title[kBoardTitleLength];
  CHAR16 SystemInfo[OBV_SYSTEM_INFO_COUNT][OBV_SYSTEM_INFO_TEXT_LENGTH];
};

struct BoardStyle {
  OBV_COMPONENT_STYLE Default;
  OBV_COMPONENT_STYLE Focus;
};

/// A point in picture pixels.
struct BoardPoint {
  UINT16 X;
  UINT16 Y;
};

struct BoardComponent {
  CHAR16 Name[kBoardNameLength];
  UINT8 Type;
  UINT8 CalloutSide;
  UINT8 TextAlign;
  UINT8 Flags;
  UINT16 SearchTokenId;
  UINT16 StyleIndex;
  BoardPoint Marker;  ///< Centre of the status dots.
  UINT8 VertexCount;
  UINT8 LeaderPointCount;
  UINT8 InfoCount;
  UINT8 Status;
  /// The component's hardware names: alternatives, of which the first that is
  /// present answers, and conditions. 0: the description answers.
  UINT16 HardwareCount;
  UINT16 Reserved;
  UINT32 FirstHardware;
  /// Index of the component's first information line.
  UINT32 FirstInfo;
  BoardPoint Vertices[kBoardVertexCapacity];
  BoardPoint LeaderPoints[kBoardLeaderCapacity];
};

struct BoardHardware {
  UINT16 Kind;
  UINT16 Reserved;
  /// Text, or a device path in its binary form up to and with its end node; what
  /// follows the end is zero.
  UINT8 Name[kHardwareNameSize];
  CHAR8 Bank[kHardwareBankSize];
};

#pragma pack()

/// An information line is stored as the contract lays it out.
using BoardInfo = OBV_COMPONENT_INFO;

static_assert(sizeof(BoardHeader) == 1952);
static_assert(OFFSET_OF(BoardHeader, Checksum) == 12);
static_assert(OFFSET_OF(BoardHeader, TotalSize) == 16);
static_assert(OFFSET_OF(BoardHeader, Title) == 40);
static_assert(sizeof(BoardStyle) == 164);
static_assert(sizeof(BoardComponent) == 228);
static_assert(sizeof(BoardInfo) == 580);
static_assert(sizeof(BoardHardware) == 164);

}  // namespace obv_host
