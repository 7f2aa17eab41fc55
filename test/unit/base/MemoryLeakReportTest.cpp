// What the allocator reports and frees at the end of a run.

#include "test/unit/stage/PoolStage.h"

namespace {

using fake::Service;

class MemoryLeakReport : public PoolStage {};

std::string Report(int count, int size) {
  return "There are a total of " + std::to_string(count) + " memory leaks, amounting to " +
         std::to_string(size) + "KB in total, and it has been freed!\n";
}

TEST_F(MemoryLeakReport, ARunWithoutLeaksReports0And0) {
  ReportMemoryLeaks();
  EXPECT_EQ(Log(), LogLines{Error(Report(0, 0))});
}

TEST_F(MemoryLeakReport, ThreeLeakedBlocksAreCountedWithTheirHeaders) {
  for (UINTN size : {1000, 100, 10}) {
    BoardscopeMalloc(size);
  }
  ReportMemoryLeaks();
  EXPECT_EQ(Log(), LogLines{Error(Report(3, 1))});
  EXPECT_EQ(Machine.Pool.LiveBlocks(), 0u);
  ExpectList({});
}

TEST_F(MemoryLeakReport, WholeKibibytesAreReported) {
  BoardscopeMalloc(2047 - kHeaderSize);
  ReportMemoryLeaks();
  BoardscopeMalloc(2048 - kHeaderSize);
  ReportMemoryLeaks();
  EXPECT_EQ(Log(), (LogLines{Error(Report(1, 1)), Error(Report(1, 2))}));
}

TEST_F(MemoryLeakReport, TheReportFreesTheNewestBlockFirst) {
  BoardscopeMalloc(10);
  BoardscopeMalloc(20);
  BoardscopeMalloc(30);
  Machine.Calls.Record(Service::SetMem, true);
  ReportMemoryLeaks();
  EXPECT_EQ(Machine.Calls.Lines({Service::SetMem}),
            (std::vector<std::string>{"SetMem(54, 175) = Success", "SetMem(44, 175) = Success",
                                      "SetMem(34, 175) = Success"}));
}

TEST_F(MemoryLeakReport, TheListIsEmptyAndUsableAfterTheReport) {
  BoardscopeMalloc(10);
  ReportMemoryLeaks();
  void *block = BoardscopeMalloc(10);
  ExpectList({block});
  BoardscopeFree(block);
}

TEST_F(MemoryLeakReport, ACorruptBlockEndsTheReportAsACrash) {
  void *oldest = BoardscopeMalloc(10);
  void *corrupt = BoardscopeMalloc(10);
  BoardscopeMalloc(1500);
  HeaderOf(corrupt).Signature ^= 1;
  ReportMemoryLeaks();
  EXPECT_EQ(Log(), (LogLines{Error("mem pool crash\n"), Error(Report(1, 1))}));
  EXPECT_EQ(Machine.Pool.LiveBlocks(), 2u);
  EXPECT_EQ(Machine.Pool.SizeOf(&HeaderOf(oldest)), UINTN{34});
  EXPECT_EQ(Machine.Pool.SizeOf(&HeaderOf(corrupt)), UINTN{34});
  ExpectList({});
}

TEST_F(MemoryLeakReport, ACrashWithoutAHostIsSilent) {
  void *corrupt = BoardscopeMalloc(10);
  HeaderOf(corrupt).Signature = 0;
  gHost.Protocol = nullptr;
  ReportMemoryLeaks();
  EXPECT_EQ(Log(), LogLines{});
  ExpectList({});
}

TEST_F(MemoryLeakReport, APoisonedLinkEndsTheReportNormally) {
  BoardscopeMalloc(10);
  void *newest = BoardscopeMalloc(10);
  HeaderOf(newest).Link.BackLink = reinterpret_cast<LIST_ENTRY *>(0xAFAFAFAFAFAFAFAF);
  ReportMemoryLeaks();
  EXPECT_EQ(Log(), LogLines{Error(Report(1, 0))});
  EXPECT_EQ(Machine.Pool.LiveBlocks(), 1u);
  ExpectList({});
}

}  // namespace
