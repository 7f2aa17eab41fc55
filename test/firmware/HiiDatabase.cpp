#include "test/firmware/HiiDatabase.h"

#include "test/firmware/Guids.h"
#include "test/firmware/Text.h"

namespace fake {

namespace {

// Copies an answer out with the size protocol that all HII functions share.
EFI_STATUS Answer(const void *data, size_t needed, UINTN *size, void *buffer) {
  UINTN capacity = std::exchange(*size, needed);
  if (capacity < needed) {
    return EFI_BUFFER_TOO_SMALL;
  }
  if (buffer == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  std::memcpy(buffer, data, needed);
  return EFI_SUCCESS;
}

bool SameLanguage(std::string_view a, std::string_view b) {
  auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [&](char x, char y) { return lower(x) == lower(y); });
}

}  // namespace

HiiDatabase::HiiDatabase() { FillTables(); }

HiiDatabase::List *HiiDatabase::Find(EFI_HII_HANDLE handle) const {
  for (const std::unique_ptr<List> &list : lists_) {
    if (list.get() == handle) {
      return list.get();
    }
  }
  return nullptr;
}

EFI_HII_HANDLE HiiDatabase::AddStrings(const EFI_GUID &packageList, const StringTable &strings) {
  std::vector<uint8_t> bytes = MakePackageList(packageList, strings);
  EFI_HII_HANDLE handle = nullptr;
  NewPackageList(reinterpret_cast<const EFI_HII_PACKAGE_LIST_HEADER *>(bytes.data()), nullptr,
                 &handle);
  return handle;
}

void HiiDatabase::Remove(EFI_HII_HANDLE handle) { RemovePackageList(handle); }

EFI_STATUS HiiDatabase::NewPackageList(const EFI_HII_PACKAGE_LIST_HEADER *list, EFI_HANDLE driver,
                                       EFI_HII_HANDLE *handle) {
  if (list == nullptr || handle == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  const auto *bytes = reinterpret_cast<const uint8_t *>(list);
  auto added = std::make_unique<List>();
  EFI_HII_PACKAGE_LIST_HEADER header;
  std::memcpy(&header, list, sizeof header);
  added->Guid = header.PackageListGuid;
  added->Driver = driver;
  EFI_STATUS status = ParsePackageList(bytes, header.PackageLength, &added->Strings);
  if (EFI_ERROR(status)) {
    return status;
  }
  added->Bytes.assign(bytes, bytes + header.PackageLength);
  *handle = reinterpret_cast<EFI_HII_HANDLE>(added.get());
  lists_.push_back(std::move(added));
  return EFI_SUCCESS;
}

EFI_STATUS HiiDatabase::RemovePackageList(EFI_HII_HANDLE handle) {
  auto removed = std::erase_if(lists_, [&](const auto &list) { return list.get() == handle; });
  return removed == 0 ? EFI_NOT_FOUND : EFI_SUCCESS;
}

EFI_STATUS HiiDatabase::ListPackageLists(UINT8 type, const EFI_GUID *guid, UINTN *size,
                                         EFI_HII_HANDLE *handles) const {
  if (size == nullptr || (*size > 0 && handles == nullptr) ||
      (type == EFI_HII_PACKAGE_TYPE_GUID) != (guid != nullptr)) {
    return EFI_INVALID_PARAMETER;
  }
  std::vector<EFI_HII_HANDLE> found;
  for (const std::unique_ptr<List> &list : lists_) {
    bool strings = type == EFI_HII_PACKAGE_STRINGS && !list->Strings.empty();
    bool forms = type == EFI_HII_PACKAGE_FORMS && HoldsForms(list->Bytes);
    if (type == EFI_HII_PACKAGE_TYPE_ALL || strings || forms) {
      found.push_back(reinterpret_cast<EFI_HII_HANDLE>(list.get()));
    }
  }
  if (found.empty()) {
    *size = 0;
    return EFI_NOT_FOUND;
  }
  return Answer(found.data(), found.size() * sizeof found[0], size, handles);
}

EFI_STATUS HiiDatabase::ExportPackageLists(EFI_HII_HANDLE handle, UINTN *size, VOID *buffer) const {
  if (size == nullptr || (*size > 0 && buffer == nullptr)) {
    return EFI_INVALID_PARAMETER;
  }
  std::vector<uint8_t> all;
  for (const std::unique_ptr<List> &list : lists_) {
    if (handle == nullptr || list.get() == handle) {
      all.insert(all.end(), list->Bytes.begin(), list->Bytes.end());
    }
  }
  if (all.empty()) {
    return EFI_NOT_FOUND;
  }
  return Answer(all.data(), all.size(), size, buffer);
}

EFI_STATUS HiiDatabase::DriverOf(EFI_HII_HANDLE handle, EFI_HANDLE *driver) const {
  if (driver == nullptr || Find(handle) == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  *driver = Find(handle)->Driver;
  return EFI_SUCCESS;
}

EFI_STATUS HiiDatabase::GetString(const CHAR8 *language, EFI_HII_HANDLE handle, EFI_STRING_ID id,
                                  CHAR16 *text, UINTN *size, EFI_FONT_INFO **font) const {
  if (language == nullptr || id == 0 || size == nullptr || handle == nullptr ||
      (text == nullptr && *size != 0)) {
    return EFI_INVALID_PARAMETER;
  }
  const List *list = Find(handle);
  if (list == nullptr) {
    return EFI_NOT_FOUND;
  }
  bool elsewhere = false;
  for (const auto &[own, texts] : list->Strings) {
    auto found = texts.find(id);
    if (found == texts.end()) {
      continue;
    }
    if (SameLanguage(own, language)) {
      if (font != nullptr) {
        *font = nullptr;
      }
      std::vector<CHAR16> copy = ToFirmware(found->second);
      return Answer(copy.data(), copy.size() * sizeof(CHAR16), size, text);
    }
    elsewhere = true;
  }
  return elsewhere ? EFI_INVALID_LANGUAGE : EFI_NOT_FOUND;
}

EFI_STATUS HiiDatabase::NewString(EFI_HII_HANDLE handle, EFI_STRING_ID *id, const CHAR8 *language,
                                  const CHAR16 *text) {
  if (id == nullptr || language == nullptr || text == nullptr || handle == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  List *list = Find(handle);
  if (list == nullptr) {
    return EFI_NOT_FOUND;
  }
  EFI_STRING_ID last = 0;
  for (const auto &[own, texts] : list->Strings) {
    last = texts.empty() ? last : std::max(last, texts.rbegin()->first);
  }
  *id = static_cast<EFI_STRING_ID>(last + 1);
  list->Strings[language][*id] = ToU16(text);
  list->Bytes = MakePackageList(list->Guid, list->Strings);
  return EFI_SUCCESS;
}

EFI_STATUS HiiDatabase::SetString(EFI_HII_HANDLE handle, EFI_STRING_ID id, const CHAR8 *language,
                                  const CHAR16 *text) {
  if (id == 0 || language == nullptr || text == nullptr || handle == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  List *list = Find(handle);
  if (list == nullptr || !list->Strings.contains(language) ||
      !list->Strings[language].contains(id)) {
    return EFI_NOT_FOUND;
  }
  list->Strings[language][id] = ToU16(text);
  list->Bytes = MakePackageList(list->Guid, list->Strings);
  return EFI_SUCCESS;
}

EFI_STATUS HiiDatabase::GetLanguages(EFI_HII_HANDLE handle, CHAR8 *languages, UINTN *size) const {
  if (size == nullptr || handle == nullptr || (languages == nullptr && *size != 0)) {
    return EFI_INVALID_PARAMETER;
  }
  const List *list = Find(handle);
  if (list == nullptr) {
    return EFI_NOT_FOUND;
  }
  std::string text;
  for (const auto &[language, texts] : list->Strings) {
    text += (text.empty() ? "" : ";") + language;
  }
  return Answer(text.c_str(), text.size() + 1, size, languages);
}

EFI_STATUS HiiDatabase::GetSecondaryLanguages(EFI_HII_HANDLE handle, const CHAR8 *primary,
                                              CHAR8 *languages, UINTN *size) const {
  if (size == nullptr || handle == nullptr || primary == nullptr ||
      (languages == nullptr && *size != 0)) {
    return EFI_INVALID_PARAMETER;
  }
  const List *list = Find(handle);
  if (list == nullptr) {
    return EFI_NOT_FOUND;
  }
  // No package here declares secondary languages.
  return list->Strings.contains(primary) ? EFI_NOT_FOUND : EFI_INVALID_LANGUAGE;
}

}  // namespace fake
