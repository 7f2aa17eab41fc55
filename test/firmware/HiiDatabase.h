// The HII database as far as texts go: package lists with string packages in their binary form,
// the HII string protocol on top, and the other HII protocols as things that can be located.

#pragma once

#include "test/firmware/Edk2.h"

namespace fake {

/// Texts of one package list: language, string identifier, text.
using StringTable = std::map<std::string, std::map<EFI_STRING_ID, std::u16string>>;

/// A package list in its binary form: the texts as string packages, one a language. Identifiers
/// that a language lacks are skipped over.
std::vector<uint8_t> MakePackageList(const EFI_GUID &guid, const StringTable &strings);

/// The string packages of a package list; EFI_INVALID_PARAMETER for a malformed list.
EFI_STATUS ParsePackageList(const uint8_t *bytes, size_t size, StringTable *strings);

/// Whether a sound package list has a form package.
bool HoldsForms(const std::vector<uint8_t> &list);

class HiiDatabase {
 public:
  HiiDatabase();
  HiiDatabase(const HiiDatabase &) = delete;
  HiiDatabase &operator=(const HiiDatabase &) = delete;

  /// Registers a package list with these texts, without a recorded call.
  EFI_HII_HANDLE AddStrings(const EFI_GUID &packageList, const StringTable &strings);
  void Remove(EFI_HII_HANDLE handle);
  size_t ListCount() const { return lists_.size(); }

  EFI_HII_DATABASE_PROTOCOL *Database() { return &database_.Protocol; }
  EFI_HII_STRING_PROTOCOL *Strings() { return &strings_.Protocol; }
  /// Can be located and compared; none of their functions may be called.
  EFI_HII_CONFIG_ROUTING_PROTOCOL *ConfigRouting() { return &configRouting_; }
  EFI_HII_FONT_PROTOCOL *Font() { return &font_; }
  EFI_HII_IMAGE_PROTOCOL *Image() { return &image_; }

  EFI_STATUS NewPackageList(const EFI_HII_PACKAGE_LIST_HEADER *list, EFI_HANDLE driver,
                            EFI_HII_HANDLE *handle);
  EFI_STATUS RemovePackageList(EFI_HII_HANDLE handle);
  EFI_STATUS ListPackageLists(UINT8 type, const EFI_GUID *guid, UINTN *size,
                              EFI_HII_HANDLE *handles) const;
  EFI_STATUS ExportPackageLists(EFI_HII_HANDLE handle, UINTN *size, VOID *buffer) const;
  EFI_STATUS DriverOf(EFI_HII_HANDLE handle, EFI_HANDLE *driver) const;
  EFI_STATUS GetString(const CHAR8 *language, EFI_HII_HANDLE handle, EFI_STRING_ID id, CHAR16 *text,
                       UINTN *size, EFI_FONT_INFO **font) const;
  EFI_STATUS NewString(EFI_HII_HANDLE handle, EFI_STRING_ID *id, const CHAR8 *language,
                       const CHAR16 *text);
  EFI_STATUS SetString(EFI_HII_HANDLE handle, EFI_STRING_ID id, const CHAR8 *language,
                       const CHAR16 *text);
  EFI_STATUS GetLanguages(EFI_HII_HANDLE handle, CHAR8 *languages, UINTN *size) const;
  EFI_STATUS GetSecondaryLanguages(EFI_HII_HANDLE handle, const CHAR8 *primary, CHAR8 *languages,
                                   UINTN *size) const;

 private:
  struct List {
    EFI_GUID Guid;
    EFI_HANDLE Driver;
    StringTable Strings;
    std::vector<uint8_t> Bytes;
  };
  List *Find(EFI_HII_HANDLE handle) const;
  void FillTables();

  struct DatabaseThunk {
    EFI_HII_DATABASE_PROTOCOL Protocol;
    HiiDatabase *Self;
  };
  struct StringThunk {
    EFI_HII_STRING_PROTOCOL Protocol;
    HiiDatabase *Self;
  };
  friend struct HiiThunks;

  std::vector<std::unique_ptr<List>> lists_;
  DatabaseThunk database_{};
  StringThunk strings_{};
  EFI_HII_CONFIG_ROUTING_PROTOCOL configRouting_{};
  EFI_HII_FONT_PROTOCOL font_{};
  EFI_HII_IMAGE_PROTOCOL image_{};
};

}  // namespace fake
