# Toolchain: Windows, 64-bit. Programs run under Wine. Exceptions pass between the host and the
# plug-in, so both use the compiler's libraries as DLLs; cmake/runtime_dlls.cmake puts these beside
# the programs.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_MODULE_LINKER_FLAGS_INIT "-shared-libgcc")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-shared-libgcc")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-shared-libgcc")

find_program(QUILLFORM_WINE NAMES wine64 wine)
if(QUILLFORM_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${QUILLFORM_WINE})
endif()
