/** @file
  A font file: opened in the smallest and the largest size, its glyphs read and drawn in a label.
**/

#include "test/firmware/Run.h"
#include "test/fuzz/Fuzz.h"
#include "test/unit/stage/ApplicationPool.h"

#include "app/base/HostClient.h"
#include "lvgl.h"
#include "platform/LvglGuard.h"
#include "platform/LvglMemory.h"

namespace {

constexpr lv_coord_t kWidth = 160;
constexpr lv_coord_t kHeight = 80;
constexpr char kText[] = "Ag1 |.\xC3\x84\xE4\xB8\xAD\xEF\xBF\xBD";

/// Lives as long as the process: LVGL starts once.
struct Stage {
  fake::Firmware Machine;
  lv_disp_draw_buf_t Buffer{};
  lv_disp_drv_t Driver{};
  std::vector<lv_color_t> Pixels{static_cast<size_t>(kWidth) * kHeight};
  lv_obj_t *Label = nullptr;

  Stage() {
    Machine.Pool.Poison = false;
    Machine.Calls.RecordAll(false);
    fake::RunLibraryConstructors(Machine);
    gLvglMemory = {BoardscopeAllocateOrFail, BoardscopeFree, BoardscopeReallocateOrFail};
    lv_init();
    lv_disp_draw_buf_init(&Buffer, Pixels.data(), nullptr, static_cast<UINT32>(Pixels.size()));
    lv_disp_drv_init(&Driver);
    Driver.hor_res = kWidth;
    Driver.ver_res = kHeight;
    Driver.draw_buf = &Buffer;
    Driver.flush_cb = [](lv_disp_drv_t *driver, const lv_area_t *, lv_color_t *) {
      lv_disp_flush_ready(driver);
    };
    lv_disp_drv_register(&Driver);
    Label = lv_label_create(lv_scr_act());
    lv_obj_set_size(Label, kWidth, kHeight);
    lv_label_set_text_static(Label, kText);
  }
};

/// Reads what LVGL may draw.
void ReadGlyph(const lv_font_t *font, UINT32 letter) {
  lv_font_glyph_dsc_t glyph = {};
  if (!lv_font_get_glyph_dsc(font, &glyph, letter, 0) || glyph.bpp != 8) {
    return;
  }
  const UINT8 *bitmap = lv_font_get_glyph_bitmap(glyph.resolved_font, letter);
  UINT32 bytes = UINT32{glyph.box_w} * glyph.box_h;
  volatile UINT32 sum = 0;
  for (UINT32 i = 0; bitmap != nullptr && i < bytes; i++) {
    sum = sum + bitmap[i];
  }
}

void Draw(lv_obj_t *label, const lv_font_t *font) {
  for (UINT32 letter : {0x20u, 0x41u, 0x67u, 0xC4u, 0x4E2Du, 0x10FFFFu}) {
    ReadGlyph(font, letter);
  }
  lv_obj_set_style_text_font(label, font, LV_PART_MAIN);
  lv_refr_now(nullptr);
  lv_obj_set_style_text_font(label, LV_FONT_DEFAULT, LV_PART_MAIN);
}

struct Work {
  lv_ft_info_t Font;
  lv_obj_t *Label;
};

void Open(void *context) {
  auto *work = static_cast<Work *>(context);
  if (!lv_ft_font_init(&work->Font)) {
    work->Font.font = nullptr;
  }
}

void Use(void *context) {
  auto *work = static_cast<Work *>(context);
  work->Font.font->fallback = LV_FONT_DEFAULT;
  Draw(work->Label, work->Font.font);
  lv_ft_font_destroy(work->Font.font);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  static auto *stage = new Stage;
  std::vector<UINT8> file(data, data + size);
  for (UINT16 height : {8, 60}) {
    Work work = {};
    work.Font.name = "Fuzzed";
    work.Font.mem = file.data();
    work.Font.mem_size = file.size();
    work.Font.weight = height;
    work.Font.style = FT_FONT_STYLE_NORMAL;
    work.Label = stage->Label;
    // An empty vector has no address, and the font engine would then look for a file.
    fuzz::Require(file.empty() || RunTestingAllocations(Open, &work), "the font engine goes on");
    fuzz::Require(work.Font.font == nullptr || RunGuardedFromLvgl(Use, &work),
                  "there was enough memory");
  }
  fuzz::Require(stage->Machine.ProblemsText().empty(), "memory was used well");
  return 0;
}
