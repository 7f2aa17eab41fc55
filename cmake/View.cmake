# The view of a board for its author: the application on the fake firmware. The picture tests stand
# on the same library.

find_package(CLI11 REQUIRED)
find_package(PNG REQUIRED)
find_package(PkgConfig REQUIRED)
find_package(nlohmann_json REQUIRED)
pkg_check_modules(sdl REQUIRED IMPORTED_TARGET sdl2 SDL2_ttf)

file(GLOB view_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tool/view/*.cpp)
list(REMOVE_ITEM view_sources ${PROJECT_SOURCE_DIR}/tool/view/Main.cpp)
add_library(boardscope_board_view STATIC ${view_sources})
target_link_libraries(
  boardscope_board_view
  PUBLIC boardscope_fake boardscope_host boardscope_host_blobs boardscope_app
         nlohmann_json::nlohmann_json
  PRIVATE boardscope_own PNG::PNG PkgConfig::sdl
)

add_executable(board-view ${PROJECT_SOURCE_DIR}/tool/view/Main.cpp)
target_link_libraries(board-view PRIVATE boardscope_own boardscope_board_view CLI11::CLI11)
# The window's text comes from the distribution's library, which must not find our FreeType.
target_link_options(board-view PRIVATE -Wl,--exclude-libs,libboardscope_freetype.a)
