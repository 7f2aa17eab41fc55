/** @file
  FreeType's options in this project. FreeType's own file of that name comes later on the include
  path; an option that is not defined here is off.

  Off on purpose: everything that reads files, compressed fonts, variable fonts, colour glyphs and
  legacy formats, none of which a view of labels needs; and embedded bitmaps, which LVGL would take
  for grey pixels although they have one bit each.
**/

#ifndef FTOPTION_H_
#define FTOPTION_H_

#include <ft2build.h>

FT_BEGIN_HEADER

// Fonts come as blocks of memory.
#define FT_CONFIG_OPTION_DISABLE_STREAM_SUPPORT

#define FT_CONFIG_OPTION_INLINE_MULFIX
#define FT_RENDER_POOL_SIZE 16384L
#define FT_MAX_MODULES 8

// Any of these may be the table that maps characters to glyphs.
#define TT_CONFIG_CMAP_FORMAT_0
#define TT_CONFIG_CMAP_FORMAT_2
#define TT_CONFIG_CMAP_FORMAT_4
#define TT_CONFIG_CMAP_FORMAT_6
#define TT_CONFIG_CMAP_FORMAT_8
#define TT_CONFIG_CMAP_FORMAT_10
#define TT_CONFIG_CMAP_FORMAT_12
#define TT_CONFIG_CMAP_FORMAT_13
#define TT_CONFIG_CMAP_FORMAT_14

// Small texts need the hints of their designers.
#define TT_CONFIG_OPTION_BYTECODE_INTERPRETER
#define TT_CONFIG_OPTION_SUBPIXEL_HINTING
#define TT_USE_BYTECODE_INTERPRETER
#define TT_SUPPORT_SUBPIXEL_HINTING_MINIMAL
#define TT_CONFIG_OPTION_MAX_RUNNABLE_OPCODES 1000000L

// Limits of the interpreter that OpenType's PostScript outlines share with older formats.
#define T1_MAX_DICT_DEPTH 5
#define T1_MAX_SUBRS_CALLS 16
#define T1_MAX_CHARSTRINGS_OPERANDS 256
#define T1_CONFIG_OPTION_NO_AFM
#define T1_CONFIG_OPTION_NO_MM_SUPPORT

// Without the service for glyph names, PostScript outlines are refused altogether.
#define FT_CONFIG_OPTION_POSTSCRIPT_NAMES
#define TT_CONFIG_OPTION_POSTSCRIPT_NAMES

// The strength of stems in PostScript outlines, as FreeType has it.
#define CFF_CONFIG_OPTION_DARKENING_PARAMETER_X1 500
#define CFF_CONFIG_OPTION_DARKENING_PARAMETER_Y1 400
#define CFF_CONFIG_OPTION_DARKENING_PARAMETER_X2 1000
#define CFF_CONFIG_OPTION_DARKENING_PARAMETER_Y2 275
#define CFF_CONFIG_OPTION_DARKENING_PARAMETER_X3 1667
#define CFF_CONFIG_OPTION_DARKENING_PARAMETER_Y3 275
#define CFF_CONFIG_OPTION_DARKENING_PARAMETER_X4 2333
#define CFF_CONFIG_OPTION_DARKENING_PARAMETER_Y4 0

FT_END_HEADER

#endif
