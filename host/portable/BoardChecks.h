/** @file
  The checks that a board binary passes before anything is taken from it.
**/

#pragma once

#include "host/portable/Board.h"

namespace obv_host {

/// Writes the reason in EDK2's print format and returns false. EFIAPI because
/// EDK2's print library takes the argument list of that calling convention.
bool EFIAPI Refuse(BoardFault *fault, const CHAR8 *format, ...);

/// Each returns false with a reason. The sizes were checked before, so that
/// every record lies inside the file.
bool CheckHeader(const Board &board, BoardFault *fault);
bool CheckStyles(const Board &board, BoardFault *fault);
bool CheckInfos(const Board &board, BoardFault *fault);
bool CheckHardware(const Board &board, BoardFault *fault);
bool CheckComponents(const Board &board, BoardFault *fault);
bool CheckPicture(const Board &board, BoardFault *fault);

}  // namespace obv_host
