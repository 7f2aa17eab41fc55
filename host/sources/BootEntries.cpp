#include "host/sources/BootEntries.h"

#include "host/portable/Firmware.h"

namespace obv_host {
namespace {

/// No boot order and no entry of a healthy firmware is as large.
constexpr UINTN kVariableLimit = 32 * 1024;

/// Entries that are looked at: each costs the firmware two readings.
constexpr UINTN kEntryLimit = 256;

/// "Boot" and four hexadecimal digits.
constexpr UINTN kEntryNameLength = 8;

struct Variable {
  UINT8 *Data;  ///< From the pool; NULL when it cannot be read.
  UINTN Size;
};

Variable ReadVariable(const CHAR16 *name) {
  constexpr Variable kNone = {nullptr, 0};
  CHAR16 *mutableName = const_cast<CHAR16 *>(name);
  UINTN size = 0;
  EFI_STATUS status =
      gRT->GetVariable(mutableName, &gEfiGlobalVariableGuid, nullptr, &size, nullptr);
  if (status != EFI_BUFFER_TOO_SMALL || size == 0 || size > kVariableLimit) {
    return kNone;
  }
  UINTN capacity = size;
  UINT8 *data = static_cast<UINT8 *>(AllocatePool(capacity));
  if (data == nullptr) {
    return kNone;
  }
  status = gRT->GetVariable(mutableName, &gEfiGlobalVariableGuid, nullptr, &size, data);
  if (EFI_ERROR(status) || size > capacity) {
    FreePool(data);
    return kNone;
  }
  return {data, size};
}

void Release(const Variable &variable) {
  if (variable.Data != nullptr) {
    FreePool(variable.Data);
  }
}

UINT16 UnitAt(const UINT8 *bytes) { return static_cast<UINT16>(bytes[0] | bytes[1] << 8); }

/// Units of the text before its NUL; false when the option ends before that.
bool MeasureDescription(const UINT8 *text, UINTN size, UINTN *length) {
  for (*length = 0; (*length + 1) * sizeof(CHAR16) <= size; ++*length) {
    if (UnitAt(text + *length * sizeof(CHAR16)) == 0) {
      return true;
    }
  }
  return false;
}

/// Whether the firmware would boot it by itself.
bool IsBooted(UINT32 attributes) {
  return (attributes & LOAD_OPTION_ACTIVE) != 0 &&
         (attributes & LOAD_OPTION_CATEGORY) == LOAD_OPTION_CATEGORY_BOOT;
}

void CopyDescription(const UINT8 *text, UINTN length, CHAR8 *name, UINTN size) {
  UINTN kept = length < size ? length : size - 1;
  for (UINTN i = 0; i < kept; ++i) {
    UINT16 unit = UnitAt(text + i * sizeof(CHAR16));
    name[i] = unit >= 0x20 && unit <= 0x7E ? static_cast<CHAR8>(unit) : '?';
  }
  name[kept] = '\0';
}

/// False for what is not active or not a load option; name then stays.
bool TakeOption(const Variable &option, CHAR8 *name, UINTN size) {
  EFI_LOAD_OPTION head;
  if (option.Size < sizeof(head)) {
    return false;
  }
  CopyMem(&head, option.Data, sizeof(head));
  const UINT8 *text = option.Data + sizeof(head);
  UINTN left = option.Size - sizeof(head);
  UINTN length = 0;
  if (!IsBooted(head.Attributes) || !MeasureDescription(text, left, &length) ||
      head.FilePathListLength > left - (length + 1) * sizeof(CHAR16)) {
    return false;
  }
  if (length != 0) {
    CopyDescription(text, length, name, size);
  }
  return true;
}

bool TakeEntry(UINT16 number, CHAR8 *name, UINTN size) {
  CHAR16 variableName[kEntryNameLength + 1];
  UnicodeSPrintAsciiFormat(variableName, sizeof(variableName), "Boot%04X", number);
  Variable option = ReadVariable(variableName);
  AsciiSPrint(name, size, "Boot%04X", number);
  bool taken = option.Data != nullptr && TakeOption(option, name, size);
  Release(option);
  return taken;
}

}  // namespace

EFI_STATUS FirstBootEntry(CHAR8 *name, UINTN size) {
  Variable order = ReadVariable(Ucs2(u"BootOrder"));
  UINTN count = order.Size / sizeof(UINT16);
  bool found = false;
  for (UINTN i = 0; !found && i < count && i < kEntryLimit; ++i) {
    found = TakeEntry(UnitAt(order.Data + i * sizeof(UINT16)), name, size);
  }
  Release(order);
  if (!found) {
    name[0] = '\0';
    return EFI_NOT_FOUND;
  }
  return EFI_SUCCESS;
}

}  // namespace obv_host
