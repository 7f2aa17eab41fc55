#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "setup/portable/Callback.h"
#include "setup/portable/SelectionRecord.h"

namespace obv_setup {
namespace {

constexpr OBV_SETUP_OPTION kElsewhere = {{1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}}, 0x21, 0x2501};
constexpr OBV_SETUP_OPTION kOwn = {OBV_SETUP_FORMSET_GUID, 0x12, 0x2201};

/// The setup, with the board view as a function of the test.
class CallbackTest : public testing::Test {
 protected:
  CallbackTest() {
    InitializeSetupLink(&Link);
    InitializeSelectionRecord();
  }

  EFI_STATUS Call(EFI_BROWSER_ACTION action, UINT16 question, UINT8 type = EFI_IFR_TYPE_REF) {
    const CallbackServices services = {
        .Context = this,
        .ShowView = ShowView,
        .Tell = Tell,
        .GetLanguage = [](void *context) { return Self(context)->Language; },
        .SetLanguage = SetLanguage,
    };
    return AnswerBrowser(services, &Link,
                         {.Action = action,
                          .Question = question,
                          .Type = type,
                          .Value = &Value,
                          .Request = &Request});
  }

  EFI_STATUS Choose(UINT16 question) { return Call(EFI_BROWSER_ACTION_CHANGING, question); }

  /// What the host does when the user chooses a component.
  EFI_STATUS Jump(const OBV_SETUP_OPTION &option) {
    return Link.Protocol.OpenOption(&Link.Protocol, &option);
  }

  /// What it does when no formset has that component's option.
  EFI_STATUS JumpToNoPage() { return Link.Protocol.OpenOption(&Link.Protocol, nullptr); }

  SetupLink Link;
  std::function<EFI_STATUS(Trouble *)> View = [](Trouble *) { return EFI_SUCCESS; };
  int Visits = 0;
  std::vector<Trouble> Told;
  UINT8 Language = 3;
  EFI_IFR_TYPE_VALUE Value = {};
  EFI_BROWSER_ACTION_REQUEST Request = EFI_BROWSER_ACTION_REQUEST_NONE;

 private:
  static CallbackTest *Self(void *context) { return static_cast<CallbackTest *>(context); }
  static EFI_STATUS ShowView(void *context, Trouble *trouble) {
    Self(context)->Visits++;
    return Self(context)->View(trouble);
  }
  static void Tell(void *context, Trouble trouble) { Self(context)->Told.push_back(trouble); }
  static EFI_STATUS SetLanguage(void *context, UINT8 language) {
    Self(context)->Language = language;
    return EFI_SUCCESS;
  }
};

TEST_F(CallbackTest, AVisitWithoutAJumpStaysOnThePage) {
  EXPECT_EQ(Choose(kViewQuestion), EFI_ABORTED);
  EXPECT_EQ(Visits, 1);
  EXPECT_TRUE(Told.empty());
}

TEST_F(CallbackTest, AJumpIntoThePagesLeadsToFormAndQuestion) {
  View = [this](Trouble *) { return Jump(kOwn); };
  Value.ref.DevicePath = 99;
  ASSERT_EQ(Choose(kViewQuestion), EFI_SUCCESS);
  EXPECT_EQ(+Value.ref.FormId, kOwn.FormId);
  EXPECT_EQ(+Value.ref.QuestionId, kOwn.QuestionId);
  EXPECT_EQ(+Value.ref.DevicePath, 0);
  const EFI_GUID none = {};
  EXPECT_EQ(CompareMem(&Value.ref.FormSetGuid, &none, sizeof(none)), 0);
}

TEST_F(CallbackTest, AJumpElsewhereNamesTheFormset) {
  View = [this](Trouble *) { return Jump(kElsewhere); };
  ASSERT_EQ(Choose(kViewQuestion), EFI_SUCCESS);
  EXPECT_EQ(CompareMem(&Value.ref.FormSetGuid, &kElsewhere.FormSet, sizeof(EFI_GUID)), 0);
  EXPECT_EQ(+Value.ref.FormId, kElsewhere.FormId);
  EXPECT_EQ(+Value.ref.QuestionId, kElsewhere.QuestionId);
}

TEST_F(CallbackTest, AJumpCountsOnce) {
  View = [this](Trouble *) { return Jump(kOwn); };
  ASSERT_EQ(Choose(kViewQuestion), EFI_SUCCESS);
  View = [](Trouble *) { return EFI_SUCCESS; };
  EXPECT_EQ(Choose(kViewQuestion), EFI_ABORTED);
}

TEST_F(CallbackTest, JumpsOutsideOfAVisitAreRefused) {
  EXPECT_EQ(Jump(kOwn), EFI_NOT_READY);
  EXPECT_EQ(Choose(kViewQuestion), EFI_ABORTED);
  EXPECT_EQ(Jump(kOwn), EFI_NOT_READY);
}

TEST_F(CallbackTest, JumpsToNowhereAreRefused) {
  EFI_STATUS answers[2] = {};
  View = [&](Trouble *) {
    answers[0] = Jump({OBV_SETUP_FORMSET_GUID, 0, 1});
    answers[1] = Jump({OBV_SETUP_FORMSET_GUID, 1, 0});
    return EFI_SUCCESS;
  };
  EXPECT_EQ(Choose(kViewQuestion), EFI_ABORTED);
  for (EFI_STATUS answer : answers) {
    EXPECT_EQ(answer, EFI_INVALID_PARAMETER);
  }
}

TEST_F(CallbackTest, AFailedViewIsToldAndStaysOnThePage) {
  View = [this](Trouble *trouble) {
    EXPECT_EQ(Jump(kOwn), EFI_SUCCESS);
    *trouble = Trouble::kNoFile;
    // For the browser this would mean to go on.
    return EFI_UNSUPPORTED;
  };
  EXPECT_EQ(Choose(kViewQuestion), EFI_ABORTED);
  EXPECT_EQ(Told, std::vector<Trouble>{Trouble::kNoFile});
}

TEST_F(CallbackTest, AnOptionOnNoPageIsToldAsThat) {
  View = [this](Trouble *trouble) {
    EXPECT_EQ(JumpToNoPage(), EFI_SUCCESS);
    *trouble = Trouble::kFailed;
    return EFI_NOT_FOUND;
  };
  EXPECT_EQ(Choose(kViewQuestion), EFI_ABORTED);
  EXPECT_EQ(Told, std::vector<Trouble>{Trouble::kNoOption});
}

TEST_F(CallbackTest, AnOptionOnNoPageIsForgottenByTheNextVisit) {
  View = [this](Trouble *) {
    EXPECT_EQ(JumpToNoPage(), EFI_SUCCESS);
    return EFI_SUCCESS;
  };
  EXPECT_EQ(Choose(kViewQuestion), EFI_ABORTED);
  EXPECT_TRUE(Told.empty());
  // As a host without texts ends the view.
  View = [](Trouble *) { return EFI_NOT_FOUND; };
  EXPECT_EQ(Choose(kViewQuestion), EFI_ABORTED);
  EXPECT_EQ(Told, std::vector<Trouble>{Trouble::kFailed});
  EXPECT_EQ(JumpToNoPage(), EFI_NOT_READY);
}

TEST_F(CallbackTest, OnlyTheChoiceOfTheEntryStartsTheView) {
  for (EFI_BROWSER_ACTION action :
       {EFI_BROWSER_ACTION_CHANGED, EFI_BROWSER_ACTION_RETRIEVE, EFI_BROWSER_ACTION_FORM_OPEN,
        EFI_BROWSER_ACTION_FORM_CLOSE, EFI_BROWSER_ACTION_SUBMITTED,
        EFI_BROWSER_ACTION_DEFAULT_STANDARD}) {
    EXPECT_EQ(Call(action, kViewQuestion), EFI_UNSUPPORTED) << action;
    EXPECT_EQ(Call(action, kViewEntries[0].Question), EFI_UNSUPPORTED) << action;
  }
  EXPECT_EQ(Visits, 0);
}

TEST_F(CallbackTest, AnEntryThatIsNoReferenceIsRefused) {
  EXPECT_EQ(Call(EFI_BROWSER_ACTION_CHANGING, kViewQuestion, EFI_IFR_TYPE_NUM_SIZE_8),
            EFI_INVALID_PARAMETER);
  EXPECT_EQ(Visits, 0);
}

TEST_F(CallbackTest, EachComponentsEntrySelectsIt) {
  for (const ViewEntry &entry : kViewEntries) {
    bool seen = false;
    View = [&](Trouble *) {
      seen = gSelectionRecord.IsSet && gSelectionRecord.Selection.Category == entry.Category &&
             gSelectionRecord.Selection.ComponentName[0] == entry.Name[0];
      return EFI_SUCCESS;
    };
    EXPECT_EQ(Choose(entry.Question), EFI_ABORTED);
    EXPECT_TRUE(seen) << entry.Question;
    EXPECT_FALSE(gSelectionRecord.IsSet) << "what the view did not read";
  }
}

TEST_F(CallbackTest, TheMainEntrySelectsNothing) {
  bool selected = true;
  View = [&](Trouble *) {
    selected = gSelectionRecord.IsSet;
    return EFI_SUCCESS;
  };
  SelectComponent(kViewEntries[0]);
  EXPECT_EQ(Choose(kViewQuestion), EFI_ABORTED);
  EXPECT_FALSE(selected);
}

TEST_F(CallbackTest, TheLanguageIsThePlatforms) {
  EXPECT_EQ(Call(EFI_BROWSER_ACTION_RETRIEVE, kLanguageQuestion, EFI_IFR_TYPE_NUM_SIZE_8),
            EFI_SUCCESS);
  EXPECT_EQ(+Value.u8, 3);
  Value.u8 = 0;
  EXPECT_EQ(Call(EFI_BROWSER_ACTION_DEFAULT_STANDARD, kLanguageQuestion, EFI_IFR_TYPE_NUM_SIZE_8),
            EFI_SUCCESS);
  EXPECT_EQ(+Value.u8, 3);
}

TEST_F(CallbackTest, AChosenLanguageCountsAtOnce) {
  Value.u8 = 1;
  EXPECT_EQ(Call(EFI_BROWSER_ACTION_CHANGING, kLanguageQuestion, EFI_IFR_TYPE_NUM_SIZE_8),
            EFI_UNSUPPORTED);
  EXPECT_EQ(Language, 3);
  EXPECT_EQ(Call(EFI_BROWSER_ACTION_CHANGED, kLanguageQuestion, EFI_IFR_TYPE_NUM_SIZE_8),
            EFI_SUCCESS);
  EXPECT_EQ(Language, 1);
}

TEST_F(CallbackTest, LanguagesThatDoNotExistAreRefused) {
  Value.u8 = static_cast<UINT8>(kLanguageCount);
  EXPECT_EQ(Call(EFI_BROWSER_ACTION_CHANGED, kLanguageQuestion, EFI_IFR_TYPE_NUM_SIZE_8),
            EFI_INVALID_PARAMETER);
  EXPECT_EQ(Language, 3);
}

TEST_F(CallbackTest, AChosenLookIsSavedAtOnce) {
  for (UINT16 question : {kContrastQuestion, kTextSizeQuestion}) {
    Request = EFI_BROWSER_ACTION_REQUEST_NONE;
    EXPECT_EQ(Call(EFI_BROWSER_ACTION_CHANGING, question, EFI_IFR_TYPE_NUM_SIZE_8),
              EFI_UNSUPPORTED);
    EXPECT_EQ(Request, EFI_BROWSER_ACTION_REQUEST_NONE);
    EXPECT_EQ(Call(EFI_BROWSER_ACTION_CHANGED, question, EFI_IFR_TYPE_NUM_SIZE_8), EFI_SUCCESS);
    EXPECT_EQ(Request, EFI_BROWSER_ACTION_REQUEST_FORM_APPLY);
  }
}

TEST_F(CallbackTest, OtherQuestionsAreTheBrowsers) {
  EXPECT_EQ(Call(EFI_BROWSER_ACTION_CHANGING, 0x2001, EFI_IFR_TYPE_NUM_SIZE_8), EFI_UNSUPPORTED);
  EXPECT_EQ(Visits, 0);
}

TEST_F(CallbackTest, MissingOutputsAreRefused) {
  const CallbackServices services = {};
  BrowserCall call = {EFI_BROWSER_ACTION_CHANGING, kViewQuestion, EFI_IFR_TYPE_REF, nullptr,
                      &Request};
  EXPECT_EQ(AnswerBrowser(services, &Link, call), EFI_INVALID_PARAMETER);
  call = {EFI_BROWSER_ACTION_CHANGING, kViewQuestion, EFI_IFR_TYPE_REF, &Value, nullptr};
  EXPECT_EQ(AnswerBrowser(services, &Link, call), EFI_INVALID_PARAMETER);
}

}  // namespace
}  // namespace obv_setup
