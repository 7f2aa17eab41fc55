#include "hostcheck/ColorCheck.h"

#include "hostcheck/Quote.h"
#include "platform/ColorText.h"

namespace hostcheck {
namespace {

constexpr UINTN kChannels = 3;
constexpr UINTN kMostInChannel = 0xFF;

/// Reads one number with the functions of ParseColorText, all of it; NULL when it is none.
const CHAR8 *SkipChannel(const CHAR8 *text) {
  CHAR8 *end = nullptr;
  UINTN value = 0;
  bool hexadecimal = text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
  RETURN_STATUS status = hexadecimal ? AsciiStrHexToUintnS(text, &end, &value)
                                     : AsciiStrDecimalToUintnS(text, &end, &value);
  if (RETURN_ERROR(status) || end == text || value > kMostInChannel) {
    return nullptr;
  }
  while (*end == ' ') {
    ++end;
  }
  return end;
}

bool IsColor(const CHAR8 *text) {
  for (UINTN i = 0; i < kChannels; ++i) {
    const CHAR8 *end = SkipChannel(text);
    if (end == nullptr || *end != (i + 1 < kChannels ? ',' : 0)) {
      return false;
    }
    text = end + 1;
  }
  return true;
}

}  // namespace

void CheckColor(Report *report, const CHAR8 *text, const CHAR8 *field, const CHAR8 *owner) {
  CHAR8 copy[OBV_COLOR_TEXT_SIZE] = {};
  UINTN length = AsciiStrnLenS(text, OBV_COLOR_TEXT_SIZE);
  if (length < OBV_COLOR_TEXT_SIZE) {
    CopyMem(copy, text, length);
    if (IsColor(copy)) {
      return;
    }
  }
  Quoted quoted = Quote(text, OBV_COLOR_TEXT_SIZE);
  Complain(report,
           "%a of %a is %a, which shows as #%06x. Write three numbers from 0 to 255 with commas "
           "between them, red, green, blue, in at most 19 characters.",
           field, owner, quoted.Text, ParseColorText(text));
}

}  // namespace hostcheck
