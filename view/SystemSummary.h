/** @file
  The summary of processor, memory, graphics and first boot entry.
**/

#pragma once

#include "app/base/Types.h"

inline constexpr UINTN kSummarySize = 1280;
inline constexpr UINTN kInfoBufferSize = 50;

struct SystemSummaryState {
  /// Recoloured lines; kept for the run.
  CHAR8 Text[kSummarySize];
  /// What OBV_SHARED_STATE.InfoBuffer points at.
  CHAR8 InfoBuffer[kInfoBufferSize];
};

extern SystemSummaryState gSystemSummary;

/// Composes the summary from the components' lines and the host's texts, and
/// publishes the info buffer. Needs the component array.
void ComposeSystemSummary();

/// Shows the summary left of the filter buttons.
void ShowSystemSummary();
