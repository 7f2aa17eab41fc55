// Loading of the localized texts: languages, fallbacks, and what can be missing.

#include "test/unit/stage/ApplicationPool.h"
#include "test/unit/stage/ConnectedHost.h"

#include "app/base/LocalizedStrings.h"

namespace {

using fake::Service;

constexpr EFI_STRING_ID kFirstId = 2;
constexpr UINTN kHeaderSize = 24;
constexpr UINT64 kPackageListAllocation = 2;

class LocalizedStrings : public ConnectedHost {
 protected:
  LocalizedStrings() {
    Host.Strings.clear();
    for (UINT16 i = 0; i < OBV_STRING_COUNT; i++) {
      Text("en-US", i) = u"english " + Number(i);
      Text("fr-FR", i) = u"fran\u00E7ais " + Number(i);
    }
  }

  static std::u16string Number(UINTN i) { return fake::FromAscii(std::to_string(i)); }
  std::u16string &Text(const std::string &language, UINTN index) {
    return Host.Strings[language][static_cast<EFI_STRING_ID>(kFirstId + index)];
  }
  void Forget(const std::string &language, UINTN index) {
    Host.Strings[language].erase(static_cast<EFI_STRING_ID>(kFirstId + index));
  }
  void SetLanguage(std::string_view language) {
    Machine.Variables.SetText(u"PlatformLang", language);
  }
  void SetWithoutTerminator(std::string_view language) {
    const EFI_GUID vendor = EFI_GLOBAL_VARIABLE;
    std::vector<CHAR16> name = fake::ToFirmware(u"PlatformLang");
    EXPECT_EQ(Machine.Variables.Set(name.data(), &vendor, EFI_VARIABLE_BOOTSERVICE_ACCESS,
                                    language.size(), language.data()),
              EFI_SUCCESS);
  }
  EFI_STATUS Load() {
    Host.Install();
    return LoadLocalizedStrings();
  }
  static std::string Loaded(UINTN index) {
    const CHAR8 *text = gLocalizedStrings.Texts[index];
    return text == nullptr ? "(null)" : text;
  }
  static void ExpectAll(const std::string &start) {
    for (UINTN i = 0; i < OBV_STRING_COUNT; i++) {
      EXPECT_EQ(Loaded(i), start + std::to_string(i));
    }
  }
};

TEST_F(LocalizedStrings, WithoutPlatformLangEveryTextIsEnglish) {
  Machine.Variables.Remove(u"PlatformLang");
  // The first of the package's languages, which no language at all would select.
  for (UINTN i = 0; i < OBV_STRING_COUNT; i++) {
    Text("de-DE", i) = u"deutsch " + Number(i);
  }
  EXPECT_EQ(Load(), EFI_SUCCESS);
  ExpectAll("english ");
}

TEST_F(LocalizedStrings, TheTextsComeInThePlatformLanguage) {
  SetLanguage("fr-FR");
  EXPECT_EQ(Load(), EFI_SUCCESS);
  ExpectAll(
      "fran\xC3\xA7"
      "ais ");
}

TEST_F(LocalizedStrings, AMissingIdentifierFallsBackToEnglishAlone) {
  SetLanguage("fr-FR");
  Forget("fr-FR", 6);
  EXPECT_EQ(Load(), EFI_SUCCESS);
  EXPECT_EQ(Loaded(5),
            "fran\xC3\xA7"
            "ais 5");
  EXPECT_EQ(Loaded(6), "english 6");
  EXPECT_EQ(Loaded(7),
            "fran\xC3\xA7"
            "ais 7");
}

TEST_F(LocalizedStrings, ATextInNeitherLanguageIsEmpty) {
  SetLanguage("fr-FR");
  Forget("fr-FR", 6);
  Forget("en-US", 6);
  EXPECT_EQ(Load(), EFI_SUCCESS);
  EXPECT_EQ(Loaded(6), "");
  const CHAR8 *block = gLocalizedStrings.Texts[6] - kHeaderSize;
  EXPECT_EQ(Machine.Pool.SizeOf(block), kHeaderSize + 1);
}

TEST_F(LocalizedStrings, AnIdentifierOf0GivesAnEmptyText) {
  Host.State.StringIds[3] = 0;
  EXPECT_EQ(Load(), EFI_SUCCESS);
  EXPECT_EQ(Loaded(3), "");
  EXPECT_EQ(Loaded(4), "english 4");
}

TEST_F(LocalizedStrings, TheOrderIsThatOfTheIdentifiersOfTheRecord) {
  std::reverse(std::begin(Host.State.StringIds), std::end(Host.State.StringIds));
  EXPECT_EQ(Load(), EFI_SUCCESS);
  EXPECT_EQ(Loaded(0), "english 14");
  EXPECT_EQ(Loaded(14), "english 0");
}

TEST_F(LocalizedStrings, ASurrogatePairBecomesFourBytes) {
  Text("en-US", 2) = u"\xD83D\xDE00";
  EXPECT_EQ(Load(), EFI_SUCCESS);
  EXPECT_EQ(Loaded(2), "\xF0\x9F\x98\x80");
}

TEST_F(LocalizedStrings, ALoneLowSurrogateGivesTheEmptyText) {
  Text("en-US", 2) = std::u16string(1, char16_t{0xDC00});
  EXPECT_EQ(Load(), EFI_SUCCESS);
  EXPECT_EQ(Loaded(2), "");
  EXPECT_EQ(Log(), LogLines{Error("Load multilangage string success\n")});
}

TEST_F(LocalizedStrings, EachTextHasFourBytesForEachUnitAndOneMore) {
  Text("en-US", 0) = u"abcdefg";
  EXPECT_EQ(Load(), EFI_SUCCESS);
  const CHAR8 *block = gLocalizedStrings.Texts[0] - kHeaderSize;
  EXPECT_EQ(Machine.Pool.SizeOf(block), kHeaderSize + 7 * 4 + 1);
}

TEST_F(LocalizedStrings, NothingButTheTextsStaysAllocated) {
  EXPECT_EQ(Load(), EFI_SUCCESS);
  EXPECT_EQ(Machine.Pool.LiveBlocks(), OBV_STRING_COUNT);
  ReportMemoryLeaks();
  EXPECT_EQ(Machine.Pool.LiveBlocks(), 0u);
}

TEST_F(LocalizedStrings, WithoutThePackageThereAreNoTexts) {
  EXPECT_EQ(LoadLocalizedStrings(), EFI_NOT_FOUND);
  EXPECT_EQ(Log(), LogLines{Error("Load multilangage string fail\n")});
  for (UINTN i = 0; i < OBV_STRING_COUNT; i++) {
    EXPECT_EQ(Loaded(i), "(null)");
    EXPECT_STREQ(LocalizedText(static_cast<TextId>(i)), "");
  }
  EXPECT_EQ(Machine.Pool.LiveBlocks(), 0u);
}

TEST_F(LocalizedStrings, FirmwareWithoutHiiHasNoTexts) {
  gHiiString = nullptr;
  EXPECT_EQ(Load(), EFI_NOT_FOUND);
  gHiiDatabase = nullptr;
  EXPECT_EQ(LoadLocalizedStrings(), EFI_NOT_FOUND);
  EXPECT_EQ(Log(), (LogLines{Error("Load multilangage string fail\n"),
                             Error("Load multilangage string fail\n")}));
}

TEST_F(LocalizedStrings, AnotherPackageListIsNotTheApplications) {
  const EFI_GUID other = {
      0xB1DA0ADF, 0x4F77, 0x4070, {0xA8, 0x8E, 0xBF, 0xFE, 1, 0x60, 0x52, 0x9A}};
  Machine.Hii.AddStrings(other, Host.Strings);
  EXPECT_EQ(LoadLocalizedStrings(), EFI_NOT_FOUND);
}

TEST_F(LocalizedStrings, ThePackageListHasTheContractsGuid) {
  const UINT8 bytes[] = {0xDF, 0x0A, 0xDA, 0xB1, 0x77, 0x4F, 0x70, 0x40,
                         0xA8, 0x8E, 0xBF, 0xFE, 0x1C, 0x60, 0x52, 0x9A};
  const EFI_GUID guid = OBV_STRING_PACKAGE_LIST_GUID;
  EXPECT_EQ(std::memcmp(&guid, bytes, sizeof bytes), 0);
}

TEST_F(LocalizedStrings, ALanguageLongerThanItsBufferIsCut) {
  SetLanguage(std::string(1000, 'x'));
  EXPECT_EQ(Load(), EFI_SUCCESS);
  ExpectAll("english ");
}

TEST_F(LocalizedStrings, ALanguageWithoutATerminatorIsRead) {
  SetWithoutTerminator("fr-FR");
  EXPECT_EQ(Load(), EFI_SUCCESS);
  ExpectAll(
      "fran\xC3\xA7"
      "ais ");
}

// The library, too, reads the variable, for the languages that the package does not have.
TEST_F(LocalizedStrings, AForeignLanguageWithoutATerminatorIsReadNoFurther) {
  SetWithoutTerminator("de-DE");
  EXPECT_EQ(Load(), EFI_SUCCESS);
  ExpectAll("english ");
}

TEST_F(LocalizedStrings, EachAllocationMayFail) {
  Host.Install();
  bool failed = true;
  for (UINT64 n = 1; failed; n++) {
    UINT64 before = Machine.Faults.FailedCount();
    Machine.Faults.Clear();
    Machine.FailCall(Service::AllocatePool, n, EFI_OUT_OF_RESOURCES);
    std::fill_n(gLocalizedStrings.Texts, OBV_STRING_COUNT, nullptr);
    EFI_STATUS status = LoadLocalizedStrings();
    failed = Machine.Faults.FailedCount() != before;
    EXPECT_TRUE(status == EFI_SUCCESS || (failed && status == EFI_NOT_FOUND)) << n;
    int whole = 0;
    for (UINTN i = 0; i < OBV_STRING_COUNT; i++) {
      whole += Loaded(i) == "english " + std::to_string(i) ? 1 : 0;
    }
    int least = !failed ? OBV_STRING_COUNT : status == EFI_SUCCESS ? OBV_STRING_COUNT - 1 : 0;
    EXPECT_GE(whole, least) << n;
    ReportMemoryLeaks();
    ASSERT_EQ(Machine.Pool.LiveBlocks(), 0u) << n;
    if (n == kPackageListAllocation) {
      // EDK2's library gives the null back that it got for the package list.
      EXPECT_EQ(Machine.Problems().size(), 1u);
      Machine.ForgetProblems();
    }
    ASSERT_EQ(Machine.ProblemsText(), "") << n;
  }
}

TEST_F(LocalizedStrings, WithoutAnyMemoryTheEntriesAreNull) {
  Host.Install();
  // The array of packages is the library's; everything after it fails.
  Machine.FailCall(Service::AllocatePool, 3, EFI_OUT_OF_RESOURCES, fake::kForever);
  EXPECT_EQ(LoadLocalizedStrings(), EFI_SUCCESS);
  for (UINTN i = 0; i < OBV_STRING_COUNT; i++) {
    EXPECT_EQ(Loaded(i), "(null)");
    EXPECT_STREQ(LocalizedText(static_cast<TextId>(i)), "");
  }
  EXPECT_EQ(Machine.Pool.LiveBlocks(), 0u);
}

}  // namespace
