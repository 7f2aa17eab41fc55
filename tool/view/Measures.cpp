#include "tool/view/Measures.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

#include "app/base/Geometry.h"
#include "platform/LvglPort.h"
#include "platform/Pointer.h"
#include "resources/ComponentIntake.h"
#include "view/InfoPanel.h"
#include "view/Layout.h"
#include "view/ViewState.h"

namespace board_view {

namespace {

using nlohmann::json;

/// The panel's texts begin with as many empty lines, which the heading stands on.
constexpr int kHeadingLines = 2;

json BoxOf(lv_obj_t *object) {
  lv_obj_update_layout(object);
  lv_area_t area;
  lv_obj_get_coords(object, &area);
  return {area.x1, area.y1, lv_area_get_width(&area), lv_area_get_height(&area)};
}

std::vector<lv_obj_t *> OnScreen(const lv_obj_class_t *kind) {
  std::vector<lv_obj_t *> found;
  for (uint32_t i = 0; i < lv_obj_get_child_cnt(Screen()); i++) {
    lv_obj_t *child = lv_obj_get_child(Screen(), static_cast<int32_t>(i));
    if (lv_obj_check_type(child, kind)) {
      found.push_back(child);
    }
  }
  return found;
}

/// The lines of text that the view builds once and keeps no reference to, in the order in which it
/// does.
enum Line : size_t { kTitle, kFooter, kKeys, kSummary, kLineCount };

std::vector<lv_obj_t *> Lines() {
  std::vector<lv_obj_t *> lines = OnScreen(&lv_label_class);
  std::erase_if(lines, [](const lv_obj_t *label) {
    return label == gView.Heading || label == gView.InfoText || label == gView.SideList;
  });
  if (lines.size() != kLineCount) {
    throw std::logic_error("the view has other lines of text than those that are measured");
  }
  return lines;
}

/// What a text takes at the width of its label, with or without dots in it.
struct TextRoom {
  int Lines;
  lv_coord_t Height;
};

TextRoom RoomOf(const lv_obj_t *label, const CHAR8 *text) {
  const lv_font_t *font = lv_obj_get_style_text_font(label, LV_PART_MAIN);
  lv_coord_t space = lv_obj_get_style_text_line_space(label, LV_PART_MAIN);
  lv_point_t size;
  lv_txt_get_size(&size, text, font, lv_obj_get_style_text_letter_space(label, LV_PART_MAIN), space,
                  lv_obj_get_content_width(label), LV_TEXT_FLAG_RECOLOR);
  return {(size.y + space) / (lv_font_get_line_height(font) + space), size.y};
}

/// Without the last line's end, behind which nothing is drawn.
std::string Drawn(const LastText &text) {
  std::string drawn = text.Text;
  drawn.erase(drawn.find_last_not_of("\r\n") + 1);
  return drawn;
}

/// The panel of a component with the focus; null when it has none.
json PanelOf(size_t index) {
  const OBV_COMPONENT &component = ComponentAt(index);
  if (component.NotSelectable != 0 || component.Type == OBV_TYPE_UNCATEGORISED) {
    return nullptr;
  }
  lv_group_focus_obj(gView.Components[index].Callout);
  TextRoom info = RoomOf(gView.InfoText, Drawn(gInfoPanel.InfoText).c_str());
  int lines = std::max(info.Lines - kHeadingLines, 0);
  int bottom = lv_obj_get_y(gView.InfoText) + info.Height;
  std::string side = gView.SideList == nullptr ? "" : Drawn(gInfoPanel.SideList);
  if (!side.empty()) {
    lv_obj_update_layout(gView.SideList);
    TextRoom list = RoomOf(gView.SideList, side.c_str());
    lines += list.Lines;
    bottom = lv_obj_get_y(gView.SideList) + list.Height;
  }
  int limit = gInfoPanel.Foot != 0 ? gInfoPanel.Foot : Pixels(FirstFilterButtonY());
  return {{"lines", lines}, {"bottom", bottom}, {"limit", limit}};
}

/// What is drawn of the dot, which the view zooms about its middle.
json MarkerOf(lv_obj_t *marker) {
  lv_obj_update_layout(marker);
  double zoom = lv_img_get_zoom(marker) / static_cast<double>(LV_IMG_ZOOM_NONE);
  lv_area_t area;
  lv_obj_get_coords(marker, &area);
  double width = lv_area_get_width(&area) * zoom;
  double height = lv_area_get_height(&area) * zoom;
  return {area.x1 + (lv_area_get_width(&area) - width) / 2,
          area.y1 + (lv_area_get_height(&area) - height) / 2, width, height};
}

template <typename Point>
json PointsOf(const Point *points, size_t count) {
  json list = json::array();
  for (size_t i = 0; i < count; i++) {
    list.push_back({points[i].X, points[i].Y});
  }
  return list;
}

json ComponentBox(size_t index) {
  const OBV_COMPONENT &component = ComponentAt(index);
  const ComponentWidgets &widgets = gView.Components[index];
  std::string name(std::begin(component.Name), std::end(component.Name));
  bool dot = !lv_obj_has_flag(widgets.FirstMarker, LV_OBJ_FLAG_HIDDEN) ||
             !lv_obj_has_flag(widgets.SecondMarker, LV_OBJ_FLAG_HIDDEN);
  return {{"name", name.c_str()},
          {"text", widgets.Name},
          {"callout", BoxOf(widgets.Callout)},
          {"shown", !lv_obj_has_flag(widgets.Callout, LV_OBJ_FLAG_HIDDEN)},
          {"marker", MarkerOf(widgets.SecondMarker)},
          {"dot", dot},
          {"outline", PointsOf(component.HotspotVertices, component.HotspotVertexCount)},
          {"leader", PointsOf(component.LeaderPoints, component.LeaderPointCount)},
          {"panel", PanelOf(index)}};
}

}  // namespace

json MeasureView() {
  std::vector<lv_obj_t *> lines = Lines();
  json measures = {{"screen", {gGeometry.ViewWidth, gGeometry.ViewHeight}},
                   {"pointer", {gPointer.X, gPointer.Y}},
                   {"picture", BoxOf(OnScreen(&lv_img_class).front())},
                   {"panel", BoxOf(gView.InfoText)},
                   {"summary", BoxOf(lines[kSummary])},
                   {"keys", BoxOf(lines[kKeys])},
                   {"title", BoxOf(lines[kTitle])},
                   {"footer", BoxOf(lines[kFooter])},
                   {"close", BoxOf(gView.CloseButton)},
                   {"filters", json::array()},
                   {"components", json::array()}};
  for (lv_obj_t *button : gView.FilterButtons) {
    measures["filters"].push_back(BoxOf(button));
  }
  for (size_t i = 0; i < ViewComponentCount(); i++) {
    measures["components"].push_back(ComponentBox(i));
  }
  return measures;
}

}  // namespace board_view
