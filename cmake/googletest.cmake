# GoogleTest from the distribution's sources, so that the native and the Windows tests use the same.
set(CORVANE_GOOGLETEST_DIR "/usr/src/googletest" CACHE PATH "Sources of GoogleTest")
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
set(gtest_force_shared_crt OFF CACHE BOOL "" FORCE)
if(WIN32)
  set(gtest_disable_pthreads ON CACHE BOOL "" FORCE)
endif()
add_subdirectory(${CORVANE_GOOGLETEST_DIR} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
