#include "host/inventory/Inventory.h"

#include "host/inventory/PathText.h"

namespace obv_host {
namespace {

/// Told of each piece; more would be a panel, not a comment.
constexpr UINTN kFactsInComment = 4;
constexpr UINTN kCommentSize = 300;
/// For the longest path, whose text has nothing to escape, and for the longest name, of
/// which every character may have to be escaped.
constexpr UINTN kQuotedSize = kPathTextSize;
static_assert(kQuotedSize > 2 * kHardwareNameSize);

bool IsPathKind(UINT16 kind) { return kind >= kHardwarePcie && kind <= kHardwareDisplay; }

const CHAR8 *StateOf(EFI_STATUS status) {
  switch (status) {
    case EFI_SUCCESS:
      return "";
    case EFI_NOT_FOUND:
      return "empty";
    case EFI_NOT_READY:
      return "without its driver";
    default:
      return "failing";
  }
}

/// "Model X, Capacity Y", in plain words.
void WriteComment(const Facts &facts, EFI_STATUS status, InventoryText *text) {
  CHAR8 comment[kCommentSize];
  UINTN length = AsciiSPrint(comment, sizeof(comment), "%a", StateOf(status));
  for (UINTN i = 0; i < facts.Count && i < kFactsInComment; ++i) {
    const OBV_COMPONENT_INFO &line = facts.Lines[i];
    length +=
        AsciiSPrint(comment + length, sizeof(comment) - length, "%a%S%a%S", length == 0 ? "" : ", ",
                    line.Label, line.Label[0] == 0 ? "" : " ", line.Value);
  }
  if (length != 0) {
    AddLine(text, "  # %a", comment);
  }
}

bool QuoteHardware(const BoardHardware &hardware, CHAR8 (&quoted)[kQuotedSize]) {
  if (!IsPathKind(hardware.Kind)) {
    return QuoteName(reinterpret_cast<const CHAR8 *>(hardware.Name), quoted, sizeof(quoted));
  }
  CHAR8 path[kPathTextSize];
  return WritePathText(NodesOf(hardware.Name), path) && QuoteName(path, quoted, sizeof(quoted));
}

}  // namespace

void WriteHardware(const CHAR8 *kind, Places places, InventoryWork *work, InventoryText *text) {
  const BoardHardware &hardware = work->Hardware;
  CHAR8 name[kQuotedSize];
  CHAR8 bank[2 * kHardwareBankSize];
  if (!QuoteHardware(hardware, name)) {
    return;
  }
  Presence presence = {};
  ZeroMem(&work->Told, sizeof(work->Told));
  EFI_STATUS status = SourceOf(hardware.Kind)->Read(hardware, &work->Told, &presence);
  if (status == EFI_NOT_FOUND && places == Places::kUsed) {
    return;
  }
  WriteComment(work->Told, status, text);
  if (hardware.Kind == kHardwareMemory && QuoteName(hardware.Bank, bank, sizeof(bank))) {
    AddLine(text, "  - %a: {locator: \"%a\", bank: \"%a\"}", kind, name, bank);
  } else {
    AddLine(text, "  - %a: \"%a\"", kind, name);
  }
}

void WriteInventory(InventoryWork *work, InventoryText *text) {
  AddLine(text,
          "# The hardware of this PC as a board's components name it: copy the lines that belong");
  AddLine(text, "# to a component under its 'hardware:'.");
  AddLine(text, "hardware:");
  WriteTableHardware(work, text);
  WriteDeviceHardware(work, text);
}

}  // namespace obv_host
