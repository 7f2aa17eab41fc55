#include "host/portable/BoardChecks.h"

namespace obv_host {
namespace {

/// Printable ASCII, not empty, ended within the field: the callout keeps one
/// byte of each character.
bool IsName(const BoardComponent &component) {
  for (UINTN i = 0; i < kBoardNameLength; ++i) {
    CHAR16 character = component.Name[i];
    if (character == 0) {
      return i > 0;
    }
    if (character < 0x20 || character > 0x7E) {
      return false;
    }
  }
  return false;
}

/// Both names end within their fields; what follows the end does not count.
bool NamesEqual(const BoardComponent &one, const BoardComponent &other) {
  UINTN i = 0;
  while (one.Name[i] == other.Name[i] && one.Name[i] != 0) {
    ++i;
  }
  return one.Name[i] == other.Name[i];
}

bool IsInside(const Board &board, BoardPoint point) {
  return point.X < board.Header.PictureWidth && point.Y < board.Header.PictureHeight;
}

bool CheckNumbers(const Board &board, UINTN index, const BoardComponent &component,
                  BoardFault *fault) {
  if (component.Type > kBoardTypeLimit) {
    return Refuse(fault, "component %d: unknown category %d", index, component.Type);
  }
  if (component.CalloutSide > OBV_CALLOUT_TOP_RIGHT) {
    return Refuse(fault, "component %d: unknown callout side %d", index, component.CalloutSide);
  }
  if (component.TextAlign > OBV_TEXT_RIGHT) {
    return Refuse(fault, "component %d: unknown alignment %d", index, component.TextAlign);
  }
  if ((component.Flags & ~kBoardKnownFlags) != 0 || component.Reserved != 0) {
    return Refuse(fault, "component %d: unknown flags", index);
  }
  if (component.StyleIndex >= board.Header.StyleCount) {
    return Refuse(fault, "component %d: there is no style %d", index, component.StyleIndex);
  }
  if (component.Status > kStatusLimit) {
    return Refuse(fault, "component %d: unknown status", index);
  }
  return true;
}

bool CheckCounts(const Board &board, UINTN index, const BoardComponent &component,
                 BoardFault *fault) {
  if (component.VertexCount < kBoardMinimumVertices ||
      component.VertexCount > kBoardVertexCapacity) {
    return Refuse(fault, "component %d: %d vertices, %d to %d are allowed", index,
                  component.VertexCount, kBoardMinimumVertices, kBoardVertexCapacity);
  }
  if (component.LeaderPointCount < 1 || component.LeaderPointCount > kBoardLeaderCapacity) {
    return Refuse(fault, "component %d: %d leader points, 1 to %d are allowed", index,
                  component.LeaderPointCount, kBoardLeaderCapacity);
  }
  if (component.InfoCount > OBV_INFO_CAPACITY) {
    return Refuse(fault, "component %d: %d information lines, at most %d are allowed", index,
                  component.InfoCount, OBV_INFO_CAPACITY);
  }
  if (static_cast<UINT64>(component.FirstInfo) + component.InfoCount > board.Header.InfoCount) {
    return Refuse(fault, "component %d: information lines beyond the last one", index);
  }
  if (static_cast<UINT64>(component.FirstHardware) + component.HardwareCount >
      board.Header.HardwareCount) {
    return Refuse(fault, "component %d: hardware names beyond the last one", index);
  }
  return true;
}

bool CheckPoints(const Board &board, UINTN index, const BoardComponent &component,
                 BoardFault *fault) {
  bool inside = IsInside(board, component.Marker);
  for (UINTN i = 0; i < component.VertexCount; ++i) {
    inside = inside && IsInside(board, component.Vertices[i]);
  }
  for (UINTN i = 0; i < component.LeaderPointCount; ++i) {
    inside = inside && IsInside(board, component.LeaderPoints[i]);
  }
  return inside || Refuse(fault, "component %d: a point outside the picture", index);
}

bool CheckUniqueName(const Board &board, UINTN index, const BoardComponent &component,
                     BoardFault *fault) {
  for (UINTN i = 0; i < index; ++i) {
    if (NamesEqual(ComponentAt(board, i), component)) {
      return Refuse(fault, "components %d and %d have the same name", i, index);
    }
  }
  return true;
}

}  // namespace

bool CheckComponents(const Board &board, BoardFault *fault) {
  for (UINTN i = 0; i < board.Header.ComponentCount; ++i) {
    BoardComponent component = ComponentAt(board, i);
    if (!IsName(component)) {
      return Refuse(fault, "component %d: not a name", i);
    }
    if (!CheckUniqueName(board, i, component, fault) || !CheckNumbers(board, i, component, fault) ||
        !CheckCounts(board, i, component, fault) || !CheckPoints(board, i, component, fault)) {
      return false;
    }
  }
  return true;
}

}  // namespace obv_host
