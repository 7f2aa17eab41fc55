/** @file
  What happens when LVGL cannot go on. LVGL's own handler loops for ever, which on a firmware
  screen means the power button.
**/

#ifndef BOARDSCOPE_LVGL_FAILURE_H
#define BOARDSCOPE_LVGL_FAILURE_H

#ifdef __cplusplus
extern "C" {
#endif

/// Logs the place, in LVGL or around it, where it cannot go on, and ends the application through
/// its shut-down sequence.
/// @param File  name of the source file without its folder; never NULL
/// @param Line  line in that file
__attribute__((noreturn)) void BoardscopeLvglFailure(const char *File, int Line);

#ifdef __cplusplus
}
#endif

#endif
