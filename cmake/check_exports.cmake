# Fails unless PlugInMain is all that a module exports.
# cmake -DMODULE=<file> -DNM=<nm> -DOBJDUMP=<objdump> -P check_exports.cmake
if(MODULE MATCHES "\\.dll$")
  execute_process(COMMAND ${OBJDUMP} -p ${MODULE}
    OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX REPLACE ".*\\[Ordinal/Name Pointer\\] Table" "" text "${text}")
  string(REGEX REPLACE "\n\r?\n.*" "" text "${text}")
  string(REGEX MATCHALL "\\[ *[0-9]+\\] [^\r\n]+" exports "${text}")
  list(TRANSFORM exports REPLACE "^\\[ *[0-9]+\\] " "")
else()
  execute_process(COMMAND ${NM} -D --defined-only ${MODULE}
    OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL "[^ \n]+\n" exports "${text}")
  list(TRANSFORM exports STRIP)
endif()
if(NOT exports STREQUAL "PlugInMain")
  message(FATAL_ERROR "${MODULE} exports: ${exports}")
endif()
