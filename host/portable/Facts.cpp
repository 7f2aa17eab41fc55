#include "host/portable/Facts.h"

namespace obv_host {
namespace {

bool IsDrawn(CHAR8 character) { return character >= 0x20 && character <= 0x7E; }

bool IsBlank(CHAR8 character) { return character == ' ' || character == '\t'; }

void CopyLabel(const CHAR8 *label, OBV_COMPONENT_INFO *line) {
  for (UINTN i = 0; i + 1 < OBV_INFO_LABEL_LENGTH && label[i] != '\0'; ++i) {
    line->Label[i] = static_cast<UINT8>(label[i]);
  }
}

void CopyValue(const CHAR8 *text, UINTN length, OBV_COMPONENT_INFO *line) {
  constexpr UINTN kLast = OBV_INFO_VALUE_LENGTH - 1;
  UINTN written = 0;
  for (UINTN i = 0; i < length; ++i) {
    UINTN width = text[i] == '#' ? 2 : 1;
    if (written + width > kLast) {
      return;
    }
    line->Value[written] = IsDrawn(text[i]) ? static_cast<UINT8>(text[i]) : u'?';
    if (width == 2) {
      line->Value[written + 1] = '#';
    }
    written += width;
  }
}

}  // namespace

void TellField(Facts *facts, UINT32 kind, const CHAR8 *label, const void *text, UINTN size) {
  const CHAR8 *start = static_cast<const CHAR8 *>(text);
  UINTN length = 0;
  while (length < size && start[length] != '\0') {
    ++length;
  }
  while (length > 0 && IsBlank(start[length - 1])) {
    --length;
  }
  while (length > 0 && IsBlank(*start)) {
    ++start;
    --length;
  }
  if (length == 0 || facts->Count >= OBV_INFO_CAPACITY) {
    return;
  }
  OBV_COMPONENT_INFO *line = &facts->Lines[facts->Count];
  line->Kind = kind;
  CopyLabel(label, line);
  CopyValue(start, length, line);
  ++facts->Count;
}

void EFIAPI TellFact(Facts *facts, UINT32 kind, const CHAR8 *label, const CHAR8 *format, ...) {
  CHAR8 text[OBV_INFO_VALUE_LENGTH];
  VA_LIST arguments;
  VA_START(arguments, format);
  AsciiVSPrint(text, sizeof(text), format, arguments);
  VA_END(arguments);
  TellField(facts, kind, label, text, sizeof(text));
}

}  // namespace obv_host
