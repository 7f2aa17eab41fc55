/** @file
  Before all else in each source file that calculates with vectors or floating
  point numbers: a platform may forbid all modules to use SSE, and what it says
  comes after the flags of a module. Compilers that do not know this pragma get
  a flag instead that nobody takes back.
**/

#pragma once

#pragma GCC target("sse2")
