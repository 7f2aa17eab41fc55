/** @file
  A short visit to a small board, for loops that make each call fail in turn, and what must hold
  after it whatever has failed. A derived class may do something else on its visit.
**/

#pragma once

#include <cstdio>

#include "test/firmware/FailureLoop.h"
#include "test/firmware/Run.h"
#include "test/firmware/TestHost.h"
#include "test/unit/stage/SetupScreens.h"

#include "app/base/HostClient.h"
#include "app/base/Run.h"
#include "lvgl.h"
#include "view/ViewState.h"

class FailureRun {
 public:
  explicit FailureRun(fake::Firmware &machine) : machine_(machine), host_(machine) {
    // In a mode of its own, so that there is one to put back; a small one, as it is compared often.
    screens_.Add({{640, 480}, {1024, 768}});
    machine.AddSimplePointer();
    machine.AddAbsolutePointer();
    machine.Variables.SetText(u"PlatformLang", "en-US");
    host_.Components.resize(3);
    host_.OnGetFontData = [this](UINT8 face, CHAR8 **name, VOID **data, UINTN *size) {
      return GiveFewFonts(face, name, data, size);
    };
    host_.Install();
    events_ = machine.Events.LiveCount();
  }
  virtual ~FailureRun() = default;

  fake::TestHost &Host() { return host_; }

  /// The screen must be back without any excuse: nothing was made to fail but for want of memory.
  void DemandScreen() { demanded_ = true; }

  /// Runs; 0 when nothing is left behind and the setup screen is back. What is wrong goes to the
  /// standard output.
  int Run() {
    fake::RunOptions options;
    options.StepPerTurn = 30;
    Plan(&options);
    status_ = fake::RunApplication(machine_, options).Status;
    ForgetLibraryProblem();
    CheckScreen();
    Check(machine_.Events.LiveCount() == events_ || CloseFailed(), "an event is still open");
    Check(host_.State.JumpRequested == 0, "the jump is still requested");
    Check(!Started() || host_.Log.back().Text.find("User used APP") != std::string::npos,
          "the usage line is not the last one");
    return failed_ ? 1 : 0;
  }
  EFI_STATUS Status() const { return status_; }

 protected:
  virtual void Plan(fake::RunOptions *planned) {
    fake::RunOptions &options = *planned;
    options.At(3, [this] { machine_.Mouse()->Move(3, 3); })
        .At(5, [this] { machine_.Tablet()->MoveTo(9300, 9700); })
        .At(8, [] { lv_event_send(gView.FilterButtons[1], LV_EVENT_CLICKED, nullptr); })
        .At(9, [] { lv_group_focus_obj(gView.Components[0].Callout); })
        .At(10, [this] { machine_.Keyboard.Scan(SCAN_INSERT); })
        .At(11,
            [this] {
              machine_.AddOutput({{800, 600}});
            })
        .At(12, [this] { machine_.Clock.Advance(2000); })
        .At(15, [this] {
          host_.State.JumpRequested = 1;
          gRun.ExitRequested = true;
        });
  }

  void Check(bool good, const char *complaint) {
    if (!good) {
      std::printf("%s\n", complaint);
      failed_ = true;
    }
  }
  bool Failed() const { return failed_; }

  fake::Firmware &machine_;
  fake::TestHost host_;

 private:
  EFI_STATUS GiveFewFonts(UINT8 face, CHAR8 **name, VOID **data, UINTN *size) {
    fake::TestHost::Font &font = host_.Fonts[face];
    *name = font.Name.data();
    *data = font.File.data();
    *size = font.File.size();
    // The sizes 14 and 16 of the face that the record asks for.
    int number = asked_++;
    return number == 6 * 3 + 1 || number == 8 * 3 + 1 ? EFI_SUCCESS : EFI_NOT_FOUND;
  }

  /// Whether the host was located, with its output and texts.
  bool Started() const {
    return std::any_of(host_.Log.begin(), host_.Log.end(), [](const fake::LogLine &line) {
      return line.Text.find("AfterAppLife cost") != std::string::npos;
    });
  }
  bool FailedAfterClose(std::initializer_list<fake::Service> services) const {
    bool closing = false;
    for (const fake::CallRecord &call : machine_.Calls.All()) {
      closing = closing || call.What == fake::Service::CloseEvent;
      bool wanted = std::find(services.begin(), services.end(), call.What) != services.end();
      if (closing && wanted && EFI_ERROR(call.Status)) {
        return true;
      }
    }
    return false;
  }
  /// CloseEvent itself was made to fail for the detector's event.
  bool CloseFailed() const {
    for (const fake::CallRecord &call : machine_.Calls.All()) {
      if (call.What == fake::Service::CloseEvent && call.Args == "event" &&
          EFI_ERROR(call.Status)) {
        return true;
      }
    }
    return false;
  }
  /// The mode and the picture come back unless the calls that bring them back were hit, or the
  /// picture could not be saved, or the output in use was given up.
  void CheckScreen() {
    using fake::Service;
    bool hit = FailedAfterClose({Service::LocateHandleBuffer, Service::HandleProtocol,
                                 Service::GopQueryMode, Service::GopSetMode, Service::GopBlt});
    if (hit && !demanded_) {
      return;
    }
    Check(screens_.ModeIsBack(), "the setup's mode is not back");
    if (demanded_) {
      Check(screens_.PictureIsBack(), "the setup screen is not back");
      return;
    }
    bool saved = !host_.Logged("[BackupScreenShots] Error occurs: Invalid Parameter\n") &&
                 !host_.Logged("[BackupScreenShots] Error occurs: Device Error\n") &&
                 !host_.Logged("No Gop support current resolution!\nNow app exit...\n");
    Check(!saved || screens_.PictureIsBack(), "the setup screen is not back");
  }
  /// EDK2's library gives back the null that it got for a package list; firmware refuses it.
  void ForgetLibraryProblem() {
    if (machine_.ProblemsText() == "FreePool of memory that is not from the pool at (nil)\n") {
      machine_.ForgetProblems();
    }
  }

  SetupScreens screens_{machine_};
  size_t events_ = 0;
  int asked_ = 0;
  EFI_STATUS status_ = 0;
  bool failed_ = false;
  bool demanded_ = false;
};
