// The one allocator: headers, refusals and reallocation.

#include "test/unit/stage/PoolStage.h"

namespace {

using fake::Service;

class MemoryPool : public PoolStage {};

constexpr UINT8 kPoison = 0xAF;

bool HoldsOnly(const void *memory, UINTN size, UINT8 value) {
  auto *bytes = static_cast<const UINT8 *>(memory);
  return std::all_of(bytes, bytes + size, [=](UINT8 byte) { return byte == value; });
}

std::string Hexadecimal(const void *pointer) {
  std::ostringstream text;
  text << std::uppercase << std::hex << reinterpret_cast<uintptr_t>(pointer);
  return text.str();
}

TEST_F(MemoryPool, ABlockCarriesItsHeaderAndIsZeroed) {
  void *block = BoardscopeMalloc(100);
  ASSERT_NE(block, nullptr);
  MemoryBlockHeader &header = HeaderOf(block);
  EXPECT_EQ(std::memcmp(&header.Signature, "$OBV", 4), 0);
  EXPECT_EQ(header.TotalSize, 124u);
  EXPECT_TRUE(HoldsOnly(block, 100, 0));
  EXPECT_EQ(Machine.Pool.SizeOf(&header), UINTN{124});
  EXPECT_EQ(Machine.Pool.LiveBlocks(EfiBootServicesData), 1u);
  BoardscopeFree(block);
  EXPECT_EQ(Machine.Pool.LiveBlocks(), 0u);
  EXPECT_EQ(Log(), LogLines{});
}

TEST_F(MemoryPool, NewBlocksComeLastInTheList) {
  void *first = BoardscopeMalloc(1);
  void *second = BoardscopeMalloc(2);
  void *third = BoardscopeMalloc(3);
  ExpectList({first, second, third});
  BoardscopeFree(second);
  ExpectList({first, third});
  BoardscopeFree(third);
  BoardscopeFree(first);
  ExpectList({});
}

TEST_F(MemoryPool, MallocOf0LogsAndReturnsNull) {
  EXPECT_EQ(BoardscopeMalloc(0), nullptr);
  EXPECT_EQ(Log(), LogLines{Error("ERROR malloc: Zero Size\n")});
  EXPECT_EQ(Machine.Calls.CountOf(Service::AllocatePool), 0u);
}

TEST_F(MemoryPool, ATotalOf32OnesOverflows) {
  EXPECT_EQ(BoardscopeMalloc(4294967271), nullptr);
  EXPECT_EQ(Log(), LogLines{Error("ERROR malloc: Size overflow\n")});
  EXPECT_EQ(Machine.Calls.CountOf(Service::AllocatePool), 0u);
}

TEST_F(MemoryPool, OneByteBelowTheOverflowReachesThePool) {
  EXPECT_EQ(BoardscopeMalloc(4294967270), nullptr);
  EXPECT_EQ(Log(), LogLines{Error("ERROR malloc: AllocatePool returned Out of Resources\n")});
  EXPECT_EQ(Machine.Calls.CountOf(Service::AllocatePool), 1u);
}

TEST_F(MemoryPool, SizesNearTheTopOfTheAddressSpaceDoNotWrap) {
  for (UINTN size : {~UINTN{0}, ~UINTN{0} - 23, ~UINTN{0} - 24, UINTN{1} << 32}) {
    Log().clear();
    EXPECT_EQ(BoardscopeMalloc(size), nullptr);
    EXPECT_EQ(Log(), LogLines{Error("ERROR malloc: Size overflow\n")}) << size;
    Log().clear();
    EXPECT_EQ(BoardscopeRealloc(nullptr, size), nullptr);
    EXPECT_EQ(Log(), LogLines{Error("ERROR malloc: Size overflow\n")}) << size;
  }
}

TEST_F(MemoryPool, APoolThatRefusesIsLoggedWithItsStatus) {
  Machine.FailCall(Service::AllocatePool, 1, EFI_OUT_OF_RESOURCES);
  EXPECT_EQ(BoardscopeMalloc(8), nullptr);
  EXPECT_EQ(Log(), LogLines{Error("ERROR malloc: AllocatePool returned Out of Resources\n")});
  ExpectList({});
}

TEST_F(MemoryPool, AStatusThatIsAWarningIsARefusal) {
  Machine.FailCall(Service::AllocatePool, 1, EFI_WARN_STALE_DATA);
  EXPECT_EQ(BoardscopeMalloc(8), nullptr);
  EXPECT_EQ(Log(), LogLines{Error("ERROR malloc: AllocatePool returned Warning Stale Data\n")});
}

TEST_F(MemoryPool, FreeOfNullDoesNothing) {
  BoardscopeFree(nullptr);
  EXPECT_EQ(Log(), LogLines{});
  EXPECT_EQ(Machine.Calls.CountOf(Service::FreePool), 0u);
}

TEST_F(MemoryPool, AReleasedBlockIsPoisonedOverItsWholeSize) {
  Machine.Pool.KeepFreed = true;
  auto *block = static_cast<UINT8 *>(BoardscopeMalloc(50));
  BoardscopeFree(block);
  EXPECT_TRUE(HoldsOnly(block - kHeaderSize, 74, kPoison));
  EXPECT_EQ(Machine.Calls.CountOf(Service::SetMem), 1u);
  EXPECT_EQ(Machine.Calls.CountOf(Service::FreePool), 1u);
}

TEST_F(MemoryPool, FreeingABlockTwiceIsRefused) {
  Machine.Pool.KeepFreed = true;
  void *neighbour = BoardscopeMalloc(10);
  void *block = BoardscopeMalloc(10);
  BoardscopeFree(block);
  EXPECT_EQ(HeaderOf(block).Signature, 0xAFAFAFAFu);
  BoardscopeFree(block);
  EXPECT_EQ(Log(), LogLines{Error("ERROR free(0x" + Hexadecimal(block) +
                                  "): Signature is 0x0000BEEF, expected 0x56424F24\n")});
  EXPECT_EQ(Machine.Calls.CountOf(Service::FreePool), 1u);
  ExpectList({neighbour});
}

TEST_F(MemoryPool, TheFoundSignatureIsReadAtAddress16) {
  EXPECT_EQ(addressAtStart_, 16u);
  UINT8 foreign[64] = {};
  lowMemory_ = 0x12345678;
  BoardscopeFree(foreign + 32);
  EXPECT_EQ(Log(), LogLines{Error("ERROR free(0x" + Hexadecimal(foreign + 32) +
                                  "): Signature is 0x12345678, expected 0x56424F24\n")});
}

TEST_F(MemoryPool, AForeignPointerIsRefusedAndLeftAlone) {
  UINT8 foreign[64];
  std::fill_n(foreign, sizeof foreign, UINT8{0x11});
  BoardscopeFree(foreign + 32);
  EXPECT_EQ(BoardscopeRealloc(foreign + 32, 8), nullptr);
  EXPECT_EQ(Log(), (LogLines{Error("ERROR free(0x" + Hexadecimal(foreign + 32) +
                                   "): Signature is 0x0000BEEF, expected 0x56424F24\n"),
                             Error("ERROR realloc(0x" + Hexadecimal(foreign + 32) +
                                   "): Signature is 0x0000BEEF, expected 0x56424F24\n")}));
  EXPECT_TRUE(HoldsOnly(foreign, sizeof foreign, 0x11));
  EXPECT_EQ(Machine.Calls.CountOf(Service::AllocatePool), 0u);
  EXPECT_EQ(Machine.Calls.CountOf(Service::FreePool), 0u);
}

TEST_F(MemoryPool, ReallocToSize0OfAForeignPointerIsRefused) {
  UINT8 foreign[64] = {};
  EXPECT_EQ(BoardscopeRealloc(foreign + 32, 0), nullptr);
  EXPECT_EQ(Log(), LogLines{Error("ERROR realloc(0x" + Hexadecimal(foreign + 32) +
                                  "): Signature is 0x0000BEEF, expected 0x56424F24\n")});
}

TEST_F(MemoryPool, ReallocToSize0FreesWithoutALogLine) {
  void *block = BoardscopeMalloc(10);
  EXPECT_EQ(BoardscopeRealloc(block, 0), nullptr);
  EXPECT_EQ(Log(), LogLines{});
  EXPECT_EQ(Machine.Pool.LiveBlocks(), 0u);
}

TEST_F(MemoryPool, ReallocOfNullToSize0DoesNothing) {
  EXPECT_EQ(BoardscopeRealloc(nullptr, 0), nullptr);
  EXPECT_EQ(Log(), LogLines{});
}

TEST_F(MemoryPool, ReallocOfNullReturnsABlockWith24SpareBytes) {
  void *block = BoardscopeRealloc(nullptr, 10);
  ASSERT_NE(block, nullptr);
  EXPECT_EQ(HeaderOf(block).TotalSize, 58u);
  EXPECT_TRUE(HoldsOnly(block, 34, 0));
  std::memset(block, 1, 34);
  BoardscopeFree(block);
}

TEST_F(MemoryPool, GrowingKeepsTheContents) {
  auto *block = static_cast<UINT8 *>(BoardscopeMalloc(100));
  std::memset(block, 0x42, 100);
  auto *grown = static_cast<UINT8 *>(BoardscopeRealloc(block, 1000));
  ASSERT_NE(grown, nullptr);
  EXPECT_TRUE(HoldsOnly(grown, 100, 0x42));
  // Nothing from behind the old block comes along.
  EXPECT_TRUE(HoldsOnly(grown + 100, 924, 0));
  EXPECT_EQ(HeaderOf(grown).TotalSize, 1048u);
  ExpectList({grown});
  BoardscopeFree(grown);
}

TEST_F(MemoryPool, ShrinkingKeepsWhatFitsIntoTheNewBlock) {
  auto *block = static_cast<UINT8 *>(BoardscopeMalloc(100));
  for (UINT8 i = 0; i < 100; i++) {
    block[i] = i;
  }
  auto *shrunk = static_cast<UINT8 *>(BoardscopeRealloc(block, 10));
  ASSERT_NE(shrunk, nullptr);
  EXPECT_EQ(HeaderOf(shrunk).TotalSize, 58u);
  for (UINT8 i = 0; i < 34; i++) {
    EXPECT_EQ(shrunk[i], i);
  }
  BoardscopeFree(shrunk);
}

TEST_F(MemoryPool, AFailedReallocKeepsTheOldBlock) {
  auto *block = static_cast<UINT8 *>(BoardscopeMalloc(10));
  std::memset(block, 7, 10);
  Machine.FailCall(Service::AllocatePool, 1, EFI_OUT_OF_RESOURCES);
  EXPECT_EQ(BoardscopeRealloc(block, 20), nullptr);
  EXPECT_EQ(BoardscopeRealloc(block, 0xFFFFFFFF), nullptr);
  EXPECT_EQ(Log(), (LogLines{Error("ERROR malloc: AllocatePool returned Out of Resources\n"),
                             Error("ERROR malloc: Size overflow\n")}));
  EXPECT_TRUE(HoldsOnly(block, 10, 7));
  ExpectList({block});
  BoardscopeFree(block);
}

TEST_F(MemoryPool, NothingIsLoggedWithoutAHost) {
  gHost.Protocol = nullptr;
  EXPECT_EQ(BoardscopeMalloc(0), nullptr);
  UINT8 foreign[64] = {};
  BoardscopeFree(foreign + 32);
  EXPECT_EQ(BoardscopeRealloc(foreign + 32, 1), nullptr);
  ReportMemoryLeaks();
  EXPECT_EQ(Log(), LogLines{});
}

TEST_F(MemoryPool, NothingIsLoggedWithoutALogSlot) {
  Host.Protocol().DebugPrint = nullptr;
  EXPECT_EQ(BoardscopeMalloc(0), nullptr);
  ReportMemoryLeaks();
  EXPECT_EQ(Log(), LogLines{});
}

}  // namespace
