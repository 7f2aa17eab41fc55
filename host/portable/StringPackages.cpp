#include "host/portable/Texts.h"

extern "C" {
#include <Uefi/UefiInternalFormRepresentation.h>
}

namespace obv_host {
namespace {

/// Appends to a buffer, or only counts when there is none.
struct ByteWriter {
  UINT8 *Buffer;
  UINTN Size;

  void Add(const void *bytes, UINTN size) {
    if (Buffer != nullptr) {
      CopyMem(Buffer + Size, bytes, size);
    }
    Size += size;
  }
  void AddByte(UINT8 value) { Add(&value, sizeof(value)); }
};

void AddText(ByteWriter *writer, const char16_t *text) {
  writer->AddByte(EFI_HII_SIBT_STRING_UCS2);
  writer->Add(text, (StrLen(Ucs2(text)) + 1) * sizeof(CHAR16));
}

/// The header with the language code behind it in place of its one-byte array.
UINT32 HeaderSize(const LanguageTexts &language) {
  return static_cast<UINT32>(OFFSET_OF(EFI_HII_STRING_PACKAGE_HDR, Language) +
                             AsciiStrSize(language.Code));
}

void AddPackageHeader(ByteWriter *writer, const LanguageTexts &language, UINTN packageSize) {
  EFI_HII_STRING_PACKAGE_HDR header;
  ZeroMem(&header, sizeof(header));
  header.Header.Length = static_cast<UINT32>(packageSize);
  header.Header.Type = EFI_HII_PACKAGE_STRINGS;
  header.HdrSize = HeaderSize(language);
  header.StringInfoOffset = header.HdrSize;
  header.LanguageName = 1;
  writer->Add(&header, OFFSET_OF(EFI_HII_STRING_PACKAGE_HDR, Language));
  writer->Add(language.Code, AsciiStrSize(language.Code));
}

void AddStrings(ByteWriter *writer, const LanguageTexts &language) {
  AddText(writer, language.NativeName);
  for (UINTN i = 0; i < OBV_STRING_COUNT; ++i) {
    AddText(writer, TextAt(language, i));
  }
  writer->AddByte(EFI_HII_SIBT_END);
}

void AddPackage(ByteWriter *writer, const LanguageTexts &language) {
  ByteWriter counter = {.Buffer = nullptr, .Size = HeaderSize(language)};
  AddStrings(&counter, language);
  AddPackageHeader(writer, language, counter.Size);
  AddStrings(writer, language);
}

}  // namespace

UINTN StringPackagesSize() {
  ByteWriter counter = {.Buffer = nullptr, .Size = sizeof(UINT32)};
  for (const LanguageTexts &language : kLanguages) {
    AddPackage(&counter, language);
  }
  return counter.Size;
}

void WriteStringPackages(UINT8 *buffer) {
  auto size = static_cast<UINT32>(StringPackagesSize());
  ByteWriter writer = {.Buffer = buffer, .Size = 0};
  writer.Add(&size, sizeof(size));
  for (const LanguageTexts &language : kLanguages) {
    AddPackage(&writer, language);
  }
}

}  // namespace obv_host
