/** @file
  The board binary: what tool/boardtool writes and the host reads.

  A header, then three arrays of fixed-size records (styles, components,
  information lines), then the picture. The counts in the header give every
  position, so that the file holds no offset that could point astray. All
  numbers are little-endian, all texts NUL-terminated within their fields.
  tool/boardtool/binary.py states the same layout for the writer.
**/

#pragma once

#include "host/portable/Firmware.h"

namespace obv_host {

inline constexpr CHAR8 kBoardMagic[8] = {'O', 'B', 'V', 'B', 'O', 'A', 'R', 'D'};
inline constexpr UINT16 kBoardVersion = 2;

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

/// BoardComponent.StatusSource: who answers for the component's state.
inline constexpr UINT16 kStatusFromDescription = 0;

/// BoardComponent.Status, the answer of the description.
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
  UINT8 Reserved[2];
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
  UINT16 StatusSource;
  UINT16 Reserved;
  /// For the status source alone; 0 for the description.
  UINT32 StatusArgument;
  /// Index of the component's first information line.
  UINT32 FirstInfo;
  BoardPoint Vertices[kBoardVertexCapacity];
  BoardPoint LeaderPoints[kBoardLeaderCapacity];
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

}  // namespace obv_host
