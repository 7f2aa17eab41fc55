/** @file
  The categories of components: the filter buttons, what is polled, and who passes the filter.

  A filter value is 0 for all components, 254 for the special group, else the type shown. The
  questions below differ on purpose, each for the reason that it gives.
**/

#pragma once

#include "app/base/Types.h"

/// A filter button.
struct Category {
  const CHAR8 *Caption;
  UINT32 Code;
};

/// The filter value that shows every component.
inline constexpr UINT32 kNoFilter = 0;

/// The filter value that shows the components of the special group.
inline constexpr UINT32 kSpecialGroupFilter = 254;

/// In button order. The buttons' handler keeps pointers to the codes. The fans' code is
/// deliberately that of their type, not the next number.
inline constexpr Category kCategories[] = {
    {.Caption = "ALL", .Code = kNoFilter},      {.Caption = "USB", .Code = OBV_TYPE_USB},
    {.Caption = "SATA", .Code = OBV_TYPE_SATA}, {.Caption = "M.2", .Code = OBV_TYPE_M2},
    {.Caption = "PCIE", .Code = OBV_TYPE_PCIE}, {.Caption = "FAN", .Code = OBV_TYPE_FAN},
};

inline constexpr UINTN kCategoryCount = ARRAY_SIZE(kCategories);

/// Whether callout and leader line are shown: the filter as the user understands it. Under the
/// special group's filter a type of that very number would be shown, too.
bool FilterShowsCallout(UINT32 filter, const OBV_COMPONENT &component);

/// Whether the status dots may be shown. A component without a category has none, and under the
/// special group's filter only the group counts.
bool FilterShowsMarkers(UINT32 filter, const OBV_COMPONENT &component);

/// Whether the pointer, or a saved name, finds the component: by its type alone, so that under the
/// special group's filter nothing is found.
bool FilterFinds(UINT32 filter, const OBV_COMPONENT &component);

/// Whether the periodic refresh runs under this filter at all.
bool IsRefreshedFilter(UINT32 filter);

/// Whether the periodic refresh asks the host for the component again: its type is one whose state
/// changes while the view is up, and the filter is on that type or on all.
bool IsPolled(UINT32 filter, const OBV_COMPONENT &component);
