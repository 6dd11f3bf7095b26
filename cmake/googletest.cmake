# GoogleTest: the installed one, or, when compiling for another system, its installed sources
# compiled for that system. Either way the targets are GTest::gtest and GTest::gtest_main.
if(CMAKE_CROSSCOMPILING)
  set(QUILLFORM_GOOGLETEST_SOURCE /usr/src/googletest CACHE PATH "The sources of GoogleTest")
  set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
  set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
  add_subdirectory(${QUILLFORM_GOOGLETEST_SOURCE} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
  if(NOT TARGET GTest::gtest)
    add_library(GTest::gtest ALIAS gtest)
    add_library(GTest::gtest_main ALIAS gtest_main)
  endif()
else()
  find_package(GTest REQUIRED)
endif()
