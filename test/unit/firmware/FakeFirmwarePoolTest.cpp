#include <gtest/gtest.h>

#include "test/firmware/FakeFirmware.h"

namespace fake {
namespace {

class FakeFirmwarePool : public testing::Test {
 protected:
  EFI_STATUS Allocate(UINTN size, VOID **buffer, EFI_MEMORY_TYPE type = EfiBootServicesData) {
    return Services.AllocatePool(type, size, buffer);
  }
  Firmware Machine;
  EFI_BOOT_SERVICES &Services = Machine.BootServices;
};

TEST_F(FakeFirmwarePool, FreshMemoryIsPoisonedAndOnlyEightByteAligned) {
  VOID *buffer = nullptr;
  ASSERT_EQ(Allocate(100, &buffer), EFI_SUCCESS);
  const auto *bytes = static_cast<const uint8_t *>(buffer);
  EXPECT_TRUE(std::all_of(bytes, bytes + 100, [](uint8_t b) { return b == 0x5A; }));
  EXPECT_EQ(reinterpret_cast<uintptr_t>(buffer) % 16, 8u);
  EXPECT_EQ(Services.FreePool(buffer), EFI_SUCCESS);
  EXPECT_EQ(Machine.ProblemsText(), "");
}

TEST_F(FakeFirmwarePool, AccountsByTypeWithPeak) {
  VOID *first = nullptr;
  VOID *second = nullptr;
  ASSERT_EQ(Allocate(100, &first), EFI_SUCCESS);
  ASSERT_EQ(Allocate(50, &second, EfiLoaderData), EFI_SUCCESS);
  EXPECT_EQ(Machine.Pool.LiveBlocks(), 2u);
  EXPECT_EQ(Machine.Pool.LiveBytes(), 150u);
  EXPECT_EQ(Machine.Pool.LiveBytes(EfiLoaderData), 50u);
  EXPECT_EQ(Machine.Pool.LiveBlocks(EfiBootServicesData), 1u);
  EXPECT_EQ(Machine.Pool.SizeOf(first), 100u);
  Services.FreePool(first);
  Services.FreePool(second);
  EXPECT_EQ(Machine.Pool.LiveBytes(), 0u);
  EXPECT_EQ(Machine.Pool.PeakBytes(), 150u);
  EXPECT_EQ(Machine.Pool.AllocationCount(), 2u);
}

TEST_F(FakeFirmwarePool, RefusesBadArguments) {
  VOID *buffer = nullptr;
  EXPECT_EQ(Allocate(10, nullptr), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Allocate(10, &buffer, EfiMaxMemoryType), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Allocate(10, &buffer, EfiPersistentMemory), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Allocate(0, &buffer), EFI_SUCCESS);
  EXPECT_EQ(Services.FreePool(buffer), EFI_SUCCESS);
}

TEST_F(FakeFirmwarePool, RunsOutAtItsCapacity) {
  Machine.Pool.Capacity = 1000;
  VOID *first = nullptr;
  VOID *second = nullptr;
  ASSERT_EQ(Allocate(600, &first), EFI_SUCCESS);
  EXPECT_EQ(Allocate(401, &second), EFI_OUT_OF_RESOURCES);
  EXPECT_EQ(Allocate(400, &second), EFI_SUCCESS);
  EXPECT_EQ(Allocate(~UINTN{0}, &second), EFI_OUT_OF_RESOURCES);
  Services.FreePool(first);
}

TEST_F(FakeFirmwarePool, DoubleFreeIsRefusedAndReported) {
  VOID *buffer = nullptr;
  ASSERT_EQ(Allocate(10, &buffer), EFI_SUCCESS);
  ASSERT_EQ(Services.FreePool(buffer), EFI_SUCCESS);
  EXPECT_EQ(Services.FreePool(buffer), EFI_INVALID_PARAMETER);
  ASSERT_EQ(Machine.Problems().size(), 1u);
  EXPECT_NE(Machine.Problems()[0].find("freed before"), std::string::npos);
}

TEST_F(FakeFirmwarePool, ForeignPointerIsRefusedAndReported) {
  int local = 0;
  EXPECT_EQ(Services.FreePool(&local), EFI_INVALID_PARAMETER);
  ASSERT_EQ(Machine.Problems().size(), 1u);
  EXPECT_NE(Machine.Problems()[0].find("not from the pool"), std::string::npos);
}

TEST_F(FakeFirmwarePool, PagesAreAlignedAndBalanced) {
  EFI_PHYSICAL_ADDRESS memory = 0;
  ASSERT_EQ(Services.AllocatePages(AllocateAnyPages, EfiBootServicesData, 3, &memory), EFI_SUCCESS);
  EXPECT_EQ(memory % EFI_PAGE_SIZE, 0u);
  EXPECT_EQ(Machine.Pool.LivePages(), 3u);
  EXPECT_EQ(Services.FreePages(memory, 3), EFI_SUCCESS);
  EXPECT_EQ(Machine.Pool.LivePages(), 0u);
  EXPECT_EQ(Services.AllocatePages(MaxAllocateType, EfiBootServicesData, 1, &memory),
            EFI_INVALID_PARAMETER);
  EXPECT_EQ(Machine.ProblemsText(), "");
  EXPECT_EQ(Services.FreePages(memory, 3), EFI_NOT_FOUND);
  EXPECT_EQ(Machine.Problems().size(), 1u);
}

TEST_F(FakeFirmwarePool, CopiesOverlappingMemory) {
  char text[] = "abcdef";
  Services.CopyMem(text + 1, text, 4);
  EXPECT_STREQ(text, "aabcdf");
  Services.SetMem(text, 2, 'x');
  EXPECT_STREQ(text, "xxbcdf");
}

TEST_F(FakeFirmwarePool, ChecksumIsThatOfTheSpecification) {
  char text[] = "123456789";
  UINT32 crc = 0;
  EXPECT_EQ(Services.CalculateCrc32(text, 9, &crc), EFI_SUCCESS);
  EXPECT_EQ(crc, 0xCBF43926u);
  EXPECT_EQ(Services.CalculateCrc32(text, 0, &crc), EFI_INVALID_PARAMETER);
}

#if defined(__SANITIZE_ADDRESS__)
TEST_F(FakeFirmwarePool, ReadingBehindABlockIsCaught) {
  VOID *buffer = nullptr;
  ASSERT_EQ(Allocate(10, &buffer), EFI_SUCCESS);
  auto *bytes = static_cast<volatile uint8_t *>(buffer);
  EXPECT_DEATH((void)bytes[10], "heap-buffer-overflow");
  EXPECT_EQ(Services.FreePool(buffer), EFI_SUCCESS);
}
#endif

TEST_F(FakeFirmwarePool, FreedMemoryCanBeKeptReadable) {
  Machine.Pool.KeepFreed = true;
  VOID *buffer = nullptr;
  ASSERT_EQ(Allocate(10, &buffer), EFI_SUCCESS);
  auto *bytes = static_cast<volatile uint8_t *>(buffer);
  bytes[3] = 77;
  EXPECT_EQ(Services.FreePool(buffer), EFI_SUCCESS);
  EXPECT_EQ(bytes[3], 77);
  EXPECT_EQ(Machine.Pool.LiveBlocks(), 0u);
  EXPECT_EQ(Services.FreePool(buffer), EFI_INVALID_PARAMETER);
}

TEST_F(FakeFirmwarePool, FreedMemoryCanBeGivenToTheNextRequestOfItsSize) {
  Machine.Pool.ReuseFreed = true;
  VOID *buffers[3] = {};
  for (VOID *&buffer : buffers) {
    ASSERT_EQ(Allocate(10, &buffer), EFI_SUCCESS);
  }
  Services.FreePool(buffers[0]);
  Services.FreePool(buffers[1]);
  VOID *other = nullptr;
  ASSERT_EQ(Allocate(11, &other), EFI_SUCCESS);
  EXPECT_NE(other, buffers[0]);
  EXPECT_NE(other, buffers[1]);
  for (VOID *freed : {buffers[1], buffers[0]}) {
    VOID *again = nullptr;
    ASSERT_EQ(Allocate(10, &again), EFI_SUCCESS);
    EXPECT_EQ(again, freed);
  }
  EXPECT_EQ(Machine.Pool.LiveBlocks(), 4u);
  for (VOID *buffer : {buffers[0], buffers[1], buffers[2], other}) {
    EXPECT_EQ(Services.FreePool(buffer), EFI_SUCCESS);
  }
  EXPECT_EQ(Machine.ProblemsText(), "");
}

#if defined(__SANITIZE_ADDRESS__)
TEST_F(FakeFirmwarePool, FarAccessesAreSeenBySanitizers) {
  VOID *buffer = nullptr;
  ASSERT_EQ(Allocate(10, &buffer), EFI_SUCCESS);
  auto *bytes = static_cast<volatile uint8_t *>(buffer);
  EXPECT_DEATH(bytes[34] = 1, "heap-buffer-overflow");
  EXPECT_DEATH(bytes[-1] = 1, "use-after-poison");
  Services.FreePool(buffer);
  EXPECT_DEATH(bytes[0] = 1, "heap-use-after-free");
}
#endif

}  // namespace
}  // namespace fake
