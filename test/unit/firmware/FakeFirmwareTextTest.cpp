#include <gtest/gtest.h>

#include "test/firmware/FakeFirmware.h"
#include "test/firmware/Run.h"

extern "C" {
#include <Library/HiiLib.h>
#include <Library/UefiBootServicesTableLib.h>
#include <Library/UefiLib.h>
}

namespace fake {
namespace {

constexpr EFI_GUID kList = {0x11, 0x22, 0x33, {0x44}};

class FakeFirmwareText : public testing::Test {
 protected:
  FakeFirmwareText() { RunLibraryConstructors(Machine); }
  // The library's answer for one string, or "(none)".
  std::string Text(EFI_HII_HANDLE handle, EFI_STRING_ID id, const char *language) {
    EFI_STRING text = HiiGetString(handle, id, language);
    if (text == nullptr) {
      return "(none)";
    }
    std::string ascii = ToAscii(text);
    gBS->FreePool(text);
    return ascii;
  }
  Firmware Machine;
};

TEST_F(FakeFirmwareText, LibraryFindsHandlesAndStrings) {
  Machine.Hii.AddStrings({0x99, 0, 0, {0}}, {{"en-US", {{1, u"other"}}}});
  Machine.Hii.AddStrings(kList, {{"en-US", {{1, u"English"}, {2, u"Leave"}, {5, u"Five"}}},
                                 {"de", {{1, u"Deutsch"}, {2, u"Verlassen"}}}});
  EFI_HII_HANDLE *handles = HiiGetHiiHandles(&kList);
  ASSERT_NE(handles, nullptr);
  EXPECT_NE(handles[0], nullptr);
  EXPECT_EQ(handles[1], nullptr);
  EXPECT_EQ(Text(handles[0], 2, "en-US"), "Leave");
  EXPECT_EQ(Text(handles[0], 2, "de"), "Verlassen");
  EXPECT_EQ(Text(handles[0], 5, "en-US"), "Five");
  EXPECT_EQ(Text(handles[0], 5, "de"), "(none)") << "the identifier exists in English only";
  EXPECT_EQ(Text(handles[0], 3, "en-US"), "(none)") << "a skipped identifier";
  gBS->FreePool(handles);
  EXPECT_EQ(Machine.Pool.LiveBlocks(), 0u);
  EXPECT_EQ(Machine.ProblemsText(), "");
}

TEST_F(FakeFirmwareText, LibraryFindsNoHandlesOfAnotherList) {
  EXPECT_EQ(HiiGetHiiHandles(&kList), nullptr);
  Machine.Hii.AddStrings({0x99, 0, 0, {0}}, {{"en-US", {{1, u"other"}}}});
  EXPECT_EQ(HiiGetHiiHandles(&kList), nullptr);
  EXPECT_EQ(Machine.Pool.LiveBlocks(), 0u);
}

TEST_F(FakeFirmwareText, GetStringStatuses) {
  EFI_HII_HANDLE handle =
      Machine.Hii.AddStrings(kList, {{"en-US", {{1, u"E"}, {2, u"abc"}}}, {"de", {{1, u"D"}}}});
  EFI_HII_STRING_PROTOCOL *strings = Machine.Hii.Strings();
  CHAR16 text[8];
  UINTN size = 2;
  EXPECT_EQ(strings->GetString(strings, "en-US", handle, 2, text, &size, nullptr),
            EFI_BUFFER_TOO_SMALL);
  EXPECT_EQ(size, 8u);
  EXPECT_EQ(strings->GetString(strings, "en-US", handle, 2, text, &size, nullptr), EFI_SUCCESS);
  EXPECT_EQ(strings->GetString(strings, "de", handle, 2, text, &size, nullptr),
            EFI_INVALID_LANGUAGE);
  EXPECT_EQ(strings->GetString(strings, "en-US", handle, 9, text, &size, nullptr), EFI_NOT_FOUND);
  EXPECT_EQ(strings->GetString(strings, nullptr, handle, 2, text, &size, nullptr),
            EFI_INVALID_PARAMETER);
  EXPECT_EQ(strings->GetString(strings, "en-US", handle, 2, nullptr, &size, nullptr),
            EFI_INVALID_PARAMETER);
}

TEST_F(FakeFirmwareText, LanguagesAreListed) {
  EFI_HII_HANDLE handle =
      Machine.Hii.AddStrings(kList, {{"en-US", {{1, u"E"}}}, {"de", {{1, u"D"}}}});
  CHAR8 *languages = HiiGetSupportedLanguages(handle);
  ASSERT_NE(languages, nullptr);
  EXPECT_STREQ(languages, "de;en-US");
  gBS->FreePool(languages);
}

TEST_F(FakeFirmwareText, PackageListsArePlainBinary) {
  std::vector<uint8_t> list = MakePackageList(kList, {{"fr", {{4, u"Quatre"}}}});
  StringTable table;
  ASSERT_EQ(ParsePackageList(list.data(), list.size(), &table), EFI_SUCCESS);
  EXPECT_EQ(table["fr"][4], u"Quatre");
  for (size_t size = 0; size < list.size(); size++) {
    std::vector<uint8_t> cut(list.begin(), list.begin() + static_cast<ptrdiff_t>(size));
    EXPECT_EQ(ParsePackageList(cut.data(), cut.size(), &table), EFI_INVALID_PARAMETER) << size;
  }
}

TEST_F(FakeFirmwareText, NewAndChangedStringsAreExported) {
  EFI_HII_HANDLE handle = Machine.Hii.AddStrings(kList, {{"en-US", {{1, u"E"}}}});
  std::vector<CHAR16> text = ToFirmware(u"new");
  EFI_STRING_ID id = HiiSetString(handle, 0, text.data(), "en-US");
  EXPECT_EQ(id, 2u);
  EXPECT_EQ(Text(handle, 2, "en-US"), "new");
  EXPECT_EQ(HiiSetString(handle, 7, text.data(), "en-US"), 0u);
}

TEST_F(FakeFirmwareText, PlatformLanguageIsAVariable) {
  CHAR8 *language = nullptr;
  UINTN size = 0;
  auto read = [&] {
    std::vector<CHAR16> name = ToFirmware(u"PlatformLang");
    return GetEfiGlobalVariable2(name.data(), reinterpret_cast<VOID **>(&language), &size);
  };
  EXPECT_EQ(read(), EFI_NOT_FOUND);
  Machine.Variables.SetText(u"PlatformLang", "de-DE");
  ASSERT_EQ(read(), EFI_SUCCESS);
  EXPECT_STREQ(language, "de-DE");
  EXPECT_EQ(size, 6u);
  gBS->FreePool(language);
}

TEST_F(FakeFirmwareText, VariableStatuses) {
  EFI_RUNTIME_SERVICES &services = Machine.RuntimeServices;
  EFI_GUID vendor = kList;
  std::vector<CHAR16> name = ToFirmware(u"Name");
  char value[] = "abc";
  constexpr UINT32 kAttributes = EFI_VARIABLE_BOOTSERVICE_ACCESS;
  UINTN size = 0;
  EXPECT_EQ(services.GetVariable(name.data(), &vendor, nullptr, &size, nullptr), EFI_NOT_FOUND);
  EXPECT_EQ(services.SetVariable(name.data(), &vendor, kAttributes, 0, nullptr), EFI_NOT_FOUND);
  EXPECT_EQ(services.SetVariable(name.data(), &vendor, EFI_VARIABLE_RUNTIME_ACCESS, 3, value),
            EFI_INVALID_PARAMETER);
  EXPECT_EQ(services.SetVariable(name.data(), &vendor, kAttributes, 3, value), EFI_SUCCESS);
  EXPECT_EQ(services.GetVariable(name.data(), &vendor, nullptr, &size, nullptr),
            EFI_BUFFER_TOO_SMALL);
  EXPECT_EQ(size, 3u);
  EXPECT_EQ(
      services.SetVariable(name.data(), &vendor, kAttributes | EFI_VARIABLE_NON_VOLATILE, 3, value),
      EFI_INVALID_PARAMETER);
  EXPECT_EQ(
      services.SetVariable(name.data(), &vendor, kAttributes | EFI_VARIABLE_APPEND_WRITE, 2, value),
      EFI_SUCCESS);
  char back[8] = {};
  size = sizeof back;
  UINT32 attributes = 0;
  EXPECT_EQ(services.GetVariable(name.data(), &vendor, &attributes, &size, back), EFI_SUCCESS);
  EXPECT_STREQ(back, "abcab");
  EXPECT_EQ(attributes, kAttributes);
  EXPECT_EQ(services.SetVariable(name.data(), &vendor, kAttributes, 0, nullptr), EFI_SUCCESS);
  EXPECT_EQ(Machine.Variables.Count(), 0u);
}

}  // namespace
}  // namespace fake
