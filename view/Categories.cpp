#include "view/Categories.h"

namespace {

constexpr UINT32 Bit(UINT32 category) { return 1U << category; }

// Sets of categories, one bit each: those that are polled, as devices are plugged into them while
// the view is up, and the filters under which that happens. All others keep the status read at the
// start.
constexpr UINT32 kPolledTypes =
    Bit(OBV_TYPE_USB) | Bit(OBV_TYPE_REAR) | Bit(OBV_TYPE_FAN) | Bit(OBV_TYPE_AUDIO);
constexpr UINT32 kRefreshedFilters = kPolledTypes | Bit(kNoFilter);
static_assert(kPolledTypes == 0x322 && kRefreshedFilters == 0x323);

constexpr UINT32 kCategoryLimit = 10;

bool InSet(UINT32 category, UINT32 set) {
  return category < kCategoryLimit && (set & Bit(category)) != 0;
}

}  // namespace

bool FilterShowsCallout(UINT32 filter, const OBV_COMPONENT &component) {
  return filter == kNoFilter || filter == component.Type ||
         (filter == kSpecialGroupFilter && component.InSpecialGroup != 0);
}

bool FilterShowsMarkers(UINT32 filter, const OBV_COMPONENT &component) {
  if (component.Type == OBV_TYPE_UNCATEGORISED) {
    return false;
  }
  if (filter == kSpecialGroupFilter) {
    return component.InSpecialGroup != 0;
  }
  return filter == kNoFilter || filter == component.Type;
}

bool FilterFinds(UINT32 filter, const OBV_COMPONENT &component) {
  return filter == kNoFilter || filter == component.Type;
}

bool IsRefreshedFilter(UINT32 filter) { return InSet(filter, kRefreshedFilters); }

bool IsPolled(UINT32 filter, const OBV_COMPONENT &component) {
  return InSet(component.Type, kPolledTypes) && FilterFinds(filter, component);
}
