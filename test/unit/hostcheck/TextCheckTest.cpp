// The string package: what is missing, and what a format asks for.

#include "test/unit/hostcheck/HostCheckStage.h"

#include "hostcheck/FormatDirectives.h"

namespace hostcheck {
namespace {

/// The stage numbers its texts from 2 on.
constexpr EFI_STRING_ID IdOf(UINT16 text) { return static_cast<EFI_STRING_ID>(2 + text); }

class TextCheck : public HostCheckStage {
 protected:
  void Write(UINT16 text, const std::u16string &content, const std::string &language = "en-US") {
    Host.Strings[language][IdOf(text)] = content;
  }
};

TEST_F(TextCheck, KeyHelpWithFourDirectivesIsNamed) {
  Write(1, u"#%.6x a# #%.6x b# #%.6x c# #%.6x d#");
  ExpectTheMistake(
      "texts: text 1 in en-US has 4 directives that take an argument. Write 5, each "
      "%.6x.");
}

TEST_F(TextCheck, KeyHelpWithSixDirectivesIsNamed) {
  Write(1, u"%.6x %.6x %.6x %.6x %.6x %.6x");
  ExpectTheMistake("texts: text 1 in en-US has 6 directives that take an argument. Write 5");
}

TEST_F(TextCheck, KeyHelpWithATextDirectiveIsNamed) {
  Write(1, u"#%.6x a# #%.6x b# #%a c# #%.6x d# #%.6x e#");
  ExpectTheMistake("texts: text 1 in en-US has a directive of type a as number 3. Write %.6x.");
}

// 0000FF would become FF, which is no colour to LVGL.
TEST_F(TextCheck, KeyHelpWhoseColoursLoseTheirZerosIsNamed) {
  Write(1, u"#%.6x a# #%x b# #%.6x c# #%.6x d# #%.6x e#");
  ExpectTheMistake("texts: text 1 in en-US has a directive of type x as number 2. Write %.6x.");
}

TEST_F(TextCheck, KeyHelpWithItsZerosInAnotherWayIsNot) {
  Write(1, u"#%06x a# #%.6X b# #%.6x 100%% c# #%.6x d# #%.6x e#");
  EXPECT_EQ(Check(), EFI_SUCCESS);
}

TEST_F(TextCheck, KeyHelpThatIsTooLongIsNamed) {
  Write(1, u"%.6x%.6x%.6x%.6x%.6x" + std::u16string(135, u'\u00E4'));
  ExpectTheMistake("texts: text 1 in en-US prints 300 bytes, and 299 are shown. Shorten it.");
}

TEST_F(TextCheck, FilterHintWithTwoDirectivesIsNamed) {
  Write(4, u"Category %a of %a");
  ExpectTheMistake(
      "texts: text 4 in en-US has 2 directives that take an argument. Write 1, each "
      "%a.");
}

TEST_F(TextCheck, FilterHintWithAWideTextIsNamed) {
  Write(4, u"Category %s");
  ExpectTheMistake("texts: text 4 in en-US has a directive of type s as number 1. Write %a.");
}

TEST_F(TextCheck, FilterHintIsMeasuredWithTheLongestCaption) {
  Write(4, u"%a" + std::u16string(96, u'x'));
  ExpectTheMistake("texts: text 4 in en-US prints 100 bytes, and 99 are shown.");
}

TEST_F(TextCheck, FilterHintThatJustFitsIsNot) {
  Write(4, u"%a" + std::u16string(95, u'x'));
  EXPECT_EQ(Check(), EFI_SUCCESS);
}

TEST_F(TextCheck, SavedTextWithAStarIsNamed) {
  Write(8, u"%a holds %*a");
  ExpectTheMistake("texts: text 8 in en-US has 3 directives that take an argument. Write 2");
}

TEST_F(TextCheck, EachLanguageIsLookedAt) {
  Host.Strings["de-DE"] = Host.Strings["en-US"];
  Write(4, u"Kategorie", "de-DE");
  ExpectTheMistake("texts: text 4 in de-DE has 0 directives that take an argument.");
}

TEST_F(TextCheck, CloseHintWithAColourIsNamed) {
  Write(3, u"Leave #1");
  ExpectTheMistake("texts: text 3 in en-US holds a #");
}

TEST_F(TextCheck, TextThatIsEmptyIsNamed) {
  Write(13, u"");
  ExpectTheMistake("texts: text 13 in en-US is empty.");
}

// As a low surrogate alone is where the application's conversion ends.
TEST_F(TextCheck, TextThatBreaksOffAtItsStartIsNamed) {
  Write(0, u"\xDC00 title");
  ExpectTheMistake("texts: text 0 in en-US is empty.");
}

TEST_F(TextCheck, TextThatIsMissingInEnglishIsNamed) {
  Host.Strings["en-US"].erase(IdOf(12));
  Host.Strings["en-US"].erase(IdOf(14));
  ExpectTheMistake("texts: 2 of the 15 texts are not there in en-US.");
}

TEST_F(TextCheck, IdentifierThatIsZeroIsNamed) {
  Host.State.StringIds[5] = 0;
  ExpectTheMistake("texts: 1 of the 15 texts are not there in en-US.");
}

TEST_F(TextCheck, TextThatIsMissingElsewhereIsAWarning) {
  Host.Strings["fr-FR"] = Host.Strings["en-US"];
  Host.Strings["fr-FR"].erase(IdOf(14));
  ExpectTheWarning("texts: 1 of the 15 texts are not there in fr-FR: en-US stands in.");
}

TEST_F(TextCheck, PackageWithoutEnglishIsNamed) {
  Host.Strings["de-DE"] = std::move(Host.Strings["en-US"]);
  Host.Strings.erase("en-US");
  ExpectTheMistake("texts: the string package has no en-US");
}

TEST_F(TextCheck, HostWithoutAPackageIsNamed) {
  Host.Strings.clear();
  ExpectTheMistake("texts: no package list has OBV_STRING_PACKAGE_LIST_GUID.");
  // EDK2's library gives back the null that it got for a package list.
  Machine.ForgetProblems();
}

TEST_F(TextCheck, SecondPackageIsAWarning) {
  EFI_HII_HANDLE other = Machine.Hii.AddStrings(fake::kObvStringListGuid, Host.Strings);
  ExpectTheWarning("texts: several package lists have OBV_STRING_PACKAGE_LIST_GUID");
  Machine.Hii.Remove(other);
}

std::string TypesOf(const char *format) {
  Directive directives[4] = {};
  UINTN count = ReadDirectives(format, directives, 4);
  std::string types;
  for (UINTN i = 0; i < count && i < 4; i++) {
    types += directives[i].Type;
  }
  return types + " " + std::to_string(count);
}

TEST(FormatDirectives, AreThoseThatTakeAnArgument) {
  EXPECT_EQ(TypesOf("nothing"), " 0");
  EXPECT_EQ(TypesOf("%% %"), " 0");
  EXPECT_EQ(TypesOf("%q%\n"), " 0");
  EXPECT_EQ(TypesOf("%a%S%s"), "aSs 3");
  EXPECT_EQ(TypesOf("%-5d%+,lu% Lx"), "dux 3");
  EXPECT_EQ(TypesOf("%c%g%t%r%p"), "cgtr 5");
  EXPECT_EQ(TypesOf("%*.*x"), "**x 3");
  EXPECT_EQ(TypesOf("%%a"), " 0");
  EXPECT_EQ(TypesOf("%8.4lx"), "x 1");
  EXPECT_EQ(TypesOf("%a%a%a%a%a"), "aaaa 5");
}

TEST(FormatDirectives, TellHowManyDigitsTheyPrintAtLeast) {
  Directive found[5] = {};
  EXPECT_EQ(ReadDirectives("%.6x %06x %6x %x %08.3x", found, 5), 5u);
  EXPECT_EQ(found[0].LeastWidth, 6u);
  EXPECT_EQ(found[1].LeastWidth, 6u);
  EXPECT_EQ(found[2].LeastWidth, 0u);
  EXPECT_EQ(found[3].LeastWidth, 0u);
  EXPECT_EQ(found[4].LeastWidth, 8u);
}

}  // namespace
}  // namespace hostcheck
