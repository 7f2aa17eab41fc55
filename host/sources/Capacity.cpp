#include "host/sources/Capacity.h"

namespace obv_host {
namespace {

constexpr UINT64 kMegabyte = 1'000'000;
constexpr UINT64 kGigabyte = 1000 * kMegabyte;
constexpr UINT64 kTerabyte = 1000 * kGigabyte;

}  // namespace

void TellCapacity(UINT64 bytes, Facts *facts) {
  if (bytes == 0) {
    return;
  }
  UINT64 unit = bytes >= kTerabyte ? kTerabyte : bytes >= kGigabyte ? kGigabyte : kMegabyte;
  const CHAR8 *name = unit == kTerabyte ? "TB" : unit == kGigabyte ? "GB" : "MB";
  UINT64 whole = bytes / unit;
  UINT64 tenths = bytes % unit / (unit / 10);
  // Beyond ten gigabytes nobody sells tenths.
  if (tenths == 0 || (unit != kTerabyte && whole >= 10)) {
    TellFact(facts, OBV_INFO_DESCRIPTION, "Capacity", "%lu %a", whole, name);
  } else {
    TellFact(facts, OBV_INFO_DESCRIPTION, "Capacity", "%lu.%lu %a", whole, tenths, name);
  }
}

}  // namespace obv_host
