# One executable per kind of test; the sources are whatever lies in its folder and the folders below.

find_package(GTest REQUIRED)
include(GoogleTest)

# Makes the executable boardscope_KIND from test/KIND; does nothing while there are no sources.
function(boardscope_executable kind)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/test/${kind}/*.cpp)
  if(NOT sources)
    return()
  endif()
  set(name boardscope_${kind})
  add_executable(${name} ${sources})
  # A test runs once and is short; compiling is what takes time. Lines are enough for a backtrace.
  set_target_properties(${name} PROPERTIES BOARDSCOPE_LEVEL "-g1;-O0")
  # Where tests find their data, and where failing ones leave pictures.
  target_compile_definitions(
    ${name} PRIVATE BOARDSCOPE_SOURCE_DIR="${PROJECT_SOURCE_DIR}"
                    BOARDSCOPE_BINARY_DIR="${CMAKE_BINARY_DIR}"
  )
  target_link_libraries(
    ${name} PRIVATE boardscope_own boardscope_fake boardscope_host_driver boardscope_host
                    boardscope_host_blobs boardscope_setup boardscope_hostcheck boardscope_app
  )
endfunction()

# Far beyond what the longest test takes, in seconds: it is there for a test that hangs, and a busy
# machine must not decide over a commit.
set(BOARDSCOPE_TEST_TIMEOUT 1200 CACHE STRING "Seconds after which a test counts as hanging")

# Each case runs in a process of its own: the state of the application and of LVGL is one-shot.
function(boardscope_test kind)
  boardscope_executable(${kind})
  if(TARGET boardscope_${kind})
    target_link_libraries(boardscope_${kind} PRIVATE GTest::gmock GTest::gtest GTest::gtest_main)
    gtest_discover_tests(
      boardscope_${kind}
      DISCOVERY_MODE PRE_TEST
      DISCOVERY_TIMEOUT ${BOARDSCOPE_TEST_TIMEOUT}
      PROPERTIES LABELS ${kind} TIMEOUT ${BOARDSCOPE_TEST_TIMEOUT}
    )
  endif()
endfunction()

# Where a fuzz target steps in between two functions of the application: the linker puts the
# target's function in the place of the one that is named here.
set(wrapped_by_ComponentFuzz _Z13BuildHotspotsv)
set(wrapped_by_SelectionFuzz _Z14ReStoreUIStatev)
function(boardscope_wrap executable target)
  list(TRANSFORM wrapped_by_${target} PREPEND -Wl,--wrap=)
  target_link_options(${executable} PRIVATE ${wrapped_by_${target}})
endfunction()

# Fuzz targets as a part of the unit tests, which replay their corpora: each target's function
# gets the name of its file.
function(boardscope_replay_corpora)
  foreach(source IN LISTS fuzz_sources)
    get_filename_component(target ${source} NAME_WE)
    set_source_files_properties(
      ${source} PROPERTIES COMPILE_DEFINITIONS LLVMFuzzerTestOneInput=${target}
    )
    string(APPEND targets "TARGET(${target}) ")
    boardscope_wrap(boardscope_unit ${target})
  endforeach()
  set_source_files_properties(
    ${PROJECT_SOURCE_DIR}/test/unit/run/FuzzCorpusTest.cpp
    PROPERTIES COMPILE_DEFINITIONS "BOARDSCOPE_FUZZ_TARGETS=${targets}"
  )
  target_sources(boardscope_unit PRIVATE ${fuzz_sources})
endfunction()

file(GLOB fuzz_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/test/fuzz/*.cpp)
if(BOARDSCOPE_FUZZ)
  foreach(source IN LISTS fuzz_sources)
    get_filename_component(target ${source} NAME_WE)
    add_executable(boardscope_fuzz_${target} ${source})
    target_link_libraries(
      boardscope_fuzz_${target} PRIVATE boardscope_own boardscope_fake boardscope_host_driver
                                        boardscope_host boardscope_host_blobs boardscope_app
    )
    target_link_options(boardscope_fuzz_${target} PRIVATE -fsanitize=fuzzer)
    boardscope_wrap(boardscope_fuzz_${target} ${target})
  endforeach()
elseif(BOARDSCOPE_BENCH)
  boardscope_executable(bench)
  include(Bench)
else()
  boardscope_test(unit)
  boardscope_replay_corpora()
  # The questions that real firmware answers in QEMU.
  file(GLOB contract_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/test/contract/*.cpp)
  target_sources(boardscope_unit PRIVATE ${contract_sources})
  boardscope_test(picture)
  target_link_libraries(boardscope_picture PRIVATE boardscope_board_view)
  # One whole run, which script/test valgrind builds without sanitizers.
  boardscope_executable(visit)
  set_target_properties(boardscope_visit PROPERTIES EXCLUDE_FROM_ALL TRUE)
  # Whatever of the benchmarks needs no peer is compiled here, too, as nothing else would notice
  # that it has ceased to build.
  file(GLOB bench_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/test/bench/*.cpp)
  list(FILTER bench_sources EXCLUDE REGEX "(Peers|EncodeBench|ResamplerBench|Main)\\.cpp$")
  add_library(boardscope_bench_parts OBJECT ${bench_sources})
  set_target_properties(boardscope_bench_parts PROPERTIES BOARDSCOPE_LEVEL "-g1;-O0")
  target_link_libraries(
    boardscope_bench_parts PRIVATE boardscope_own boardscope_fake boardscope_host boardscope_app
  )
endif()
