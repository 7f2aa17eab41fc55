/** @file
  The watch for monitors that arrive while the view is up.
**/

#pragma once

#include "app/base/Firmware.h"

struct HotPlugState {
  EFI_EVENT Event;
  /// Closed together with Event. Nothing creates it; closing NULL is harmless.
  EFI_EVENT SecondEvent;
  /// Set by the notification until the main loop has asked for the redraw, too:
  /// LVGL drops what is asked of it while it is drawing.
  volatile bool RedrawDue;
  /// The handle of the output in use, looked up when the view moves; NULL when no handle has it.
  EFI_GRAPHICS_OUTPUT_PROTOCOL *WatchedGop;
  EFI_HANDLE WatchedHandle;
  /// The output in use went while the view was up, and no other can show the view.
  bool Lost;
};

extern HotPlugState gHotPlug;

/// Has DisplayHotPlugNotify called for every graphics output that the firmware
/// installs from now on. On failure the application runs on without.
[[nodiscard]] EFI_STATUS InstallDisplayPortHotPlugDetector();

/// For every turn of the main loop: asks for the redraw that a notification
/// left due.
void RedrawAfterHotPlug();

/// Closes the detector's events.
void CloseHotPlugDetector();

/// Whether the firmware still has the output in use: it announces arrivals alone. Asks the handle
/// database, so it is to be called before the output is used. True also for an output that never
/// stood on a handle, and for none. Not for use from event notifications.
[[nodiscard]] bool IsOutputThere();

/// Goes the notification's way for an output that is gone.
void LeaveLostOutput();

/// At the end: puts another output that can show the setup's screen, or none, in the place of one
/// that is gone, so that the screen goes to where it can be seen. Draws nothing.
void ReplaceLostOutput();

/// Keeps the view on an output that can show it: the one in use, else the last
/// one that can, else none, which ends the application. Runs at TPL_CALLBACK,
/// possibly in the middle of drawing.
VOID EFIAPI DisplayHotPlugNotify(EFI_EVENT event, VOID *context);
