# EDK2_DIR, LVGL_DIR, FREETYPE_DIR, VENV_DIR and FONT_FILE_0 to 2, from the script that fetched them.

execute_process(
  COMMAND ${PROJECT_SOURCE_DIR}/script/fetch --paths
  OUTPUT_VARIABLE fetched
  OUTPUT_STRIP_TRAILING_WHITESPACE
  COMMAND_ERROR_IS_FATAL ANY
)
string(REPLACE "\n" ";" fetched "${fetched}")
foreach(line IN LISTS fetched)
  string(REGEX MATCH "^([A-Z0-9_]+)=(.*)$" match "${line}")
  # Quoted as for a shell.
  separate_arguments(${CMAKE_MATCH_1} UNIX_COMMAND "${CMAKE_MATCH_2}")
endforeach()

foreach(name EDK2_DIR LVGL_DIR FREETYPE_DIR)
  if(NOT IS_DIRECTORY "${${name}}")
    message(FATAL_ERROR "${${name}} (${name}) is not there. Run script/fetch first.")
  endif()
endforeach()
