#include "test/bench/Report.h"

#include <cstdio>

namespace bench {

namespace {

std::string Time(double seconds) {
  char text[32];
  if (seconds < 1e-3) {
    std::snprintf(text, sizeof text, "%.2f us", seconds * 1e6);
  } else {
    std::snprintf(text, sizeof text, "%.3f ms", seconds * 1e3);
  }
  return text;
}

std::string Size(double bytes) {
  char text[32];
  std::snprintf(text, sizeof text, "%.2f MiB", bytes / (1024 * 1024));
  return text;
}

void Line(const std::string &measure, const std::string &ours, const std::string &peer,
          const std::string &peers, double ratio) {
  std::printf("  %-44s %12s   %-34s %12s   %8.2f\n", measure.c_str(), ours.c_str(), peer.c_str(),
              peers.c_str(), ratio);
  std::fflush(stdout);
}

}  // namespace

void ReportGroup(const std::string &title) { std::printf("\n%s\n", title.c_str()); }

void Report(const std::string &measure, double ours, const std::string &peer, double peers) {
  Line(measure, Time(ours), peer, Time(peers), ours / peers);
}

void ReportAlone(const std::string &measure, double ours) {
  std::printf("  %-44s %12s\n", measure.c_str(), Time(ours).c_str());
  std::fflush(stdout);
}

void ReportBytes(const std::string &measure, double bytes) {
  std::printf("  %-44s %12s\n", measure.c_str(), Size(bytes).c_str());
  std::fflush(stdout);
}

void ReportBytes(const std::string &measure, double ours, const std::string &peer, double peers) {
  Line(measure, Size(ours), peer, Size(peers), ours / peers);
}

}  // namespace bench
