#include "test/bench/Timing.h"

#include <algorithm>
#include <ctime>

namespace bench {

namespace {

double Read(clockid_t clock) {
  timespec now{};
  clock_gettime(clock, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

}  // namespace

// The clock of the processor's time takes a system call, the other one does not: it is read inside.
Stopwatch::Stopwatch() : processor_(Read(CLOCK_THREAD_CPUTIME_ID)), wall_(Read(CLOCK_MONOTONIC)) {}

double Stopwatch::Elapsed() const {
  double wall = Read(CLOCK_MONOTONIC) - wall_;
  return std::min(wall, Read(CLOCK_THREAD_CPUTIME_ID) - processor_);
}

double Median(std::vector<double> values) {
  if (values.empty()) {
    return 0;
  }
  auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

std::vector<double> Medians(const std::vector<Contender> &contenders, int rounds) {
  std::vector<std::vector<double>> times(contenders.size());
  for (int round = 0; round <= rounds; round++) {
    for (size_t i = 0; i < contenders.size(); i++) {
      Stopwatch stopwatch;
      contenders[i].Run();
      double elapsed = stopwatch.Elapsed();
      if (round > 0) {
        times[i].push_back(elapsed);
      }
    }
  }
  std::vector<double> medians;
  for (const std::vector<double> &own : times) {
    medians.push_back(Median(own));
  }
  return medians;
}

}  // namespace bench
