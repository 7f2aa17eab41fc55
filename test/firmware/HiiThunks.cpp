// The protocol tables of the HII database.

#include "test/firmware/ServiceTables.h"

namespace fake {

struct HiiThunks {
  static HiiDatabase *From(const EFI_HII_DATABASE_PROTOCOL *protocol) {
    return reinterpret_cast<const HiiDatabase::DatabaseThunk *>(protocol)->Self;
  }
  static HiiDatabase *From(const EFI_HII_STRING_PROTOCOL *protocol) {
    return reinterpret_cast<const HiiDatabase::StringThunk *>(protocol)->Self;
  }

  static EFI_STATUS EFIAPI NewPackageList(CONST EFI_HII_DATABASE_PROTOCOL *protocol,
                                          CONST EFI_HII_PACKAGE_LIST_HEADER *list,
                                          CONST EFI_HANDLE driver, EFI_HII_HANDLE *handle) {
    Call call(Service::HiiNewPackageList, nullptr);
    return call.Run([&] { return From(protocol)->NewPackageList(list, driver, handle); });
  }

  static EFI_STATUS EFIAPI RemovePackageList(CONST EFI_HII_DATABASE_PROTOCOL *protocol,
                                             EFI_HII_HANDLE handle) {
    Call call(Service::HiiRemovePackageList, nullptr);
    return call.Run([&] { return From(protocol)->RemovePackageList(handle); });
  }

  static EFI_STATUS EFIAPI ListPackageLists(CONST EFI_HII_DATABASE_PROTOCOL *protocol, UINT8 type,
                                            CONST EFI_GUID *guid, UINTN *size,
                                            EFI_HII_HANDLE *handles) {
    Call call(Service::HiiListPackageLists, nullptr, type);
    return call.Run([&] { return From(protocol)->ListPackageLists(type, guid, size, handles); });
  }

  static EFI_STATUS EFIAPI ExportPackageLists(CONST EFI_HII_DATABASE_PROTOCOL *protocol,
                                              EFI_HII_HANDLE handle, UINTN *size,
                                              EFI_HII_PACKAGE_LIST_HEADER *buffer) {
    Call call(Service::HiiExportPackageLists, nullptr);
    return call.Run([&] { return From(protocol)->ExportPackageLists(handle, size, buffer); });
  }

  static EFI_STATUS EFIAPI GetPackageListHandle(CONST EFI_HII_DATABASE_PROTOCOL *protocol,
                                                EFI_HII_HANDLE handle, EFI_HANDLE *driver) {
    Call call(Service::HiiGetPackageListHandle, nullptr);
    return call.Run([&] { return From(protocol)->DriverOf(handle, driver); });
  }

  static EFI_STATUS EFIAPI NewString(CONST EFI_HII_STRING_PROTOCOL *protocol, EFI_HII_HANDLE handle,
                                     EFI_STRING_ID *id, CONST CHAR8 *language, CONST CHAR16 *,
                                     CONST EFI_STRING text, CONST EFI_FONT_INFO *) {
    Call call(Service::HiiNewString, nullptr, language);
    return call.Run([&] { return From(protocol)->NewString(handle, id, language, text); });
  }

  static EFI_STATUS EFIAPI GetString(CONST EFI_HII_STRING_PROTOCOL *protocol, CONST CHAR8 *language,
                                     EFI_HII_HANDLE handle, EFI_STRING_ID id, EFI_STRING text,
                                     UINTN *size, EFI_FONT_INFO **font) {
    Call call(Service::HiiGetString, nullptr, language, id);
    return call.Run(
        [&] { return From(protocol)->GetString(language, handle, id, text, size, font); });
  }

  static EFI_STATUS EFIAPI SetString(CONST EFI_HII_STRING_PROTOCOL *protocol, EFI_HII_HANDLE handle,
                                     EFI_STRING_ID id, CONST CHAR8 *language, EFI_STRING text,
                                     CONST EFI_FONT_INFO *) {
    Call call(Service::HiiSetString, nullptr, language, id);
    return call.Run([&] { return From(protocol)->SetString(handle, id, language, text); });
  }

  static EFI_STATUS EFIAPI GetLanguages(CONST EFI_HII_STRING_PROTOCOL *protocol,
                                        EFI_HII_HANDLE handle, CHAR8 *languages, UINTN *size) {
    Call call(Service::HiiGetLanguages, nullptr);
    return call.Run([&] { return From(protocol)->GetLanguages(handle, languages, size); });
  }

  static EFI_STATUS EFIAPI GetSecondaryLanguages(CONST EFI_HII_STRING_PROTOCOL *protocol,
                                                 EFI_HII_HANDLE handle, CONST CHAR8 *primary,
                                                 CHAR8 *languages, UINTN *size) {
    Call call(Service::HiiGetSecondaryLanguages, nullptr, primary);
    return call.Run(
        [&] { return From(protocol)->GetSecondaryLanguages(handle, primary, languages, size); });
  }
};

void HiiDatabase::FillTables() {
  database_.Self = this;
  EFI_HII_DATABASE_PROTOCOL &database = database_.Protocol;
  database.NewPackageList = &HiiThunks::NewPackageList;
  database.RemovePackageList = &HiiThunks::RemovePackageList;
  Unprovide<Service::HiiUpdatePackageList>(database.UpdatePackageList);
  database.ListPackageLists = &HiiThunks::ListPackageLists;
  database.ExportPackageLists = &HiiThunks::ExportPackageLists;
  Unprovide<Service::HiiUnprovided>(database.RegisterPackageNotify);
  Unprovide<Service::HiiUnprovided>(database.UnregisterPackageNotify);
  Unprovide<Service::HiiUnprovided>(database.FindKeyboardLayouts);
  Unprovide<Service::HiiUnprovided>(database.GetKeyboardLayout);
  Unprovide<Service::HiiUnprovided>(database.SetKeyboardLayout);
  database.GetPackageListHandle = &HiiThunks::GetPackageListHandle;
  strings_.Self = this;
  EFI_HII_STRING_PROTOCOL &strings = strings_.Protocol;
  strings.NewString = &HiiThunks::NewString;
  strings.GetString = &HiiThunks::GetString;
  strings.SetString = &HiiThunks::SetString;
  strings.GetLanguages = &HiiThunks::GetLanguages;
  strings.GetSecondaryLanguages = &HiiThunks::GetSecondaryLanguages;
  Unprovide<Service::HiiUnprovided>(configRouting_.ExtractConfig);
  Unprovide<Service::HiiUnprovided>(configRouting_.ExportConfig);
  Unprovide<Service::HiiUnprovided>(configRouting_.RouteConfig);
  Unprovide<Service::HiiUnprovided>(configRouting_.BlockToConfig);
  Unprovide<Service::HiiUnprovided>(configRouting_.ConfigToBlock);
  Unprovide<Service::HiiUnprovided>(configRouting_.GetAltConfig);
  Unprovide<Service::HiiUnprovided>(font_.StringToImage);
  Unprovide<Service::HiiUnprovided>(font_.StringIdToImage);
  Unprovide<Service::HiiUnprovided>(font_.GetGlyph);
  Unprovide<Service::HiiUnprovided>(font_.GetFontInfo);
  Unprovide<Service::HiiUnprovided>(image_.NewImage);
  Unprovide<Service::HiiUnprovided>(image_.GetImage);
  Unprovide<Service::HiiUnprovided>(image_.SetImage);
  Unprovide<Service::HiiUnprovided>(image_.DrawImage);
  Unprovide<Service::HiiUnprovided>(image_.DrawImageId);
}

}  // namespace fake
