# LVGL and FreeType, from the same lists of sources as in the firmware build.

set(third_party ${PROJECT_SOURCE_DIR}/third_party)

boardscope_inf_sources(${third_party}/freetype/FreeType.inf freetype_sources)
list(TRANSFORM freetype_sources REPLACE "^${third_party}/freetype/source" "${FREETYPE_DIR}")
add_library(boardscope_freetype STATIC ${freetype_sources})
# Our options have to be found before FreeType's own.
target_include_directories(
  boardscope_freetype SYSTEM
  PUBLIC ${third_party}/freetype/include ${FREETYPE_DIR}/include
)
# Its allocator is the one that LVGL gets, too; see platform/LvglGuard.h.
target_compile_definitions(
  boardscope_freetype
  PRIVATE FT2_BUILD_LIBRARY malloc=BoardscopeAllocateOrFail realloc=BoardscopeReallocateOrFail
          free=BoardscopeFree
)
target_link_libraries(boardscope_freetype PRIVATE boardscope_foreign)

boardscope_inf_sources(${third_party}/lvgl/Lvgl.inf lvgl_sources)
list(TRANSFORM lvgl_sources REPLACE "^${third_party}/lvgl/source" "${LVGL_DIR}")
add_library(boardscope_lvgl STATIC ${lvgl_sources})
target_include_directories(boardscope_lvgl SYSTEM PUBLIC ${LVGL_DIR})
# For lv_conf.h and what it includes.
target_include_directories(boardscope_lvgl PUBLIC ${PROJECT_SOURCE_DIR})
target_compile_definitions(boardscope_lvgl PUBLIC LV_CONF_INCLUDE_SIMPLE)
target_link_libraries(
  boardscope_lvgl
  PUBLIC boardscope_freetype
  PRIVATE boardscope_foreign boardscope_renamed
)
if(BOARDSCOPE_OPTIMISED)
  target_compile_options(boardscope_lvgl PRIVATE -O3)
endif()
include(Waived)
