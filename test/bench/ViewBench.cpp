#include "test/bench/ViewBench.h"

#include <vector>

#include "test/bench/Report.h"
#include "test/bench/Timing.h"
#include "test/bench/ViewRun.h"

namespace bench {

namespace {

constexpr Resolution kDesign = {1920, 1080};
constexpr Resolution kResolutions[] = {{1024, 768}, {1920, 1080}, {2560, 1440}, {3840, 2160}};
constexpr int kRounds = 5;
// What a user does not notice: a focus change is drawn within one frame of a display of 60 Hz.
constexpr double kDisplayFrame = 0.016;
constexpr double kLongestTurn = 0.050;
constexpr char kFrameAim[] = "aim: a display's frame";
constexpr char kTurnAim[] = "aim: the longest turn";

std::string Label(const Resolution &resolution) {
  return std::to_string(resolution.Width) + "x" + std::to_string(resolution.Height);
}

Figures MediansOf(const std::vector<Figures> &runs) {
  Figures medians;
  for (const auto &[name, value] : runs.front()) {
    std::vector<double> values;
    for (const Figures &run : runs) {
      values.push_back(run.at(name));
    }
    medians[name] = Median(values);
  }
  return medians;
}

void ReportStart(Figures view, Figures libraries) {
  ReportGroup("Start-up at " + Label(kDesign) + ", 99 components, without the transfer");
  ReportAlone("intake", view["intake"]);
  Report("decode", view["decode"], "lodepng alone", libraries["decode"]);
  ReportAlone("resample", view["resample"]);
  ReportAlone("hotspots", view["hotspots"]);
  Report("fonts", view["fonts"], "159 FreeType faces alone", libraries["faces"]);
  double widgets = view["view"] - view["decode"] - view["resample"] - view["hotspots"];
  ReportAlone("widgets", widgets);
  double named = view["intake"] + view["fonts"] + view["view"];
  ReportAlone("start of LVGL and all the rest", view["start"] - named);
  ReportAlone("first frame", view["frame"]);
  double whole = view["start"] + view["frame"];
  double bare = libraries["decode"] + libraries["faces"];
  Report("all of it", whole, "lodepng and FreeType alone", bare);
  Report("all but decode and fonts", whole - view["decode"] - view["fonts"],
         "lodepng and FreeType alone", bare);
}

void ReportDrawn(const std::string &measure, Figures *view, const std::string &kind) {
  auto pixels = static_cast<unsigned long>((*view)[kind + "Pixels"]);
  Report(measure, (*view)[kind], "memcpy of its " + std::to_string(pixels) + " pixels",
         (*view)[kind + "Copy"]);
}

void ReportLoop(const Resolution &resolution, Figures view) {
  ReportGroup("Main loop at " + Label(resolution) + ", 99 components, without the transfer");
  ReportAlone("idle turn, a millisecond after the last", view["idle"]);
  ReportAlone("idle turn, at once after the last", view["idleAtOnce"]);
  ReportDrawn("pointer moves onto another component", &view, "crossing");
  ReportDrawn("pointer moves beside the components", &view, "moving");
  ReportDrawn("redraw of the full screen", &view, "redraw");
}

void ReportUse(const Resolution &resolution, Figures view) {
  ReportGroup("To the finished frame at " + Label(resolution) +
              ", 99 components, without the transfer");
  Report("focus change by pointer", view["crossing"], kFrameAim, kDisplayFrame);
  Report("focus change by Tab", view["key"], kFrameAim, kDisplayFrame);
  Report("filter click, one category", view["filterOne"], kTurnAim, kLongestTurn);
  Report("filter click, all components", view["filterAll"], kTurnAim, kLongestTurn);
  Report("status refresh, nothing new", view["refresh"], "the host's 99 answers alone",
         view["queries"]);
  Report("status refresh, all dots change", view["refreshChanged"], kTurnAim, kLongestTurn);
  Report("panel with 20 lines of full length", view["panel"], kTurnAim, kLongestTurn);
  Report("F12 to the choice of volumes", view["volumeBox"], kTurnAim, kLongestTurn);
  ReportAlone("volume chosen to the outcome, file written", view["screenshot"]);
  Report("longest turn of the run without that", view["longest"], kTurnAim, kLongestTurn);
}

}  // namespace

bool RunViewBench() {
  std::vector<Figures> views, libraries;
  for (int round = 0; round < kRounds; round++) {
    libraries.push_back(MeasureLibraries());
    views.push_back(MeasureView(kDesign));
    if (libraries.back().empty() || views.back().empty()) {
      return false;
    }
  }
  Figures design = MediansOf(views);
  ReportStart(design, MediansOf(libraries));
  ReportLoop(kDesign, design);
  ReportUse(kDesign, design);
  std::vector<Figures> sizes;
  for (const Resolution &resolution : kResolutions) {
    sizes.push_back(MeasureView(resolution));
    if (sizes.back().empty()) {
      return false;
    }
  }
  ReportLoop(kResolutions[3], sizes[3]);
  ReportUse(kResolutions[3], sizes[3]);
  ReportGroup("Pool memory");
  for (size_t i = 0; i < sizes.size(); i++) {
    ReportBytes("peak at " + Label(kResolutions[i]), sizes[i]["peak"]);
    ReportBytes("in use at the end at " + Label(kResolutions[i]), sizes[i]["live"]);
    ReportBytes("peak with screenshots at " + Label(kResolutions[i]), sizes[i]["screenshotPeak"]);
  }
  return true;
}

}  // namespace bench
