# Copies the compiler's DLLs beside the programs, which is where Windows looks for them.
foreach(dll libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll zlib1.dll)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${dll}
    OUTPUT_VARIABLE place OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(IS_ABSOLUTE "${place}" AND EXISTS "${place}")
    file(COPY "${place}" DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  endif()
endforeach()
