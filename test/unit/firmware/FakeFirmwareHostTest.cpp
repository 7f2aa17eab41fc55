#include <gtest/gtest.h>

#include "test/firmware/SetupEventHandler.h"
#include "test/firmware/TestHost.h"

namespace fake {
namespace {

class FakeFirmwareHost : public testing::Test {
 protected:
  FakeFirmwareHost() { Host.Install(); }
  Firmware Machine;
  GraphicsOutput &Output = Machine.AddOutput();
  TestHost Host{Machine};
  OBV_PROTOCOL &Slots = Host.Protocol();
};

TEST_F(FakeFirmwareHost, IsLocatedWithItsState) {
  VOID *found = nullptr;
  EFI_GUID guid = kObvProtocolGuid;
  ASSERT_EQ(Machine.BootServices.LocateProtocol(&guid, nullptr, &found), EFI_SUCCESS);
  EXPECT_EQ(found, &Slots);
  EXPECT_EQ(Slots.SharedState->Gop, Output.Protocol());
  EXPECT_EQ(Machine.Hii.ListCount(), 1u);
  Host.Uninstall();
  EXPECT_EQ(Machine.BootServices.LocateProtocol(&guid, nullptr, &found), EFI_NOT_FOUND);
  EXPECT_EQ(Machine.Hii.ListCount(), 0u);
}

TEST_F(FakeFirmwareHost, LogIsFormattedByTheFirmwaresPrintLibrary) {
  std::vector<CHAR16> name = ToFirmware(u"DIMM");
  Slots.DebugPrint(OBV_LOG_ERROR, "[%a] %r %S 0x%X %d\n", "Name", EFI_NOT_FOUND, name.data(),
                   0xBEEF, -3);
  ASSERT_EQ(Host.Log.size(), 1u);
  EXPECT_EQ(Host.Log[0], (LogLine{OBV_LOG_ERROR, "[Name] Not Found DIMM 0xBEEF -3\n"}));
  EXPECT_EQ(Machine.Calls.Of({Service::HostDebugPrint}).size(), 1u);
  EXPECT_EQ(Host.LogTexts(OBV_LOG_INFO).size(), 0u);
}

TEST_F(FakeFirmwareHost, ClockMovesPerLook) {
  Machine.Clock.SetMilliseconds(100);
  Machine.Clock.StepPerLook = 7;
  EXPECT_EQ(Slots.GetTime(&Slots), 107u);
  EXPECT_EQ(Slots.GetTime(&Slots), 114u);
}

TEST_F(FakeFirmwareHost, ParsesAndScalesComponents) {
  OBV_COMPONENT *components = nullptr;
  INT16 x = Host.Components[0].CalloutX;
  ASSERT_EQ(Slots.ParseComponents(&Slots, &components, 108, 192, 768, 1024, 0.75, 0.7, 0.8),
            EFI_SUCCESS);
  EXPECT_EQ(Host.State.ComponentCount, Host.Components.size());
  EXPECT_EQ(components[0].CalloutX, static_cast<INT16>(x * 0.7));
  ASSERT_TRUE(Host.Parsed);
  EXPECT_EQ(Host.Parsed->ViewWidth, 1024);
  EXPECT_EQ(Host.Parsed->Share, 0.75);
}

TEST_F(FakeFirmwareHost, AnswersPerComponent) {
  std::vector<OBV_COMPONENT_INFO> info(20);
  UINT64 count = 99;
  Host.Answers[u"X"] = {EFI_SUCCESS, {{u"Label", u"Value", 1}}, {EFI_NOT_READY}};
  std::vector<CHAR16> name = ToFirmware(u"X");
  EXPECT_EQ(Slots.QueryComponentStatus(&Slots, name.data(), 1, 20, &count, info.data()),
            EFI_NOT_READY);
  EXPECT_EQ(Slots.QueryComponentStatus(&Slots, name.data(), 1, 20, &count, info.data()),
            EFI_SUCCESS);
  EXPECT_EQ(count, 1u);
  EXPECT_EQ(info[0].Kind, 1u);
  EXPECT_EQ(ToAscii(info[0].Value), "Value");
}

TEST_F(FakeFirmwareHost, SlotsCanBeReplacedAndPlannedToFail) {
  Host.OnFindBiosOption = [] { return EFI_ABORTED; };
  EXPECT_EQ(Slots.FindBiosOption(&Slots), EFI_ABORTED);
  Machine.FailCall(Service::HostFindBiosOption, 1, EFI_NO_RESPONSE);
  EXPECT_EQ(Slots.FindBiosOption(&Slots), EFI_NO_RESPONSE);
  CHAR8 *fontName = nullptr;
  VOID *data = nullptr;
  UINTN size = 0;
  EXPECT_EQ(Slots.GetFontData(&Slots, 1, &fontName, &data, &size), EFI_SUCCESS);
  EXPECT_STREQ(fontName, "DroidSans");
  Host.Fonts[1].File.clear();
  EXPECT_EQ(Slots.GetFontData(&Slots, 1, &fontName, &data, &size), EFI_NOT_FOUND);
  EXPECT_EQ(Slots.GetFontData(&Slots, 3, &fontName, &data, &size), EFI_INVALID_PARAMETER);
}

TEST_F(FakeFirmwareHost, PictureIsAPngFile) {
  VOID *data = nullptr;
  UINTN size = 0;
  ASSERT_EQ(Slots.GetResourceData(&Slots, &data, &size), EFI_SUCCESS);
  ASSERT_GT(size, 24u);
  const auto *bytes = static_cast<const uint8_t *>(data);
  EXPECT_EQ(std::string(bytes + 1, bytes + 4), "PNG");
  EXPECT_EQ(bytes[18] << 8 | bytes[19], 192);
  EXPECT_EQ(bytes[22] << 8 | bytes[23], 108);
}

TEST_F(FakeFirmwareHost, SetupHandlerAnswersItsScript) {
  SetupEventHandler handler(Machine);
  handler.Install();
  handler.Select(3, u"SATA_1");
  VOID *found = nullptr;
  EFI_GUID guid = kSetupEventHandlerGuid;
  ASSERT_EQ(Machine.BootServices.LocateProtocol(&guid, nullptr, &found), EFI_SUCCESS);
  VELT_SETUP_EVENT_HANDLER_PROTOCOL protocol;
  std::memcpy(&protocol, found, sizeof protocol);
  CHAR8 key[24] = "Cairnledger";
  UINT8 reserved[24] = {};
  UINT32 type = 0;
  UINT32 size = 0;
  uint8_t data[104] = {};
  EXPECT_EQ(protocol.GetEventData(key, reserved, &type, &size, data), EFI_SUCCESS);
  EXPECT_EQ(type, 7u);
  EXPECT_EQ(size, 42u);
  EXPECT_EQ(data[0], 3);
  EXPECT_EQ(data[2], 'S');
  EXPECT_EQ(protocol.EndEventData(), EFI_SUCCESS);
  ASSERT_EQ(handler.Requests.size(), 1u);
  EXPECT_EQ(handler.Requests[0].Key, std::string("Cairnledger") + std::string(13, '\0'));
  EXPECT_TRUE(handler.Requests[0].DataWasZero);
  EXPECT_EQ(handler.EndCount, 1u);
}

}  // namespace
}  // namespace fake
