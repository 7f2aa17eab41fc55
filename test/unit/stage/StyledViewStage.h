/** @file
  On ViewStage: a view whose record has a different value in every field, and what its buttons look
  like.
**/

#pragma once

#include "test/unit/stage/ViewStage.h"

/// Gives a font field a face and size of its own.
inline void SetFont(OBV_FONT_CHOICE *font, const char *face, UINT8 size) {
  fake::CopyText(font->Name, face);
  font->Size = size;
}

class StyledViewStage : public ViewStage {
 protected:
  StyledViewStage() {
    Host.Components.resize(1);
    OBV_CONFIG &config = Host.Config;
    fake::CopyText(config.TitleColor, "1,1,1");
    SetFont(&config.TitleFont, "DejaVuSans", 21);
    fake::CopyText(config.KeyHelpKeyColor, "18,52,86");
    fake::CopyText(config.KeyHelpColor, "2,2,2");
    SetFont(&config.KeyHelpFont, "DejaVuSansBold", 15);
    fake::CopyText(config.FooterColor, "3,3,3");
    SetFont(&config.FooterFont, "DejaVuSans", 13);
    SetFont(&config.CalloutFont, "DejaVuSansBold", 17);
    SetFont(&config.CloseFocusFont, "DejaVuSans", 25);
    SetButton(&config.Filter, "10,0,0", 3, 6);
    SetFont(&config.Filter.Font, "DejaVuSans", 19);
    SetButton(&config.FocusFilter, "20,0,0", 4, 7);
    SetFont(&config.FocusFilter.Font, "DejaVuSansBold", 23);
    fake::CopyText(config.InfoText.Color, "4,4,4");
    SetFont(&config.InfoLabel.Font, "DejaVuSans", 27);
    SetFont(&config.InfoText.Font, "DejaVuSans", 29);
    Host.ViewColor = "7,8,9";
  }

  /// Colours are the text's colour and those with 1 and 2 as blue part.
  static void SetButton(OBV_FILTER_BUTTON_LOOK *look, std::string color, UINT8 border,
                        UINT8 radius) {
    fake::CopyText(look->TextColor, color);
    color.back() = '1';
    fake::CopyText(look->BackgroundColor, color);
    color.back() = '2';
    fake::CopyText(look->BorderColor, color);
    look->BorderWidth = border;
    look->CornerRadius = radius;
  }

  /// Builds, and takes away the focus that LVGL gives to the first button.
  void BuildUnfocused(UINT32 width = 1920, UINT32 height = 1080) {
    Build(width, height);
    lv_obj_clear_state(gView.CloseButton, LV_STATE_ANY);
  }

  static lv_obj_t *Button(int row) { return gView.FilterButtons[row]; }
};

struct ShownLook {
  int Radius, Opacity;
  UINT32 Background, Text;
  int BorderWidth;
  std::string Font;
  bool operator==(const ShownLook &) const = default;
};

inline std::ostream &operator<<(std::ostream &out, const ShownLook &look) {
  return out << "radius " << look.Radius << ", opacity " << look.Opacity << ", background "
             << std::hex << look.Background << ", text " << look.Text << std::dec << ", border "
             << look.BorderWidth << ", font " << look.Font;
}

inline ShownLook LookOf(lv_obj_t *button) {
  return {lv_obj_get_style_radius(button, LV_PART_MAIN),
          lv_obj_get_style_bg_opa(button, LV_PART_MAIN),
          Rgb(lv_obj_get_style_bg_color(button, LV_PART_MAIN)),
          TextColorOf(button),
          lv_obj_get_style_border_width(button, LV_PART_MAIN),
          FontOf(button)};
}

inline void ExpectBorder(lv_obj_t *button, UINT32 color, int opacity) {
  EXPECT_EQ(Rgb(lv_obj_get_style_border_color(button, LV_PART_MAIN)), color);
  EXPECT_EQ(lv_obj_get_style_border_opa(button, LV_PART_MAIN), opacity);
}
