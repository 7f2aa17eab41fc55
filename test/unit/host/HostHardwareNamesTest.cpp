#include "test/unit/host/HostBoardBytes.h"

namespace obv_host {
namespace {

/// PciRoot(0)/Pci(1,0) with its end node.
const std::string kPath(
    "\x02\x01\x0C\x00\xD0\x41\x03\x0A\x00\x00\x00\x00"
    "\x01\x01\x06\x00\x00\x01"
    "\x7F\xFF\x04\x00",
    22);

/// Empty when the board with this hardware name is accepted.
std::string FaultOf(UINT16 kind, const std::string &name, const std::string &bank = "") {
  BoardParts parts = BoardParts::Sound();
  parts.AddHardware(0, kHardwareProcessor);
  parts.AddHardware(1, kind, name, bank);
  std::vector<UINT8> bytes = parts.Bytes();
  Board board;
  BoardFault fault;
  EFI_STATUS status = OpenBoard(bytes.data(), bytes.size(), &board, &fault);
  EXPECT_EQ(status, fault.Text[0] == '\0' ? EFI_SUCCESS : EFI_COMPROMISED_DATA);
  return fault.Text;
}

/// A path of one vendor node of this length with its end node.
std::string VendorPath(size_t length) {
  std::string node("\x01\x04", 2);
  node += static_cast<char>(length & 0xFF);
  node += static_cast<char>(length >> 8);
  node += std::string(length - 4, 'x');
  return node + std::string("\x7F\xFF\x04\x00", 4);
}

constexpr const char *kNotAName = "hardware 1: not a name";

TEST(HostHardwareNames, AreReadWithTheBoard) {
  BoardParts parts = BoardParts::Sound();
  parts.AddHardware(0, kHardwareMemory, "DIMM A1", "BANK 2");
  parts.AddHardware(1, kHardwareNvme, kPath);
  parts.AddHardware(1, kHardwarePcie, kPath);
  std::vector<UINT8> bytes = parts.Bytes();
  Board board;
  BoardFault fault;
  ASSERT_EQ(OpenBoard(bytes.data(), bytes.size(), &board, &fault), EFI_SUCCESS) << fault.Text;
  EXPECT_EQ(+board.Header.HardwareCount, 3);
  EXPECT_EQ(ComponentAt(board, 1).FirstHardware, 1U);
  EXPECT_EQ(+ComponentAt(board, 1).HardwareCount, 2);
  EXPECT_STREQ(HardwareAt(board, 0).Bank, "BANK 2");
  EXPECT_EQ(+HardwareAt(board, 2).Kind, kHardwarePcie);
  EXPECT_EQ(std::memcmp(HardwareAt(board, 1).Name, kPath.data(), kPath.size()), 0);
}

TEST(HostHardwareNames, EveryKindIsKnown) {
  for (UINT16 kind = 1; kind <= kHardwareKindLimit; kind++) {
    bool isPath = kind >= kHardwarePcie && kind <= kHardwareDisplay;
    EXPECT_EQ(FaultOf(kind, isPath ? kPath : "name"), "") << kind;
    EXPECT_EQ(FaultOf(kind, isPath ? "name" : kPath), kNotAName) << kind;
  }
}

TEST(HostHardwareNames, UnknownKindsAreRefused) {
  EXPECT_EQ(FaultOf(0, "name"), "hardware 1: unknown kind 0");
  EXPECT_EQ(FaultOf(17, "name"), "hardware 1: unknown kind 17");
  EXPECT_EQ(FaultOf(65535, "name"), "hardware 1: unknown kind 65535");
}

TEST(HostHardwareNames, ReservedFieldMustBeZero) {
  BoardParts parts = BoardParts::Sound();
  parts.AddHardware(0, kHardwareFan, "FAN").Reserved = 1;
  std::vector<UINT8> bytes = parts.Bytes();
  Board board;
  BoardFault fault;
  EXPECT_EQ(OpenBoard(bytes.data(), bytes.size(), &board, &fault), EFI_COMPROMISED_DATA);
}

TEST(HostHardwareNames, TextsArePrintableAndEnd) {
  EXPECT_EQ(FaultOf(kHardwareFan, ""), "");
  EXPECT_EQ(FaultOf(kHardwareFan, std::string(127, 'x')), "");
  EXPECT_EQ(FaultOf(kHardwareFan, std::string(128, 'x')), kNotAName);
  EXPECT_EQ(FaultOf(kHardwareFan, "a\nb"), kNotAName);
  EXPECT_EQ(FaultOf(kHardwareFan, "L\xFC"), kNotAName);
  EXPECT_EQ(FaultOf(kHardwareMemory, "DIMM", std::string(31, 'x')), "");
  EXPECT_EQ(FaultOf(kHardwareMemory, "DIMM", std::string(32, 'x')), kNotAName);
  EXPECT_EQ(FaultOf(kHardwareMemory, "DIMM", "\x7F"), kNotAName);
}

TEST(HostHardwareNames, DevicePathsHaveNodesAndAnEnd) {
  EXPECT_EQ(FaultOf(kHardwareUsb, ""), kNotAName);
  EXPECT_EQ(FaultOf(kHardwareUsb, kPath.substr(18)), kNotAName);     // The end alone.
  EXPECT_EQ(FaultOf(kHardwareUsb, kPath.substr(0, 18)), kNotAName);  // No end.
  std::string instance = kPath;
  instance[19] = '\x01';  // Another instance follows.
  EXPECT_EQ(FaultOf(kHardwareUsb, instance), kNotAName);
  std::string longEnd = kPath;
  longEnd[20] = '\x05';
  EXPECT_EQ(FaultOf(kHardwareUsb, longEnd), kNotAName);
}

TEST(HostHardwareNames, NodesOfDevicePathsStayInTheField) {
  for (char length : {'\0', '\1', '\2', '\3'}) {
    std::string path = kPath;
    path[2] = length;
    EXPECT_EQ(FaultOf(kHardwareSata, path), kNotAName) << int(length);
  }
  EXPECT_EQ(FaultOf(kHardwareSata, VendorPath(124)), "");
  EXPECT_EQ(FaultOf(kHardwareSata, VendorPath(125)), kNotAName);
  EXPECT_EQ(FaultOf(kHardwareSata, VendorPath(128)), kNotAName);
  EXPECT_EQ(FaultOf(kHardwareSata, VendorPath(65535)), kNotAName);
}

}  // namespace
}  // namespace obv_host
