#include "test/unit/host/HostStage.h"

namespace obv_host {
namespace {

class HostSetupSlots : public HostStage {};

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

TEST_F(HostSetupSlots, OptionSearchIsTheSetups) {
  std::vector<UINT8> bytes = BoardParts::Sound().Bytes();
  ASSERT_EQ(Use(bytes), EFI_SUCCESS);
  OBV_COMPONENT *components = nullptr;
  ASSERT_EQ(Parse(&components), EFI_SUCCESS);
  TheHost.Services.FindOption = FindOption;
  Shared->JumpComponentIndex = 1;
  Shared->JumpSearchTokenId = 0xBEEF;
  gSetup = {.Status = EFI_SUCCESS, .Asked = 0};
  EXPECT_EQ(Protocol->FindBiosOption(Protocol), EFI_SUCCESS);
  EXPECT_EQ(gSetup.Asked, 0xBEEF);
  EXPECT_EQ(Log,
            "[Host] Setup shows option 0xBEEF of component 1, FAN 1: form 0x12 of "
            "00000001-0002-0003-0405-060708090A0B\n");
}

TEST_F(HostSetupSlots, OptionThatNoFormsetHasIsNotFound) {
  std::vector<UINT8> bytes = BoardParts::Sound().Bytes();
  ASSERT_EQ(Use(bytes), EFI_SUCCESS);
  OBV_COMPONENT *components = nullptr;
  ASSERT_EQ(Parse(&components), EFI_SUCCESS);
  TheHost.Services.FindOption = FindOption;
  Shared->JumpSearchTokenId = 0xBEEF;
  gSetup = {.Status = EFI_NOT_FOUND, .Asked = 0};
  EXPECT_EQ(Protocol->FindBiosOption(Protocol), EFI_NOT_FOUND);
  EXPECT_NE(Log.find("Option 0xBEEF of component 0"), std::string::npos) << Log;
  EXPECT_NE(Log.find("cannot be shown: Not Found"), std::string::npos) << Log;
}

TEST_F(HostSetupSlots, WithoutASetupTheOptionIsNamed) {
  std::vector<UINT8> bytes = BoardParts::Sound().Bytes();
  ASSERT_EQ(Use(bytes), EFI_SUCCESS);
  OBV_COMPONENT *components = nullptr;
  ASSERT_EQ(Parse(&components), EFI_SUCCESS);
  TheHost.Services.FindOption = FindOption;
  Shared->JumpComponentIndex = 1;
  Shared->JumpSearchTokenId = 0xBEEF;
  gSetup = {.Status = EFI_UNSUPPORTED, .Asked = 0};
  EXPECT_EQ(Protocol->FindBiosOption(Protocol), EFI_SUCCESS);
  EXPECT_EQ(Log, "[Host] Setup would show option 0xBEEF of component 1, FAN 1\n");
}

LookChoice gLook;

TEST_F(HostSetupSlots, LookIsTheUsersAtEachStart) {
  std::vector<UINT8> bytes = BoardParts::Sound().Bytes();
  ASSERT_EQ(Use(bytes), EFI_SUCCESS);
  OBV_CONFIG usual;
  CopyMem(&usual, Shared->Config, sizeof(usual));
  TheHost.Services.ReadLook = [](void *) { return gLook; };
  OBV_COMPONENT *components = nullptr;
  gLook = {.HighContrast = true, .LargeText = true};
  ASSERT_EQ(Parse(&components), EFI_SUCCESS);
  EXPECT_EQ(+Shared->Config->CalloutFont.Size, usual.CalloutFont.Size * 3 / 2);
  EXPECT_STREQ(components[0].DefaultStyle->BackgroundColor, "0,0,0");
  gLook = {};
  ASSERT_EQ(Parse(&components), EFI_SUCCESS);
  EXPECT_EQ(CompareMem(Shared->Config, &usual, sizeof(usual)), 0);
  EXPECT_STRNE(components[0].DefaultStyle->BackgroundColor, "0,0,0");
}

}  // namespace
}  // namespace obv_host
