// A disk's capacity in the words in which it is sold.

#include <gtest/gtest.h>

#include "test/unit/sources/DeviceAnswer.h"

#include "host/sources/Capacity.h"

namespace obv_host {
namespace {

std::string ToldAs(UINT64 bytes) {
  DeviceAnswer answer;
  TellCapacity(bytes, &answer.Told);
  return answer.Line("Capacity");
}

constexpr UINT64 kMegabyte = 1'000'000;
constexpr UINT64 kGigabyte = 1000 * kMegabyte;
constexpr UINT64 kTerabyte = 1000 * kGigabyte;

TEST(Capacity, OfNothingIsNotTold) { EXPECT_EQ(ToldAs(0), "(none)"); }

TEST(Capacity, HasTheUnitThatLeavesAWholeNumber) {
  EXPECT_EQ(ToldAs(512 * kMegabyte), "512 MB");
  EXPECT_EQ(ToldAs(kGigabyte - 1), "999 MB");
  EXPECT_EQ(ToldAs(kGigabyte), "1 GB");
  EXPECT_EQ(ToldAs(kTerabyte - 1), "999 GB");
  EXPECT_EQ(ToldAs(kTerabyte), "1 TB");
}

TEST(Capacity, HasTenthsWhereTheyCount) {
  EXPECT_EQ(ToldAs(2'500 * kMegabyte), "2.5 GB");
  EXPECT_EQ(ToldAs(9'990 * kMegabyte), "9.9 GB");
  EXPECT_EQ(ToldAs(10'900 * kMegabyte), "10 GB");
  EXPECT_EQ(ToldAs(2'560 * kGigabyte), "2.5 TB");
  EXPECT_EQ(ToldAs(15'360 * kGigabyte), "15.3 TB");
  EXPECT_EQ(ToldAs(1'440'000), "1.4 MB");
}

}  // namespace
}  // namespace obv_host
