/** @file
  Carries the tasks out, turn by turn of the main loop, and sums up what they take.
**/

#pragma once

#include "BenchFirmware.h"

/// Once the view stands, before the loop's first turn.
void BeginCourse();

/// Ends a turn that took so much, and prepares the next one.
void EndTurn(UINT64 ticks, UINT64 pixels);

/// By how many milliseconds the clock moves on at the next look.
UINT64 ClockStep();

/// After the application's end: NULL, or why the figures are worth nothing.
const CHAR8 *FaultOfCourse(const OBV_SHARED_STATE &shared);

/// Logs the means of all measures.
void LogCourse();
