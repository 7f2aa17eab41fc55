#include "test/unit/host/HostStage.h"

namespace obv_host {
namespace {

/// What the setup says to the host, and what the host asked it for.
struct SetupAnswer {
  EFI_STATUS Status;
  UINT16 Asked;
};
SetupAnswer gSetup;

EFI_STATUS FindOption(void *, UINT16 token, OBV_SETUP_OPTION *option) {
  gSetup.Asked = token;
  *option = {{1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}}, 0x12, token};
  return gSetup.Status;
}

class HostSetupSlots : public HostStage {
 protected:
  void SetUp() override {
    HostStage::SetUp();
    ASSERT_EQ(Use(bytes_), EFI_SUCCESS);
    ASSERT_EQ(Parse(&Components), EFI_SUCCESS);
  }

  /// The user chose this component; the setup answers with the status.
  EFI_STATUS Jump(UINT16 component, EFI_STATUS answer) {
    TheHost.Services.FindOption = FindOption;
    Shared->JumpComponentIndex = component;
    Shared->JumpSearchTokenId = 0xBEEF;
    gSetup = {.Status = answer, .Asked = 0};
    return Protocol->FindBiosOption(Protocol);
  }

  OBV_COMPONENT *Components = nullptr;

 private:
  const std::vector<UINT8> bytes_ = BoardParts::Sound().Bytes();
};

TEST_F(HostSetupSlots, OptionSearchIsTheSetups) {
  EXPECT_EQ(Jump(1, EFI_SUCCESS), EFI_SUCCESS);
  EXPECT_EQ(gSetup.Asked, 0xBEEF);
  EXPECT_EQ(Log,
            "[Host] Setup shows option 0xBEEF of component 1, FAN 1: form 0x12 of "
            "00000001-0002-0003-0405-060708090A0B\n");
}

TEST_F(HostSetupSlots, OptionThatNoFormsetHasIsNotFound) {
  EXPECT_EQ(Jump(0, EFI_NOT_FOUND), EFI_NOT_FOUND);
  EXPECT_NE(Log.find("Option 0xBEEF of component 0"), std::string::npos) << Log;
  EXPECT_NE(Log.find("cannot be shown: Not Found"), std::string::npos) << Log;
}

TEST_F(HostSetupSlots, WithoutASetupTheOptionIsNamed) {
  EXPECT_EQ(Jump(1, EFI_UNSUPPORTED), EFI_SUCCESS);
  EXPECT_EQ(Log, "[Host] Setup would show option 0xBEEF of component 1, FAN 1\n");
}

LookChoice gLook;

TEST_F(HostSetupSlots, LookIsTheUsersAtEachStart) {
  OBV_CONFIG usual;
  CopyMem(&usual, Shared->Config, sizeof(usual));
  TheHost.Services.ReadLook = [](void *) { return gLook; };
  gLook = {.HighContrast = true, .LargeText = true};
  ASSERT_EQ(Parse(&Components), EFI_SUCCESS);
  EXPECT_EQ(+Shared->Config->CalloutFont.Size, usual.CalloutFont.Size * 3 / 2);
  EXPECT_STREQ(Components[0].DefaultStyle->BackgroundColor, "0,0,0");
  gLook = {};
  ASSERT_EQ(Parse(&Components), EFI_SUCCESS);
  EXPECT_EQ(CompareMem(Shared->Config, &usual, sizeof(usual)), 0);
  EXPECT_STRNE(Components[0].DefaultStyle->BackgroundColor, "0,0,0");
}

}  // namespace
}  // namespace obv_host
