// The stack that runs stand on: as large as firmware promises, and a fault behind its end.

#include <gtest/gtest.h>

#include <csignal>
#include <string>

#include "test/firmware/Child.h"
#include "test/firmware/Stack.h"

namespace fake {
namespace {

// Uses that much of the stack in one piece, from its far end on.
[[gnu::noinline]] int Use(size_t bytes) {
  auto *room = static_cast<volatile char *>(__builtin_alloca(bytes));
  room[0] = 1;
  return room[0];
}

// The sanitizer reports the fault by name and ends the process itself.
bool DiedOfItsStack(const ChildResult &child) {
  return child.Signal == SIGSEGV || child.Output.find("stack-overflow") != std::string::npos;
}

TEST(FakeFirmwareStack, ReturnsWhatTheCallDidAndHowMuchItUsed) {
  int answer = 0;
  size_t used = CallOnStack([&] { answer = Use(50000); });
  EXPECT_EQ(answer, 1);
  EXPECT_GT(used, 50000u);
  EXPECT_LT(used, 60000u);
}

TEST(FakeFirmwareStack, IsUsableAlmostToItsEnd) {
  size_t used = CallOnStack([] { Use(kStackSize - 2048); });
  EXPECT_GT(used, kStackSize - 2048);
}

// One piece of the whole size begins a little below the end: behind it there may be other memory.
TEST(FakeFirmwareStack, EndsWithAFault) {
  ChildResult child = RunInChild([](std::string *) {
    CallOnStack([] { Use(kStackSize); });
    return 0;
  });
  EXPECT_FALSE(child.Succeeded);
  EXPECT_TRUE(DiedOfItsStack(child)) << child.Summary();
}

}  // namespace
}  // namespace fake
