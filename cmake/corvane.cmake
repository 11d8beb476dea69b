# Compiler settings and the few functions that every folder's list uses.

add_library(corvane_options INTERFACE)
target_include_directories(corvane_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_options(corvane_options INTERFACE -Wall -Wextra -Wconversion)

# Warnings are errors in the project's own test runs, with the compilers of Debian 12 and 13. Others
# warn of other things, and whoever only builds the program has no use for errors of that kind.
set(CORVANE_CHECKED_COMPILERS GNU-12 GNU-14 Clang-14 Clang-19)
string(REGEX MATCH "^[0-9]+" CORVANE_COMPILER_MAJOR "${CMAKE_CXX_COMPILER_VERSION}")
set(CORVANE_COMPILER ${CMAKE_CXX_COMPILER_ID}-${CORVANE_COMPILER_MAJOR})
if(CORVANE_WERROR)
  if(CORVANE_COMPILER IN_LIST CORVANE_CHECKED_COMPILERS)
    target_compile_options(corvane_options INTERFACE -Werror)
  else()
    message(STATUS "Warnings are no errors with ${CORVANE_COMPILER}, only with: "
      "${CORVANE_CHECKED_COMPILERS}")
  endif()
endif()
if(CORVANE_COMPILER STREQUAL "GNU-12")
  # It takes its own std::string for overlapping copies in `"literal" + text`.
  target_compile_options(corvane_options INTERFACE -Wno-restrict)
elseif(CORVANE_COMPILER STREQUAL "GNU-14")
  # With -O3 it sees `std::string(...) + "..."` copy past the end of a string that has just grown.
  target_compile_options(corvane_options INTERFACE -Wno-array-bounds)
endif()
if(CORVANE_SANITIZE)
  target_compile_options(corvane_options INTERFACE
    -fsanitize=address,undefined,fuzzer-no-link -fno-sanitize-recover=all
    -fno-omit-frame-pointer)
  target_link_options(corvane_options INTERFACE -fsanitize=address,undefined)
endif()
if(CORVANE_COVERAGE)
  # Only src/ is counted. Where ccache has a base_dir, it names the sources from the build folder of
  # a preset.
  file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/counted.txt
    CONTENT "src:${PROJECT_SOURCE_DIR}/src/*\nsrc:../../src/*\n")
  target_compile_options(corvane_options INTERFACE -fprofile-instr-generate -fcoverage-mapping
    -fprofile-list=${CMAKE_BINARY_DIR}/counted.txt)
  target_link_options(corvane_options INTERFACE -fprofile-instr-generate)
endif()
if(WIN32)
  target_compile_definitions(corvane_options INTERFACE
    WIN32_LEAN_AND_MEAN NOMINMAX _WIN32_WINNT=0x0A00 WINVER=0x0A00)
  # The same bytes wherever and whenever the programs are built: no folder of this machine in the
  # texts of failed assertions, no time of linking in the header.
  # Where ccache has a base_dir, it names the sources from the build folder of a preset.
  target_compile_options(corvane_options INTERFACE
    -ffile-prefix-map=${PROJECT_SOURCE_DIR}/= -fmacro-prefix-map=../../=)
  target_link_options(corvane_options INTERFACE -static -Wl,--no-insert-timestamp)
elseif(NOT CORVANE_TESTS)
  # The companion's native build, for the same reason.
  target_compile_options(corvane_options INTERFACE
    -ffile-prefix-map=${PROJECT_SOURCE_DIR}/= -fmacro-prefix-map=../../=)
endif()

# corvane_library(name sources...): the static library of one folder of src/. Sources ending in
# _win.cpp are built for Windows alone.
function(corvane_library name)
  set(sources)
  foreach(source IN LISTS ARGN)
    if(WIN32 OR NOT source MATCHES "_win\\.cpp$")
      list(APPEND sources ${source})
    endif()
  endforeach()
  add_library(corvane_${name} STATIC ${sources})
  target_link_libraries(corvane_${name} PUBLIC corvane_options)
  if(CORVANE_COVERAGE)
    # Counters of functions without linkage are told apart by the name of the compiled file.
    set_target_properties(corvane_${name} PROPERTIES UNITY_BUILD OFF)
  endif()
endfunction()

# What the checks are built with beyond the rest. They run once, so they are not optimised; what
# they do with pointers of their own is left to AddressSanitizer, and no fuzz target follows its
# way through them. The sources under test keep every check.
add_library(corvane_test_options INTERFACE)
if(CORVANE_SANITIZE)
  target_compile_options(corvane_test_options INTERFACE
    -fno-sanitize=vptr,null,alignment,fuzzer-no-link)
endif()

# corvane_test(name LIBRARIES libs... SOURCES sources...): one GoogleTest program and its test.
function(corvane_test name)
  cmake_parse_arguments(TEST "" "" "LIBRARIES;SOURCES" ${ARGN})
  add_executable(${name} ${TEST_SOURCES})
  target_link_libraries(${name} PRIVATE ${TEST_LIBRARIES} corvane_options gtest gmock gtest_main
    corvane_test_options)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/tests)
  if(CORVANE_SANITIZE OR WIN32)
    target_compile_options(${name} PRIVATE -O0)
  endif()
  target_precompile_headers(${name} REUSE_FROM corvane_test_headers)
  add_test(NAME ${name} COMMAND ${name} WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
endfunction()
