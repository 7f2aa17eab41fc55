/** @file
  The application's allocator under the names that native builds give it, next to the C library's.
**/

#pragma once

#include <cstdlib>

#define malloc BoardscopeMalloc
#define free BoardscopeFree
#define realloc BoardscopeRealloc
#include "app/base/MemoryPool.h"
#undef malloc
#undef free
#undef realloc
