/** @file
  A board as the host reads it: references into the bytes of a board binary.
**/

#pragma once

#include "host/portable/BoardFormat.h"

namespace obv_host {

/// A board that passed every check. Refers to the bytes it was opened on, which
/// must outlive it. All zero: no board.
struct Board {
  BoardHeader Header;
  const UINT8 *Styles;
  const UINT8 *Components;
  const UINT8 *Infos;
  const UINT8 *Hardware;
  const UINT8 *Picture;
};

inline constexpr UINTN kBoardFaultSize = 128;

/// Why a board was refused: one sentence without a line end.
struct BoardFault {
  CHAR8 Text[kBoardFaultSize];
};

/// Records of an open board. index must be below the respective count.
BoardStyle StyleAt(const Board &board, UINTN index);
BoardComponent ComponentAt(const Board &board, UINTN index);
BoardHardware HardwareAt(const Board &board, UINTN index);
void CopyInfoAt(const Board &board, UINTN index, OBV_COMPONENT_INFO *info);

}  // namespace obv_host
