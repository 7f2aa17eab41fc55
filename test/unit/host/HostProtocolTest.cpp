#include "test/unit/host/HostProtocolStage.h"

namespace obv_host {
namespace {

TEST_F(HostProtocol, EveryUsedSlotIsThere) {
  EXPECT_NE(Protocol->GetTime, nullptr);
  EXPECT_NE(Protocol->ParseComponents, nullptr);
  EXPECT_NE(Protocol->FinishParse, nullptr);
  EXPECT_NE(Protocol->GetResourceData, nullptr);
  EXPECT_NE(Protocol->GetFontData, nullptr);
  EXPECT_NE(Protocol->GetGop, nullptr);
  EXPECT_NE(Protocol->QueryComponentStatus, nullptr);
  EXPECT_NE(Protocol->DebugPrint, nullptr);
  EXPECT_NE(Protocol->FindBiosOption, nullptr);
  EXPECT_NE(Protocol->AfterAppLife, nullptr);
  EXPECT_NE(Protocol->UnsupportedResolution, nullptr);
  EXPECT_EQ(Protocol->Unused6, nullptr);
  EXPECT_EQ(Protocol->Unused8, nullptr);
  EXPECT_EQ(Protocol->Unused10, nullptr);
  EXPECT_EQ(Protocol->Unused11, nullptr);
  ASSERT_NE(Shared, nullptr);
}

TEST_F(HostProtocol, SharedStateIsReadyForAFirstRun) {
  EXPECT_EQ(Shared->JumpRequested, 0);
  EXPECT_EQ(Shared->UiStateSaved, 0);
  EXPECT_EQ(Shared->FocusIndex, 0);
  EXPECT_EQ(Shared->SelectedCategory, 0U);
  EXPECT_EQ(Shared->Gop, nullptr);
  EXPECT_EQ(Shared->Config, &TheHost.Config);
  EXPECT_STREQ(Shared->ViewColorText, kCloseFocusColor);
  for (UINTN i = 0; i < OBV_STRING_COUNT; i++) {
    EXPECT_EQ(Shared->StringIds[i], TextId(i));
  }
}

TEST_F(HostProtocol, ClockAndOutputComeFromTheServices) {
  Now = 4711;
  EXPECT_EQ(Protocol->GetTime(Protocol), 4711U);
  EFI_GRAPHICS_OUTPUT_PROTOCOL *gop = nullptr;
  EXPECT_EQ(Protocol->GetGop(Protocol, &gop), EFI_SUCCESS);
  EXPECT_EQ(gop, &Gop);
  EXPECT_EQ(Protocol->GetGop(Protocol, nullptr), EFI_INVALID_PARAMETER);
}

TEST_F(HostProtocol, WithoutABoardNothingIsHandedOut) {
  OBV_COMPONENT *components = nullptr;
  VOID *data = nullptr;
  UINTN size = 0;
  EXPECT_EQ(Parse(&components), EFI_NOT_READY);
  EXPECT_EQ(Protocol->GetResourceData(Protocol, &data, &size), EFI_NOT_READY);
  EXPECT_EQ(components, nullptr);
  EXPECT_EQ(data, nullptr);
}

TEST_F(HostProtocol, BoardIsPublished) {
  BoardParts parts = BoardParts::Sound();
  parts.Header.Logo = OBV_LOGO_C;
  parts.Header.MarkerTheme = OBV_MARKER_AMBER;
  PutText(parts.Header.SystemInfo[1], u"Graphics");
  std::vector<UINT8> bytes = parts.Bytes();
  ASSERT_EQ(Use(bytes), EFI_SUCCESS);
  EXPECT_EQ(Log, "");
  EXPECT_EQ(Shared->Config->Logo, OBV_LOGO_C);
  EXPECT_EQ(Shared->Config->MarkerTheme, OBV_MARKER_AMBER);
  EXPECT_EQ(StrCmp(Shared->SystemInfo[1], Ucs2(u"Graphics")), 0);

  VOID *data = nullptr;
  UINTN size = 0;
  ASSERT_EQ(Protocol->GetResourceData(Protocol, &data, &size), EFI_SUCCESS);
  EXPECT_EQ(data, bytes.data() + bytes.size() - size);
  EXPECT_EQ(size, parts.Picture.size());
}

TEST_F(HostProtocol, ParseFillsTheArrayAndTheCount) {
  std::vector<UINT8> bytes = BoardParts::Sound().Bytes();
  ASSERT_EQ(Use(bytes), EFI_SUCCESS);
  OBV_COMPONENT *components = nullptr;
  ASSERT_EQ(Parse(&components), EFI_SUCCESS);
  EXPECT_EQ(Shared->ComponentCount, 2);
  EXPECT_EQ(StrCmp(components[1].Name, Ucs2(u"FAN 1")), 0);
  EXPECT_STREQ(components[1].DefaultStyle->TextColor, "1,2,3");
  EXPECT_EQ(Protocol->FinishParse(Protocol), EFI_SUCCESS);
  EXPECT_EQ(Log, "[Host] Board \"Parts\", 2 components\n");
  EXPECT_EQ(Parse(nullptr), EFI_INVALID_PARAMETER);
}

TEST_F(HostProtocol, SecondRunStartsFromTheDescriptionAgain) {
  std::vector<UINT8> bytes = BoardParts::Sound().Bytes();
  ASSERT_EQ(Use(bytes), EFI_SUCCESS);
  OBV_COMPONENT *components = nullptr;
  ASSERT_EQ(Parse(&components), EFI_SUCCESS);
  components[0].NotReady = 1;
  components[0].InfoCount = 3;
  components[0].CalloutX = -5;
  OBV_COMPONENT *again = nullptr;
  ASSERT_EQ(Parse(&again), EFI_SUCCESS);
  EXPECT_EQ(again, components);
  EXPECT_EQ(again[0].NotReady, 0);
  EXPECT_EQ(again[0].InfoCount, 0U);
  EXPECT_NE(again[0].CalloutX, -5);
}

TEST_F(HostProtocol, AnotherBoardStartsWithoutComponents) {
  std::vector<UINT8> bytes = BoardParts::Sound().Bytes();
  ASSERT_EQ(Use(bytes), EFI_SUCCESS);
  OBV_COMPONENT *components = nullptr;
  ASSERT_EQ(Parse(&components), EFI_SUCCESS);
  ASSERT_EQ(Use(bytes), EFI_SUCCESS);
  EXPECT_EQ(Shared->ComponentCount, 0);
}

TEST_F(HostProtocol, StatusQueryFillsTheRecord) {
  std::vector<UINT8> bytes = BoardParts::Sound().Bytes();
  ASSERT_EQ(Use(bytes), EFI_SUCCESS);
  OBV_COMPONENT *components = nullptr;
  ASSERT_EQ(Parse(&components), EFI_SUCCESS);
  OBV_COMPONENT &cpu = components[0];
  EXPECT_EQ(Protocol->QueryComponentStatus(Protocol, cpu.Name, cpu.Type, OBV_INFO_CAPACITY,
                                           &cpu.InfoCount, cpu.Info),
            EFI_SUCCESS);
  EXPECT_EQ(cpu.InfoCount, 2U);
}

TEST_F(HostProtocol, RefusedBoardIsOneLogLineAndThePreviousBoardStays) {
  std::vector<UINT8> sound = BoardParts::Sound().Bytes();
  ASSERT_EQ(Use(sound), EFI_SUCCESS);
  BoardParts parts = BoardParts::Sound();
  parts.Components[1].VertexCount = 21;
  EXPECT_EQ(Use(parts.Bytes()), EFI_COMPROMISED_DATA);
  EXPECT_EQ(Log, "[Host] test board refused: component 1: 21 vertices, 3 to 20 are allowed\n");
  OBV_COMPONENT *components = nullptr;
  EXPECT_EQ(Parse(&components), EFI_SUCCESS);
}

TEST_F(HostProtocol, EachFailingAllocationLeavesThePreviousBoard) {
  std::vector<UINT8> sound = BoardParts::Sound().Bytes();
  ASSERT_EQ(Use(sound), EFI_SUCCESS);
  for (int allowed : {0, 1}) {
    Log.clear();
    AllocationsLeft = allowed;
    EXPECT_EQ(Use(sound), EFI_OUT_OF_RESOURCES);
    EXPECT_EQ(Log, "[Host] test board refused: not enough memory\n");
    OBV_COMPONENT *components = nullptr;
    EXPECT_EQ(Parse(&components), EFI_SUCCESS);
  }
}

TEST_F(HostProtocol, BoardWithoutComponentsParses) {
  BoardParts parts = BoardParts::Sound();
  parts.Components.clear();
  parts.Infos.clear();
  parts.Styles.clear();
  std::vector<UINT8> bytes = parts.Bytes();
  ASSERT_EQ(Use(bytes), EFI_SUCCESS);
  OBV_COMPONENT *components = nullptr;
  EXPECT_EQ(Parse(&components), EFI_SUCCESS);
  EXPECT_EQ(Shared->ComponentCount, 0);
}

TEST_F(HostProtocol, FontsByIndex) {
  CHAR8 *name = nullptr;
  VOID *data = nullptr;
  UINTN size = 0;
  ASSERT_EQ(Protocol->GetFontData(Protocol, 0, &name, &data, &size), EFI_SUCCESS);
  EXPECT_STREQ(name, "DroidSans");
  EXPECT_EQ(size, 5U);
  ASSERT_EQ(Protocol->GetFontData(Protocol, 2, &name, &data, &size), EFI_SUCCESS);
  EXPECT_STREQ(name, "DroidSansBold");
  EXPECT_EQ(Protocol->GetFontData(Protocol, 1, &name, &data, &size), EFI_NOT_FOUND);
  EXPECT_EQ(Protocol->GetFontData(Protocol, 3, &name, &data, &size), EFI_NOT_FOUND);
  EXPECT_EQ(Protocol->GetFontData(Protocol, 0, nullptr, &data, &size), EFI_INVALID_PARAMETER);
}

TEST_F(HostProtocol, LogIsOneLinePerCall) {
  Protocol->DebugPrint(OBV_LOG_INFO, "[%a] %d %S %r\n", "Name", 7, u"wide", EFI_NOT_FOUND);
  Protocol->DebugPrint(OBV_LOG_ERROR, "no end");
  Protocol->DebugPrint(OBV_LOG_ERROR, "");
  EXPECT_EQ(Log, "[Name] 7 wide Not Found\nno end\n\n");
}

TEST_F(HostProtocol, LongLogMessageIsCutAndStillEnds) {
  std::string text(5000, 'x');
  Protocol->DebugPrint(OBV_LOG_INFO, "%a\n", text.c_str());
  EXPECT_EQ(Log.size(), kLogLineSize - 1);
  EXPECT_EQ(Log.back(), '\n');
  EXPECT_EQ(Log.find('\n'), Log.size() - 1);
}

TEST_F(HostProtocol, OptionSearchNamesTheOption) {
  std::vector<UINT8> bytes = BoardParts::Sound().Bytes();
  ASSERT_EQ(Use(bytes), EFI_SUCCESS);
  OBV_COMPONENT *components = nullptr;
  ASSERT_EQ(Parse(&components), EFI_SUCCESS);
  Shared->JumpComponentIndex = 1;
  Shared->JumpSearchTokenId = 0xBEEF;
  EXPECT_EQ(Protocol->FindBiosOption(Protocol), EFI_SUCCESS);
  EXPECT_EQ(Log, "[Host] Setup would show option 0xBEEF of component 1, FAN 1\n");
  Shared->JumpComponentIndex = 2;
  EXPECT_EQ(Protocol->FindBiosOption(Protocol), EFI_NOT_FOUND);
}

TEST_F(HostProtocol, EndOfLifeHooksAreLogged) {
  Shared->JumpRequested = 1;
  Shared->FocusIndex = 12;
  Shared->SelectedCategory = 8;
  Shared->PointerX = 640;
  Shared->PointerY = 480;
  EXPECT_EQ(Protocol->AfterAppLife(Protocol), EFI_SUCCESS);
  EXPECT_EQ(Protocol->UnsupportedResolution(Protocol), EFI_SUCCESS);
  EXPECT_EQ(Log,
            "[Host] Application ended: jump 1, focus 12, category 8, pointer 640 480\n"
            "[Host] No display mode suits the view\n");
}

TEST_F(HostProtocol, ReleasedHostLogsNothing) {
  OBV_DEBUG_PRINT print = Protocol->DebugPrint;
  ReleaseHost(&TheHost);
  print(OBV_LOG_ERROR, "too late\n");
  EXPECT_EQ(Log, "");
  SetUp();
}

}  // namespace
}  // namespace obv_host
