# GoogleTest from the distribution's sources, so that the native and the Windows tests use the same.
set(CORVANE_GOOGLETEST_DIR "/usr/src/googletest" CACHE PATH "Sources of GoogleTest")
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
set(gtest_force_shared_crt OFF CACHE BOOL "" FORCE)
if(WIN32)
  set(gtest_disable_pthreads ON CACHE BOOL "" FORCE)
endif()
add_subdirectory(${CORVANE_GOOGLETEST_DIR} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)

# GoogleTest's headers are a third of what a test costs to compile: compiled once for all of them.
add_library(corvane_test_headers OBJECT ${CMAKE_CURRENT_LIST_DIR}/googletest_headers.cpp)
target_link_libraries(corvane_test_headers PRIVATE corvane_options gtest gmock
  corvane_test_options)
target_precompile_headers(corvane_test_headers PRIVATE <gmock/gmock.h> <gtest/gtest.h>)
if(CORVANE_SANITIZE OR WIN32)
  target_compile_options(corvane_test_headers PRIVATE -O0)
endif()
