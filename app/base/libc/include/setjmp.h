/** @file
  FreeType leaves a glyph that needs more memory by longjmp.
  Firmware only; native builds use the system's.
**/

#pragma once

#include <Base.h>

#include <Library/BaseLib.h>

typedef BASE_LIBRARY_JUMP_BUFFER jmp_buf[1];

#define setjmp(Environment) ((int)SetJump(&(Environment)[0]))

void longjmp(jmp_buf Environment, int Value) __attribute__((noreturn));
