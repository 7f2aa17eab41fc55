/** @file
  A user, a workshop and a host that do things at random while the view is up.
**/

#pragma once

#include <random>

#include "test/unit/run/AbandonedVolumes.h"
#include "test/unit/run/RandomWalkRules.h"

/// Lives through one run: Step is called between main-loop turns and does one random thing after
/// it has looked at what the one before has led to.
class RandomWalk {
 public:
  RandomWalk(fake::Firmware &machine, fake::TestHost &host, uint64_t seed);

  /// The first violation of a rule; the walk must end then.
  const std::string &Violation() const { return violation_; }
  /// The latest events, for a failure message.
  std::string History() const;
  /// What a long walk must have led to and has not; empty when nothing is missing.
  std::string MissingOutcomes() const;
  /// How often each kind of event and outcome came.
  std::string Statistics() const;

  /// One turn of the main loop.
  void Turn();
  uint64_t Steps() const { return steps_; }

 private:
  using Event = void (RandomWalk::*)();
  struct Choice {
    int Weight;
    Event Do;
    const char *Name;
  };
  static const std::vector<Choice> kChoices;
  static constexpr size_t kMostSticks = 4;
  /// What a typed Esc must lead to once it has been read.
  enum class Escape { None, Leave, CloseBox };

  // Events.
  void Move();
  void MoveToComponent();
  void PressOrRelease();
  void MoveMouse();
  void TypeTab();
  void TypeOther();
  void TypeEnter();
  void TypeInsert();
  void TypeEsc();
  void TypeF12();
  void ChangeStatus();
  void LetTimePass();
  void PlugStick();
  void PullStick();
  void PlugOutput();
  void LoseModes();
  void PlugDuringATurn();
  void PullOutput();
  void PullOutputDuringATurn();

  void Arrive(bool useful);
  void Depart(fake::GraphicsOutput *output);
  void Return(fake::GraphicsOutput *output);
  /// Whether the output in use is gone, which is not announced.
  bool InUseIsGone() const;
  void FollowView();
  void MendOutputs();
  void CheckRules();
  void CheckPool();
  void CheckFiles();
  void CheckExit();
  void CheckOutput();
  void ClearSticks();
  void Report(const std::string &violation);
  void Type(const EFI_INPUT_KEY &key);
  /// A number below `limit`.
  uint64_t Random(uint64_t limit) { return random_() % limit; }

  fake::Firmware &machine_;
  fake::TestHost &host_;
  std::mt19937_64 random_;
  std::string violation_;
  std::deque<std::string> history_;
  std::map<std::string, uint64_t> counts_;
  uint64_t steps_ = 0;
  int idleTurns_ = 0;

  uint64_t x_ = 0, y_ = 0;
  bool pressed_ = false;
  std::vector<fake::Volume *> sticks_;
  /// Those that the firmware has, in the order of their handles; and those that are gone.
  std::vector<fake::GraphicsOutput *> outputs_, gone_;
  /// The output that an arrival must have led to; nothing when none came.
  std::optional<EFI_GRAPHICS_OUTPUT_PROTOCOL *> expectedOutput_;
  EFI_GRAPHICS_OUTPUT_PROTOCOL *outputInUse_ = nullptr;
  bool outputLost_ = false;
  /// Frames that LVGL has drawn, and how many of them when the output in use went.
  uint64_t frames_ = 0;
  uint64_t framesAtLoss_ = 0;
  Escape escape_ = Escape::None;
  uint64_t closeClicks_ = 0;
  uint64_t seenCloseClicks_ = 0;
  AbandonedVolumes volumes_;
  uint64_t poolBytes_ = 0;
  uint64_t mostPoolBytes_ = 0;
};
