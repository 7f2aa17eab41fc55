/** @file
  A whole run to which keys, pointer reports, plugging and passing time happen, as the input says.
**/

#pragma once

#include "test/fuzz/LateFork.h"

#include "test/firmware/Run.h"
#include "test/firmware/TestHost.h"
#include "test/unit/run/AbandonedVolumes.h"

#include "platform/Pointer.h"

namespace fuzz {

class InputSession {
 public:
  explicit InputSession(LateFork *fork) : fork_(fork) {}
  virtual ~InputSession() = default;

  void Run() {
    Hasten(&machine_);
    output_ = &machine_.AddOutput({{1024, 768}, {800, 600}});
    machine_.AddSimplePointer();
    machine_.AddAbsolutePointer();
    host_.LeaveFontsOut();
    host_.Install();
    fake::RunOptions options;
    options.EscapeAtTurn = 0;
    options.MostTurns = kMostTurns;
    options.EveryTurn = [this](int turn) { Turn(turn); };
    EFI_STATUS status = fake::RunApplication(machine_, options).Status;
    host_.Uninstall();
    Judge(status);
    LateFork::End();
  }

 protected:
  /// What the input brings before its events.
  virtual void Begin(Reader *) {}

  /// What must hold at the end.
  virtual void Judge(EFI_STATUS status) {
    Require(status == EFI_SUCCESS, "the run succeeds");
    RequireNothingLeft(fullVolume_);
  }

  /// A file that could not be written deliberately stays open.
  void RequireNothingLeft(bool butFiles) {
    std::string left =
        butFiles ? machine_.ProblemsText() : machine_.Leftovers(abandoned_.Accounted());
    Require(left.empty(), left.c_str());
  }

  bool FullVolume() const { return fullVolume_; }
  fake::Firmware &Machine() { return machine_; }

 private:
  static constexpr int kFirstTurn = 25;  // Keys are dropped before.
  static constexpr int kMostEvents = 150;
  static constexpr int kMostRepeats = 16;
  // The application reads a key, and lets go of it, in turns of their own; all of them may wait.
  static constexpr int kMostTurns = kFirstTurn + kMostEvents * (1 + 2 * kMostRepeats) + 200;
  static constexpr size_t kMostDevices = 4;

  void Turn(int turn) {
    (void)abandoned_.Accounted();
    if (turn < kFirstTurn) {
      return;
    }
    if (turn == kFirstTurn) {
      input_ = fork_->Input();
      MeasureMouse();
      Begin(&input_);
    }
    if (input_.Left() == 0 || turn > kFirstTurn + kMostEvents) {
      machine_.Keyboard.Scan(SCAN_ESC);
      return;
    }
    UINT8 kind = input_.Byte();
    for (int i = 0; i <= kind >> 4; i++) {
      Happen(kind % kMostRepeats);
    }
  }

  /// The application has done so before; here it meets the resolution of the input.
  void MeasureMouse() {
    machine_.Mouse()->Mode.ResolutionX = input_.Byte();
    machine_.Mouse()->Mode.ResolutionY = input_.Byte();
    PointerInit(machine_.Mouse()->Protocol(), machine_.Tablet()->Protocol(), gST->ConsoleInHandle,
                gPointer.X, gPointer.Y);
  }

  void Happen(int kind) {
    constexpr UINT16 kScans[] = {SCAN_UP,   SCAN_DOWN, SCAN_LEFT,   SCAN_RIGHT,
                                 SCAN_HOME, SCAN_END,  SCAN_INSERT, SCAN_F12};
    switch (kind) {
      case 0:
      case 1:
        machine_.Keyboard.Scan(kScans[input_.Byte() % std::size(kScans)]);
        break;
      case 2:
        machine_.Keyboard.Character(u'\t');
        break;
      case 3:
        machine_.Keyboard.Character(u'\r');
        break;
      case 4:
        machine_.Keyboard.Push(input_.Take<EFI_INPUT_KEY>());
        break;
      case 5:
        machine_.Keyboard.Scan(SCAN_ESC);
        break;
      case 15:
        machine_.Clock.Advance(input_.Take<UINT16>());
        break;
      default:
        kind < 10 ? Point(kind) : Plug(kind);
    }
  }

  void Point(int kind) {
    fake::SimplePointer *mouse = machine_.Mouse();
    fake::AbsolutePointer *tablet = machine_.Tablet();
    if (kind == 6 && mouse != nullptr) {
      INT32 x = input_.Take<INT8>();
      mouse->Move(x * 8, input_.Take<INT8>() * 8, input_.Byte() % 2 != 0);
    } else if (kind == 7 && mouse != nullptr) {
      mouse->Push(input_.Take<EFI_SIMPLE_POINTER_STATE>());
    } else if (kind == 8 && tablet != nullptr) {
      UINT64 x = input_.Take<UINT16>() / 2;
      tablet->MoveTo(x, input_.Take<UINT16>() / 2, input_.Byte() % 2);
    } else if (kind == 9 && tablet != nullptr) {
      tablet->Push(input_.Take<EFI_ABSOLUTE_POINTER_STATE>());
    }
  }

  void Plug(int kind) {
    if (kind <= 11 && machine_.OutputCount() < kMostDevices) {
      if (kind == 11 && output_ != nullptr) {
        machine_.RemoveOutput(*output_);
        output_ = nullptr;
        if (input_.Byte() % 2 == 0) {
          return;  // None comes in its place.
        }
      }
      output_ = &machine_.AddOutput({{1024, 768}, {1920, 1080}}, input_.Byte() % 2);
    } else if (kind == 12 && volumes_.size() < kMostDevices) {
      PlugVolume(input_.Byte());
    } else if (kind == 13 && !volumes_.empty()) {
      machine_.RemoveVolume(*volumes_.back());
      volumes_.pop_back();
    } else if (kind == 14) {
      constexpr EFI_STATUS kStatuses[] = {EFI_SUCCESS, EFI_DEVICE_ERROR, EFI_NOT_READY,
                                          EFI_NO_MAPPING};
      host_.Answers[u"CPU"].Status = kStatuses[input_.Byte() % std::size(kStatuses)];
    }
  }

  void PlugVolume(UINT8 what) {
    fake::VolumeOptions options;
    options.WriteProtected = what % 4 == 1;
    if (what % 4 == 2) {
      options.Capacity = 4096;
      fullVolume_ = true;
    }
    volumes_.push_back(&machine_.AddVolume(options));
  }

  LateFork *fork_;
  Reader input_{nullptr, 0};
  fake::Firmware machine_;
  fake::TestHost host_{machine_};
  fake::GraphicsOutput *output_ = nullptr;
  std::vector<fake::Volume *> volumes_;
  AbandonedVolumes abandoned_;
  bool fullVolume_ = false;
};

}  // namespace fuzz
