#include "hostcheck/Quote.h"

#include "app/base/Firmware.h"

namespace hostcheck {
namespace {

bool IsPrintable(UINTN character) { return character >= 0x20 && character <= 0x7E; }

template <typename Character>
Quoted QuoteText(const Character *text, UINTN size) {
  Quoted quoted = {};
  if (text == nullptr) {
    (void)AsciiStrCpyS(quoted.Text, sizeof(quoted.Text), "NULL");
    return quoted;
  }
  UINTN length = 0;
  quoted.Text[length++] = '"';
  for (UINTN i = 0; i < size && text[i] != 0 && length < sizeof(quoted.Text) - 2; ++i) {
    quoted.Text[length++] = IsPrintable(text[i]) ? static_cast<CHAR8>(text[i]) : '?';
  }
  quoted.Text[length] = '"';
  return quoted;
}

}  // namespace

// CHAR8 is signed, and a character of 8 bits beyond ASCII a large number then.
Quoted Quote(const CHAR8 *text, UINTN size) { return QuoteText(text, size); }
Quoted Quote(const CHAR16 *text, UINTN size) { return QuoteText(text, size); }

}  // namespace hostcheck
