/** @file
  The component array: built by the host, kept current by status queries.
**/

#pragma once

#include "app/base/Types.h"

struct ComponentState {
  /// The host's array of OBV_SHARED_STATE.ComponentCount records; NULL before
  /// the host has built it.
  OBV_COMPONENT *Components;
};

extern ComponentState gComponents;

/// Has the host build the components for the view's geometry and asks for the
/// status of each. Returns the status of the first failing step.
[[nodiscard]] EFI_STATUS GetComponentData();

/// The first step of it: the host builds the array, and nothing is asked of its records.
[[nodiscard]] EFI_STATUS ParseComponents();

/// Asks the host for status and information lines of one component. Does
/// nothing for an index at or beyond the count.
void RefreshComponentStatus(UINTN index);

/// Records in the array; the host may change it at any time.
UINT16 ComponentCount();

/// The record at an index below the component count.
OBV_COMPONENT &ComponentAt(UINTN index);

/// Valid entries in the component's Info, at most as many as it holds.
UINTN InfoCountOf(const OBV_COMPONENT &component);
