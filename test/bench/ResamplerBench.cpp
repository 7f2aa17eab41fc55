#include <algorithm>
#include <cstdio>
#include <random>

#include "test/bench/Peers.h"
#include "test/bench/Report.h"
#include "test/bench/ResamplerBench.h"

#include "resources/Resampler.h"

namespace bench {

namespace {

struct Sizes {
  size_t SourceWidth, SourceHeight, TargetWidth, TargetHeight;
};

constexpr Sizes kSizes[] = {{3840, 2160, 1440, 810},
                            {1920, 1080, 1440, 810},
                            {1280, 720, 1440, 810},
                            {1920, 1080, 768, 576}};
constexpr int kRounds = 41;

std::vector<uint8_t> Noise(size_t size) {
  std::minstd_rand random(1);
  std::vector<uint8_t> bytes(size);
  std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<uint8_t>(random() >> 16); });
  return bytes;
}

std::string Label(const Sizes &s) {
  return std::to_string(s.SourceWidth) + "x" + std::to_string(s.SourceHeight) + " to " +
         std::to_string(s.TargetWidth) + "x" + std::to_string(s.TargetHeight);
}

void Ours(const Scaling &s) {
  // The sizes are good, and the result is compared before anything is measured.
  (void)ResampleBilinear(s.Source, s.SourceWidth, s.SourceHeight, s.Target, s.TargetWidth,
                         s.TargetHeight);
}

/// Every contender has a target of its own, so that none finds it warmer than another.
class Match {
 public:
  explicit Match(const Sizes &sizes)
      : sizes_(sizes), source_(Noise(sizes.SourceWidth * sizes.SourceHeight * 4)) {}

  bool OursIsExact() {
    Scaling plain = NewScaling();
    Scaling ours = NewScaling();
    PlainResample(plain);
    Ours(ours);
    return targets_[0] == targets_[1];
  }

  void Measure() {
    std::vector<Contender> all = {{"ours", [s = NewScaling()] { Ours(s); }},
                                  {"plain loop", [s = NewScaling()] { PlainResample(s); }}};
    size_t firstPeer = all.size();
    std::vector<Peer> peers = ResamplerPeers();
    for (const Peer &peer : peers) {
      all.push_back({peer.Name, peer.Make(NewScaling())});
    }
    std::vector<double> times = Medians(all, kRounds);
    Report("resample " + Label(sizes_), times[0], all[1].Name, times[1]);
    size_t best = 0;
    for (size_t i = 0; i < peers.size(); i++) {
      double time = times[firstPeer + i];
      std::string outlook = peers[i].MayRunInFirmware ? "" : "outlook: ";
      Report("resample " + Label(sizes_), times[0], outlook + peers[i].Name, time);
      best = peers[i].MayRunInFirmware && time < times[firstPeer + best] ? i : best;
    }
    Report("resample " + Label(sizes_), times[0], "best peer: " + peers[best].Name,
           times[firstPeer + best]);
  }

 private:
  Scaling NewScaling() {
    targets_.emplace_back(sizes_.TargetWidth * sizes_.TargetHeight * 4);
    return {source_.data(),         sizes_.SourceWidth, sizes_.SourceHeight,
            targets_.back().data(), sizes_.TargetWidth, sizes_.TargetHeight};
  }

  Sizes sizes_;
  std::vector<uint8_t> source_;
  std::vector<std::vector<uint8_t>> targets_;
};

}  // namespace

bool RunResamplerBench() {
  ReportGroup("Resampler");
  for (const Sizes &sizes : kSizes) {
    Match match(sizes);
    if (!match.OursIsExact()) {
      std::printf("  resample %s: the result is wrong\n", Label(sizes).c_str());
      return false;
    }
    match.Measure();
  }
  return true;
}

}  // namespace bench
