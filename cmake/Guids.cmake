# Defines every GUID that EDK2's packages and ours declare in their DEC files.

set(dec_files ${EDK2_DIR}/MdePkg/MdePkg.dec ${EDK2_DIR}/MdeModulePkg/MdeModulePkg.dec
              ${PROJECT_SOURCE_DIR}/Boardscope.dec
)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${dec_files})
set(guid_definitions "#include <Uefi.h>\n\n")
foreach(dec_file IN LISTS dec_files)
  file(STRINGS ${dec_file} guid_lines REGEX "^[ \t]*g[A-Za-z0-9_]+[ \t]*=[ \t]*{")
  foreach(line IN LISTS guid_lines)
    string(REGEX MATCH "(g[A-Za-z0-9_]+)[ \t]*=[ \t]*({[^#]*})" match "${line}")
    string(APPEND guid_definitions "EFI_GUID ${CMAKE_MATCH_1} = ${CMAKE_MATCH_2}\;\n")
  endforeach()
endforeach()
string(REPLACE "\;" ";" guid_definitions "${guid_definitions}")
set(guid_file ${CMAKE_BINARY_DIR}/edk2/Guids.c)
file(CONFIGURE OUTPUT ${guid_file} CONTENT "${guid_definitions}" @ONLY)
