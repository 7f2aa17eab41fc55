#include "hostcheck/FormatDirectives.h"

#include "app/base/Firmware.h"

namespace hostcheck {
namespace {

constexpr CHAR8 kWithArgument[] = "pXxdusSacgtr";
constexpr CHAR8 kFlags[] = "-+ ,lL";

struct Reader {
  const CHAR8 *At;
  Directive *Directives;
  UINTN Capacity;
  UINTN Count;
};

bool IsOneOf(const CHAR8 *set, CHAR8 character) {
  return character != 0 &&
         ScanMem8(set, AsciiStrLen(set), static_cast<UINT8>(character)) != nullptr;
}

bool IsDigit(CHAR8 character) { return character >= '0' && character <= '9'; }

void Store(Reader *reader, CHAR8 type, UINTN leastWidth) {
  if (reader->Count < reader->Capacity) {
    reader->Directives[reader->Count] = {.Type = type, .LeastWidth = leastWidth};
  }
  reader->Count++;
}

/// A number, or the '*' that stands for one.
UINTN ReadNumber(Reader *reader) {
  UINTN number = 0;
  for (; IsDigit(*reader->At) || *reader->At == '*'; ++reader->At) {
    if (*reader->At == '*') {
      Store(reader, '*', 0);
    } else {
      number = MIN(number * 10 + static_cast<UINTN>(*reader->At - '0'), UINTN{MAX_UINT16});
    }
  }
  return number;
}

/// What stands behind a percent sign.
void ReadDirective(Reader *reader) {
  while (IsOneOf(kFlags, *reader->At)) {
    ++reader->At;
  }
  bool zeros = *reader->At == '0';
  UINTN width = ReadNumber(reader);
  UINTN precision = 0;
  if (*reader->At == '.') {
    ++reader->At;
    precision = ReadNumber(reader);
  }
  while (IsOneOf(kFlags, *reader->At)) {
    ++reader->At;
  }
  if (IsOneOf(kWithArgument, *reader->At)) {
    Store(reader, *reader->At, MAX(precision, zeros ? width : 0));
  }
  if (*reader->At != 0) {
    ++reader->At;
  }
}

}  // namespace

UINTN ReadDirectives(const CHAR8 *format, Directive *directives, UINTN capacity) {
  Reader reader = {.At = format, .Directives = directives, .Capacity = capacity, .Count = 0};
  while (*reader.At != 0) {
    if (*reader.At++ == '%') {
      ReadDirective(&reader);
    }
  }
  return reader.Count;
}

}  // namespace hostcheck
