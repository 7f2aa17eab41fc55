/** @file
  Declared for FreeType, whose macros name files. Nothing here is ever linked.
  Firmware only; native builds use the system's.
**/

#pragma once

#include <stdarg.h>
#include <stddef.h>

typedef struct BoardscopeNoFile FILE;

int snprintf(char *Buffer, size_t Size, const char *Format, ...);
