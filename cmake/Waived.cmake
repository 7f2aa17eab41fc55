# What foreign code is let off by the undefined-behaviour sanitizer, and by the fuzzer's feedback:
# one check in one file, each with its reason. All else of LVGL, FreeType, lodepng and EDK2's
# libraries has to hold as our own code does.

# boardscope_waive(CHECK FILE...): the file is compiled without that check.
function(boardscope_waive check)
  if(BOARDSCOPE_SANITIZE)
    foreach(file IN LISTS ARGN)
      if(NOT EXISTS ${file})
        message(FATAL_ERROR "${file}, for which ${check} is waived, is not there.")
      endif()
      set_property(SOURCE ${file} APPEND PROPERTY COMPILE_OPTIONS -fno-sanitize=${check})
    endforeach()
  endif()
endfunction()

# A UCS-2 character is put together from two CHAR8, which are signed here: the shifted half may be
# negative, and a mask takes off what is too much.
boardscope_waive(shift ${EDK2_DIR}/MdePkg/Library/BasePrintLib/PrintLibInternal.c)

# Reading at any address is what these functions are for, and what X64 does.
boardscope_waive(alignment ${EDK2_DIR}/MdePkg/Library/BaseLib/Unaligned.c)

# The last chunk of a PNG file has no data, and lodepng copies none of it from null.
boardscope_waive(nonnull-attribute ${LVGL_DIR}/src/extra/libs/png/lodepng.c)

if(BOARDSCOPE_FUZZ)
  # Drawing takes most of a run's time, and none of its decisions is the input's. The unit and
  # picture tests draw with all checks.
  file(GLOB_RECURSE drawing ${LVGL_DIR}/src/draw/*.c)
  set_property(
    SOURCE ${drawing} APPEND PROPERTY COMPILE_OPTIONS -fno-sanitize=fuzzer-no-link,undefined
  )
  # Comparisons are followed in one process alone, and most runs are in a child; what decoders
  # compare with, the dictionaries have.
  list(REMOVE_ITEM lvgl_sources ${drawing})
  set_property(
    SOURCE ${lvgl_sources} ${edk2_sources} APPEND
    PROPERTY COMPILE_OPTIONS -fno-sanitize-coverage=trace-cmp
  )
endif()
