// Whole runs in which LVGL cannot go on for want of memory: the setup gets its screen back, and the
// state of a visit is kept only when there was a view to visit.

#include "test/unit/stage/WholeRun.h"

#include "platform/LvglPort.h"
#include "view/ViewState.h"

namespace {

using fake::Service;

constexpr UINT64 kSetupBytes = 1280 * 1024 * 4;
constexpr UINT64 kViewBytes = 1920 * 1080 * 4;
// The largest of LVGL's own blocks.
constexpr UINT64 kCacheBytes = LV_IMG_CACHE_DEF_SIZE * sizeof(_lv_img_cache_entry_t);
constexpr char kRefusal[] = "ERROR malloc: AllocatePool returned Out of Resources\n";

class LvglFailure : public WholeRun {
 protected:
  LvglFailure() {
    LeaveFontsOut();
    Install({{1280, 1024}, {1920, 1080}});
    Host.OnDebugPrint = [this](const fake::LogLine &line) {
      if (line.Text == kRefusal) {
        refusals_++;
        room_ = Machine.Pool.Capacity - Machine.Pool.LiveBytes();
        Machine.Pool.Capacity = UINT64{1} << 30;
      }
    };
  }

  /// A pool with room for the saved setup screen, LVGL and not quite a view, until it refuses for
  /// the first time.
  void RefuseTheFirstDrawBuffer() {
    Machine.Pool.Capacity = kSetupBytes + kCacheBytes + kViewBytes;
  }
  void ExpectTheFirstDrawBufferRefused() {
    EXPECT_EQ(refusals_, 1);
    EXPECT_GT(room_, kViewBytes * 9 / 10) << "something smaller was refused";
    EXPECT_TRUE(gView.CloseButton == nullptr);
    EXPECT_EQ(Machine.Calls.CountOf(Service::HostGetFontData), 0u);
  }
  /// The text after a log line of exactly this text; empty when there is none.
  std::string LineAfter(std::string_view text) const {
    for (size_t i = 0; i + 1 < Host.Log.size(); i++) {
      if (Host.Log[i].Text == text) {
        return Host.Log[i + 1].Text;
      }
    }
    return "";
  }
  /// What a visit leaves for the next one.
  std::string Saved() const {
    const OBV_SHARED_STATE &state = Host.State;
    std::string text;
    for (UINT32 value : {UINT32{state.UiStateSaved}, UINT32{state.FocusIndex},
                         state.SelectedCategory, UINT32{state.PointerX}, UINT32{state.PointerY}}) {
      text += std::to_string(value) + " ";
    }
    return text;
  }

  int refusals_ = 0;
  UINT64 room_ = 0;
};

TEST_F(LvglFailure, WithoutADrawBufferTheRunEndsWithTheSetupScreenBack) {
  RefuseTheFirstDrawBuffer();
  EXPECT_EQ(Run().Status, EFI_OUT_OF_RESOURCES);
  ExpectTheFirstDrawBufferRefused();
  EXPECT_TRUE(LineAfter(kRefusal).starts_with("[OBV] LVGL cannot go on: LvglPort.cpp "))
      << LineAfter(kRefusal);
  EXPECT_TRUE(SetupScreenIsBack());
  EXPECT_EQ(Machine.Calls.CountOf(Service::HostAfterAppLife), 1u);
  EXPECT_EQ(Machine.Leftovers(), "");
}

TEST_F(LvglFailure, WithoutADrawBufferTheStateOfTheLastVisitIsKept) {
  Host.State.UiStateSaved = 1;
  Host.State.FocusIndex = 7;
  Host.State.SelectedCategory = OBV_TYPE_SATA;
  Host.State.PointerX = 321;
  Host.State.PointerY = 123;
  std::string before = Saved();
  RefuseTheFirstDrawBuffer();
  Run();
  ExpectTheFirstDrawBufferRefused();
  EXPECT_EQ(Saved(), before);
}

TEST_F(LvglFailure, WithoutADrawBufferAFirstVisitSavesNothing) {
  RefuseTheFirstDrawBuffer();
  Run();
  ExpectTheFirstDrawBufferRefused();
  EXPECT_EQ(Saved(), "0 0 0 0 0 ");
}

TEST_F(LvglFailure, OnceTheViewStandsItsStateIsSaved) {
  fake::RunOptions options;
  options.EscapeAtTurn = 0;
  options.MostTurns = 300;
  options.At(30, [this] {
    lv_event_send(gView.FilterButtons[4], LV_EVENT_CLICKED, nullptr);
    lv_group_focus_obj(gView.Components[5].Callout);
  });
  options.At(40, [this] {
    // The next filter's hint finds no memory.
    Machine.Pool.Capacity = Machine.Pool.LiveBytes();
    Machine.Keyboard.Scan(SCAN_INSERT);
  });
  EXPECT_EQ(Run(options).Status, EFI_OUT_OF_RESOURCES);
  EXPECT_GE(refusals_, 1);
  EXPECT_TRUE(LineAfter(kRefusal).starts_with("[OBV] LVGL cannot go on: LvglGuard.cpp "))
      << LineAfter(kRefusal);
  EXPECT_EQ(Host.State.UiStateSaved, 1);
  EXPECT_EQ(Host.State.SelectedCategory, UINT32{OBV_TYPE_FAN});
  EXPECT_NE(Host.State.FocusIndex, 0);
  EXPECT_TRUE(SetupScreenIsBack());
  EXPECT_EQ(Machine.Leftovers(), "");
}

}  // namespace
