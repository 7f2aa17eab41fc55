// The binary form of package lists with string packages.

#include "test/firmware/Guids.h"
#include "test/firmware/HiiDatabase.h"

namespace fake {

namespace {

constexpr size_t kListHeader = sizeof(EFI_HII_PACKAGE_LIST_HEADER);
constexpr size_t kPackageHeader = sizeof(EFI_HII_PACKAGE_HEADER);
constexpr size_t kLanguageOffset = OFFSET_OF(EFI_HII_STRING_PACKAGE_HDR, Language);

void Put16(std::vector<uint8_t> *bytes, uint16_t value) {
  bytes->insert(bytes->end(), {static_cast<uint8_t>(value), static_cast<uint8_t>(value >> 8)});
}

void PutText(std::vector<uint8_t> *bytes, std::u16string_view text) {
  for (char16_t unit : text) {
    Put16(bytes, unit);
  }
  Put16(bytes, 0);
}

std::vector<uint8_t> Blocks(const std::map<EFI_STRING_ID, std::u16string> &texts) {
  std::vector<uint8_t> bytes;
  EFI_STRING_ID next = 1;
  for (const auto &[id, text] : texts) {
    if (id != next) {
      bytes.push_back(EFI_HII_SIBT_SKIP2);
      Put16(&bytes, static_cast<uint16_t>(id - next));
    }
    bytes.push_back(EFI_HII_SIBT_STRING_UCS2);
    PutText(&bytes, text);
    next = static_cast<EFI_STRING_ID>(id + 1);
  }
  bytes.push_back(EFI_HII_SIBT_END);
  return bytes;
}

void PutPackage(std::vector<uint8_t> *list, const std::string &language,
                const std::vector<uint8_t> &blocks) {
  size_t headerSize = kLanguageOffset + language.size() + 1;
  std::vector<uint8_t> header(headerSize);
  EFI_HII_STRING_PACKAGE_HDR fields{};
  fields.Header.Length = static_cast<UINT32>(headerSize + blocks.size()) & 0xFFFFFF;
  fields.Header.Type = EFI_HII_PACKAGE_STRINGS;
  fields.HdrSize = static_cast<UINT32>(headerSize);
  fields.StringInfoOffset = static_cast<UINT32>(headerSize);
  fields.LanguageName = 1;
  std::memcpy(header.data(), &fields, kLanguageOffset);
  std::memcpy(header.data() + kLanguageOffset, language.c_str(), language.size() + 1);
  list->insert(list->end(), header.begin(), header.end());
  list->insert(list->end(), blocks.begin(), blocks.end());
}

// Reads string blocks; every read is checked against the package's end.
class BlockReader {
 public:
  BlockReader(const uint8_t *at, const uint8_t *end) : at_(at), end_(end) {}

  bool Read(std::map<EFI_STRING_ID, std::u16string> *texts) {
    EFI_STRING_ID id = 1;
    while (at_ < end_) {
      uint8_t type = *at_++;
      if (type == EFI_HII_SIBT_END) {
        return true;
      }
      if (!ReadBlock(type, &id, texts)) {
        return false;
      }
    }
    return false;
  }

 private:
  bool Take8(uint8_t *value) {
    if (at_ == end_) {
      return false;
    }
    *value = *at_++;
    return true;
  }
  bool Take16(uint16_t *value) {
    uint8_t low;
    uint8_t high;
    if (!Take8(&low) || !Take8(&high)) {
      return false;
    }
    *value = static_cast<uint16_t>(low | high << 8);
    return true;
  }
  bool TakeText(bool wide, std::u16string *text) {
    for (;;) {
      uint16_t unit = 0;
      uint8_t byte = 0;
      if (wide ? !Take16(&unit) : !Take8(&byte)) {
        return false;
      }
      unit = wide ? unit : byte;
      if (unit == 0) {
        return true;
      }
      text->push_back(unit);
    }
  }
  bool TakeTexts(bool wide, uint16_t count, EFI_STRING_ID *id,
                 std::map<EFI_STRING_ID, std::u16string> *texts) {
    for (uint16_t i = 0; i < count; i++) {
      std::u16string text;
      if (!TakeText(wide, &text)) {
        return false;
      }
      (*texts)[(*id)++] = std::move(text);
    }
    return true;
  }

  bool ReadBlock(uint8_t type, EFI_STRING_ID *id, std::map<EFI_STRING_ID, std::u16string> *texts) {
    uint8_t byte = 0;
    uint16_t word = 0;
    switch (type) {
      case EFI_HII_SIBT_STRING_SCSU_FONT:
      case EFI_HII_SIBT_STRING_UCS2_FONT:
        return Take8(&byte) && TakeTexts(type == EFI_HII_SIBT_STRING_UCS2_FONT, 1, id, texts);
      case EFI_HII_SIBT_STRING_SCSU:
      case EFI_HII_SIBT_STRING_UCS2:
        return TakeTexts(type == EFI_HII_SIBT_STRING_UCS2, 1, id, texts);
      case EFI_HII_SIBT_STRINGS_SCSU:
      case EFI_HII_SIBT_STRINGS_UCS2:
        return Take16(&word) && TakeTexts(type == EFI_HII_SIBT_STRINGS_UCS2, word, id, texts);
      case EFI_HII_SIBT_DUPLICATE:
        if (!Take16(&word) || !texts->contains(word)) {
          return false;
        }
        (*texts)[(*id)++] = texts->at(word);
        return true;
      case EFI_HII_SIBT_SKIP1:
        *id = Take8(&byte) ? static_cast<EFI_STRING_ID>(*id + byte) : EFI_STRING_ID{0};
        return *id != 0;
      case EFI_HII_SIBT_SKIP2:
        *id = Take16(&word) ? static_cast<EFI_STRING_ID>(*id + word) : EFI_STRING_ID{0};
        return *id != 0;
      default:
        return false;
    }
  }

  const uint8_t *at_;
  const uint8_t *end_;
};

bool ParseStrings(const uint8_t *package, size_t length, StringTable *strings) {
  EFI_HII_STRING_PACKAGE_HDR header{};
  if (length <= kLanguageOffset) {
    return false;
  }
  std::memcpy(&header, package, kLanguageOffset);
  const auto *language = reinterpret_cast<const char *>(package) + kLanguageOffset;
  size_t room = length - kLanguageOffset;
  size_t size = strnlen(language, room);
  if (size == room || header.StringInfoOffset >= length) {
    return false;
  }
  BlockReader reader(package + header.StringInfoOffset, package + length);
  return reader.Read(&(*strings)[std::string(language, size)]);
}

}  // namespace

std::vector<uint8_t> MakePackageList(const EFI_GUID &guid, const StringTable &strings) {
  std::vector<uint8_t> bytes(kListHeader);
  for (const auto &[language, texts] : strings) {
    PutPackage(&bytes, language, Blocks(texts));
  }
  bytes.insert(bytes.end(), {kPackageHeader, 0, 0, EFI_HII_PACKAGE_END});
  EFI_HII_PACKAGE_LIST_HEADER header{guid, static_cast<UINT32>(bytes.size())};
  std::memcpy(bytes.data(), &header, sizeof header);
  return bytes;
}

EFI_STATUS ParsePackageList(const uint8_t *bytes, size_t size, StringTable *strings) {
  size_t at = kListHeader;
  while (at + kPackageHeader <= size) {
    EFI_HII_PACKAGE_HEADER header;
    std::memcpy(&header, bytes + at, sizeof header);
    size_t length = header.Length;
    if (length < kPackageHeader || length > size - at) {
      return EFI_INVALID_PARAMETER;
    }
    if (header.Type == EFI_HII_PACKAGE_END) {
      return EFI_SUCCESS;
    }
    if (header.Type == EFI_HII_PACKAGE_STRINGS && !ParseStrings(bytes + at, length, strings)) {
      return EFI_INVALID_PARAMETER;
    }
    at += length;
  }
  return EFI_INVALID_PARAMETER;
}

bool HoldsForms(const std::vector<uint8_t> &list) {
  size_t at = kListHeader;
  while (at + kPackageHeader <= list.size()) {
    EFI_HII_PACKAGE_HEADER header;
    std::memcpy(&header, list.data() + at, sizeof header);
    if (header.Type == EFI_HII_PACKAGE_FORMS) {
      return true;
    }
    at += header.Length;
  }
  return false;
}

}  // namespace fake
