// Prints one line per measure: what, our figure, the peer, its figure, and the ratio of the two
// (below 1: we are faster). Arguments: "resampler", "view", or none for both.

#include <cstdio>
#include <string>

#include "test/bench/ResamplerBench.h"
#include "test/bench/ViewBench.h"

int main(int count, char **arguments) {
  std::string part = count > 1 ? arguments[1] : "all";
  if (part != "all" && part != "resampler" && part != "view") {
    std::fprintf(stderr, "There is no part \"%s\"; there are \"resampler\" and \"view\".\n",
                 part.c_str());
    return 2;
  }
  bool good = part == "view" || bench::RunResamplerBench();
  good = (part == "resampler" || bench::RunViewBench()) && good;
  return good ? 0 : 1;
}
