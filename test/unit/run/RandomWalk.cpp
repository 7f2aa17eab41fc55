// What a random walk looks at after each event.

#include "test/unit/run/RandomWalk.h"
#include "app/base/Geometry.h"
#include "app/base/Run.h"
#include "capture/MessageBox.h"

#include "capture/Screenshot.h"

namespace {

constexpr size_t kHistory = 30;
// From here on everything has been used that is allocated at its first use.
constexpr uint64_t kWarmUpSteps = 500;
constexpr uint64_t kPoolSlack = 128 << 10;

/// From its signature to its last chunk. A screen that an arriving output has just blanked makes a
/// file of some hundred bytes.
bool IsWholePng(const std::vector<uint8_t> &file) {
  constexpr uint8_t kSignature[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  constexpr uint8_t kEnd[] = {0, 0, 0, 0, 'I', 'E', 'N', 'D', 0xAE, 0x42, 0x60, 0x82};
  return file.size() > sizeof kSignature + sizeof kEnd &&
         std::equal(std::begin(kSignature), std::end(kSignature), file.begin()) &&
         std::equal(std::rbegin(kEnd), std::rend(kEnd), file.rbegin());
}

}  // namespace

RandomWalk::RandomWalk(fake::Firmware &machine, fake::TestHost &host, uint64_t seed)
    : machine_(machine), host_(host), random_(seed) {
  outputs_.push_back(&machine.Output());
  outputInUse_ = outputs_[0]->Protocol();
}

std::string RandomWalk::History() const {
  std::string text = "after " + std::to_string(steps_) + " steps, the latest last:";
  for (const std::string &event : history_) {
    text += "\n  " + event;
  }
  return text;
}

std::string RandomWalk::MissingOutcomes() const {
  constexpr const char *kOutcomes[] = {"-> left by Esc",     "-> left by the close button",
                                       "-> left by a jump",  "-> box closed by Esc",
                                       "-> picture saved",   "-> no output left",
                                       "-> output kept",     "-> output changed",
                                       "-> lost output left"};
  std::string missing;
  for (const char *outcome : kOutcomes) {
    if (!counts_.contains(outcome) || counts_.at(outcome) == 0) {
      missing += std::string(outcome) + "\n";
    }
  }
  return missing;
}

std::string RandomWalk::Statistics() const {
  std::string text;
  for (const auto &[name, count] : counts_) {
    text += "  " + std::to_string(count) + " " + name + "\n";
  }
  return text + "  " + std::to_string(poolBytes_) + " bytes of pool at first, later at most " +
         std::to_string(mostPoolBytes_) + "\n";
}

void RandomWalk::Report(const std::string &violation) {
  if (violation_.empty()) {
    violation_ = violation;
  }
}

void RandomWalk::Turn() {
  if (steps_ == 0 && history_.empty()) {
    auto count = [](lv_event_t *event) {
      ++*static_cast<uint64_t *>(lv_event_get_user_data(event));
    };
    lv_obj_add_event_cb(gView.CloseButton, count, LV_EVENT_CLICKED, &closeClicks_);
    lv_disp_drv_t *driver = lv_disp_get_default()->driver;
    driver->user_data = &frames_;
    driver->monitor_cb = [](lv_disp_drv_t *drawn, uint32_t, uint32_t) {
      ++*static_cast<uint64_t *>(drawn->user_data);
    };
  }
  CheckRules();
  if (idleTurns_ > 0) {
    idleTurns_--;
    return;
  }
  int total = 0;
  for (const Choice &choice : kChoices) {
    total += choice.Weight;
  }
  auto pick = static_cast<int>(Random(static_cast<uint64_t>(total)));
  const Choice *choice = kChoices.data();
  while (pick >= choice->Weight) {
    pick -= choice->Weight;
    choice++;
  }
  history_.push_back(choice->Name);
  if (history_.size() > kHistory) {
    history_.pop_front();
  }
  counts_[choice->Name]++;
  steps_++;
  (this->*choice->Do)();
  // What is plugged in between two turns has its effect at once.
  CheckOutput();
  CheckExit();
  // A key needs a turn; without a second one the next event comes before its release.
  idleTurns_ = 1 + static_cast<int>(Random(3));
}

void RandomWalk::CheckRules() {
  if (gHost.Gop == nullptr && !gRun.ExitRequested) {
    Report("the view goes on without an output");
  }
  CheckOutput();
  CheckExit();
  Report(rules::Highlights(host_.Components));
  Report(rules::Filter(host_.Components));
  Report(rules::Box());
  Report(machine_.ProblemsText());
  CheckPool();
  CheckFiles();
  ClearSticks();
  if (host_.Log.size() > 1000) {
    host_.Log.clear();
  }
}

// The application's blocks live as long as it does, so that what is live must stay about equal.
void RandomWalk::CheckPool() {
  if (gMessageBox.ModalMessageBoxOpen) {
    return;
  }
  uint64_t bytes = machine_.Pool.LiveBytes();
  if (gScreenshot.Buffer != nullptr) {
    // Taken at the first F12 and kept.
    bytes -= uint64_t{4} * gGeometry.ViewWidth * gGeometry.ViewHeight;
  }
  if (steps_ < kWarmUpSteps) {
    poolBytes_ = std::max(poolBytes_, bytes);
    return;
  }
  mostPoolBytes_ = std::max(mostPoolBytes_, bytes);
  if (bytes > poolBytes_ + kPoolSlack) {
    Report("the pool has grown from " + std::to_string(poolBytes_) + " to " +
           std::to_string(bytes) + " bytes");
  }
}

// A box that Esc has closed leaves its volumes open for good; the next one lists them anew.
void RandomWalk::CheckFiles() {
  size_t accounted = volumes_.Accounted();
  if (machine_.OpenFileCount() > accounted) {
    Report(std::to_string(machine_.OpenFileCount()) + " files and volumes are open, not the " +
           std::to_string(accounted) + " that Esc and a box account for");
  }
}

bool RandomWalk::InUseIsGone() const {
  return std::none_of(outputs_.begin(), outputs_.end(),
                      [this](auto *output) { return output->Protocol() == outputInUse_; });
}

// An output that is gone is left before the next frame is shown, or at F12. To be asked before the
// outputs change again.
void RandomWalk::FollowView() {
  bool moving = gHost.Gop == nullptr && !gRun.ExitRequested;
  if (expectedOutput_ || !InUseIsGone() || moving) {
    return;
  }
  if (gHost.Gop != outputInUse_) {
    counts_["-> lost output left"]++;
    expectedOutput_ = rules::OutputAfterArrival(outputs_, nullptr);
    CheckOutput();
  } else if (frames_ != framesAtLoss_) {
    Report("a frame was drawn for an output that is gone");
  }
}

void RandomWalk::CheckOutput() {
  FollowView();
  if (!expectedOutput_) {
    return;
  }
  auto *expected = *std::exchange(expectedOutput_, std::nullopt);
  if (gHost.Gop != expected) {
    Report("the view is drawn on another output than expected");
  }
  counts_[expected == nullptr        ? "-> no output left"
          : expected == outputInUse_ ? "-> output kept"
                                     : "-> output changed"]++;
  if (expected != nullptr) {
    outputInUse_ = expected;
    return;
  }
  outputLost_ = true;
  MendOutputs();
}

// The walk goes on with the output mended.
void RandomWalk::MendOutputs() {
  if (outputs_.empty()) {
    Return(gone_.back());
    machine_.Events.Dispatch();
  }
  outputs_[0]->SetModes({{1024, 768}});
  outputInUse_ = outputs_[0]->Protocol();
  gHost.Gop = outputInUse_;
  lv_obj_invalidate(lv_disp_get_scr_act(nullptr));
}

// The flag is taken back after its cause has been found, so that the walk goes on.
void RandomWalk::CheckExit() {
  bool unread = machine_.Keyboard.Waiting() != 0;
  Escape escape = unread ? Escape::None : std::exchange(escape_, Escape::None);
  bool mustLeave = escape == Escape::Leave;
  bool closed = std::exchange(seenCloseClicks_, closeClicks_) != closeClicks_;
  bool jumped = host_.State.JumpRequested != 0;
  bool lost = std::exchange(outputLost_, false);
  if ((mustLeave || closed || jumped || lost) != (gRun.ExitRequested)) {
    Report(gRun.ExitRequested ? "the exit flag is set without a cause"
                              : "the exit flag is clear in spite of a cause");
  }
  if (escape == Escape::CloseBox && gMessageBox.ModalMessageBoxOpen) {
    Report("Esc has left the message box open");
  }
  if (jumped) {
    const OBV_COMPONENT &target = host_.Components.at(host_.State.JumpComponentIndex);
    if (target.SearchTokenId == 0 || target.NoMapping != 0 || target.NotSelectable != 0 ||
        host_.State.JumpSearchTokenId != target.SearchTokenId ||
        host_.State.JumpComponentType != target.Type) {
      Report("a jump to a component that has none");
    }
  }
  counts_["-> left by Esc"] += mustLeave;
  counts_["-> box closed by Esc"] += escape == Escape::CloseBox;
  counts_["-> left by the close button"] += closed;
  counts_["-> left by a jump"] += jumped;
  host_.State.JumpRequested = 0;
  gRun.ExitRequested = false;
}

void RandomWalk::ClearSticks() {
  for (fake::Volume *stick : sticks_) {
    for (const std::unique_ptr<fake::FileNode> &file : stick->Root().Entries) {
      counts_["-> picture saved"]++;
      if (!IsWholePng(file->Data)) {
        Report("a saved file is not a picture");
      }
    }
    stick->Root().Entries.clear();
  }
}
