#include "host/sources/BootEntries.h"
#include "host/sources/Display.h"
#include "host/sources/SmbiosFacts.h"
#include "host/sources/Source.h"

namespace obv_host {
namespace {

/// Places in OBV_SHARED_STATE.SystemInfo.
enum SystemText : UINTN { kFirstBoot, kDisplay, kMachine };

/// The application copies the machine's text into a buffer of this length.
constexpr UINTN kMachineLength = 49;
constexpr UINTN kLongest = OBV_SYSTEM_INFO_TEXT_LENGTH - 1;

using SystemField = CHAR16[OBV_SYSTEM_INFO_TEXT_LENGTH];

/// A text that is coloured: '#' is doubled. The machine's text is not; it is printed, where a '%'
/// would be a directive.
void SetText(const CHAR8 *text, UINTN limit, bool isFormat, SystemField *field) {
  ZeroMem(field, sizeof(*field));
  UINTN written = 0;
  for (UINTN i = 0; text[i] != '\0'; ++i) {
    UINTN width = text[i] == '#' && !isFormat ? 2 : 1;
    if (written + width > limit) {
      return;
    }
    bool drawn = text[i] >= 0x20 && text[i] <= 0x7E && !(isFormat && text[i] == '%');
    (*field)[written] = drawn ? static_cast<CHAR16>(text[i]) : u'?';
    if (width == 2) {
      (*field)[written + 1] = u'#';
    }
    written += width;
  }
}

/// The first of the structures of this type whose field holds a text of its
/// maker's; empty without one.
void FindText(const SmbiosTable &table, UINT8 type, UINTN offset, CHAR8 (&text)[kSmbiosTextSize]) {
  SmbiosStructure record = {0, 0, nullptr, nullptr};
  while (NextOfType(table, type, &record)) {
    SmbiosTextField(record, offset, text);
    if (!IsPlaceholder(text)) {
      return;
    }
  }
  text[0] = '\0';
}

/// What the board says of itself, else the computer.
void FindName(const SmbiosTable &table, UINTN boardField, UINTN systemField,
              CHAR8 (&text)[kSmbiosTextSize]) {
  FindText(table, SMBIOS_TYPE_BASEBOARD_INFORMATION, boardField, text);
  if (text[0] == '\0') {
    FindText(table, SMBIOS_TYPE_SYSTEM_INFORMATION, systemField, text);
  }
}

/// Appends prefix and part, behind a comma where it is not the first.
void Append(const CHAR8 *prefix, const CHAR8 *part, CHAR8 *text, UINTN size) {
  UINTN length = AsciiStrLen(text);
  if (part[0] != '\0') {
    AsciiSPrint(text + length, size - length, "%a%a%a", length == 0 ? "" : ", ", prefix, part);
  }
}

void ComposeMachine(CHAR8 *text, UINTN size) {
  SmbiosTable table;
  CHAR8 part[kSmbiosTextSize];
  if (EFI_ERROR(FindSmbios(&table))) {
    return;
  }
  FindName(table, OFFSET_OF(SMBIOS_TABLE_TYPE2, ProductName),
           OFFSET_OF(SMBIOS_TABLE_TYPE1, ProductName), part);
  Append("", part, text, size);
  FindText(table, SMBIOS_TYPE_BIOS_INFORMATION, OFFSET_OF(SMBIOS_TABLE_TYPE0, BiosVersion), part);
  Append("firmware ", part, text, size);
  FindName(table, OFFSET_OF(SMBIOS_TABLE_TYPE2, SerialNumber),
           OFFSET_OF(SMBIOS_TABLE_TYPE1, SerialNumber), part);
  Append("S/N ", part, text, size);
}

bool IsLeftEmpty(const Board &board, UINTN index) { return board.Header.SystemInfo[index][0] == 0; }

}  // namespace

void FillSystemTexts(const Board &board, OBV_SHARED_STATE *shared) {
  CHAR8 text[OBV_SYSTEM_INFO_TEXT_LENGTH];
  if (IsLeftEmpty(board, kFirstBoot)) {
    (void)FirstBootEntry(text, sizeof(text));
    SetText(text, kLongest, false, &shared->SystemInfo[kFirstBoot]);
  }
  if (IsLeftEmpty(board, kDisplay)) {
    bool known = !EFI_ERROR(DisplayName(text, sizeof(text)));
    SetText(known ? text : "", kLongest, false, &shared->SystemInfo[kDisplay]);
  }
  if (IsLeftEmpty(board, kMachine)) {
    text[0] = '\0';
    ComposeMachine(text, sizeof(text));
    SetText(text, kMachineLength, true, &shared->SystemInfo[kMachine]);
  }
}

}  // namespace obv_host
