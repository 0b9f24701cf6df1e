# GoogleTest built from its sources with the project's own compiler (the Windows build cannot use
# a host library). Debian's googletest package puts them in /usr/src/googletest; elsewhere, or
# for another copy, set HO_GOOGLETEST_SOURCE_DIR to the folder that holds googletest/ and its
# CMakeLists.txt.
find_path(HO_GOOGLETEST_SOURCE_DIR NAMES googletest/include/gtest/gtest.h
  PATHS /usr/src/googletest /usr/local/src/googletest
  NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH
  DOC "GoogleTest's source folder (the one holding googletest/ and CMakeLists.txt)")
if(NOT HO_GOOGLETEST_SOURCE_DIR OR NOT EXISTS ${HO_GOOGLETEST_SOURCE_DIR}/CMakeLists.txt)
  message(FATAL_ERROR "GoogleTest's sources were not found: install Debian's googletest package "
                      "(scripts/deps.sh does) or set HO_GOOGLETEST_SOURCE_DIR to their folder.")
endif()
if(NOT TARGET gtest)
  set(gtest_force_shared_crt OFF CACHE BOOL "" FORCE)
  set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
  set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
  add_subdirectory(${HO_GOOGLETEST_SOURCE_DIR} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
endif()
include(GoogleTest)
