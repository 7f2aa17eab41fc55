# The peers that the benchmarks compare with.

if(TARGET boardscope_bench)
  find_package(PkgConfig REQUIRED)
  pkg_check_modules(peers REQUIRED IMPORTED_TARGET pixman-1 spng opencv4)
  find_library(yuv_library yuv REQUIRED)
  find_library(stb_library stb REQUIRED)
  target_link_libraries(
    boardscope_bench PRIVATE PkgConfig::peers ${yuv_library} ${stb_library}
  )
endif()
