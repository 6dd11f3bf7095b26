# One set of compiler settings for every target of the project.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

add_library(quillform_settings INTERFACE)
target_include_directories(quillform_settings INTERFACE ${PROJECT_SOURCE_DIR})
# GCC 12 warns of overlapping copies (-Wrestrict) in its own std::string when it inlines.
target_compile_options(quillform_settings INTERFACE -Wall -Wextra -Wconversion -Werror
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
if(QUILLFORM_FUZZ)
  # Each compiler warns of other things; the usual one decides.
  target_compile_options(quillform_settings INTERFACE -Wno-error -fsanitize=fuzzer-no-link)
  target_link_options(quillform_settings INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(QUILLFORM_SANITIZE)
  target_compile_options(quillform_settings INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(quillform_settings INTERFACE -fsanitize=address,undefined)
endif()
