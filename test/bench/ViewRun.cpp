#include "test/bench/ViewRun.h"

#include <algorithm>
#include <cstdio>
#include <sstream>

#include "test/bench/BenchHost.h"
#include "test/bench/MeasureInChild.h"
#include "test/bench/Probes.h"
#include "test/bench/ScreenProbe.h"
#include "test/bench/Timing.h"
#include "test/bench/ViewTasks.h"
#include "test/firmware/Run.h"

namespace bench {

namespace {

// Keys and pointer are drained at first, and the first frames are drawn.
constexpr int kWarmUpTurns = 400;
constexpr int kCopies = 15;
constexpr int kQueries = 15;

/// Turns, by their number.
struct Span {
  size_t First, Count;
};

class ViewRun {
 public:
  explicit ViewRun(const Resolution &resolution)
      : size_(resolution), host_(firmware_), screen_(AddScreen()) {}

  bool Measure(std::string *text) {
    if (!Furnish(&host_)) {
      return false;
    }
    host_.Install();
    tasks_ = PlanTasks(firmware_, host_, size_);
    uint64_t before = firmware_.Pool.LiveBytes();
    firmware_.Pool.ResetPeak();
    fake::RunOptions options;
    options.StepPerTurn = 1;
    options.EscapeAtTurn = 0;
    options.EveryTurn = [&](int turn) { Next(turn); };
    // Other benchmarks have passed the probes, too.
    gProbes = {};
    fake::RunResult result = fake::RunApplication(firmware_, options);
    std::printf("status %llx, %s\n", static_cast<unsigned long long>(result.Status),
                firmware_.ProblemsText().c_str());
    WriteStart();
    WriteTurns();
    text_ << "queries " << QuerySeconds() << "\n";
    text_ << "peak " << viewPeak_ - before << "\n";
    text_ << "live " << viewBytes_ - before << "\n";
    text_ << "screenshotPeak " << firmware_.Pool.PeakBytes() - before << "\n";
    *text = text_.str();
    return result.Status == EFI_SUCCESS && firmware_.Problems().empty() && tasks_.empty();
  }

 private:
  ScreenProbe AddScreen() {
    firmware_.Pool.Poison = false;
    firmware_.Calls.RecordAll(false);
    // The firmware's console always has both kinds.
    firmware_.AddSimplePointer();
    firmware_.AddAbsolutePointer({0, 0, size_.Width, size_.Height});
    firmware_.AddVolume();
    return ScreenProbe(firmware_.AddOutput({{size_.Width, size_.Height}}).Protocol());
  }

  /// Prepares the turn after this one.
  void Next(int turn) {
    if (turn < kWarmUpTurns || --turnsLeft_ > 0) {
      return;
    }
    if (tasks_.empty()) {
      firmware_.Keyboard.Scan(SCAN_ESC);
      return;
    }
    Task task = std::move(tasks_.front());
    tasks_.pop_front();
    turnsLeft_ = task.Turns;
    if (!task.Kind.empty()) {
      spansOf_[task.Kind].push_back({static_cast<size_t>(turn), static_cast<size_t>(task.Turns)});
    }
    if (task.Kind == kVolumeBoxKind && viewPeak_ == 0) {
      viewPeak_ = firmware_.Pool.PeakBytes();
      viewBytes_ = firmware_.Pool.LiveBytes();
    }
    if (task.Prepare) {
      task.Prepare();
    }
  }

  void WriteStart() {
    text_ << "start " << gProbes.LoopStart << "\n";
    text_ << "intake " << StepSeconds(Step::Intake) << "\n";
    text_ << "decode " << StepSeconds(Step::Decode) << "\n";
    text_ << "resample " << StepSeconds(Step::Resample) << "\n";
    text_ << "hotspots " << StepSeconds(Step::Hotspots) << "\n";
    text_ << "fonts " << StepSeconds(Step::Fonts) << "\n";
    text_ << "view " << StepSeconds(Step::View) << "\n";
    double frame = 0;
    for (const Turn &turn : gProbes.Turns) {
      frame += turn.Seconds;
      if (turn.Pixels > 0) {
        break;
      }
    }
    text_ << "frame " << frame << "\n";
  }

  void WriteTurns() {
    for (const auto &[kind, spans] : spansOf_) {
      std::vector<double> seconds, pixels;
      for (const Span &span : spans) {
        Turn whole = Sum(span);
        seconds.push_back(whole.Seconds);
        pixels.push_back(static_cast<double>(whole.Pixels));
      }
      double middle = Median(pixels);
      text_ << kind << " " << Median(seconds) << "\n";
      text_ << kind << "Pixels " << middle << "\n";
      text_ << kind << "Copy " << CopySeconds(static_cast<size_t>(middle)) << "\n";
    }
    text_ << "longest " << LongestTurn() << "\n";
  }

  static Turn Sum(const Span &span) {
    Turn sum;
    for (size_t i = 0; i < span.Count; i++) {
      sum.Seconds += gProbes.Turns.at(span.First + i).Seconds;
      sum.Pixels += gProbes.Turns.at(span.First + i).Pixels;
    }
    return sum;
  }

  /// Of all turns but those that save screenshots.
  double LongestTurn() const {
    std::vector<Turn> turns = gProbes.Turns;
    for (const Span &span : spansOf_.at(kScreenshotKind)) {
      std::fill_n(turns.begin() + static_cast<ptrdiff_t>(span.First), span.Count, Turn{});
    }
    auto shorter = [](const Turn &a, const Turn &b) { return a.Seconds < b.Seconds; };
    return std::max_element(turns.begin(), turns.end(), shorter)->Seconds;
  }

  /// The test host's answers about all components, without the application.
  double QuerySeconds() {
    static OBV_COMPONENT_INFO lines[OBV_INFO_CAPACITY];
    auto query = [&] {
      for (OBV_COMPONENT &component : host_.Components) {
        UINT64 count = 0;
        (void)host_.Protocol().QueryComponentStatus(
            &host_.Protocol(), component.Name, component.Type, OBV_INFO_CAPACITY, &count, lines);
      }
    };
    return Medians({{"host", query}}, kQueries)[0];
  }

  static double CopySeconds(size_t pixels) {
    std::vector<uint32_t> from(pixels, 1), to(pixels, 2);
    auto copy = [&] { std::memcpy(to.data(), from.data(), pixels * sizeof(uint32_t)); };
    return Medians({{"memcpy", copy}}, kCopies)[0];
  }

  Resolution size_;
  fake::Firmware firmware_;
  fake::TestHost host_;
  ScreenProbe screen_;
  Tasks tasks_;
  int turnsLeft_ = 0;
  std::map<std::string, std::vector<Span>> spansOf_;
  /// Before the first screenshot.
  uint64_t viewPeak_ = 0, viewBytes_ = 0;
  std::ostringstream text_;
};

}  // namespace

Figures MeasureView(const Resolution &resolution) {
  return MeasureInChild("The view", [&](std::string *text) {
    return std::make_unique<ViewRun>(resolution)->Measure(text);
  });
}

}  // namespace bench
