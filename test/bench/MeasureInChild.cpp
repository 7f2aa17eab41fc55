#include "test/bench/MeasureInChild.h"

#include <cstdio>
#include <sstream>

#include "test/firmware/Child.h"

namespace bench {

namespace {

constexpr unsigned kMostSeconds = 300;

}  // namespace

Figures MeasureInChild(const std::string &what, const std::function<bool(std::string *)> &body) {
  fake::ChildResult child =
      fake::RunInChild([&](std::string *text) { return body(text) ? 0 : 1; }, kMostSeconds);
  if (!child.Succeeded) {
    std::printf("  %s could not be measured: %s\n%s\n", what.c_str(), child.Summary().c_str(),
                child.Output.c_str());
    return {};
  }
  Figures figures;
  std::istringstream lines(child.Text);
  std::string name;
  for (double value; lines >> name >> value;) {
    figures[name] = value;
  }
  return figures;
}

}  // namespace bench
