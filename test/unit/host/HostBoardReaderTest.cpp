#include <functional>

#include "test/unit/host/HostBoardBytes.h"

namespace obv_host {
namespace {

/// Opens a copy at an odd address: files embedded in an image have any alignment.
std::string FaultOf(const std::vector<UINT8> &bytes) {
  std::vector<UINT8> shifted(bytes.size() + 1);
  std::copy(bytes.begin(), bytes.end(), shifted.begin() + 1);
  Board board;
  BoardFault fault;
  EFI_STATUS status = OpenBoard(shifted.data() + 1, bytes.size(), &board, &fault);
  EXPECT_EQ(status, fault.Text[0] == '\0' ? EFI_SUCCESS : EFI_COMPROMISED_DATA);
  EXPECT_EQ(board.Picture != nullptr, status == EFI_SUCCESS);
  return fault.Text;
}

std::string FaultOfSpoilt(const std::function<void(BoardParts &)> &spoil) {
  BoardParts parts = BoardParts::Sound();
  spoil(parts);
  return FaultOf(parts.Bytes());
}

/// Spoils the finished file and makes its checksum fit again.
std::string FaultOfPatched(const std::function<void(std::vector<UINT8> &)> &patch) {
  std::vector<UINT8> bytes = BoardParts::Sound().Bytes();
  patch(bytes);
  BoardParts::Reseal(bytes);
  return FaultOf(bytes);
}

TEST(HostBoardReader, SoundBoardOpensWithItsRecords) {
  std::vector<UINT8> bytes = BoardParts::Sound().Bytes();
  Board board;
  BoardFault fault;
  ASSERT_EQ(OpenBoard(bytes.data(), bytes.size(), &board, &fault), EFI_SUCCESS) << fault.Text;
  EXPECT_EQ(+board.Header.ComponentCount, 2);
  EXPECT_EQ(+ComponentAt(board, 1).Type, OBV_TYPE_FAN);
  EXPECT_STREQ(StyleAt(board, 0).Focus.MarkColor, "7,8,9");
  OBV_COMPONENT_INFO info;
  CopyInfoAt(board, 1, &info);
  EXPECT_EQ(info.Kind, static_cast<UINT32>(OBV_INFO_SIDE_LIST));
  EXPECT_EQ(board.Picture, bytes.data() + bytes.size() - 33);
}

TEST(HostBoardReader, BoardWithoutComponentsIsSound) {
  EXPECT_EQ(FaultOfSpoilt([](BoardParts &parts) {
              parts.Components.clear();
              parts.Infos.clear();
              parts.Styles.clear();
            }),
            "");
}

TEST(HostBoardReader, FullBoardIsSound) {
  EXPECT_EQ(FaultOfSpoilt([](BoardParts &parts) {
              parts.Components.clear();
              parts.Infos.clear();
              for (UINTN i = 0; i < OBV_MAX_COMPONENTS; i++) {
                parts.AddComponent(u"Component " + std::u16string(1 + i % 9, char16_t('a' + i / 9)),
                                   OBV_TYPE_USB);
                parts.Components.back().VertexCount = kBoardVertexCapacity;
                parts.Components.back().LeaderPointCount = kBoardLeaderCapacity;
              }
              for (UINTN i = 0; i < OBV_INFO_CAPACITY; i++) {
                parts.AddInfo(0, OBV_INFO_DESCRIPTION, std::u16string(31, u'L'),
                              std::u16string(255, u'V'));
              }
            }),
            "");
}

TEST(HostBoardReader, EveryTruncationIsRefused) {
  const std::vector<UINT8> bytes = BoardParts::Sound().Bytes();
  for (size_t size = 0; size < bytes.size(); size++) {
    // An exact-size block, so that the address sanitizer sees any read beyond it.
    std::vector<UINT8> part(bytes.begin(), bytes.begin() + static_cast<ptrdiff_t>(size));
    Board board;
    BoardFault fault;
    ASSERT_EQ(OpenBoard(part.data(), part.size(), &board, &fault), EFI_COMPROMISED_DATA) << size;
  }
}

TEST(HostBoardReader, EveryFlippedBitIsRefused) {
  const std::vector<UINT8> bytes = BoardParts::Sound().Bytes();
  for (size_t bit = 0; bit < bytes.size() * 8; bit++) {
    std::vector<UINT8> spoilt = bytes;
    spoilt[bit / 8] = static_cast<UINT8>(spoilt[bit / 8] ^ (1 << bit % 8));
    Board board;
    BoardFault fault;
    ASSERT_EQ(OpenBoard(spoilt.data(), spoilt.size(), &board, &fault), EFI_COMPROMISED_DATA) << bit;
  }
}

TEST(HostBoardReader, NoBytesAreRefused) {
  Board board;
  BoardFault fault;
  EXPECT_EQ(OpenBoard(nullptr, 0, &board, &fault), EFI_COMPROMISED_DATA);
  EXPECT_EQ(OpenBoard(nullptr, 100000, &board, &fault), EFI_COMPROMISED_DATA);
}

TEST(HostBoardReader, IdentityFaults) {
  EXPECT_EQ(FaultOfPatched([](auto &bytes) { bytes[0] = 'X'; }), "not a board file");
  EXPECT_EQ(FaultOfPatched([](auto &bytes) { bytes[8] = 1; }),
            "format version 1, this host reads version 3");
  EXPECT_EQ(FaultOfPatched([](auto &bytes) { bytes[8] = 2; }),
            "format version 2, this host reads version 3");
  EXPECT_EQ(FaultOfPatched([](auto &bytes) { bytes[10] = 0xFF; }),
            "header of 2047 bytes, expected 1952");
}

TEST(HostBoardReader, ChecksumFaultNamesBothSums) {
  std::vector<UINT8> bytes = BoardParts::Sound().Bytes();
  BoardParts::SetField<UINT32>(bytes, OFFSET_OF(BoardHeader, Checksum), 0x12345678);
  std::string fault = FaultOf(bytes);
  EXPECT_NE(fault.find("the header says 0x12345678"), std::string::npos) << fault;
}

TEST(HostBoardReader, SizesThatDoNotAddUp) {
  std::vector<UINT8> longer = BoardParts::Sound().Bytes();
  longer.push_back(0);
  EXPECT_EQ(FaultOf(longer), "3766 bytes, the header says 3765");

  EXPECT_EQ(FaultOfPatched([](auto &b) {
              BoardParts::SetField<UINT32>(b, OFFSET_OF(BoardHeader, PictureSize), 32);
            }),
            "3765 bytes, its records and picture take 3764");
  // 580 times the third count wraps to a small number in 32 bits.
  for (UINT32 count : {3U, MAX_UINT32, 0x40000002U}) {
    std::string fault = FaultOfPatched([&](auto &b) {
      BoardParts::SetField<UINT32>(b, OFFSET_OF(BoardHeader, InfoCount), count);
    });
    EXPECT_EQ(fault.find("3765 bytes, its records and picture take "), 0U) << fault;
  }
  EXPECT_EQ(FaultOfPatched([](auto &b) {
              BoardParts::SetField<UINT32>(b, OFFSET_OF(BoardHeader, PictureSize), MAX_UINT32);
            }),
            "3765 bytes, its records and picture take 4294971027");
}

TEST(HostBoardReader, HardwareCountBelongsToTheSizes) {
  EXPECT_EQ(FaultOfPatched([](auto &b) {
              BoardParts::SetField<UINT16>(b, OFFSET_OF(BoardHeader, HardwareCount), 1);
            }),
            "3765 bytes, its records and picture take 3929");
  EXPECT_EQ(FaultOfPatched([](auto &b) {
              BoardParts::SetField<UINT16>(b, OFFSET_OF(BoardHeader, HardwareCount), MAX_UINT16);
            }),
            "3765 bytes, its records and picture take 10751505");
}

TEST(HostBoardReader, HeaderFaults) {
  EXPECT_EQ(FaultOfSpoilt([](auto &parts) {
              for (int i = 0; i < 98; i++) {
                parts.AddComponent(u"N" + std::u16string(1, char16_t(u'A' + i % 26)), 0);
              }
            }),
            "100 components, at most 99 are allowed");
  EXPECT_EQ(FaultOfSpoilt([](auto &parts) { parts.Styles.resize(100, parts.Styles[0]); }),
            "100 styles, at most 99 are allowed");
  EXPECT_EQ(FaultOfSpoilt([](auto &parts) { parts.Header.Logo = 3; }), "unknown logo 3");
  EXPECT_EQ(FaultOfSpoilt([](auto &parts) { parts.Header.Logo = OBV_LOGO_NONE; }), "");
  EXPECT_EQ(FaultOfSpoilt([](auto &parts) { parts.Header.MarkerTheme = 3; }),
            "unknown marker theme 3");
  EXPECT_EQ(
      FaultOfSpoilt([](auto &parts) { PutText(parts.Header.Title, std::u16string(60, u'x')); }),
      "title without an end");
  EXPECT_EQ(FaultOfSpoilt([](auto &parts) {
              PutText(parts.Header.SystemInfo[6], std::u16string(128, u'x'));
            }),
            "system information 6 without an end");
}

TEST(HostBoardReader, ColourFaults) {
  for (const char *bad : {"", "1,2", "1,2,", ",2,3", "1,2,3,4", "1, 2,3", "0x1,2,3", "a,b,c",
                          "12345678,12345678,12"}) {
    EXPECT_EQ(FaultOfSpoilt([&](auto &parts) { PutColor(parts.Styles[0].Focus.BorderColor, bad); }),
              "style 0: not a colour")
        << bad;
  }
}

TEST(HostBoardReader, InformationFaults) {
  EXPECT_EQ(FaultOfSpoilt([](auto &parts) { parts.Infos[1].Kind = 2; }),
            "information line 1: unknown kind 2");
  EXPECT_EQ(
      FaultOfSpoilt([](auto &parts) { PutText(parts.Infos[0].Label, std::u16string(32, u'x')); }),
      "information line 0: text without an end");
  EXPECT_EQ(
      FaultOfSpoilt([](auto &parts) { PutText(parts.Infos[1].Value, std::u16string(256, u'x')); }),
      "information line 1: text without an end");
}

TEST(HostBoardReader, NameFaults) {
  auto named = [](const std::u16string &name) {
    return FaultOfSpoilt([&](auto &parts) { PutText(parts.Components[1].Name, name); });
  };
  EXPECT_EQ(named(u""), "component 1: not a name");
  EXPECT_EQ(named(u"L\u00FCfter"), "component 1: not a name");
  EXPECT_EQ(named(u"a\nb"), "component 1: not a name");
  EXPECT_EQ(named(std::u16string(20, u'x')), "component 1: not a name");
  EXPECT_EQ(named(std::u16string(19, u'x')), "");
  EXPECT_EQ(named(u"CPU"), "components 0 and 1 have the same name");
  // What follows the end makes no other name of it.
  EXPECT_EQ(named(std::u16string(u"CPU\0hidden", 10)), "components 0 and 1 have the same name");
}

TEST(HostBoardReader, ComponentNumberFaults) {
  auto spoilt = [](const std::function<void(BoardComponent &)> &spoil) {
    return FaultOfSpoilt([&](auto &parts) { spoil(parts.Components[1]); });
  };
  EXPECT_EQ(spoilt([](auto &c) { c.Type = 10; }), "component 1: unknown category 10");
  EXPECT_EQ(spoilt([](auto &c) { c.CalloutSide = 9; }), "component 1: unknown callout side 9");
  EXPECT_EQ(spoilt([](auto &c) { c.TextAlign = 3; }), "component 1: unknown alignment 3");
  EXPECT_EQ(spoilt([](auto &c) { c.Flags = 4; }), "component 1: unknown flags");
  EXPECT_EQ(spoilt([](auto &c) { c.Reserved = 1; }), "component 1: unknown flags");
  EXPECT_EQ(spoilt([](auto &c) { c.StyleIndex = 1; }), "component 1: there is no style 1");
  EXPECT_EQ(spoilt([](auto &c) { c.Status = 5; }), "component 1: unknown status");
  EXPECT_EQ(spoilt([](auto &c) { c.VertexCount = 2; }),
            "component 1: 2 vertices, 3 to 20 are allowed");
  EXPECT_EQ(spoilt([](auto &c) { c.VertexCount = 21; }),
            "component 1: 21 vertices, 3 to 20 are allowed");
  EXPECT_EQ(spoilt([](auto &c) { c.LeaderPointCount = 0; }),
            "component 1: 0 leader points, 1 to 20 are allowed");
  EXPECT_EQ(spoilt([](auto &c) { c.LeaderPointCount = 21; }),
            "component 1: 21 leader points, 1 to 20 are allowed");
  EXPECT_EQ(spoilt([](auto &c) { c.InfoCount = 21; }),
            "component 1: 21 information lines, at most 20 are allowed");
  EXPECT_EQ(spoilt([](auto &c) { c.InfoCount = 1; }),
            "component 1: information lines beyond the last one");
  EXPECT_EQ(spoilt([](auto &c) { c.FirstInfo = MAX_UINT32; }),
            "component 1: information lines beyond the last one");
  EXPECT_EQ(spoilt([](auto &c) {
              c.FirstInfo = MAX_UINT32;
              c.InfoCount = 1;
            }),
            "component 1: information lines beyond the last one");
  EXPECT_EQ(spoilt([](auto &c) { c.HardwareCount = 1; }),
            "component 1: hardware names beyond the last one");
  EXPECT_EQ(spoilt([](auto &c) { c.FirstHardware = 1; }),
            "component 1: hardware names beyond the last one");
  EXPECT_EQ(spoilt([](auto &c) {
              c.FirstHardware = MAX_UINT32;
              c.HardwareCount = MAX_UINT16;
            }),
            "component 1: hardware names beyond the last one");
}

TEST(HostBoardReader, PointsOutsideThePictureAreFaults) {
  auto spoilt = [](const std::function<void(BoardComponent &)> &spoil) {
    return FaultOfSpoilt([&](auto &parts) { spoil(parts.Components[0]); });
  };
  const std::string fault = "component 0: a point outside the picture";
  EXPECT_EQ(spoilt([](auto &c) { c.Marker = {320, 0}; }), fault);
  EXPECT_EQ(spoilt([](auto &c) { c.Vertices[0] = {320, 0}; }), fault);
  EXPECT_EQ(spoilt([](auto &c) { c.Vertices[2] = {0, 180}; }), fault);
  EXPECT_EQ(spoilt([](auto &c) { c.LeaderPoints[0] = {0, 180}; }), fault);
  EXPECT_EQ(spoilt([](auto &c) { c.LeaderPoints[1] = {65535, 0}; }), fault);
  EXPECT_EQ(spoilt([](auto &c) { c.Vertices[2] = {319, 179}; }), "");
  // Entries beyond the count are not used and not looked at.
  EXPECT_EQ(spoilt([](auto &c) { c.Vertices[3] = {65535, 65535}; }), "");
}

TEST(HostBoardReader, PictureFaults) {
  EXPECT_EQ(FaultOfSpoilt([](auto &parts) { parts.Picture.clear(); }), "the picture is not a PNG");
  EXPECT_EQ(FaultOfSpoilt([](auto &parts) { parts.Picture.pop_back(); }),
            "the picture is not a PNG");
  EXPECT_EQ(FaultOfSpoilt([](auto &parts) { parts.Picture[1] = 'X'; }), "the picture is not a PNG");
  EXPECT_EQ(FaultOfSpoilt([](auto &parts) { parts.Picture = BoardParts::PngStart(321, 180); }),
            "picture of 321 x 180, the header says 320 x 180");
  EXPECT_EQ(FaultOfSpoilt([](auto &parts) { parts.Picture = BoardParts::PngStart(320, 179); }),
            "picture of 320 x 179, the header says 320 x 180");
  EXPECT_EQ(FaultOfSpoilt([](auto &parts) { parts.Picture = BoardParts::PngStart(65856, 180); }),
            "picture of 65856 x 180, the header says 320 x 180");
  std::vector<UINT8> large = BoardParts::Sound(4096, 180).Bytes();
  EXPECT_EQ(FaultOf(large), "picture of 4096 x 180, at most 4095 pixels are allowed");
  EXPECT_EQ(FaultOf(BoardParts::Sound(4095, 4095).Bytes()), "");
}

}  // namespace
}  // namespace obv_host
