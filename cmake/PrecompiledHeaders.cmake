# Reading the standard library's headers and GoogleTest's takes half of the time that compiling a debug
# build takes. With COMMANDFILTER_PRECOMPILE they are read once, for the targets that ask for it.
# A source of the product that forgets a standard header compiles then. It does not in the release
# build, which does without and is part of the checks; nor do headers, which are compiled alone, and
# clang-tidy looks at sources without. No check builds the tests without, so they get GoogleTest's
# headers and nothing else; scripts/check-sources sees to it that each test includes them itself.
#
#   use_precompiled_headers(TARGET [TESTS])     TESTS: GoogleTest's headers and nothing else

include_guard(GLOBAL)

set(precompiled_standard_headers
  <algorithm> <array> <cstddef> <cstdint> <filesystem> <functional> <limits> <map> <memory>
  <optional> <span> <string> <string_view> <utility> <vector>)

function(add_precompiled_headers name)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "HEADERS;LINKS")
  set(source ${PROJECT_BINARY_DIR}/precompiled/${name}.cpp)
  file(CONFIGURE OUTPUT ${source} CONTENT "" @ONLY)
  add_library(${name} OBJECT ${source})
  target_precompile_headers(${name} PRIVATE ${ARG_HEADERS})
  target_link_libraries(${name} PRIVATE ${ARG_LINKS})
endfunction()

function(use_precompiled_headers target)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "TESTS" "" "")
  if(NOT COMMANDFILTER_PRECOMPILE)
    return()
  endif()
  if(ARG_TESTS)
    if(NOT TARGET precompiled_test_headers)
      add_precompiled_headers(precompiled_test_headers
        HEADERS <gmock/gmock.h> <gtest/gtest.h>
        LINKS GTest::gmock GTest::gtest)
    endif()
    target_precompile_headers(${target} REUSE_FROM precompiled_test_headers)
  else()
    if(NOT TARGET precompiled_headers)
      add_precompiled_headers(precompiled_headers HEADERS ${precompiled_standard_headers})
    endif()
    target_precompile_headers(${target} REUSE_FROM precompiled_headers)
  endif()
endfunction()
