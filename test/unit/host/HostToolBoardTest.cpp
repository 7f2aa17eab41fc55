#include <fstream>
#include <iterator>

#include "test/unit/host/HostBoardBytes.h"

namespace obv_host {
namespace {

/// The board that tool/tests builds from test/data/board/board.yaml and
/// compares with this committed file: here its reader shows that both sides
/// mean the same layout.
class HostToolBoard : public testing::Test {
 protected:
  void SetUp() override {
    std::ifstream file(BOARDSCOPE_SOURCE_DIR "/test/data/board/board.bin", std::ios::binary);
    bytes_.assign(std::istreambuf_iterator<char>(file), {});
    BoardFault fault;
    ASSERT_EQ(OpenBoard(bytes_.data(), bytes_.size(), &TheBoard, &fault), EFI_SUCCESS)
        << fault.Text;
  }

  static std::u16string Text(const void *field) {
    std::u16string text;
    const UINT8 *bytes = static_cast<const UINT8 *>(field);
    for (size_t i = 0; bytes[i] != 0 || bytes[i + 1] != 0; i += 2) {
      text += static_cast<char16_t>(bytes[i] | bytes[i + 1] << 8);
    }
    return text;
  }

  Board TheBoard;

 private:
  std::vector<char> bytes_;
};

TEST_F(HostToolBoard, Header) {
  EXPECT_EQ(Text(TheBoard.Header.Title), u"Test board");
  EXPECT_EQ(TheBoard.Header.Logo, OBV_LOGO_B);
  EXPECT_EQ(TheBoard.Header.MarkerTheme, OBV_MARKER_AMBER);
  EXPECT_EQ(+TheBoard.Header.PictureWidth, 320);
  EXPECT_EQ(+TheBoard.Header.PictureHeight, 180);
  EXPECT_EQ(Text(TheBoard.Header.SystemInfo[0]), u"2026-11-21");
  EXPECT_EQ(Text(TheBoard.Header.SystemInfo[1]), u"Integrated graphics");
  EXPECT_EQ(Text(TheBoard.Header.SystemInfo[6]), u"");
}

TEST_F(HostToolBoard, Styles) {
  ASSERT_EQ(+TheBoard.Header.StyleCount, 2);
  BoardStyle normal = StyleAt(TheBoard, 0);
  EXPECT_STREQ(normal.Default.TextColor, "220,220,220");
  EXPECT_STREQ(normal.Default.BackgroundColor, "60,60,60");
  EXPECT_STREQ(normal.Default.MarkColor, "255,180,0");
  EXPECT_STREQ(normal.Default.BorderColor, "120,120,120");
  EXPECT_EQ(normal.Default.BorderWidth, 1);
  EXPECT_EQ(normal.Default.CornerRadius, 3);
  EXPECT_STREQ(StyleAt(TheBoard, 1).Focus.BackgroundColor, "255,255,255");
  EXPECT_EQ(StyleAt(TheBoard, 1).Focus.BorderWidth, 0);
}

TEST_F(HostToolBoard, Processor) {
  ASSERT_EQ(+TheBoard.Header.ComponentCount, 4);
  BoardComponent cpu = ComponentAt(TheBoard, 0);
  EXPECT_EQ(Text(cpu.Name), u"CPU");
  EXPECT_EQ(cpu.Type, OBV_TYPE_PROCESSOR);
  EXPECT_EQ(cpu.CalloutSide, OBV_CALLOUT_BOTTOM);
  EXPECT_EQ(cpu.TextAlign, OBV_TEXT_CENTER);
  EXPECT_EQ(cpu.Flags, 0);
  EXPECT_EQ(+cpu.SearchTokenId, 0x1001);
  ASSERT_EQ(cpu.VertexCount, 4);
  EXPECT_EQ(+cpu.Vertices[2].X, 150);
  EXPECT_EQ(+cpu.Vertices[2].Y, 90);
  ASSERT_EQ(cpu.LeaderPointCount, 2);
  EXPECT_EQ(+cpu.LeaderPoints[1].X, 125);
  EXPECT_EQ(+cpu.LeaderPoints[1].Y, 15);
  EXPECT_EQ(+cpu.Marker.X, 127);
  EXPECT_EQ(+cpu.Marker.Y, 43);
  ASSERT_EQ(cpu.InfoCount, 3);
  OBV_COMPONENT_INFO info;
  CopyInfoAt(TheBoard, cpu.FirstInfo + 2, &info);
  EXPECT_EQ(info.Kind, static_cast<UINT32>(OBV_INFO_SIDE_LIST));
  EXPECT_EQ(Text(info.Label), u"Cores");
  EXPECT_EQ(Text(info.Value), u"8");
}

TEST_F(HostToolBoard, OtherComponents) {
  BoardComponent usb = ComponentAt(TheBoard, 1);
  EXPECT_EQ(usb.Flags, kBoardNotSelectable | kBoardInSpecialGroup);
  EXPECT_EQ(usb.Status, kStatusDeviceError);
  EXPECT_EQ(+usb.StyleIndex, 1);
  EXPECT_EQ(usb.CalloutSide, OBV_CALLOUT_KEEP);
  EXPECT_EQ(usb.TextAlign, OBV_TEXT_LEFT);
  EXPECT_EQ(usb.InfoCount, 0);

  BoardComponent slot = ComponentAt(TheBoard, 3);
  EXPECT_EQ(Text(slot.Name), u"M.2 slot");
  EXPECT_EQ(+slot.SearchTokenId, 0);
  EXPECT_EQ(slot.Status, kStatusNoMapping);
  OBV_COMPONENT_INFO info;
  CopyInfoAt(TheBoard, slot.FirstInfo, &info);
  EXPECT_EQ(Text(info.Label), u"");
  EXPECT_EQ(Text(info.Value), u"Size 2280, key M");
}

TEST_F(HostToolBoard, HardwareNames) {
  BoardComponent memory = ComponentAt(TheBoard, 2);
  ASSERT_EQ(+memory.HardwareCount, 3);
  EXPECT_EQ(+memory.FirstHardware, 0U);
  EXPECT_EQ(+ComponentAt(TheBoard, 3).HardwareCount, 0);
  EXPECT_EQ(+TheBoard.Header.HardwareCount, 3);

  BoardHardware needed = HardwareAt(TheBoard, 0);
  EXPECT_EQ(+needed.Kind, kHardwareNeedsProcessor);
  EXPECT_STREQ(reinterpret_cast<const char *>(needed.Name), "Example");
  BoardHardware module = HardwareAt(TheBoard, 1);
  EXPECT_EQ(+module.Kind, kHardwareMemory);
  EXPECT_STREQ(reinterpret_cast<const char *>(module.Name), "DIMM 0");
  EXPECT_STREQ(module.Bank, "BANK 0");

  BoardHardware slot = HardwareAt(TheBoard, 2);
  EXPECT_EQ(+slot.Kind, kHardwarePcie);
  const UINT8 path[] = {2, 1, 12, 0, 0xD0, 0x41, 3,    0x0A, 0,    0, 0,
                        0, 1, 1,  6, 0,    2,    0x1C, 0x7F, 0xFF, 4, 0};
  EXPECT_EQ(std::memcmp(slot.Name, path, sizeof(path)), 0);
}

}  // namespace
}  // namespace obv_host
