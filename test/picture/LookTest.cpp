// Large text: nothing on the screen is cut off, in any language and at any size. (The usual look
// gives some lines less than their font's height, of which only their gap is missing.)

#include "test/picture/ReferenceRun.h"

#include "host/portable/Blobs.h"
#include "host/portable/Texts.h"
#include "lvgl.h"

namespace picture {
namespace {

struct LookCase {
  size_t Language;
  fake::VideoMode Mode;
  obv_host::LookChoice Choice;
};

/// lv_label_t.dot_end of a label whose text has its room; LVGL keeps the name to itself.
constexpr uint32_t kNoDots = 0xFFFFFFFF;

constexpr obv_host::LookChoice kLarge = {.HighContrast = false, .LargeText = true};

obv_host::LookChoice gChoice;

lv_point_t NeededSize(const lv_obj_t *label) {
  const auto *self = reinterpret_cast<const lv_label_t *>(label);
  lv_point_t size = {};
  lv_txt_get_size(&size, self->text, lv_obj_get_style_text_font(label, LV_PART_MAIN),
                  lv_obj_get_style_text_letter_space(label, LV_PART_MAIN),
                  lv_obj_get_style_text_line_space(label, LV_PART_MAIN),
                  lv_obj_get_content_width(label),
                  self->recolor != 0 ? LV_TEXT_FLAG_RECOLOR : LV_TEXT_FLAG_NONE);
  return size;
}

/// A label shows all of its text, and stands on the screen and inside of its button.
void ExpectWhole(const lv_obj_t *label) {
  const auto *self = reinterpret_cast<const lv_label_t *>(label);
  EXPECT_EQ(self->dot_end, kNoDots) << self->text << ": dots stand for the rest";
  lv_point_t needed = NeededSize(label);
  EXPECT_LE(needed.y, lv_obj_get_height(label)) << self->text;
  EXPECT_LE(needed.x, lv_obj_get_content_width(label)) << self->text;
  EXPECT_LT(label->coords.y2, lv_disp_get_ver_res(nullptr)) << self->text;
  const lv_obj_t *parent = lv_obj_get_parent(label);
  EXPECT_GE(label->coords.x1, parent->coords.x1) << self->text;
  EXPECT_LE(label->coords.x2, parent->coords.x2) << self->text;
}

/// The number of labels with a text below an object.
int ExpectWholeLabels(const lv_obj_t *object) {
  int count = 0;
  for (uint32_t i = 0; i < lv_obj_get_child_cnt(object); i++) {
    const lv_obj_t *child = lv_obj_get_child(object, static_cast<int32_t>(i));
    if (lv_obj_has_flag(child, LV_OBJ_FLAG_HIDDEN)) {
      continue;
    }
    if (lv_obj_check_type(child, &lv_label_class) && lv_label_get_text(child)[0] != 0) {
      ExpectWhole(child);
      count++;
    }
    count += ExpectWholeLabels(child);
  }
  return count;
}

class LookPictures : public ReferenceRun, public testing::WithParamInterface<LookCase> {};

TEST_P(LookPictures, NothingIsCutOff) {
  gChoice = GetParam().Choice;
  Host.Services.ReadLook = [](void *) { return gChoice; };
  Machine.Variables.SetText(u"PlatformLang", obv_host::kLanguages[GetParam().Language].Code);
  AddPointers();
  const obv_host::EmbeddedFile file = obv_host::EmbeddedBoard();
  int labels = 0;
  fake::RunOptions options;
  options.At(40, [&] {
    lv_obj_update_layout(lv_scr_act());
    labels = ExpectWholeLabels(lv_scr_act());
  });
  Show({GetParam().Mode}, std::vector<uint8_t>(file.Data, file.Data + file.Size), options);
  // Title, key help, footer, hint, summary, close button, six filter buttons, and callouts.
  EXPECT_GT(labels, 12);
}

std::vector<LookCase> AllLooks() {
  std::vector<LookCase> cases;
  for (size_t language = 0; language < obv_host::kLanguageCount; language++) {
    for (const fake::VideoMode &mode :
         {fake::VideoMode{1024, 768}, fake::VideoMode{1920, 1080}, fake::VideoMode{3840, 2160}}) {
      cases.push_back({language, mode, kLarge});
    }
  }
  return cases;
}

INSTANTIATE_TEST_SUITE_P(, LookPictures, testing::ValuesIn(AllLooks()),
                         [](const testing::TestParamInfo<LookCase> &info) {
                           std::string name = obv_host::kLanguages[info.param.Language].Code;
                           std::erase(name, '-');
                           return name + "Large" + std::to_string(info.param.Mode.Width);
                         });

}  // namespace
}  // namespace picture
