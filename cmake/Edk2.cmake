# EDK2's own libraries, as the firmware build links them, with the values that EDK2's tools would
# generate in cmake/edk2.

set(edk2_libraries
    MdePkg/Library/BaseDebugLibNull/BaseDebugLibNull.inf
    MdePkg/Library/BaseLib/BaseLib.inf
    MdePkg/Library/BasePrintLib/BasePrintLib.inf
    MdePkg/Library/DxeHobLib/DxeHobLib.inf
    MdePkg/Library/RegisterFilterLibNull/RegisterFilterLibNull.inf
    MdePkg/Library/UefiApplicationEntryPoint/UefiApplicationEntryPoint.inf
    MdePkg/Library/UefiBootServicesTableLib/UefiBootServicesTableLib.inf
    MdePkg/Library/UefiDevicePathLib/UefiDevicePathLib.inf
    MdePkg/Library/UefiLib/UefiLib.inf
    MdePkg/Library/UefiMemoryAllocationLib/UefiMemoryAllocationLib.inf
    MdePkg/Library/UefiRuntimeServicesTableLib/UefiRuntimeServicesTableLib.inf
    MdeModulePkg/Library/UefiHiiLib/UefiHiiLib.inf
    MdeModulePkg/Library/UefiHiiServicesLib/UefiHiiServicesLib.inf
)
if(BOARDSCOPE_OPTIMISED)
  # As in the firmware build.
  list(APPEND edk2_libraries MdePkg/Library/BaseMemoryLibRepStr/BaseMemoryLibRepStr.inf)
else()
  # The same functions in C, where the sanitizers see what they read and write.
  list(APPEND edk2_libraries MdePkg/Library/BaseMemoryLib/BaseMemoryLib.inf)
endif()

find_program(BOARDSCOPE_NASM nasm REQUIRED)

# Assembles one of EDK2's files the way EDK2 does, through the C preprocessor first.
function(boardscope_nasm source result)
  file(RELATIVE_PATH name ${EDK2_DIR} ${source})
  set(object ${CMAKE_BINARY_DIR}/nasm/${name}.o)
  get_filename_component(folder ${object} DIRECTORY)
  file(MAKE_DIRECTORY ${folder})
  add_custom_command(
    OUTPUT ${object}
    COMMAND
      ${CMAKE_C_COMPILER} -E -P -w -x assembler-with-cpp "-DASM_PFX(name)=name"
      "-DPcdGet32(name)=_gPcd_FixedAtBuild_##name" ${source} -o ${object}.i
    COMMAND
      ${BOARDSCOPE_NASM} -f elf64 -I${EDK2_DIR}/MdePkg/Include/X64/ ${object}.i -o ${object}
    DEPENDS ${source}
    VERBATIM
  )
  set(${result} ${object} PARENT_SCOPE)
endfunction()

set(edk2_sources "")
foreach(library IN LISTS edk2_libraries)
  boardscope_inf_sources(${EDK2_DIR}/${library} sources)
  list(APPEND edk2_sources ${sources})
  foreach(nasm_source IN LISTS sources_NASM)
    # The rest of BaseLib's assembler code is for privileged instructions.
    if(NOT library MATCHES "/BaseLib/" OR nasm_source MATCHES "/(SetJump|LongJump|CpuId|CpuIdEx)\\.nasm$")
      boardscope_nasm(${nasm_source} object)
      list(APPEND edk2_sources ${object})
    endif()
  endforeach()
endforeach()

add_library(boardscope_edk2_headers INTERFACE)
target_include_directories(
  boardscope_edk2_headers SYSTEM
  INTERFACE ${EDK2_DIR}/MdePkg/Include ${EDK2_DIR}/MdePkg/Include/X64
            ${EDK2_DIR}/MdeModulePkg/Include
)
target_compile_definitions(boardscope_edk2_headers INTERFACE "EFIAPI=__attribute__((ms_abi))")
# EDK2's headers insist on UCS-2 in L"". The standard library's wide strings are unusable that way,
# in tests as well.
target_compile_options(boardscope_edk2_headers INTERFACE -fshort-wchar)

include(Guids)

add_library(
  boardscope_edk2 STATIC ${edk2_sources} ${guid_file} ${PROJECT_SOURCE_DIR}/cmake/edk2/Values.c
)
target_compile_options(
  boardscope_edk2 PRIVATE -include ${PROJECT_SOURCE_DIR}/cmake/edk2/AutoGen.h -fno-builtin
)
target_link_libraries(
  boardscope_edk2
  PUBLIC boardscope_edk2_headers
  PRIVATE boardscope_foreign boardscope_freestanding
)
target_include_directories(
  boardscope_edk2 PRIVATE ${PROJECT_SOURCE_DIR}/include ${EDK2_DIR}/MdePkg/Library/BaseLib
)
if(BOARDSCOPE_SANITIZE)
  # A long jump leaves frames that the address sanitizer has to forget.
  target_sources(boardscope_edk2 PRIVATE ${PROJECT_SOURCE_DIR}/cmake/edk2/LongJump.c)
  target_link_options(boardscope_edk2 INTERFACE -Wl,--wrap=LongJump)
endif()
