if(TESSEL_GTEST_FROM_SOURCE)
  # The distribution ships GoogleTest as 64-bit binaries only; a 32-bit build
  # compiles it from the Debian source package.
  set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
  set(BUILD_GMOCK ON CACHE BOOL "" FORCE)
  add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
else()
  find_package(GTest REQUIRED)
endif()
include(GoogleTest)

# GoogleTest's headers dominate the compile time of the tests; they are
# precompiled once and the header is reused by every test program.
file(WRITE ${CMAKE_BINARY_DIR}/tessel_test_pch.cpp "// precompiled test headers\n")
add_executable(tessel_test_pch ${CMAKE_BINARY_DIR}/tessel_test_pch.cpp)
target_link_libraries(tessel_test_pch PRIVATE GTest::gmock GTest::gtest GTest::gtest_main)
target_include_directories(tessel_test_pch PRIVATE ${PROJECT_SOURCE_DIR})
target_precompile_headers(tessel_test_pch PRIVATE
  <gtest/gtest.h> <gmock/gmock.h> <string> <vector> <map> <memory>)

# tessel_add_test(<name> SOURCES ... DEPS ...)
function(tessel_add_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_DEPS} GTest::gmock GTest::gtest GTest::gtest_main)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
  target_precompile_headers(${name} REUSE_FROM tessel_test_pch)
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60
    PROPERTIES ENVIRONMENT "TESSEL_SOURCE_DIR=${PROJECT_SOURCE_DIR}")
endfunction()
