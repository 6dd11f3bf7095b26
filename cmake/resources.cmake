# quillform_add_resources(<target> <file.rc> [DEPENDS <file>...])
#
# Compiles a resource script into the target. On Windows it becomes the module's resource section.
# Elsewhere the compiled form (.res) is embedded between two symbols, where winlet looks for it.
if(WIN32)
  enable_language(RC)
else()
  find_program(QUILLFORM_RESOURCE_COMPILER
    NAMES x86_64-w64-mingw32-windres i686-w64-mingw32-windres windres
    DOC "Compiles the module's resources (on Debian: the package binutils-mingw-w64-x86-64)")
endif()

set(QUILLFORM_EMBED_TEMPLATE ${CMAKE_CURRENT_LIST_DIR}/embedded_resources.cpp.in)

function(quillform_add_resources target script)
  cmake_parse_arguments(PARSE_ARGV 2 arg "" "" "DEPENDS")
  cmake_path(ABSOLUTE_PATH script)
  list(TRANSFORM arg_DEPENDS PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
  if(WIN32)
    set_source_files_properties(${script} TARGET_DIRECTORY ${target}
      PROPERTIES OBJECT_DEPENDS "${arg_DEPENDS}")
    target_sources(${target} PRIVATE ${script})
    return()
  endif()

  if(NOT QUILLFORM_RESOURCE_COMPILER)
    message(FATAL_ERROR "No resource compiler (windres) was found. Install one "
      "(on Debian: binutils-mingw-w64-x86-64) or set QUILLFORM_RESOURCE_COMPILER.")
  endif()
  cmake_path(GET script STEM name)
  set(compiled ${CMAKE_CURRENT_BINARY_DIR}/${name}.res)
  # The preprocessor is named, because the resource compiler's own comes with a cross compiler that
  # nothing else here needs.
  add_custom_command(OUTPUT ${compiled}
    COMMAND ${QUILLFORM_RESOURCE_COMPILER}
      --preprocessor=${CMAKE_C_COMPILER} --preprocessor-arg=-E --preprocessor-arg=-xc
      --preprocessor-arg=-DRC_INVOKED -O res -i ${script} -o ${compiled}
    DEPENDS ${script} ${arg_DEPENDS}
    COMMENT "Compiling the resources ${name}.res"
    VERBATIM)
  # The target may belong to a folder above, which knows nothing of this folder's commands.
  add_custom_target(${target}_${name}_res DEPENDS ${compiled})
  add_dependencies(${target} ${target}_${name}_res)

  set(QUILLFORM_COMPILED_RESOURCES ${compiled})
  set(embedding ${CMAKE_CURRENT_BINARY_DIR}/${name}_resources.cpp)
  configure_file(${QUILLFORM_EMBED_TEMPLATE} ${embedding} @ONLY)
  set_source_files_properties(${embedding} TARGET_DIRECTORY ${target}
    PROPERTIES OBJECT_DEPENDS ${compiled})
  target_sources(${target} PRIVATE ${embedding})
endfunction()
