// Prints one line per measure: what, our figure, the peer, its figure, and the ratio of the two
// (below 1: we are faster, or smaller). The argument is the part to measure; none for all parts.

#include <cstdio>
#include <string>

#include "test/bench/EncodeBench.h"
#include "test/bench/HostBench.h"
#include "test/bench/ResamplerBench.h"
#include "test/bench/ViewBench.h"

namespace {

struct Part {
  const char *Name;
  bool (*Run)();
};

constexpr Part kParts[] = {{"resampler", bench::RunResamplerBench},
                           {"encoder", bench::RunEncodeBench},
                           {"host", bench::RunHostBench},
                           {"view", bench::RunViewBench}};

}  // namespace

int main(int count, char **arguments) {
  std::string wanted = count > 1 ? arguments[1] : "all";
  bool known = false;
  bool good = true;
  for (const Part &part : kParts) {
    if (wanted == "all" || wanted == part.Name) {
      known = true;
      good = part.Run() && good;
    }
  }
  if (!known) {
    std::fprintf(stderr,
                 "There is no part \"%s\". Parts are: all, resampler, encoder, host, view.\n",
                 wanted.c_str());
    return 2;
  }
  return good ? 0 : 1;
}
