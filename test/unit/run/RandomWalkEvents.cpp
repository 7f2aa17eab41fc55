// The events of a random walk.

#include <cstdio>

#include "test/unit/run/RandomWalk.h"

#include "capture/MessageBox.h"

namespace {

// The view that RandomWalkTest runs in.
constexpr uint64_t kWidth = 1024;
constexpr uint64_t kHeight = 768;
constexpr size_t kMostOutputs = 4;

const std::vector<fake::VideoMode> kUsefulModes = {{800, 600}, {1024, 768}};
const std::vector<fake::VideoMode> kUselessModes = {{800, 600}, {1280, 1024}};

}  // namespace

const std::vector<RandomWalk::Choice> RandomWalk::kChoices = {
    {150, &RandomWalk::Move, "move"},
    {200, &RandomWalk::MoveToComponent, "move to a component"},
    {200, &RandomWalk::PressOrRelease, "press or release"},
    {50, &RandomWalk::MoveMouse, "move the mouse"},
    {130, &RandomWalk::TypeTab, "Tab or page key"},
    {80, &RandomWalk::TypeOther, "other key"},
    {60, &RandomWalk::TypeEnter, "Enter"},
    {50, &RandomWalk::TypeInsert, "Insert"},
    {20, &RandomWalk::TypeEsc, "Esc"},
    {6, &RandomWalk::TypeF12, "F12"},
    {60, &RandomWalk::ChangeStatus, "status change"},
    {20, &RandomWalk::LetTimePass, "time passes"},
    {8, &RandomWalk::PlugStick, "stick in"},
    {8, &RandomWalk::PullStick, "stick out"},
    {6, &RandomWalk::PlugOutput, "output in"},
    {3, &RandomWalk::LoseModes, "output loses modes"},
    {3, &RandomWalk::PlugDuringATurn, "output in during a turn"},
    {5, &RandomWalk::PullOutput, "output out"},
    {2, &RandomWalk::PullOutputDuringATurn, "output out during a turn"},
};

void RandomWalk::Move() {
  x_ = Random(kWidth);
  y_ = Random(kHeight);
  machine_.Tablet()->MoveTo(x_, y_, pressed_ ? 1 : 0);
}

void RandomWalk::MoveToComponent() {
  // Callouts and buttons, where clicks do something.
  std::vector<lv_obj_t *> targets(gView.FilterButtons, gView.FilterButtons + kCategoryCount);
  targets.push_back(gView.CloseButton);
  for (size_t i = 0; i < host_.Components.size(); i++) {
    targets.push_back(gView.Components[i].Callout);
  }
  Place place = PlaceOf(targets[Random(targets.size())]);
  x_ = static_cast<uint64_t>(std::clamp<int>(place.X + place.Width / 2, 0, kWidth - 1));
  y_ = static_cast<uint64_t>(std::clamp<int>(place.Y + place.Height / 2, 0, kHeight - 1));
  machine_.Tablet()->MoveTo(x_, y_, pressed_ ? 1 : 0);
}

void RandomWalk::PressOrRelease() {
  pressed_ = !pressed_;
  machine_.Tablet()->MoveTo(x_, y_, pressed_ ? 1 : 0);
}

void RandomWalk::MoveMouse() {
  auto by = [this] { return static_cast<INT32>(Random(80)) - 40; };
  INT32 x = by();
  INT32 y = by();
  machine_.Mouse()->Move(x, y, pressed_);
}

void RandomWalk::Type(const EFI_INPUT_KEY &key) {
  char text[40];
  std::snprintf(text, sizeof text, ", scan code 0x%02X, character 0x%04X", key.ScanCode,
                key.UnicodeChar);
  history_.back() += text;
  if (rules::IsEsc(key)) {
    escape_ = gMessageBox.ModalMessageBoxOpen ? Escape::CloseBox : Escape::Leave;
  }
  machine_.Keyboard.Push(key);
}

void RandomWalk::TypeTab() {
  switch (Random(3)) {
    case 0:
      return Type({SCAN_PAGE_UP, 0});
    case 1:
      return Type({SCAN_PAGE_DOWN, 0});
    default:
      return Type({SCAN_NULL, CHAR_TAB});
  }
}

void RandomWalk::TypeOther() {
  constexpr UINT16 kKeys[] = {SCAN_UP,  SCAN_DOWN,   SCAN_LEFT, SCAN_RIGHT, SCAN_HOME,
                              SCAN_END, SCAN_DELETE, SCAN_F1,   SCAN_F10};
  // Control characters are often LVGL keys as well; ASCII; any character.
  constexpr uint64_t kCharacterLimits[] = {0x20, 0x80, 0x10000};
  uint64_t key = Random(std::size(kKeys) + std::size(kCharacterLimits));
  if (key < std::size(kKeys)) {
    return Type({kKeys[key], 0});
  }
  uint64_t limit = kCharacterLimits[key - std::size(kKeys)];
  Type({SCAN_NULL, static_cast<CHAR16>(Random(limit))});
}

void RandomWalk::TypeEnter() { Type({SCAN_NULL, CHAR_CARRIAGE_RETURN}); }
void RandomWalk::TypeInsert() { Type({SCAN_INSERT, 0}); }
void RandomWalk::TypeEsc() { Type({SCAN_ESC, 0}); }
void RandomWalk::TypeF12() { Type({SCAN_F12, 0}); }

void RandomWalk::ChangeStatus() {
  constexpr EFI_STATUS kStatuses[] = {EFI_SUCCESS, EFI_SUCCESS, EFI_DEVICE_ERROR, EFI_NOT_FOUND};
  OBV_COMPONENT &component = host_.Components[Random(host_.Components.size())];
  fake::TestHost::ComponentAnswer &answer = host_.Answers[fake::ToU16(component.Name)];
  answer.Status = kStatuses[Random(std::size(kStatuses))];
  if (Random(50) == 0) {
    // These two stay for the rest of the walk.
    answer.Before.push_back(Random(2) == 0 ? EFI_NOT_READY : EFI_NO_MAPPING);
  }
  answer.Lines.clear();
  for (uint64_t i = Random(23); i > 0; i--) {
    answer.Lines.push_back({std::u16string(Random(32), u'l'), std::u16string(Random(256), u'v'),
                            static_cast<UINT32>(Random(3))});
  }
}

void RandomWalk::LetTimePass() { machine_.Clock.Advance(Random(5000)); }

void RandomWalk::PlugStick() {
  if (sticks_.size() == kMostSticks) {
    return;
  }
  fake::VolumeOptions options;
  options.WriteProtected = Random(4) == 0;
  options.Label = std::u16string(Random(40), u'L');
  sticks_.push_back(&machine_.AddVolume(options));
}

void RandomWalk::PullStick() {
  if (!sticks_.empty()) {
    auto stick = sticks_.begin() + static_cast<ptrdiff_t>(Random(sticks_.size()));
    machine_.RemoveVolume(**stick);
    sticks_.erase(stick);
  }
}

void RandomWalk::Arrive(bool useful) {
  FollowView();
  if (!gone_.empty()) {
    fake::GraphicsOutput *again = gone_.front();
    again->SetModes(useful ? kUsefulModes : kUselessModes);
    Return(again);
  } else if (outputs_.size() < kMostOutputs) {
    outputs_.push_back(&machine_.AddOutput(useful ? kUsefulModes : kUselessModes, 0));
  } else {
    // An output that is not in use comes anew.
    auto output = std::find_if(outputs_.begin(), outputs_.end(), [this](auto *candidate) {
      return candidate->Protocol() != outputInUse_;
    });
    fake::GraphicsOutput *again = *output;
    machine_.Uninstall(again->Handle, fake::kGraphicsOutputGuid, again->Protocol());
    again->SetModes(useful ? kUsefulModes : kUselessModes);
    machine_.Install(fake::kGraphicsOutputGuid, again->Protocol(), again->Handle);
  }
  expectedOutput_ = rules::OutputAfterArrival(outputs_, outputInUse_);
}

void RandomWalk::Depart(fake::GraphicsOutput *output) {
  FollowView();
  machine_.RemoveOutput(*output);
  std::erase(outputs_, output);
  gone_.push_back(output);
  if (output->Protocol() == outputInUse_) {
    framesAtLoss_ = frames_;
  }
}

// On a handle of its own, with its old address: a driver that starts anew often gets the memory
// back that it has just freed.
void RandomWalk::Return(fake::GraphicsOutput *output) {
  std::erase(gone_, output);
  output->Removed = false;
  output->Handle = machine_.Install(fake::kDevicePathGuid, output->Path.Get());
  machine_.Install(fake::kGraphicsOutputGuid, output->Protocol(), output->Handle);
  outputs_.push_back(output);
}

void RandomWalk::PlugOutput() {
  Arrive(Random(3) != 0);
  machine_.Events.Dispatch();
}

void RandomWalk::LoseModes() {
  for (fake::GraphicsOutput *output : outputs_) {
    if (output->Protocol() == outputInUse_ || Random(3) == 0) {
      output->SetModes(kUselessModes);
    }
  }
  PlugOutput();
}

void RandomWalk::PlugDuringATurn() {
  fake::Service services[] = {fake::Service::ConInReadKeyStroke, fake::Service::GopBlt,
                              fake::Service::AbsoluteGetState};
  bool useful = Random(3) != 0;
  machine_.At(services[Random(std::size(services))], 1, [this, useful] { Arrive(useful); });
}

void RandomWalk::PullOutput() {
  // The last one may be gone with nothing drawn since.
  if (!outputs_.empty()) {
    Depart(outputs_[Random(outputs_.size())]);
  }
}

// Not at a Blt: what goes between the look for it and its use has been lost before this
// application could know.
void RandomWalk::PullOutputDuringATurn() {
  fake::Service services[] = {fake::Service::ConInReadKeyStroke, fake::Service::AbsoluteGetState};
  machine_.At(services[Random(std::size(services))], 1, [this] { PullOutput(); });
}
