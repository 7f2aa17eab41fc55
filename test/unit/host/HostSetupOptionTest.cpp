#include <gtest/gtest.h>

#include "test/firmware/FakeFirmware.h"
#include "test/firmware/Run.h"
#include "test/unit/host/HostFormBytes.h"

#include "host/uefi/LookChoice.h"
#include "host/uefi/SetupOption.h"

namespace obv_host {
namespace {

constexpr UINT16 kToken = 0x2501;

/// A setup that takes what the host hands over.
struct FakeSetup {
  OBV_SETUP_PROTOCOL Protocol;
  OBV_SETUP_OPTION Opened;
  int Lacking;  ///< How often it heard that no page has the option.
  EFI_STATUS Answer;
};

EFI_STATUS EFIAPI OpenOption(OBV_SETUP_PROTOCOL *This, CONST OBV_SETUP_OPTION *option) {
  auto *setup = reinterpret_cast<FakeSetup *>(This);
  if (option == nullptr) {
    setup->Lacking++;
    return EFI_SUCCESS;
  }
  setup->Opened = *option;
  return setup->Answer;
}

class HostSetupOption : public testing::Test {
 protected:
  HostSetupOption() { fake::RunLibraryConstructors(Machine); }

  ~HostSetupOption() override {
    EXPECT_EQ(Machine.ProblemsText(), "");
    EXPECT_EQ(Machine.Leftovers(), "");
  }

  void InstallSetup() { Machine.Install(OBV_SETUP_PROTOCOL_GUID, &Setup); }

  /// A formset of one form with one question, as a driver registers it.
  void AddForms(const EFI_GUID &formset, UINT16 form, UINT16 question) {
    Bytes list = FormList(FormSet(formset, Form(form, Question(EFI_IFR_ONE_OF_OP, question))));
    EFI_HII_HANDLE handle = nullptr;
    const auto *header = reinterpret_cast<const EFI_HII_PACKAGE_LIST_HEADER *>(list.data());
    ASSERT_EQ(Machine.Hii.NewPackageList(header, nullptr, &handle), EFI_SUCCESS);
    lists_.push_back(handle);
  }

  void RemoveForms() {
    for (EFI_HII_HANDLE list : lists_) {
      Machine.Hii.Remove(list);
    }
  }

  EFI_STATUS Open(UINT16 token) {
    OBV_SETUP_OPTION option = {};
    return OpenSetupOption(token, &option);
  }

  fake::Firmware Machine;
  FakeSetup Setup = {{OpenOption, kSomeFormSet}, {}, 0, EFI_SUCCESS};

 private:
  std::vector<EFI_HII_HANDLE> lists_;
};

TEST_F(HostSetupOption, WithoutASetupNobodyOpensIt) {
  AddForms(kSomeFormSet, 3, kToken);
  EXPECT_EQ(Open(kToken), EFI_UNSUPPORTED);
  RemoveForms();
}

TEST_F(HostSetupOption, TheSetupGetsTheQuestionsPlace) {
  InstallSetup();
  AddForms(kOtherFormSet, 2, 7);
  AddForms(kSomeFormSet, 3, kToken);
  ASSERT_EQ(Open(kToken), EFI_SUCCESS);
  EXPECT_EQ(Setup.Opened.FormId, 3);
  EXPECT_EQ(Setup.Opened.QuestionId, kToken);
  EXPECT_EQ(CompareMem(&Setup.Opened.FormSet, &kSomeFormSet, sizeof(EFI_GUID)), 0);
  RemoveForms();
}

TEST_F(HostSetupOption, TheSetupsOwnPagesComeFirst) {
  InstallSetup();
  AddForms(kOtherFormSet, 2, kToken);
  AddForms(kSomeFormSet, 3, kToken);
  ASSERT_EQ(Open(kToken), EFI_SUCCESS);
  EXPECT_EQ(Setup.Opened.FormId, 3);
  RemoveForms();
}

TEST_F(HostSetupOption, AnyOtherFormsetCounts) {
  InstallSetup();
  AddForms(kSomeFormSet, 3, 7);
  AddForms(kOtherFormSet, 2, kToken);
  ASSERT_EQ(Open(kToken), EFI_SUCCESS);
  EXPECT_EQ(Setup.Opened.FormId, 2);
  RemoveForms();
}

TEST_F(HostSetupOption, AnOptionThatNoFormsetHasIsNotFoundAndTheSetupHearsOfIt) {
  InstallSetup();
  EXPECT_EQ(Open(kToken), EFI_NOT_FOUND);
  AddForms(kSomeFormSet, 3, 7);
  EXPECT_EQ(Open(kToken), EFI_NOT_FOUND);
  EXPECT_EQ(Setup.Opened.FormId, 0);
  EXPECT_EQ(Setup.Lacking, 2);
  RemoveForms();
}

TEST_F(HostSetupOption, TheSetupsRefusalIsTheAnswer) {
  InstallSetup();
  Setup.Answer = EFI_NOT_READY;
  AddForms(kSomeFormSet, 3, kToken);
  EXPECT_EQ(Open(kToken), EFI_NOT_READY);
  RemoveForms();
}

TEST_F(HostSetupOption, FailingServicesFindNothingAndLeaveNothing) {
  InstallSetup();
  AddForms(kSomeFormSet, 3, kToken);
  for (fake::Service service : {fake::Service::AllocatePool, fake::Service::HiiListPackageLists,
                                fake::Service::HiiExportPackageLists}) {
    for (int call : {1, 2}) {
      Machine.FailCall(service, call, EFI_OUT_OF_RESOURCES);
      EFI_STATUS status = Open(kToken);
      // A second way may lead there.
      EXPECT_TRUE(status == EFI_SUCCESS || status == EFI_NOT_FOUND) << status;
      Machine.Faults.Clear();
    }
  }
  RemoveForms();
}

TEST_F(HostSetupOption, TheLookIsReadFromTheVariable) {
  EXPECT_FALSE(ReadLookChoice().LargeText);
  const OBV_SETUP_LOOK look = {1, OBV_CONTRAST_STANDARD, OBV_LETTERS_LARGE};
  EFI_GUID vendor = OBV_SETUP_VARIABLE_GUID;
  const std::u16string name = u"ObvSetup";
  constexpr UINT32 kAttributes = EFI_VARIABLE_NON_VOLATILE | EFI_VARIABLE_BOOTSERVICE_ACCESS;
  Machine.Variables.Set(reinterpret_cast<const CHAR16 *>(name.c_str()), &vendor, kAttributes,
                        sizeof(look), &look);
  EXPECT_TRUE(ReadLookChoice().LargeText);
  EXPECT_FALSE(ReadLookChoice().HighContrast);
  const std::vector<UINT8> large(OBV_SETUP_VARIABLE_LIMIT + 1, 1);
  Machine.Variables.Set(reinterpret_cast<const CHAR16 *>(name.c_str()), &vendor, kAttributes,
                        large.size(), large.data());
  EXPECT_FALSE(ReadLookChoice().HighContrast);
}

}  // namespace
}  // namespace obv_host
