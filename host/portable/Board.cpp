#include "host/portable/Board.h"

namespace obv_host {

BoardStyle StyleAt(const Board &board, UINTN index) {
  BoardStyle style;
  CopyMem(&style, board.Styles + index * sizeof(style), sizeof(style));
  return style;
}

BoardComponent ComponentAt(const Board &board, UINTN index) {
  BoardComponent component;
  CopyMem(&component, board.Components + index * sizeof(component), sizeof(component));
  return component;
}

BoardHardware HardwareAt(const Board &board, UINTN index) {
  BoardHardware hardware;
  CopyMem(&hardware, board.Hardware + index * sizeof(hardware), sizeof(hardware));
  return hardware;
}

void CopyInfoAt(const Board &board, UINTN index, OBV_COMPONENT_INFO *info) {
  CopyMem(info, board.Infos + index * sizeof(*info), sizeof(*info));
}

}  // namespace obv_host
