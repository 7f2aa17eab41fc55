# The application, the reference host's portable part, and the fake firmware.

boardscope_inf_sources(${PROJECT_SOURCE_DIR}/Boardscope.inf app_sources)
# This machine's C library has these functions.
list(REMOVE_ITEM app_sources ${PROJECT_SOURCE_DIR}/app/base/CLibrary.cpp)
list(REMOVE_ITEM app_sources ${PROJECT_SOURCE_DIR}/app/base/CompilerCalls.cpp)

add_library(boardscope_app STATIC ${app_sources} ${PROJECT_SOURCE_DIR}/cmake/edk2/Entry.c)
target_include_directories(
  boardscope_app PUBLIC ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/include
)
# LVGL needs the allocator, the built-in font and the failure handler; hence the circle.
target_link_libraries(boardscope_lvgl PUBLIC boardscope_app)
target_link_libraries(
  boardscope_app
  PUBLIC boardscope_lvgl boardscope_edk2
  PRIVATE boardscope_own boardscope_freestanding boardscope_renamed boardscope_counted
)
# With the handler and the value of the image's own, which tests damage.
target_compile_options(
  boardscope_app PRIVATE -fstack-protector-strong -mstack-protector-guard=global
)

# The host check beside it, which shares the application's sources.
file(GLOB hostcheck_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/hostcheck/*.c
     ${PROJECT_SOURCE_DIR}/hostcheck/*.cpp
)
add_library(boardscope_hostcheck STATIC ${hostcheck_sources})
target_link_libraries(
  boardscope_hostcheck
  PUBLIC boardscope_app
  PRIVATE boardscope_own boardscope_freestanding boardscope_renamed boardscope_counted
)

file(GLOB host_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/host/portable/*.cpp)
add_library(boardscope_host STATIC ${host_sources})
target_include_directories(
  boardscope_host PUBLIC ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/include
)
target_link_libraries(
  boardscope_host
  PUBLIC boardscope_edk2
  PRIVATE boardscope_own boardscope_freestanding boardscope_counted
)

# The driver around it, with the sources of hardware, the demo sensors and the inventory. Who links it
# supplies the I/O ports.
file(
  GLOB host_driver_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/host/uefi/*.cpp
  ${PROJECT_SOURCE_DIR}/host/sources/*.cpp ${PROJECT_SOURCE_DIR}/host/demo/*.cpp
  ${PROJECT_SOURCE_DIR}/host/inventory/*.cpp
)
add_library(boardscope_host_driver STATIC ${host_driver_sources})
target_link_libraries(
  boardscope_host_driver
  PUBLIC boardscope_host boardscope_host_blobs
  PRIVATE boardscope_own boardscope_freestanding boardscope_counted
)
# The application's own are linked, too.
target_compile_definitions(
  boardscope_host_driver
  PRIVATE __stack_chk_guard=BoardscopeHostStackGuard __stack_chk_fail=BoardscopeHostStackFail
)
target_compile_options(
  boardscope_host_driver PRIVATE -include ${PROJECT_SOURCE_DIR}/cmake/edk2/AutoGen.h
)

# The default board and the fonts, as the EFI driver embeds them.
file(GLOB_RECURSE board_files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/assets/board/board.*)
file(GLOB_RECURSE tool_files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tool/*.py)
set(blobs ${CMAKE_BINARY_DIR}/host/HostBlobs.S)
add_custom_command(
  OUTPUT ${blobs}
  COMMAND
    ${VENV_DIR}/bin/python ${PROJECT_SOURCE_DIR}/host/embed.py --board-dir
    ${PROJECT_SOURCE_DIR}/assets/board --font ${FONT_FILE_0} --font ${FONT_FILE_1} --font
    ${FONT_FILE_2} --out ${CMAKE_BINARY_DIR}/host
  # The file is left alone when nothing in it changes.
  COMMAND ${CMAKE_COMMAND} -E touch ${blobs}
  DEPENDS ${PROJECT_SOURCE_DIR}/host/embed.py ${PROJECT_SOURCE_DIR}/host/fallback_font.py
          ${PROJECT_SOURCE_DIR}/host/portable/Texts.cpp ${board_files} ${tool_files}
  VERBATIM
)
add_library(boardscope_host_blobs STATIC ${blobs})

# The setup's portable part. The tables that its EFI driver is built with are written at once, as
# clang-tidy wants to see them, too.
file(GLOB_RECURSE setup_files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/setup/*.py
     ${PROJECT_SOURCE_DIR}/setup/*.yaml
)
set_property(
  DIRECTORY APPEND
  PROPERTY CMAKE_CONFIGURE_DEPENDS ${setup_files} ${board_files} ${tool_files}
           ${PROJECT_SOURCE_DIR}/include/Protocol/ObvSetup.h
)
execute_process(
  COMMAND
    ${VENV_DIR}/bin/python ${PROJECT_SOURCE_DIR}/setup/generate.py --board-dir
    ${PROJECT_SOURCE_DIR}/assets/board --font ${FONT_FILE_1} --out
    ${PROJECT_SOURCE_DIR}/build/setup
  COMMAND_ERROR_IS_FATAL ANY
)
file(GLOB setup_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/setup/portable/*.cpp)
add_library(boardscope_setup STATIC ${setup_sources})
target_include_directories(
  boardscope_setup PUBLIC ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/include
)
target_link_libraries(
  boardscope_setup
  PUBLIC boardscope_edk2
  PRIVATE boardscope_own boardscope_freestanding boardscope_counted
)

file(GLOB fake_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/test/firmware/*.cpp)
add_library(boardscope_fake STATIC ${fake_sources})
target_include_directories(
  boardscope_fake PUBLIC ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/include
)
target_link_libraries(
  boardscope_fake
  PUBLIC boardscope_edk2_headers
  PRIVATE boardscope_own
)
# Failure loops paint and compare thousands of screens.
set_target_properties(boardscope_fake PROPERTIES BOARDSCOPE_LEVEL "-g1;-O2")
if(BOARDSCOPE_FUZZ)
  # What the fake firmware visits tells the fuzzer nothing, and takes a third of its time.
  target_compile_options(boardscope_fake PRIVATE -fno-sanitize=fuzzer-no-link)
endif()
if(BOARDSCOPE_COUNTED)
  # Child processes end without the functions that would write their counts.
  target_compile_definitions(boardscope_fake PRIVATE BOARDSCOPE_COUNTED)
endif()
