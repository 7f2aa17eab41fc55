/** @file
  Stands between the application and its host: marks the parts of the start and the turns of the
  main loop, and gives out a clock of its own, on which every turn takes a millisecond.
**/

#pragma once

#include "BenchFirmware.h"

/// Changes the slots of a host that is published.
void StandInForHost(OBV_PROTOCOL *host);

/// Undoes StandInForHost.
void LeaveHost();

/// Logs through the host itself, uncounted.
void LogFigure(const CHAR8 *name, UINT64 value);

/// The view as the application asked the host for it.
struct HostedView {
  const OBV_COMPONENT *Components;
  UINTN Count;
  UINT16 Width, Height;
  double ScaleX, ScaleY;
};
const HostedView &ViewOfHost();

/// Whether the log told that a screenshot was saved.
bool ScreenshotIsSaved();
