#include "Meter.h"

namespace {

struct Meter {
  UINT64 Uncounted;
  UINT64 Since;  ///< The beginning of what does not count now.
  UINTN Depth;
};
Meter gMeter;

}  // namespace

UINT64 CountedTicks() {
  UINT64 now = gMeter.Depth == 0 ? AsmReadTsc() : gMeter.Since;
  return now - gMeter.Uncounted;
}

UINT64 TicksOfMillion() {
  UINTN rounds = 1000000 / 2;
  UINT64 start = AsmReadTsc();
  __asm__ __volatile__(
      "1: dec %0\n"
      "jnz 1b"
      : "+r"(rounds)
      :
      : "cc");
  return AsmReadTsc() - start;
}

Uncounted::Uncounted() {
  if (gMeter.Depth == 0) {
    gMeter.Since = AsmReadTsc();
  }
  gMeter.Depth++;
}

Uncounted::~Uncounted() {
  gMeter.Depth--;
  if (gMeter.Depth == 0) {
    gMeter.Uncounted += AsmReadTsc() - gMeter.Since;
  }
}
