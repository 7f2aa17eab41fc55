# Interface targets that carry the compiler flags: our code, foreign code, firmware conventions.

add_library(boardscope_own INTERFACE)
target_compile_options(boardscope_own INTERFACE -Wall -Wextra -Werror)
# LVGL's selectors are made of two enumerations.
target_compile_options(
  boardscope_own
  INTERFACE
    $<$<COMPILE_LANGUAGE:CXX>:-Wno-deprecated-enum-enum-conversion>
    $<$<COMPILE_LANG_AND_ID:CXX,Clang>:-Wno-deprecated-anon-enum-enum-conversion>
)

# Foreign code is not ours to clean up.
add_library(boardscope_foreign INTERFACE)
target_compile_options(boardscope_foreign INTERFACE -w)

# What the firmware build does, too: no run-time support of C++, and EDK2's view of aliasing.
add_library(boardscope_freestanding INTERFACE)
target_compile_options(
  boardscope_freestanding
  INTERFACE
    -fno-strict-aliasing
    $<$<COMPILE_LANGUAGE:CXX>:-fno-exceptions>
    $<$<COMPILE_LANGUAGE:CXX>:-fno-rtti>
    $<$<COMPILE_LANGUAGE:CXX>:-fno-threadsafe-statics>
)

# The allocator of the application is called malloc in firmware. Here it gets another name, so that
# the sanitizers keep theirs.
add_library(boardscope_renamed INTERFACE)
target_compile_definitions(
  boardscope_renamed
  INTERFACE malloc=BoardscopeMalloc free=BoardscopeFree realloc=BoardscopeRealloc
)

set(BOARDSCOPE_OWN_SANITIZERS "")
set(BOARDSCOPE_FOREIGN_SANITIZERS "")
if(BOARDSCOPE_SANITIZE)
  set(BOARDSCOPE_OWN_SANITIZERS -fsanitize=address,undefined -fno-sanitize-recover=all)
  # What foreign code is let off is in Waived.cmake.
  set(BOARDSCOPE_FOREIGN_SANITIZERS ${BOARDSCOPE_OWN_SANITIZERS})
  add_link_options(-fsanitize=address,undefined)
  # EDK2's headers give what follows them hidden visibility, the sanitizers' functions included:
  # these must then stand in the executable itself, as they do with clang anyway.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_link_options(-static-libasan -static-libubsan)
  endif()
endif()
if(BOARDSCOPE_FUZZ)
  list(APPEND BOARDSCOPE_OWN_SANITIZERS -fsanitize=fuzzer-no-link)
  list(APPEND BOARDSCOPE_FOREIGN_SANITIZERS -fsanitize=fuzzer-no-link)
endif()
# For the code that ships alone. Unoptimised, so that branches are those of the source.
add_library(boardscope_counted INTERFACE)
if(BOARDSCOPE_COUNTED)
  target_compile_options(boardscope_counted INTERFACE --coverage -O0)
  add_link_options(--coverage)
endif()
# How a target is optimised, and how much gdb is told: for the code that ships enough of both. The
# property BOARDSCOPE_LEVEL of a target says otherwise.
if(BOARDSCOPE_OPTIMISED)
  target_compile_options(boardscope_own INTERFACE -g -O2)
else()
  set(level $<TARGET_PROPERTY:BOARDSCOPE_LEVEL>)
  target_compile_options(
    boardscope_own INTERFACE "$<IF:$<BOOL:${level}>,${level},-g;-O1>" -fno-omit-frame-pointer
  )
endif()
target_compile_options(boardscope_own INTERFACE ${BOARDSCOPE_OWN_SANITIZERS})
# Drawing is foreign code, and tests draw a lot.
target_compile_options(boardscope_foreign INTERFACE -g1 -O2 ${BOARDSCOPE_FOREIGN_SANITIZERS})

# Objects that NASM makes do not say that their stack is not executable.
add_link_options(-Wl,-z,noexecstack)
