/** @file
  The way from the application's start to its first frame, split where the host's calls and the log
  show that one part ends and the next begins.
**/

#pragma once

#include "BenchFirmware.h"

enum class Phase {
  Rest,      ///< All that is none of the others: modes, texts, backup, start of LVGL.
  Intake,    ///< From the first look at the picture to the end of the parsing.
  Fonts,     ///< From the first font to the picture.
  Decode,    ///< The picture, until its size is logged.
  Resample,  ///< Until the decoded picture is freed.
  Widgets,   ///< Until the preparation is logged.
  Frame,     ///< Until the first turn that draws has ended.
  Over,
};
inline constexpr UINTN kPhases = static_cast<UINTN>(Phase::Over);

/// The start is now, in Phase::Rest.
void BeginStartUp();

void EnterPhase(Phase phase);

Phase CurrentPhase();

/// Whether every phase was met, but for the fonts: they may be loaded one by one as they are
/// needed.
bool StartUpIsWhole();

UINT64 TicksOfPhase(UINTN phase);
