// LVGL's configuration, display and flush.

#include "test/unit/stage/PortStage.h"

#include "platform/Keypad.h"
#include "platform/Pointer.h"

namespace {

using fake::Service;
class LvglPort : public PortStage {
 protected:
  LvglPort() { LeaveFontsOut(); }
  static void Refresh() { lv_refr_now(nullptr); }
};

TEST_F(LvglPort, ColoursAreTheFirmwaresPixels) {
  EXPECT_EQ(LV_COLOR_DEPTH, 32);
  lv_color_t color = lv_color_make(1, 2, 3);
  EFI_GRAPHICS_OUTPUT_BLT_PIXEL pixel;
  static_assert(sizeof pixel == sizeof color);
  std::memcpy(&pixel, &color, sizeof pixel);
  EXPECT_EQ(pixel.Red, 1);
  EXPECT_EQ(pixel.Green, 2);
  EXPECT_EQ(pixel.Blue, 3);
  EXPECT_EQ(lv_color_to32(LV_COLOR_CHROMA_KEY) & 0xFFFFFF, 0x00FF00u);
}

TEST_F(LvglPort, ConfigurationOfTheDisplay) {
  InitializeLvglPort();
  EXPECT_EQ(LV_DPI_DEF, 92);
  EXPECT_EQ(LV_IMG_CACHE_DEF_SIZE, 65535);
  EXPECT_EQ(lv_disp_get_default()->refr_timer->period, 1u);
  const lv_disp_drv_t &driver = gLvglPort.DisplayDriver;
  EXPECT_EQ(driver.dpi, 92u);
  EXPECT_EQ(driver.hor_res, 64);
  EXPECT_EQ(driver.ver_res, 48);
  EXPECT_EQ(driver.flush_cb, DisplayFlush);
  EXPECT_TRUE(driver.antialiasing);
  EXPECT_FALSE(driver.screen_transp);
  EXPECT_FALSE(driver.full_refresh);
  EXPECT_FALSE(driver.direct_mode);
}

TEST_F(LvglPort, ConfigurationOfTheInputDevices) {
  InitializeLvglPort();
  for (const lv_indev_drv_t *driver : {&gPointer.Driver, &gKeypad.Driver}) {
    EXPECT_EQ(driver->read_timer->period, 1u);
    EXPECT_EQ(driver->scroll_limit, 10);
    EXPECT_EQ(driver->scroll_throw, 10);
    EXPECT_EQ(driver->long_press_time, 400);
    EXPECT_EQ(driver->long_press_repeat_time, 100);
    EXPECT_EQ(driver->gesture_limit, 50);
    EXPECT_EQ(driver->gesture_min_velocity, 3);
  }
  EXPECT_EQ(gPointer.Driver.type, LV_INDEV_TYPE_POINTER);
  EXPECT_EQ(gKeypad.Driver.type, LV_INDEV_TYPE_KEYPAD);
}

TEST_F(LvglPort, TheDefaultGroupIsTheKeypads) {
  InitializeLvglPort();
  ASSERT_NE(gLvglPort.Group, nullptr);
  EXPECT_EQ(lv_group_get_default(), gLvglPort.Group);
  lv_indev_t *keypad = lv_indev_get_next(lv_indev_get_next(nullptr));
  if (keypad->driver->type != LV_INDEV_TYPE_KEYPAD) {
    keypad = lv_indev_get_next(nullptr);
  }
  EXPECT_EQ(keypad->group, gLvglPort.Group);
}

TEST_F(LvglPort, TheDefaultFontCoversAsciiWithKerning) {
  EXPECT_EQ(LV_FONT_DEFAULT->line_height, 18);
  EXPECT_EQ(LV_FONT_DEFAULT->base_line, 4);
  lv_font_glyph_dsc_t glyph;
  for (UINT32 letter = 0x20; letter <= 0x7E; letter++) {
    EXPECT_TRUE(lv_font_get_glyph_dsc(LV_FONT_DEFAULT, &glyph, letter, 0)) << letter;
    EXPECT_FALSE(glyph.is_placeholder) << letter;
    EXPECT_EQ(glyph.bpp, 4) << letter;
  }
  for (UINT32 letter : {0x1Fu, 0x7Fu, 0xC4u, 0x4E00u}) {
    EXPECT_FALSE(LV_FONT_DEFAULT->get_glyph_dsc(LV_FONT_DEFAULT, &glyph, letter, 0)) << letter;
  }
  EXPECT_LT(lv_font_get_glyph_width(LV_FONT_DEFAULT, 'A', 'V'),
            lv_font_get_glyph_width(LV_FONT_DEFAULT, 'A', 'A'));
}

TEST_F(LvglPort, LvglTakesItsMemoryFromThePool) {
  InitializeLvglPort();
  uint64_t before = Machine.Pool.LiveBlocks(EfiBootServicesData);
  void *block = lv_mem_alloc(100);
  EXPECT_EQ(Machine.Pool.LiveBlocks(EfiBootServicesData), before + 1);
  EXPECT_EQ(Machine.Pool.SizeOf(static_cast<UINT8 *>(block) - 24), UINTN{124});
  lv_mem_free(block);
  EXPECT_EQ(Machine.Pool.LiveBlocks(EfiBootServicesData), before);
}

TEST_F(LvglPort, TwoDrawBuffersHoldTheFullView) {
  InitializeLvglPort();
  const lv_disp_draw_buf_t &buffer = gLvglPort.DrawBuffer;
  EXPECT_EQ(buffer.size, 64u * 48);
  EXPECT_NE(buffer.buf1, buffer.buf2);
  for (void *pixels : {buffer.buf1, buffer.buf2}) {
    EXPECT_EQ(Machine.Pool.SizeOf(static_cast<UINT8 *>(pixels) - 24), UINTN{24 + 64 * 48 * 4});
  }
}

TEST_F(LvglPort, AFullScreenIsFlushedAsOneArea) {
  InitializeLvglPort();
  Refresh();
  EXPECT_EQ(Blts(), Lines{"Gop.Blt(gop0, BufferToVideo, 0, 0, 0, 0, 64, 48, 0) = Success"});
  lv_obj_invalidate(lv_scr_act());
  Refresh();
  EXPECT_EQ(Blts().size(), 2u);
}

TEST_F(LvglPort, FlushedPixelsReachTheScreenUnchanged) {
  InitializeLvglPort();
  lv_obj_set_style_bg_color(lv_scr_act(), lv_color_hex(0x123456), 0);
  lv_obj_set_style_bg_opa(lv_scr_act(), LV_OPA_COVER, 0);
  Refresh();
  EXPECT_EQ(Output.Pixel(63, 47), 0x123456u);
}

TEST_F(LvglPort, AnAreaWithItsCornersReversedKeepsItsSizeAndFirstCorner) {
  InitializeLvglPort();
  std::vector<lv_color_t> pixels(64);
  lv_area_t area = {20, 30, 15, 27};
  DisplayFlush(&gLvglPort.DisplayDriver, &area, pixels.data());
  area = {15, 27, 20, 30};
  DisplayFlush(&gLvglPort.DisplayDriver, &area, pixels.data());
  EXPECT_EQ(Blts(), (Lines{"Gop.Blt(gop0, BufferToVideo, 0, 0, 20, 30, 6, 4, 0) = Success",
                           "Gop.Blt(gop0, BufferToVideo, 0, 0, 15, 27, 6, 4, 0) = Success"}));
}

TEST_F(LvglPort, AFailedTransferDoesNotHoldLvglUp) {
  InitializeLvglPort();
  Machine.FailCall(Service::GopBlt, 1, EFI_DEVICE_ERROR, fake::kForever);
  Refresh();
  EXPECT_FALSE(gLvglPort.DrawBuffer.flushing);
  lv_obj_invalidate(lv_scr_act());
  Refresh();
  EXPECT_EQ(Blts().size(), 2u);
}

TEST_F(LvglPort, WithoutAnOutputNothingIsTransferred) {
  InitializeLvglPort();
  gHost.Gop = nullptr;
  Refresh();
  EXPECT_EQ(Blts(), Lines{});
  EXPECT_FALSE(gLvglPort.DrawBuffer.flushing);
}

TEST_F(LvglPort, EachFlushGoesToTheOutputThenInUse) {
  InitializeLvglPort();
  Refresh();
  gHost.Gop = Machine.AddOutput({{64, 48}}).Protocol();
  lv_obj_invalidate(lv_scr_act());
  Refresh();
  ASSERT_EQ(Blts().size(), 2u);
  EXPECT_EQ(Blts()[1], "Gop.Blt(gop1, BufferToVideo, 0, 0, 0, 0, 64, 48, 0) = Success");
}

TEST_F(LvglPort, DevicesAreSetUpBeforeTheFonts) {
  Machine.AddSimplePointer();
  Machine.AddAbsolutePointer();
  InitializeLvglPort();
  EXPECT_LT(Machine.Calls.Find("SimplePointer.GetState"), Machine.Calls.Find("Host.GetFontData"));
}

}  // namespace
