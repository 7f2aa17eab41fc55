/** @file
  On FailureRun: a visit on which the screen is saved to a stick, from F12 to the box that tells
  the outcome, and what must hold whatever has happened meanwhile. Something else can happen at
  F12, in many children that go on from there.
**/

#pragma once

#include <execinfo.h>
#include <map>
#include <set>

#include "test/unit/run/AbandonedVolumes.h"
#include "test/unit/run/FailureRun.h"
#include "test/unit/stage/ScreenshotStage.h"

#include "app/base/LocalizedStrings.h"

/// What the children tell their parent.
struct SavedPicture {
  uint64_t Calls[fake::kServiceCount];  ///< From F12 to the outcome, when nothing fails.
  /// Numbers of the calls that allocate: the first of each place in the code.
  size_t AllocationCount;
  uint64_t Allocations[4096];
  size_t Size;  ///< Of the file that is then saved.
  uint8_t File[size_t{4} << 20];
};

class SaveRun : public FailureRun {
 public:
  static constexpr UINT32 kBlockSize = 4096;
  static constexpr char16_t kOther[] = u"KEEP.TXT";

  /// `expected` is what a save without a failure has told, see LearnCalls.
  SaveRun(fake::Firmware &machine, SavedPicture *expected)
      : FailureRun(machine), expected_(expected) {
    fake::VolumeOptions options;
    options.BlockSize = kBlockSize;
    stick_ = &machine.AddVolume(options);
    stick_->Write(kOther, OtherData());
  }

  /// Called once at F12, between two turns.
  std::function<void()> AtF12;

  fake::Volume &Stick() { return *stick_; }
  /// The screen as it is at F12.
  const std::vector<UINT32> &Screen() const { return screen_; }
  void ExpectPulledStick() { pulled_ = true; }
  /// Named after the clock, which may have failed.
  std::u16string FileName() const {
    for (const fake::CallRecord &call : machine_.Calls.Of({fake::Service::RtGetTime})) {
      if (EFI_ERROR(call.Status)) {
        return u"0000-00-00-00-00-00.png";
      }
    }
    return u"2023-07-04-13-05-09.png";
  }
  /// The stick as it is now: what was there before F12 is untouched, and of the new file nothing is
  /// there but what was written.
  bool StickIsSound() {
    std::vector<std::u16string> names = stick_->RootNames();
    bool known = names == std::vector<std::u16string>{kOther} ||
                 names == std::vector<std::u16string>{kOther, FileName()};
    std::vector<uint8_t> file = stick_->Read(FileName()).value_or(std::vector<uint8_t>());
    return known && stick_->Read(kOther) == OtherData() && file.size() <= expected_->Size &&
           std::equal(file.begin(), file.end(), expected_->File);
  }

  /// Runs without a failure and notes the calls and the file; 0 when the file is the screen's
  /// picture.
  int LearnCalls() {
    learning_ = true;
    AtF12 = [this] {
      machine_.Faults.AtEvery(fake::Service::AllocatePool, [this] { NotePlace(); });
    };
    int code = Run();
    TellAllocations();
    std::vector<uint8_t> file = stick_->Read(FileName()).value_or(std::vector<uint8_t>());
    Check(Decode(file).Pixels == screen_, "the saved file is not the screen's picture");
    Check(file.size() <= sizeof expected_->File, "the saved file is too large");
    expected_->Size = file.size();
    std::copy(file.begin(), file.end(), expected_->File);
    return code != 0 || Failed() ? 1 : 0;
  }

  /// Runs with what AtF12 has planned; 0 when all that must hold does.
  int RunAndCheck() {
    int code = Run();
    machine_.Faults.Clear();
    CheckStick();
    CheckBox();
    std::string leftovers = machine_.Leftovers(OpenOnPurpose());
    Check(leftovers.empty(), leftovers.c_str());
    return code != 0 || Failed() ? 1 : 0;
  }

 protected:
  void Plan(fake::RunOptions *options) override {
    options->EscapeAtTurn = 0;
    options->EveryTurn = [this](int turn) {
      if (turn == kF12Turn) {
        PressF12();
      } else if (turn > kF12Turn && turn % kTurnsPerLook == 0) {
        Look();
      }
      gRun.ExitRequested = gRun.ExitRequested || turn == kLastTurn;
    };
  }

 private:
  // Keys of the first 200 ms are dropped.
  static constexpr int kF12Turn = 12;
  static constexpr int kTurnsPerLook = 3;
  static constexpr int kLastTurn = 40;

  static std::vector<uint8_t> OtherData() { return std::vector<uint8_t>(10000, 0x4B); }

  void PressF12() {
    screen_ = machine_.Output().Picture();
    if (AtF12) {
      AtF12();
    }
    CountFromHere(-1);
    machine_.Keyboard.Scan(SCAN_F12);
  }
  void CountFromHere(int sign) {
    for (size_t i = 0; learning_ && i < fake::kServiceCount; i++) {
      expected_->Calls[i] +=
          static_cast<uint64_t>(sign) * machine_.Calls.CountOf(static_cast<fake::Service>(i));
    }
  }
  /// A place is told by the calls that led to it.
  void NotePlace() {
    constexpr int kMostFrames = 14;
    std::vector<void *> frames(kMostFrames);
    frames.resize(static_cast<size_t>(backtrace(frames.data(), kMostFrames)));
    allocations_++;
    places_.try_emplace(frames, allocations_);
  }
  void TellAllocations() {
    std::set<uint64_t> numbers;
    for (const auto &[frames, first] : places_) {
      numbers.insert(first);
    }
    // Those of the way back are beyond what was counted.
    numbers.erase(numbers.upper_bound(expected_->Calls[size_t(fake::Service::AllocatePool)]),
                  numbers.end());
    Check(numbers.size() <= std::size(expected_->Allocations), "there are too many allocations");
    expected_->AllocationCount = numbers.size();
    std::copy(numbers.begin(), numbers.end(), expected_->Allocations);
  }
  /// Picks the stick when the box asks for it; the box that tells the outcome ends the visit.
  void Look() {
    if (!BoxIsOpen()) {
      return;
    }
    if (BoxTitle() == LocalizedText(TextId::VolumeTitle)) {
      machine_.Keyboard.Character(u'\r');
      return;
    }
    CountFromHere(1);
    title_ = BoxTitle();
    text_ = BoxText();
    gRun.ExitRequested = true;
  }

  bool WriteFailed() const {
    for (const fake::CallRecord &call : machine_.Calls.All()) {
      if ((call.What == fake::Service::FileWrite || call.What == fake::Service::FileFlush) &&
          EFI_ERROR(call.Status)) {
        return true;
      }
    }
    return false;
  }
  /// A device that failed to write is not asked again; a box that is never answered keeps the
  /// volumes.
  size_t OpenOnPurpose() const { return AbandonedVolumes().Accounted() + (WriteFailed() ? 1 : 0); }

  void CheckStick() {
    Check(StickIsSound(), "the stick is not as it was, but for the new file");
    std::optional<std::vector<uint8_t>> file = stick_->Read(FileName());
    bool whole = file && file->size() == expected_->Size;
    bool saved = host_.Logged("F12ScreenShots Success\n");
    Check(!saved || whole, "a file is said to be saved and is not whole");
    Check(saved || !file || WriteFailed() || pulled_, "a failure leaves a file");
  }
  void CheckBox() {
    bool saved = host_.Logged("F12ScreenShots Success\n");
    if (title_ == "Saved") {
      Check(saved, "the box tells of a picture that was not saved");
      Check(text_.find(fake::ToAscii(FileName())) != std::string::npos, "the file is not named");
    } else if (!title_.empty()) {
      Check(!saved, "the box denies a picture that was saved");
      Check(title_ == "Not saved", "a box of an unknown kind");
      Check((text_ == "Write protected") == host_.Logged("F12ScreenShots Failed Write Protected\n"),
            "the box tells another reason");
    }
  }

  SavedPicture *expected_;
  fake::Volume *stick_;
  std::vector<UINT32> screen_;
  std::string title_, text_;
  bool learning_ = false;
  uint64_t allocations_ = 0;
  std::map<std::vector<void *>, uint64_t> places_;
  bool pulled_ = false;
};
