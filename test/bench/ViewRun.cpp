#include "test/bench/ViewRun.h"

#include <cstdio>
#include <sstream>

#include "lvgl.h"
#include "test/bench/BenchHost.h"
#include "test/bench/MeasureInChild.h"
#include "test/bench/Probes.h"
#include "test/bench/ScreenProbe.h"
#include "test/bench/Timing.h"
#include "test/firmware/Run.h"

namespace bench {

namespace {

// Keys and pointer are drained at first, and the first frames are drawn.
constexpr int kWarmUpTurns = 400;
constexpr int kQuietTurns = 200;
constexpr int kMoves = 99;
constexpr int kRedraws = 15;
constexpr int kCopies = 15;

struct Task {
  std::string Kind;  ///< Empty for a turn that does not count.
  std::function<void()> Prepare;
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
    Plan();
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
    text_ << "peak " << firmware_.Pool.PeakBytes() - before << "\n";
    text_ << "live " << liveBytes_ - before << "\n";
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
    return ScreenProbe(firmware_.AddOutput({{size_.Width, size_.Height}}).Protocol());
  }

  void Add(const std::string &kind, std::function<void()> prepare, int quiet = 3) {
    tasks_.push_back({kind, std::move(prepare)});
    for (int i = 0; i < quiet; i++) {
      tasks_.push_back({});
    }
  }

  void Plan() {
    for (int i = 0; i < kQuietTurns; i++) {
      Add("idle", nullptr, 0);
    }
    Add("", [this] { firmware_.Clock.StepPerLook = 0; });
    for (int i = 0; i < kQuietTurns; i++) {
      Add("idleAtOnce", nullptr, 0);
    }
    Add("", [this] { firmware_.Clock.StepPerLook = 1; });
    for (size_t i = 0; i < kMoves; i++) {
      Add("crossing", [this, i] { MoveTo(ComponentPlace(i)); });
    }
    for (size_t i = 0; i < kMoves; i++) {
      Add(i == 0 ? "" : "moving", [this, i] { MoveTo(EmptyPlace(i)); });
    }
    for (int i = 0; i < kRedraws; i++) {
      Add("redraw", [] { lv_obj_invalidate(lv_scr_act()); });
    }
  }

  void MoveTo(const Place &place) {
    // The host scales the components just so.
    firmware_.Tablet()->MoveTo(place.X * size_.Width / 1920, place.Y * size_.Height / 1080);
  }

  /// Prepares the turn after this one.
  void Next(int turn) {
    if (turn < kWarmUpTurns) {
      return;
    }
    if (tasks_.empty()) {
      liveBytes_ = firmware_.Pool.LiveBytes();
      firmware_.Keyboard.Scan(SCAN_ESC);
      return;
    }
    Task task = std::move(tasks_.front());
    tasks_.pop_front();
    if (!task.Kind.empty()) {
      turnsOf_[task.Kind].push_back(static_cast<size_t>(turn));
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
    for (const auto &[kind, turns] : turnsOf_) {
      std::vector<double> seconds, pixels;
      for (size_t turn : turns) {
        seconds.push_back(gProbes.Turns.at(turn).Seconds);
        pixels.push_back(static_cast<double>(gProbes.Turns.at(turn).Pixels));
      }
      double middle = Median(pixels);
      text_ << kind << " " << Median(seconds) << "\n";
      text_ << kind << "Pixels " << middle << "\n";
      text_ << kind << "Copy " << CopySeconds(static_cast<size_t>(middle)) << "\n";
    }
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
  std::deque<Task> tasks_;
  std::map<std::string, std::vector<size_t>> turnsOf_;
  uint64_t liveBytes_ = 0;
  std::ostringstream text_;
};

}  // namespace

Figures MeasureView(const Resolution &resolution) {
  return MeasureInChild("The view", [&](std::string *text) {
    return std::make_unique<ViewRun>(resolution)->Measure(text);
  });
}

}  // namespace bench
