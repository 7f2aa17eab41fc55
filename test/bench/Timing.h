// Measuring: contenders run in turn, so that whatever else the machine does hits all of them.

#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

/// Measures from its construction on. Time in which the machine ran something else does not count;
/// what is short is measured to some ten nanoseconds.
class Stopwatch {
 public:
  Stopwatch();
  /// Seconds so far.
  double Elapsed() const;

 private:
  double processor_;
  double wall_;
};

/// The middle value; 0 for none.
double Median(std::vector<double> values);

struct Contender {
  std::string Name;
  std::function<void()> Run;
};

/// Runs all contenders `rounds` times, one after the other in each round, after a round that does
/// not count. Returns their medians in seconds, in their order.
std::vector<double> Medians(const std::vector<Contender> &contenders, int rounds);

}  // namespace bench
