// The C functions of the firmware build, compiled here under names of their own.

#include <gtest/gtest.h>

#include "app/base/Firmware.h"

#define memset TestedMemset
#define __memset TestedMemset2
#define memcpy TestedMemcpy
#define memmove TestedMemmove
#define memcmp TestedMemcmp
#define memchr TestedMemchr
#define strlen TestedStrlen
#define strcpy TestedStrcpy
#define strcat TestedStrcat
#define strcmp TestedStrcmp
#define strncmp TestedStrncmp
#define strstr TestedStrstr
#define qsort TestedQsort
#define longjmp TestedLongjmp
#include "app/base/CLibrary.cpp"
#include "app/base/CompilerCalls.cpp"
#undef memset
#undef __memset
#undef memcpy
#undef memmove
#undef memcmp
#undef memchr
#undef strlen
#undef strcpy
#undef strcat
#undef strcmp
#undef strncmp
#undef strstr
#undef qsort
#undef longjmp

namespace {

int Sign(int value) { return (value > 0) - (value < 0); }

TEST(CLibrary, BothMemsetsFillCountBytesWithTheLowByte) {
  for (auto fill : {TestedMemset, TestedMemset2}) {
    std::string text = "abcdefgh";
    EXPECT_EQ(fill(text.data() + 1, 0x1234, 5), text.data() + 1);
    EXPECT_EQ(text, "a44444gh");
    EXPECT_EQ(fill(text.data(), 'x', 0), text.data());
    EXPECT_EQ(text, "a44444gh");
  }
}

TEST(CLibrary, MemcpyCopiesAndReturnsItsDestination) {
  std::string to = "........";
  EXPECT_EQ(TestedMemcpy(to.data() + 2, "a\0b", 3), to.data() + 2);
  EXPECT_EQ(to, std::string("..a\0b...", 8));
  EXPECT_EQ(TestedMemcpy(to.data(), "zz", 0), to.data());
  EXPECT_EQ(to[0], '.');
}

TEST(CLibrary, MemmoveCopiesOverlappingMemoryBothWays) {
  std::string up = "abcdefgh";
  EXPECT_EQ(TestedMemmove(up.data() + 2, up.data(), 6), up.data() + 2);
  EXPECT_EQ(up, "ababcdef");
  std::string down = "abcdefgh";
  EXPECT_EQ(TestedMemmove(down.data(), down.data() + 2, 6), down.data());
  EXPECT_EQ(down, "cdefghgh");
}

TEST(CLibrary, MemcmpComparesUnsignedBytes) {
  EXPECT_EQ(TestedMemcmp("abc", "abc", 3), 0);
  EXPECT_EQ(Sign(TestedMemcmp("abc", "abd", 3)), -1);
  EXPECT_EQ(TestedMemcmp("abc", "abd", 2), 0);
  EXPECT_EQ(Sign(TestedMemcmp("\xFF", "\x01", 1)), 1);
  EXPECT_EQ(Sign(TestedMemcmp("a\0b", "a\0c", 3)), -1);
  EXPECT_EQ(TestedMemcmp("a", "b", 0), 0);
}

TEST(CLibrary, MemchrFindsTheFirstByte) {
  const char text[] = "abcabc";
  EXPECT_EQ(TestedMemchr(text, 'c', 6), text + 2);
  EXPECT_EQ(TestedMemchr(text, 'c', 2), nullptr);
  EXPECT_EQ(TestedMemchr(text, 0x100 + 'b', 6), text + 1);
  EXPECT_EQ(TestedMemchr(text, 'a', 0), nullptr);
}

TEST(CLibrary, StrlenCountsUpToTheTerminator) {
  EXPECT_EQ(TestedStrlen(""), 0u);
  EXPECT_EQ(TestedStrlen("abc"), 3u);
  EXPECT_EQ(TestedStrlen("ab\0c"), 2u);
}

TEST(CLibrary, StrcpyCopiesTheTerminatorAndNoMore) {
  char to[] = "xxxxxx";
  EXPECT_EQ(TestedStrcpy(to, "ab"), to);
  EXPECT_EQ(std::string(to, 6), std::string("ab\0xxx", 6));
  EXPECT_EQ(TestedStrcpy(to, ""), to);
  EXPECT_STREQ(to, "");
}

TEST(CLibrary, StrcatAppends) {
  char to[8] = "ab";
  EXPECT_EQ(TestedStrcat(to, "cd"), to);
  EXPECT_STREQ(to, "abcd");
  EXPECT_EQ(TestedStrcat(to, ""), to);
  EXPECT_STREQ(to, "abcd");
}

TEST(CLibrary, StrcmpOrdersTexts) {
  EXPECT_EQ(TestedStrcmp("abc", "abc"), 0);
  EXPECT_EQ(TestedStrcmp("", ""), 0);
  EXPECT_EQ(Sign(TestedStrcmp("abc", "abd")), -1);
  EXPECT_EQ(Sign(TestedStrcmp("abcd", "abc")), 1);
  EXPECT_EQ(Sign(TestedStrcmp("", "a")), -1);
}

TEST(CLibrary, BytesBeyondAsciiAreCompared) {
  EXPECT_EQ(TestedStrcmp("\xC3\xA4", "\xC3\xA4"), 0);
  EXPECT_NE(TestedStrcmp("\xC3\xA4", "\xC3\xA5"), 0);
  EXPECT_NE(TestedStrncmp("\xE4", "a", 1), 0);
}

TEST(CLibrary, StrncmpLooksAtNoMoreThanCountCharacters) {
  EXPECT_EQ(TestedStrncmp("abc", "abd", 2), 0);
  EXPECT_EQ(Sign(TestedStrncmp("abc", "abd", 3)), -1);
  EXPECT_EQ(TestedStrncmp("ab", "ab", 9), 0);
  EXPECT_EQ(TestedStrncmp("a", "b", 0), 0);
}

TEST(CLibrary, StrstrFindsTheFirstPlace) {
  char text[] = "aababc";
  EXPECT_EQ(TestedStrstr(text, "ab"), text + 1);
  EXPECT_EQ(TestedStrstr(text, "abc"), text + 3);
  EXPECT_EQ(TestedStrstr(text, "x"), nullptr);
  EXPECT_EQ(TestedStrstr(text, "aababcd"), nullptr);
  EXPECT_EQ(TestedStrstr(text, ""), text);
}

int CompareInts(const void *first, const void *second) {
  return *static_cast<const int *>(first) - *static_cast<const int *>(second);
}

TEST(CLibrary, QsortSorts) {
  int numbers[] = {5, -1, 3, 5, 0, 2};
  TestedQsort(numbers, 6, sizeof(int), CompareInts);
  EXPECT_EQ((std::vector<int>(numbers, numbers + 6)), (std::vector<int>{-1, 0, 2, 3, 5, 5}));
  int one[] = {4};
  TestedQsort(one, 1, sizeof(int), CompareInts);
  TestedQsort(one, 0, sizeof(int), CompareInts);
  EXPECT_EQ(one[0], 4);
}

/// What SetJump returns after a jump with the value.
UINTN ValueAfterJump(int value) {
  static BASE_LIBRARY_JUMP_BUFFER buffer;
  static volatile bool jumped;
  jumped = false;
  UINTN result = SetJump(&buffer);
  if (!jumped) {
    EXPECT_EQ(result, 0u);
    jumped = true;
    TestedLongjmp(&buffer, value);
  }
  return result;
}

TEST(CLibrary, LongjmpReturnsItsValue) {
  EXPECT_EQ(ValueAfterJump(1), 1u);
  EXPECT_EQ(ValueAfterJump(77), 77u);
}

TEST(CLibrary, LongjmpTurns0Into1) { EXPECT_EQ(ValueAfterJump(0), 1u); }

}  // namespace
