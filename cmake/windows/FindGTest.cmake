# GoogleTest from the sources of Debian's package googletest.

find_path(HVAPI_GTEST_SOURCES src/gtest-all.cc PATHS /usr/src/googletest/googletest
  NO_CMAKE_FIND_ROOT_PATH REQUIRED)
set(INSTALL_GTEST OFF)
if(NOT TARGET gtest)
  add_subdirectory(${HVAPI_GTEST_SOURCES} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
endif()
foreach(library gtest gtest_main)
  if(NOT TARGET GTest::${library})
    add_library(GTest::${library} ALIAS ${library})
  endif()
endforeach()
set(GTest_FOUND TRUE)
set(GTEST_FOUND TRUE)
