# The peers that the benchmarks compare with, and the functions that they time in place.

if(TARGET boardscope_bench)
  find_package(PkgConfig REQUIRED)
  pkg_check_modules(pixman REQUIRED IMPORTED_TARGET pixman-1)
  pkg_check_modules(png REQUIRED IMPORTED_TARGET libpng)
  pkg_check_modules(spng REQUIRED IMPORTED_TARGET spng)
  find_library(yuv_library yuv REQUIRED)
  # Debian has OpenCV's description for pkg-config in a package that brings all of OpenCV.
  find_path(opencv_include opencv2/imgproc.hpp PATH_SUFFIXES opencv4 REQUIRED)
  find_library(opencv_core_library opencv_core REQUIRED)
  find_library(opencv_imgproc_library opencv_imgproc REQUIRED)
  target_include_directories(boardscope_bench SYSTEM PRIVATE ${opencv_include})
  target_link_libraries(
    boardscope_bench PRIVATE PkgConfig::pixman PkgConfig::png PkgConfig::spng ${yuv_library}
                             ${opencv_imgproc_library} ${opencv_core_library}
  )
  set(wrapped
      _Z16GetComponentDatav
      lodepng_decode32
      _Z16ResampleBilinearPKhyyPhyy
      _Z13BuildHotspotsv
      _Z9LoadFontsv
      _Z14BuildBoardViewv
      lv_timer_handler
  )
  list(TRANSFORM wrapped PREPEND -Wl,--wrap=)
  target_link_options(boardscope_bench PRIVATE ${wrapped})
endif()
