/** @file
  LVGL's configuration. Every option of LVGL 8.3 stands here, in the order of its template; where
  the reason for a value is not obvious, it is given.
**/

#ifndef LV_CONF_H
#define LV_CONF_H

#include <stdint.h>

// Colours: blue, green, red, alpha in memory, which is the firmware's pixel, so that the flush
// hands the pixels on without converting them.
#define LV_COLOR_DEPTH 32
#define LV_COLOR_16_SWAP 0
#define LV_COLOR_SCREEN_TRANSP 0
#define LV_COLOR_MIX_ROUND_OFS 0
#define LV_COLOR_CHROMA_KEY lv_color_hex(0x00ff00)

// Memory: one allocator for the whole program. platform/LvglGuard.h tells what it does without any.
#define LV_MEM_CUSTOM 1
#define LV_MEM_CUSTOM_INCLUDE "platform/LvglMemory.h"
#define LV_MEM_CUSTOM_ALLOC gLvglMemory.Allocate
#define LV_MEM_CUSTOM_FREE gLvglMemory.Free
#define LV_MEM_CUSTOM_REALLOC gLvglMemory.Reallocate
// LVGL fails a check when it needs more at once, and each costs 16 bytes.
#define LV_MEM_BUF_MAX_NUM 32
// The compiler's and our own memcpy and memset move wide words, LVGL's move 32 bits.
#define LV_MEMCPY_MEMSET_STD 1

// Every turn of the main loop refreshes and reads the input devices.
#define LV_DISP_DEF_REFR_PERIOD 1
#define LV_INDEV_DEF_READ_PERIOD 1
#define LV_TICK_CUSTOM 0
#define LV_DPI_DEF 92

// Drawing.
#define LV_DRAW_COMPLEX 1
#define LV_SHADOW_CACHE_SIZE 0
// One entry for each of the radii that the view uses, at up to 4 bytes per pixel of radius.
#define LV_CIRCLE_CACHE_SIZE 16
// Objects with an opacity are drawn in strips of this size, and the whole object once per strip:
// room for about 130 rows at 1920 pixels instead of three.
#define LV_LAYER_SIMPLE_BUF_SIZE (1024 * 1024)
#define LV_LAYER_SIMPLE_FALLBACK_BUF_SIZE (24 * 1024)
// More than the view has pictures, so that none is decoded twice.
#define LV_IMG_CACHE_DEF_SIZE 65535
#define LV_GRADIENT_MAX_STOPS 2
#define LV_GRAD_CACHE_DEF_SIZE 0
#define LV_DITHER_GRADIENT 0
#define LV_DISP_ROT_MAX_BUF (10 * 1024)

// Firmware offers no drawing hardware.
#define LV_USE_GPU_ARM2D 0
#define LV_USE_GPU_STM32_DMA2D 0
#define LV_USE_GPU_SWM341_DMA2D 0
#define LV_USE_GPU_NXP_PXP 0
#define LV_USE_GPU_NXP_VG_LITE 0
#define LV_USE_GPU_SDL 0

// The application logs; LVGL's own log would add lines to a log that others read.
#define LV_USE_LOG 0

// A failed check ends the application properly. The checks left out walk all objects or all memory.
#define LV_USE_ASSERT_NULL 1
#define LV_USE_ASSERT_MALLOC 1
#define LV_USE_ASSERT_STYLE 0
#define LV_USE_ASSERT_MEM_INTEGRITY 0
#define LV_USE_ASSERT_OBJ 0
#define LV_ASSERT_HANDLER_INCLUDE "platform/LvglFailure.h"
#define LV_ASSERT_HANDLER BoardscopeLvglFailure(__FILE_NAME__, __LINE__);

#define LV_USE_PERF_MONITOR 0
#define LV_USE_MEM_MONITOR 0
#define LV_USE_REFR_DEBUG 0
#define LV_SPRINTF_CUSTOM 0
#define LV_SPRINTF_USE_FLOAT 0
#define LV_USE_USER_DATA 1
#define LV_ENABLE_GC 0

// Compiler.
#define LV_BIG_ENDIAN_SYSTEM 0
#define LV_ATTRIBUTE_TICK_INC
#define LV_ATTRIBUTE_TIMER_HANDLER
#define LV_ATTRIBUTE_FLUSH_READY
#define LV_ATTRIBUTE_MEM_ALIGN_SIZE 1
#define LV_ATTRIBUTE_MEM_ALIGN
#define LV_ATTRIBUTE_LARGE_CONST
#define LV_ATTRIBUTE_LARGE_RAM_ARRAY
#define LV_ATTRIBUTE_FAST_MEM
#define LV_ATTRIBUTE_DMA
#define LV_EXPORT_CONST_INT(int_value) struct _silence_gcc_warning
// Coordinates are 16-bit, as the areas of the flush callback are.
#define LV_USE_LARGE_COORD 0

// Fonts: the host's files, and behind them one built-in font of our own making.
#define LV_FONT_MONTSERRAT_8 0
#define LV_FONT_MONTSERRAT_10 0
#define LV_FONT_MONTSERRAT_12 0
#define LV_FONT_MONTSERRAT_14 0
#define LV_FONT_MONTSERRAT_16 0
#define LV_FONT_MONTSERRAT_18 0
#define LV_FONT_MONTSERRAT_20 0
#define LV_FONT_MONTSERRAT_22 0
#define LV_FONT_MONTSERRAT_24 0
#define LV_FONT_MONTSERRAT_26 0
#define LV_FONT_MONTSERRAT_28 0
#define LV_FONT_MONTSERRAT_30 0
#define LV_FONT_MONTSERRAT_32 0
#define LV_FONT_MONTSERRAT_34 0
#define LV_FONT_MONTSERRAT_36 0
#define LV_FONT_MONTSERRAT_38 0
#define LV_FONT_MONTSERRAT_40 0
#define LV_FONT_MONTSERRAT_42 0
#define LV_FONT_MONTSERRAT_44 0
#define LV_FONT_MONTSERRAT_46 0
#define LV_FONT_MONTSERRAT_48 0
#define LV_FONT_MONTSERRAT_12_SUBPX 0
#define LV_FONT_MONTSERRAT_28_COMPRESSED 0
#define LV_FONT_DEJAVU_16_PERSIAN_HEBREW 0
#define LV_FONT_SIMSUN_16_CJK 0
#define LV_FONT_UNSCII_8 0
#define LV_FONT_UNSCII_16 0
#define LV_FONT_CUSTOM_DECLARE LV_FONT_DECLARE(BoardscopeDefaultFont)
#define LV_FONT_DEFAULT (&BoardscopeDefaultFont)
#define LV_FONT_FMT_TXT_LARGE 0
#define LV_USE_FONT_COMPRESSED 0
#define LV_USE_FONT_SUBPX 0
#define LV_USE_FONT_PLACEHOLDER 1

// Texts.
#define LV_TXT_ENC LV_TXT_ENC_UTF8
#define LV_TXT_BREAK_CHARS " ,;:-_"
#define LV_TXT_LINE_BREAK_LONG_LEN 0
#define LV_TXT_LINE_BREAK_LONG_PRE_MIN_LEN 3
#define LV_TXT_LINE_BREAK_LONG_POST_MIN_LEN 3
#define LV_TXT_COLOR_CMD "#"
#define LV_USE_BIDI 0
#define LV_USE_ARABIC_PERSIAN_CHARS 0

// Widgets: those that the view is made of, and those that these need.
#define LV_USE_ARC 0
#define LV_USE_BAR 0
#define LV_USE_BTN 1
#define LV_USE_BTNMATRIX 1
#define LV_USE_CANVAS 0
#define LV_USE_CHECKBOX 0
#define LV_USE_DROPDOWN 0
#define LV_USE_IMG 1
#define LV_USE_LABEL 1
#define LV_LABEL_TEXT_SELECTION 0
#define LV_LABEL_LONG_TXT_HINT 1
#define LV_USE_LINE 1
#define LV_USE_ROLLER 0
#define LV_USE_SLIDER 0
#define LV_USE_SWITCH 0
#define LV_USE_TEXTAREA 0
#define LV_USE_TABLE 0

#define LV_USE_ANIMIMG 0
#define LV_USE_CALENDAR 0
#define LV_USE_CHART 0
#define LV_USE_COLORWHEEL 0
#define LV_USE_IMGBTN 0
#define LV_USE_KEYBOARD 0
#define LV_USE_LED 0
#define LV_USE_LIST 0
#define LV_USE_MENU 0
#define LV_USE_METER 0
#define LV_USE_MSGBOX 1
#define LV_USE_SPAN 0
#define LV_USE_SPINBOX 0
#define LV_USE_SPINNER 0
#define LV_USE_TABVIEW 0
#define LV_USE_TILEVIEW 0
#define LV_USE_WIN 0

// The default theme styles every object that the view does not restyle.
#define LV_USE_THEME_DEFAULT 1
#define LV_THEME_DEFAULT_DARK 0
#define LV_THEME_DEFAULT_GROW 1
#define LV_THEME_DEFAULT_TRANSITION_TIME 80
#define LV_USE_THEME_BASIC 0
#define LV_USE_THEME_MONO 0

// The message box lays itself out with flex.
#define LV_USE_FLEX 1
#define LV_USE_GRID 0

// Libraries. Files never reach LVGL: pictures and fonts are in memory.
#define LV_USE_FS_STDIO 0
#define LV_USE_FS_POSIX 0
#define LV_USE_FS_WIN32 0
#define LV_USE_FS_FATFS 0
#define LV_USE_PNG 1
#define LV_USE_BMP 0
#define LV_USE_SJPG 0
#define LV_USE_GIF 0
#define LV_USE_QRCODE 0
#define LV_USE_FREETYPE 1
// LVGL identifies each of the 53 sizes x 3 faces as a face of its own. With room for all of them,
// and for every glyph of a view in several sizes, no font is opened and no glyph rendered twice.
#define LV_FREETYPE_CACHE_SIZE (4 * 1024 * 1024)
// Small bitmaps, which glyphs up to 60 pixels are, take fewer and smaller blocks this way.
#define LV_FREETYPE_SBIT_CACHE 1
#define LV_FREETYPE_CACHE_FT_FACES 159
#define LV_FREETYPE_CACHE_FT_SIZES 159
#define LV_USE_RLOTTIE 0
#define LV_USE_FFMPEG 0

#define LV_USE_SNAPSHOT 0
#define LV_USE_MONKEY 0
#define LV_USE_GRIDNAV 0
#define LV_USE_FRAGMENT 0
#define LV_USE_IMGFONT 0
#define LV_USE_MSG 0
#define LV_USE_IME_PINYIN 0

#define LV_BUILD_EXAMPLES 0
#define LV_USE_DEMO_WIDGETS 0
#define LV_USE_DEMO_KEYPAD_AND_ENCODER 0
#define LV_USE_DEMO_BENCHMARK 0
#define LV_USE_DEMO_STRESS 0
#define LV_USE_DEMO_MUSIC 0

#endif
