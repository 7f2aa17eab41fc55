#include "tool/view/Hand.h"

#include <algorithm>

#include "platform/LvglPort.h"
#include "platform/Polygon.h"
#include "resources/ComponentIntake.h"
#include "test/firmware/Text.h"
#include "view/ViewState.h"

namespace board_view {

namespace {

/// Until keys are taken, at ten milliseconds each.
constexpr int kTurnsToArm = 30;
/// Until what a key or a movement does has been drawn.
constexpr int kTurnsToDraw = 5;
/// An outline is searched for a place to point at in a grid of so many rows and columns.
constexpr uint32_t kGrid = 12;

Pixel MiddleOf(lv_obj_t *object) {
  lv_area_t area;
  lv_obj_get_coords(object, &area);
  return {static_cast<uint32_t>((area.x1 + area.x2) / 2),
          static_cast<uint32_t>((area.y1 + area.y2) / 2)};
}

int64_t SquaredDistance(const Pixel &a, const Pixel &b) {
  int64_t x = int64_t{a.X} - b.X;
  int64_t y = int64_t{a.Y} - b.Y;
  return x * x + y * y;
}

}  // namespace

Hand::Hand(fake::Firmware &machine, const Request &request)
    : machine_(machine), request_(request), step_(&Hand::PressFilterKey), turns_(kTurnsToArm) {}

bool Hand::Turn() {
  if (!done_ && --turns_ <= 0) {
    (this->*step_)();
  }
  return done_;
}

void Hand::Next(Step step, int turns) {
  step_ = step;
  turns_ = turns;
}

void Hand::PressFilterKey() {
  for (size_t i = 0; i < request_.FilterPresses; i++) {
    machine_.Keyboard.Scan(SCAN_INSERT);
  }
  Next(&Hand::Point, static_cast<int>(request_.FilterPresses) + kTurnsToDraw);
}

void Hand::Point() {
  if (!request_.Hover.empty()) {
    std::optional<size_t> index = Hovered();
    done_ = !index.has_value();
    if (index) {
      target_ = *index;
      places_ = PlacesOf(target_);
      TryToHover();
    }
    return;
  }
  if (request_.Pointer) {
    MoveTo(*request_.Pointer);
  } else {
    HideArrow();
  }
  Next(&Hand::Rest, kTurnsToDraw);
}

void Hand::TryToHover() {
  if (places_.empty()) {
    trouble_ = "the pointer cannot reach \"" + request_.Hover + "\": others lie over it";
    done_ = true;
    return;
  }
  MoveTo(places_.front());
  places_.pop_front();
  Next(&Hand::LookAtFocus, kTurnsToDraw);
}

void Hand::LookAtFocus() {
  if (lv_group_get_focused(gLvglPort.Group) == gView.Components[target_].Callout) {
    Rest();
  } else {
    TryToHover();
  }
}

void Hand::Rest() { done_ = true; }

/// Where no hand is there is no arrow; LVGL would leave it in the middle of the board.
void Hand::HideArrow() {
  for (lv_indev_t *device = lv_indev_get_next(nullptr); device != nullptr;
       device = lv_indev_get_next(device)) {
    if (device->cursor != nullptr) {
      lv_obj_add_flag(device->cursor, LV_OBJ_FLAG_HIDDEN);
    }
  }
}

void Hand::MoveTo(const Pixel &pixel) { machine_.Tablet()->MoveTo(pixel.X, pixel.Y); }

std::optional<size_t> Hand::Hovered() {
  for (size_t i = 0; i < ViewComponentCount(); i++) {
    const OBV_COMPONENT &component = ComponentAt(i);
    if (fake::ToAscii(component.Name) != request_.Hover) {
      continue;
    }
    if (component.NotSelectable != 0) {
      trouble_ = "\"" + request_.Hover + "\" is not selectable, so it has no panel";
    } else if (!FilterFinds(gView.CategoryFilter, component)) {
      trouble_ = "the filter hides \"" + request_.Hover + "\"";
    } else {
      return i;
    }
    return std::nullopt;
  }
  trouble_ = "the board has no component \"" + request_.Hover + "\"";
  return std::nullopt;
}

/// The outline from its middle outwards, then the callout, whose text the arrow would cover.
std::deque<Pixel> Hand::PlacesOf(size_t index) const {
  const OBV_COMPONENT &component = ComponentAt(index);
  const ComponentWidgets &widgets = gView.Components[index];
  lv_area_t area;
  lv_obj_get_coords(widgets.Hotspot, &area);
  std::deque<Pixel> places;
  for (uint32_t row = 1; row < kGrid; row++) {
    for (uint32_t column = 1; column < kGrid; column++) {
      Pixel place = {area.x1 + lv_area_get_width(&area) * column / kGrid,
                     area.y1 + lv_area_get_height(&area) * row / kGrid};
      if (IsPointInPolygon(component.HotspotVertexCount, component.HotspotVertices,
                           static_cast<UINT16>(place.X), static_cast<UINT16>(place.Y))) {
        places.push_back(place);
      }
    }
  }
  Pixel middle = MiddleOf(widgets.Hotspot);
  std::stable_sort(places.begin(), places.end(), [&](const Pixel &a, const Pixel &b) {
    return SquaredDistance(a, middle) < SquaredDistance(b, middle);
  });
  places.push_back(MiddleOf(widgets.Callout));
  return places;
}

}  // namespace board_view
