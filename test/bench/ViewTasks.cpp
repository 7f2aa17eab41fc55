#include "test/bench/ViewTasks.h"
#include "test/bench/BenchHost.h"

#include "lvgl.h"
#include "view/ViewState.h"

namespace bench {

namespace {

constexpr int kQuietTurns = 200;
constexpr int kMoves = 99;
constexpr int kRedraws = 15;
constexpr int kRefreshes = 15;
constexpr int kPanels = 15;
constexpr int kFilterRounds = 4;
constexpr int kScreenshots = 3;
constexpr uint64_t kRefreshPeriod = 2000;
constexpr int kTurnsOfAMove = 4;
// The application reads a key, and lets go of it, in turns of their own.
constexpr int kTurnsOfAKey = 12;

/// What the tasks act on; they keep copies of it.
struct Stage {
  fake::Firmware *Firmware;
  fake::TestHost *Host;
  Resolution Size;

  void MoveTo(const Place &place) const {
    // The host scales the components just so.
    Firmware->Tablet()->MoveTo(place.X * Size.Width / 1920, place.Y * Size.Height / 1080);
  }

  void PointAtFilter(size_t button, bool pressed) const {
    lv_area_t area;
    lv_obj_get_coords(gView.FilterButtons[button], &area);
    Firmware->Tablet()->MoveTo(static_cast<uint64_t>((area.x1 + area.x2) / 2),
                               static_cast<uint64_t>((area.y1 + area.y2) / 2), pressed ? 1 : 0);
  }

  void FillWithLongLines(size_t index) const {
    // As many lines, and as long ones, as a component can have.
    constexpr size_t kLabel = OBV_INFO_LABEL_LENGTH - 1, kValue = OBV_INFO_VALUE_LENGTH - 1;
    fake::TestHost::ComponentAnswer &answer =
        Host->Answers[fake::ToU16(Host->Components[index].Name)];
    answer.Lines.clear();
    for (size_t i = 0; i < OBV_INFO_CAPACITY; i++) {
      std::u16string value;
      while (value.size() < kValue) {
        value += u"Lorem ipsum dolor ";
      }
      value.resize(kValue);
      UINT32 kind = i % 2 == 0 ? OBV_INFO_DESCRIPTION : OBV_INFO_SIDE_LIST;
      answer.Lines.push_back({std::u16string(kLabel, u'l'), value, kind});
    }
  }
};

class Planner {
 public:
  explicit Planner(const Stage &stage) : stage_(stage) {}

  Tasks Plan() {
    PlanQuiet();
    PlanMoves();
    PlanFilters();
    PlanKeys();
    PlanRefreshes();
    PlanPanels();
    PlanScreenshots();
    return std::move(tasks_);
  }

 private:
  void Add(const std::string &kind, std::function<void()> prepare, int turns = kTurnsOfAMove) {
    tasks_.push_back({kind, std::move(prepare), turns});
  }

  void PlanQuiet() {
    for (int i = 0; i < kQuietTurns; i++) {
      Add("idle", nullptr, 1);
    }
    Add("", [on = stage_] { on.Firmware->Clock.StepPerLook = 0; });
    for (int i = 0; i < kQuietTurns; i++) {
      Add("idleAtOnce", nullptr, 1);
    }
    Add("", [on = stage_] { on.Firmware->Clock.StepPerLook = 1; });
  }

  void PlanMoves() {
    for (size_t i = 0; i < kMoves; i++) {
      Add("crossing", [on = stage_, i] { on.MoveTo(ComponentPlace(i)); });
    }
    for (size_t i = 0; i < kMoves; i++) {
      Add(i == 0 ? "" : "moving", [on = stage_, i] { on.MoveTo(EmptyPlace(i)); });
    }
    for (int i = 0; i < kRedraws; i++) {
      Add("redraw", [] { lv_obj_invalidate(lv_scr_act()); });
    }
  }

  void PlanFilters() {
    // The last click is on the first button, which shows all components again.
    for (int i = kFilterRounds * static_cast<int>(kCategoryCount); i >= 0; i--) {
      size_t button = static_cast<size_t>(i) % kCategoryCount;
      Add("", [on = stage_, button] { on.PointAtFilter(button, false); });
      Add("", [on = stage_, button] { on.PointAtFilter(button, true); });
      Add(button == 0 ? "filterAll" : "filterOne",
          [on = stage_, button] { on.PointAtFilter(button, false); });
    }
  }

  void PlanKeys() {
    Add("", [on = stage_] { on.MoveTo(EmptyPlace(0)); });
    for (int i = 0; i < kMoves; i++) {
      Add(
          "key", [on = stage_] { on.Firmware->Keyboard.Character(u'\t'); }, kTurnsOfAKey);
    }
  }

  void PlanRefreshes() {
    // Only some categories are asked for their status again; here all components are of one.
    Add("", [on = stage_] {
      for (OBV_COMPONENT &component : on.Host->Components) {
        component.Type = OBV_TYPE_USB;
      }
    });
    for (int i = 0; i < kRefreshes; i++) {
      Add("refresh", [on = stage_] { on.Firmware->Clock.Advance(kRefreshPeriod); });
    }
    for (int i = 0; i < kRefreshes; i++) {
      Add("refreshChanged", [on = stage_, i] {
        for (auto &[name, answer] : on.Host->Answers) {
          // The dot of the present ones, and the dots of the failing ones.
          answer.Status = i % 2 == 0 ? EFI_DEVICE_ERROR : EFI_SUCCESS;
        }
        on.Firmware->Clock.Advance(kRefreshPeriod);
      });
    }
  }

  void PlanPanels() {
    Add("", [on = stage_] { on.FillWithLongLines(0); });
    // The next refresh reads the lines.
    Add("", [on = stage_] { on.Firmware->Clock.Advance(kRefreshPeriod); });
    for (int i = 0; i < kPanels; i++) {
      Add("", [on = stage_] { on.MoveTo(ComponentPlace(1)); });
      Add("panel", [on = stage_] { on.MoveTo(ComponentPlace(0)); });
    }
    Add("", [on = stage_] { on.MoveTo(EmptyPlace(0)); });
  }

  void PlanScreenshots() {
    for (int i = 0; i < kScreenshots; i++) {
      Add(
          kVolumeBoxKind, [on = stage_] { on.Firmware->Keyboard.Scan(SCAN_F12); }, kTurnsOfAKey);
      Add(
          kScreenshotKind, [on = stage_] { on.Firmware->Keyboard.Character(u'\r'); }, kTurnsOfAKey);
      Add(
          "closeBox", [on = stage_] { on.Firmware->Keyboard.Character(u'\r'); }, kTurnsOfAKey);
    }
  }

  Stage stage_;
  Tasks tasks_;
};

}  // namespace

Tasks PlanTasks(fake::Firmware &firmware, fake::TestHost &host, const Resolution &resolution) {
  return Planner({&firmware, &host, resolution}).Plan();
}

}  // namespace bench
