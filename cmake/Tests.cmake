# One executable per kind of test; the sources are whatever lies in its folder.

find_package(GTest REQUIRED)
include(GoogleTest)

# Makes the executable boardscope_KIND from test/KIND/*.cpp; does nothing while there are none.
function(boardscope_executable kind)
  file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/test/${kind}/*.cpp)
  if(NOT sources)
    return()
  endif()
  set(name boardscope_${kind})
  add_executable(${name} ${sources})
  # Where tests find their data, and where failing ones leave pictures.
  target_compile_definitions(
    ${name} PRIVATE BOARDSCOPE_SOURCE_DIR="${PROJECT_SOURCE_DIR}"
                    BOARDSCOPE_BINARY_DIR="${CMAKE_BINARY_DIR}"
  )
  target_link_libraries(
    ${name} PRIVATE boardscope_own boardscope_fake boardscope_host_driver boardscope_host
                    boardscope_host_blobs boardscope_app
  )
endfunction()

# Each case runs in a process of its own: the state of the application and of LVGL is one-shot.
function(boardscope_test kind timeout)
  boardscope_executable(${kind})
  if(TARGET boardscope_${kind})
    target_link_libraries(boardscope_${kind} PRIVATE GTest::gmock GTest::gtest GTest::gtest_main)
    gtest_discover_tests(
      boardscope_${kind}
      DISCOVERY_MODE PRE_TEST
      PROPERTIES LABELS ${kind} TIMEOUT ${timeout}
    )
  endif()
endfunction()

if(BOARDSCOPE_FUZZ)
  file(GLOB fuzz_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/test/fuzz/*.cpp)
  foreach(source IN LISTS fuzz_sources)
    get_filename_component(target ${source} NAME_WE)
    add_executable(boardscope_fuzz_${target} ${source})
    target_link_libraries(
      boardscope_fuzz_${target} PRIVATE boardscope_own boardscope_fake boardscope_host
                                        boardscope_host_blobs boardscope_app
    )
    target_link_options(boardscope_fuzz_${target} PRIVATE -fsanitize=fuzzer)
  endforeach()
elseif(BOARDSCOPE_BENCH)
  boardscope_executable(bench)
  include(Bench)
else()
  boardscope_test(unit 120)
  boardscope_test(picture 300)
endif()
