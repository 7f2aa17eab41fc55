#include "host/portable/BoardChecks.h"

namespace obv_host {
namespace {

/// Whether a field of count characters holds a terminator. Reads byte by byte:
/// fields of packed records have any alignment.
bool EndsWithin(const void *text, UINTN count) {
  const UINT8 *bytes = static_cast<const UINT8 *>(text);
  for (UINTN i = 0; i < count; ++i) {
    if (bytes[2 * i] == 0 && bytes[2 * i + 1] == 0) {
      return true;
    }
  }
  return false;
}

/// Digits and commas alone, with exactly two commas and no empty part.
bool IsColorText(const CHAR8 (&text)[OBV_COLOR_TEXT_SIZE]) {
  UINTN commas = 0;
  UINTN digits = 0;
  for (CHAR8 character : text) {
    if (character >= '0' && character <= '9') {
      ++digits;
    } else if (character == ',' && digits > 0) {
      ++commas;
      digits = 0;
    } else {
      return character == '\0' && commas == 2 && digits > 0;
    }
  }
  return false;
}

bool IsLook(const OBV_COMPONENT_STYLE &look) {
  return IsColorText(look.TextColor) && IsColorText(look.BackgroundColor) &&
         IsColorText(look.MarkColor) && IsColorText(look.BorderColor);
}

UINT32 BigEndian32(const UINT8 *bytes) {
  return static_cast<UINT32>(bytes[0]) << 24 | static_cast<UINT32>(bytes[1]) << 16 |
         static_cast<UINT32>(bytes[2]) << 8 | bytes[3];
}

}  // namespace

bool EFIAPI Refuse(BoardFault *fault, const CHAR8 *format, ...) {
  VA_LIST arguments;
  VA_START(arguments, format);
  AsciiVSPrint(fault->Text, sizeof(fault->Text), format, arguments);
  VA_END(arguments);
  return false;
}

bool CheckHeader(const Board &board, BoardFault *fault) {
  const BoardHeader &header = board.Header;
  if (header.ComponentCount > OBV_MAX_COMPONENTS) {
    return Refuse(fault, "%d components, at most %d are allowed", header.ComponentCount,
                  OBV_MAX_COMPONENTS);
  }
  if (header.StyleCount > kBoardStyleCapacity) {
    return Refuse(fault, "%d styles, at most %d are allowed", header.StyleCount,
                  kBoardStyleCapacity);
  }
  if (header.Logo > OBV_LOGO_C && header.Logo != OBV_LOGO_NONE) {
    return Refuse(fault, "unknown logo %d", header.Logo);
  }
  if (header.MarkerTheme > OBV_MARKER_AMBER) {
    return Refuse(fault, "unknown marker theme %d", header.MarkerTheme);
  }
  if (!EndsWithin(header.Title, kBoardTitleLength)) {
    return Refuse(fault, "title without an end");
  }
  for (UINTN i = 0; i < OBV_SYSTEM_INFO_COUNT; ++i) {
    if (!EndsWithin(header.SystemInfo[i], OBV_SYSTEM_INFO_TEXT_LENGTH)) {
      return Refuse(fault, "system information %d without an end", i);
    }
  }
  return true;
}

bool CheckStyles(const Board &board, BoardFault *fault) {
  for (UINTN i = 0; i < board.Header.StyleCount; ++i) {
    BoardStyle style = StyleAt(board, i);
    if (!IsLook(style.Default) || !IsLook(style.Focus)) {
      return Refuse(fault, "style %d: not a colour", i);
    }
  }
  return true;
}

bool CheckInfos(const Board &board, BoardFault *fault) {
  for (UINTN i = 0; i < board.Header.InfoCount; ++i) {
    OBV_COMPONENT_INFO info;
    CopyInfoAt(board, i, &info);
    if (info.Kind > OBV_INFO_SIDE_LIST) {
      return Refuse(fault, "information line %d: unknown kind %d", i, info.Kind);
    }
    if (!EndsWithin(info.Label, OBV_INFO_LABEL_LENGTH) ||
        !EndsWithin(info.Value, OBV_INFO_VALUE_LENGTH)) {
      return Refuse(fault, "information line %d: text without an end", i);
    }
  }
  return true;
}

bool CheckPicture(const Board &board, BoardFault *fault) {
  constexpr UINT8 kSignature[16] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n',
                                    0,    0,   0,   13,  'I',  'H',  'D',  'R'};
  constexpr UINTN kHeaderEnd = 33;
  const BoardHeader &header = board.Header;
  if (header.PictureSize < kHeaderEnd ||
      CompareMem(board.Picture, kSignature, sizeof(kSignature)) != 0) {
    return Refuse(fault, "the picture is not a PNG");
  }
  UINT32 width = BigEndian32(board.Picture + 16);
  UINT32 height = BigEndian32(board.Picture + 20);
  if (width != header.PictureWidth || height != header.PictureHeight) {
    return Refuse(fault, "picture of %d x %d, the header says %d x %d", width, height,
                  header.PictureWidth, header.PictureHeight);
  }
  if (width == 0 || height == 0 || width > kBoardPictureLimit || height > kBoardPictureLimit) {
    return Refuse(fault, "picture of %d x %d, at most %d pixels are allowed", width, height,
                  kBoardPictureLimit);
  }
  return true;
}

}  // namespace obv_host
