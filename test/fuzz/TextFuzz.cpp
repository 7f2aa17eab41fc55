/** @file
  The host's texts: colours, names and values, and print formats.
**/

#include "test/fuzz/Fuzz.h"

#include "app/base/HostFormat.h"
#include "app/base/Utf8.h"
#include "platform/ColorText.h"
#include "platform/TextTrim.h"
#include "view/InfoLine.h"

namespace {

constexpr size_t kLongestText = 2048;

void ReadColor(fuzz::Reader &input) {
  // A field may be full, and then nothing ends it.
  std::vector<UINT8> field = input.Bytes(OBV_COLOR_TEXT_SIZE);
  field.resize(OBV_COLOR_TEXT_SIZE);
  UINT32 color = ParseColorText(reinterpret_cast<const CHAR8 *>(field.data()));
  fuzz::Require(color <= 0xFFFFFF, "a colour has 24 bits");
  field.insert(field.end(), {'1', ',', '2', ',', '3', 0});
  fuzz::Require(ParseColorText(reinterpret_cast<const CHAR8 *>(field.data())) == color,
                "what stands behind the field does not matter");
}

void TrimText(fuzz::Reader &input) {
  std::vector<CHAR16> text = input.Text<CHAR16>(kLongestText);
  std::vector<CHAR16> expected = text;
  while (expected.size() > 1 && (expected.rbegin()[1] == u' ' || expected.rbegin()[1] == u'\n')) {
    expected.erase(expected.end() - 2);
  }
  fuzz::Require(TrimTrailingWhitespace(text.data()) == text.data(), "trimming is in place");
  fuzz::Require(std::equal(expected.begin(), expected.end(), text.begin()),
                "blanks and line feeds are cut off the end");
}

/// Undoes the conversion; stops at what UTF-8 does not allow.
std::vector<CHAR16> FromUtf8(const std::vector<CHAR8> &bytes, size_t length) {
  std::vector<CHAR16> units;
  for (size_t i = 0; i < length;) {
    auto lead = static_cast<UINT8>(bytes[i]);
    size_t more = lead < 0x80 ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
    fuzz::Require(i + more < length && (lead < 0x80 || lead >= 0xC2), "characters are whole");
    UINT32 point = more == 0 ? lead : lead & (0x3F >> more);
    for (i++; more > 0; more--, i++) {
      fuzz::Require((bytes[i] & 0xC0) == 0x80, "a lead byte has its followers");
      point = point << 6 | (bytes[i] & 0x3F);
    }
    if (point >= 0x10000) {
      units.push_back(static_cast<CHAR16>(0xD800 + ((point - 0x10000) >> 10)));
      point = 0xDC00 + (point & 0x3FF);
    }
    units.push_back(static_cast<CHAR16>(point));
  }
  return units;
}

void ConvertText(fuzz::Reader &input) {
  size_t capacity = input.Byte();
  std::vector<CHAR16> text = input.Text<CHAR16>(kLongestText);
  size_t units = text.size() - 1;
  // Half of the inputs get all the room that their text may need.
  std::vector<CHAR8> output(capacity % 2 == 0 ? capacity : units * 4 + 1);
  ConvertUtf16ToUtf8(text.data(), units, output.data(), output.size());
  auto length = static_cast<size_t>(std::find(output.begin(), output.end(), 0) - output.begin());
  std::vector<CHAR16> back = FromUtf8(output, length);
  fuzz::Require(back.size() <= units && std::equal(back.begin(), back.end(), text.begin()),
                "what was converted is the text's beginning");
}

void AppendLine(fuzz::Reader &input) {
  OBV_COMPONENT_INFO line = {};
  UINTN size = 1 + input.Take<UINT16>() % 1280;
  std::vector<CHAR16> label = input.Text<CHAR16>(OBV_INFO_LABEL_LENGTH - 1);
  std::vector<CHAR16> value = input.Text<CHAR16>(OBV_INFO_VALUE_LENGTH - 1);
  std::copy(label.begin(), label.end(), line.Label);
  std::copy(value.begin(), value.end(), line.Value);
  std::vector<CHAR8> text(size);
  for (int i = 0; i < 3; i++) {
    std::string before = text.data();
    AppendInfoLine(text.data(), size, line, 0xABCDEF);
    fuzz::Require(std::find(text.begin(), text.end(), 0) != text.end(), "the text ends");
    fuzz::Require(std::string(text.data()).starts_with(before), "earlier lines stay");
  }
}

/// A format that asks for more than it is given prints zeros.
template <typename Unit>
void Print(fuzz::Reader &input) {
  std::vector<CHAR8> buffer(1 + input.Take<UINT16>() % 512);
  std::vector<Unit> format = input.Text<Unit>(kLongestText);
  PrintHostFormat(buffer.data(), buffer.size(), format.data());
  fuzz::Require(std::find(buffer.begin(), buffer.end(), 0) != buffer.end(), "the text ends");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  using Use = void (*)(fuzz::Reader &);
  constexpr Use kUses[] = {ReadColor,  TrimText,     ConvertText,
                           AppendLine, Print<CHAR8>, Print<CHAR16>};
  fuzz::Reader input(data, size);
  kUses[input.Byte() % std::size(kUses)](input);
  return 0;
}
