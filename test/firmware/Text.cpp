#include "test/firmware/Text.h"

namespace fake {

size_t TextLength(const CHAR16 *text) {
  size_t length = 0;
  while (text[length] != 0) {
    length++;
  }
  return length;
}

std::u16string ToU16(const CHAR16 *text) { return {text, text + TextLength(text)}; }

std::vector<CHAR16> ToFirmware(std::u16string_view text) {
  std::vector<CHAR16> copy(text.begin(), text.end());
  copy.push_back(0);
  return copy;
}

std::string ToAscii(std::u16string_view text) {
  std::string ascii;
  for (char16_t unit : text) {
    ascii += unit < 0x80 ? static_cast<char>(unit) : '?';
  }
  return ascii;
}

std::string ToAscii(const CHAR16 *text) {
  return text == nullptr ? "(null)" : ToAscii(ToU16(text));
}

std::u16string FromAscii(std::string_view text) { return {text.begin(), text.end()}; }

void CopyText(CHAR16 *to, size_t capacity, std::u16string_view text) {
  size_t length = std::min(text.size(), capacity - 1);
  std::copy_n(text.begin(), length, to);
  std::fill(to + length, to + capacity, CHAR16{0});
}

void CopyText(CHAR8 *to, size_t capacity, std::string_view text) {
  size_t length = std::min(text.size(), capacity - 1);
  std::copy_n(text.begin(), length, to);
  std::fill(to + length, to + capacity, CHAR8{0});
}

}  // namespace fake
