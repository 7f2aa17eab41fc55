/** @file
  The board view as it is built, before the main loop runs, on the fake firmware.
**/

#pragma once

#include <gtest/gtest.h>

#include "test/firmware/Run.h"
#include "test/firmware/TestHost.h"

#include "app/ChooseGeometry.h"
#include "app/Input.h"
#include "app/base/HostClient.h"
#include "app/base/LocateHost.h"
#include "platform/FontTable.h"
#include "platform/LvglPort.h"
#include "resources/ComponentIntake.h"
#include "view/BoardView.h"
#include "view/SystemSummary.h"
#include "view/ViewState.h"

/// A rectangle of the screen.
struct Place {
  int X, Y, Width, Height;
  bool operator==(const Place &) const = default;
};

inline std::ostream &operator<<(std::ostream &out, const Place &place) {
  return out << place.Width << "x" << place.Height << " at (" << place.X << ", " << place.Y << ")";
}

/// Where LVGL has put an object.
inline Place PlaceOf(lv_obj_t *object) {
  lv_area_t area;
  lv_obj_get_coords(object, &area);
  return {area.x1, area.y1, lv_area_get_width(&area), lv_area_get_height(&area)};
}

/// 0xRRGGBB.
inline UINT32 Rgb(lv_color_t color) { return lv_color_to32(color) & 0xFFFFFF; }

/// "Face size", as the host's table of fonts was loaded; "default" for LVGL's own.
inline std::string FontText(const lv_font_t *font) {
  for (const lv_ft_info_t &entry : gFontTable.Fonts) {
    if (entry.font == font && font != nullptr) {
      return std::string(entry.name) + " " + std::to_string(entry.weight);
    }
  }
  return font == LV_FONT_DEFAULT ? "default" : "unknown";
}

inline std::vector<lv_obj_t *> ChildrenOf(lv_obj_t *object) {
  std::vector<lv_obj_t *> children;
  for (UINT32 i = 0; i < lv_obj_get_child_cnt(object); i++) {
    children.push_back(lv_obj_get_child(object, static_cast<INT32>(i)));
  }
  return children;
}

inline bool IsHidden(const lv_obj_t *object) { return lv_obj_has_flag(object, LV_OBJ_FLAG_HIDDEN); }

inline std::string LabelText(lv_obj_t *label) { return lv_label_get_text(label); }

/// The text of a button's label.
inline std::string Caption(lv_obj_t *button) { return LabelText(lv_obj_get_child(button, 0)); }

/// The picture that an image object shows; null when it has none.
inline const lv_img_dsc_t *Source(lv_obj_t *image) {
  return static_cast<const lv_img_dsc_t *>(lv_img_get_src(image));
}

/// A test changes Host, then builds. Once per process, like the application itself.
class ViewStage : public testing::Test {
 protected:
  ~ViewStage() override { EXPECT_EQ(Machine.ProblemsText(), ""); }

  /// Start-up of the application on a setup screen of this size, up to the built view.
  void Build(UINT32 width = 1920, UINT32 height = 1080) {
    Machine.AddOutput({{width, height}});
    Host.Install();
    BuildOnWhatIsThere();
  }

  /// The same after a test has added outputs and installed the host itself.
  void BuildOnWhatIsThere() {
    fake::RunLibraryConstructors(Machine);
    ASSERT_EQ(InitializeObvProtocol(), EFI_SUCCESS);
    ASSERT_EQ(ChooseViewGeometry(), EFI_SUCCESS);
    ASSERT_EQ(GetComponentData(), EFI_SUCCESS);
    ComposeSystemSummary();
    ConnectInput();
    InitializeLvglPort();
    BuildBoardView();
    lv_obj_update_layout(Screen());
  }

  static lv_obj_t *Screen() { return lv_disp_get_scr_act(lv_disp_get_default()); }

  /// Objects of the screen in drawing order.
  static std::vector<lv_obj_t *> Objects() { return ChildrenOf(Screen()); }

  /// Without the fonts, whose loading takes most of the time. For tests that look at no text.
  void LeaveFontsOut() {
    for (fake::TestHost::Font &font : Host.Fonts) {
      font.File.clear();
    }
  }

  fake::Firmware Machine;
  fake::TestHost Host{Machine};
};
