#include <gtest/gtest.h>

#include "test/unit/host/HostFormBytes.h"

namespace obv_host {
namespace {

constexpr UINT16 kToken = 0x2501;

Bytes SoundList() {
  return FormList(FormSet(kSomeFormSet, Form(7, Question(EFI_IFR_ONE_OF_OP, kToken))));
}

TEST(HostFormSearch, FindsFormsetFormAndQuestion) {
  OBV_SETUP_OPTION option = {};
  ASSERT_TRUE(Find(SoundList(), kToken, &option));
  EXPECT_EQ(CompareMem(&option.FormSet, &kSomeFormSet, sizeof(kSomeFormSet)), 0);
  EXPECT_EQ(option.FormId, 7);
  EXPECT_EQ(option.QuestionId, kToken);
}

TEST(HostFormSearch, OtherNumbersAreNotFound) {
  OBV_SETUP_OPTION option = {};
  EXPECT_FALSE(Find(SoundList(), kToken + 1, &option));
  EXPECT_FALSE(Find(SoundList(), 0, &option));
  EXPECT_FALSE(FindQuestion(nullptr, 100, kToken, nullptr, &option));
}

TEST(HostFormSearch, EveryKindOfQuestionCounts) {
  for (UINT8 code : {EFI_IFR_ONE_OF_OP, EFI_IFR_CHECKBOX_OP, EFI_IFR_NUMERIC_OP,
                     EFI_IFR_PASSWORD_OP, EFI_IFR_ACTION_OP, EFI_IFR_REF_OP, EFI_IFR_DATE_OP,
                     EFI_IFR_TIME_OP, EFI_IFR_STRING_OP, EFI_IFR_ORDERED_LIST_OP}) {
    OBV_SETUP_OPTION option = {};
    EXPECT_TRUE(
        Find(FormList(FormSet(kSomeFormSet, Form(1, Question(code, kToken)))), kToken, &option))
        << int(code);
  }
}

TEST(HostFormSearch, OtherOpcodesWithTheNumberAreNoQuestions) {
  for (UINT8 code : {EFI_IFR_TEXT_OP, EFI_IFR_SUBTITLE_OP, EFI_IFR_VARSTORE_OP,
                     EFI_IFR_RESET_BUTTON_OP, EFI_IFR_EQ_ID_VAL_OP, EFI_IFR_GUID_OP}) {
    OBV_SETUP_OPTION option = {};
    EXPECT_FALSE(
        Find(FormList(FormSet(kSomeFormSet, Form(1, Question(code, kToken)))), kToken, &option))
        << int(code);
  }
}

TEST(HostFormSearch, TheFormAroundTheQuestionIsTheOneThatIsOpen) {
  Bytes forms = Form(1, Question(EFI_IFR_NUMERIC_OP, 5));
  Append(&forms, Form(2, Question(EFI_IFR_NUMERIC_OP, kToken), EFI_IFR_FORM_MAP_OP));
  OBV_SETUP_OPTION option = {};
  ASSERT_TRUE(Find(FormList(FormSet(kSomeFormSet, forms)), kToken, &option));
  EXPECT_EQ(option.FormId, 2);
}

TEST(HostFormSearch, QuestionsInsideOfConditionsAreFound) {
  Bytes inside = Opcode(EFI_IFR_SUPPRESS_IF_OP, {}, true);
  Append(&inside, Opcode(EFI_IFR_TRUE_OP, {}, false));
  Append(&inside, Question(EFI_IFR_CHECKBOX_OP, 4, true));
  Append(&inside, End());
  Append(&inside, Question(EFI_IFR_CHECKBOX_OP, kToken));
  Append(&inside, End());
  OBV_SETUP_OPTION option = {};
  ASSERT_TRUE(Find(FormList(FormSet(kSomeFormSet, Form(3, inside))), kToken, &option));
  EXPECT_EQ(option.FormId, 3);
}

TEST(HostFormSearch, QuestionsOutsideOfAFormLeadNowhere) {
  OBV_SETUP_OPTION option = {};
  EXPECT_FALSE(Find(FormList(Question(EFI_IFR_ONE_OF_OP, kToken)), kToken, &option));
  EXPECT_FALSE(
      Find(FormList(FormSet(kSomeFormSet, Question(EFI_IFR_ONE_OF_OP, kToken))), kToken, &option));
  EXPECT_FALSE(Find(FormList(Form(1, Question(EFI_IFR_ONE_OF_OP, kToken))), kToken, &option));
  Bytes behind = Form(1, {});
  Append(&behind, Question(EFI_IFR_ONE_OF_OP, kToken));
  EXPECT_FALSE(Find(FormList(FormSet(kSomeFormSet, behind)), kToken, &option));
}

TEST(HostFormSearch, AFormsetCanBePreferred) {
  Bytes packages = Package(EFI_HII_PACKAGE_FORMS,
                           FormSet(kSomeFormSet, Form(1, Question(EFI_IFR_ONE_OF_OP, kToken))));
  Append(&packages, Package(EFI_HII_PACKAGE_FORMS,
                            FormSet(kOtherFormSet, Form(2, Question(EFI_IFR_ONE_OF_OP, kToken)))));
  OBV_SETUP_OPTION option = {};
  ASSERT_TRUE(Find(PackageList(packages), kToken, &option));
  EXPECT_EQ(option.FormId, 1);
  ASSERT_TRUE(Find(PackageList(packages), kToken, &option, &kOtherFormSet));
  EXPECT_EQ(option.FormId, 2);
}

TEST(HostFormSearch, PackagesOfOtherTypesAreSkipped) {
  Bytes forms = FormSet(kSomeFormSet, Form(1, Question(EFI_IFR_ONE_OF_OP, kToken)));
  OBV_SETUP_OPTION option = {};
  EXPECT_FALSE(Find(PackageList(Package(EFI_HII_PACKAGE_STRINGS, forms)), kToken, &option));
  Bytes packages = Package(EFI_HII_PACKAGE_STRINGS, Bytes(33));
  Append(&packages, Package(EFI_HII_PACKAGE_FORMS, forms));
  EXPECT_TRUE(Find(PackageList(packages), kToken, &option));
}

TEST(HostFormSearch, WhatIsBehindTheEndIsNotRead) {
  Bytes packages = Package(EFI_HII_PACKAGE_END, {});
  Append(&packages, Package(EFI_HII_PACKAGE_FORMS,
                            FormSet(kSomeFormSet, Form(1, Question(EFI_IFR_ONE_OF_OP, kToken)))));
  OBV_SETUP_OPTION option = {};
  EXPECT_FALSE(Find(PackageList(packages), kToken, &option));
}

TEST(HostFormSearch, EveryCutListIsSurvived) {
  const Bytes whole = SoundList();
  for (size_t size = 0; size < whole.size(); size++) {
    OBV_SETUP_OPTION option = {};
    EXPECT_FALSE(
        Find(Bytes(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(size)), kToken, &option))
        << size;
  }
}

// The sanitizers watch; what is found must be the question whose number stands there.
TEST(HostFormSearch, EveryByteMayLie) {
  const Bytes whole = SoundList();
  for (size_t place = 0; place < whole.size(); place++) {
    for (int value = 0; value < 256; value++) {
      Bytes bytes = whole;
      bytes[place] = static_cast<uint8_t>(value);
      OBV_SETUP_OPTION option = {};
      if (Find(bytes, kToken, &option)) {
        EXPECT_EQ(option.QuestionId, kToken);
        EXPECT_NE(option.FormId, 0);
      }
    }
  }
}

TEST(HostFormSearch, OpcodesWithoutALengthEndTheSearch) {
  Bytes forms = {EFI_IFR_TEXT_OP, 0};
  Append(&forms, FormSet(kSomeFormSet, Form(1, Question(EFI_IFR_ONE_OF_OP, kToken))));
  OBV_SETUP_OPTION option = {};
  EXPECT_FALSE(Find(FormList(forms), kToken, &option));
}

TEST(HostFormSearch, TooManyEndsEndTheSearch) {
  Bytes forms = End();
  Append(&forms, FormSet(kSomeFormSet, Form(1, Question(EFI_IFR_ONE_OF_OP, kToken))));
  OBV_SETUP_OPTION option = {};
  EXPECT_FALSE(Find(FormList(forms), kToken, &option));
}

/// A question below so many conditions, all of them closed.
Bytes Nested(size_t conditions) {
  Bytes inside;
  for (size_t i = 0; i < conditions; i++) {
    Append(&inside, Opcode(EFI_IFR_SUPPRESS_IF_OP, {}, true));
  }
  Append(&inside, Question(EFI_IFR_ONE_OF_OP, kToken));
  for (size_t i = 0; i < conditions; i++) {
    Append(&inside, End());
  }
  return FormList(FormSet(kSomeFormSet, Form(1, inside)));
}

TEST(HostFormSearch, NestingHasALimit) {
  OBV_SETUP_OPTION option = {};
  EXPECT_TRUE(Find(Nested(kFormDepthLimit - 2), kToken, &option));
  EXPECT_FALSE(Find(Nested(kFormDepthLimit - 1), kToken, &option));
}

TEST(HostFormSearch, ShortQuestionsHaveNoNumber) {
  Bytes cut = Opcode(EFI_IFR_ONE_OF_OP, {0, 0, 0, 0, 0x01, 0x25}, false);
  OBV_SETUP_OPTION option = {};
  EXPECT_FALSE(Find(FormList(FormSet(kSomeFormSet, Form(1, cut))), kToken, &option));
}

}  // namespace
}  // namespace obv_host
