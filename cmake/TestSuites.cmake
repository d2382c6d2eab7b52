# Each suite of a GoogleTest program as one test of CTest's.
#
#   discover_suites(PROGRAM FILTER)     FILTER: as --gtest_filter takes it, or empty
#
# The program is asked for its suites when it is built, by this file as a script. A suite has every test
# that the filter leaves in the program, and fails when one of them does.

if(NOT CMAKE_SCRIPT_MODE_FILE)
  include_guard(GLOBAL)
  set(test_suites_script ${CMAKE_CURRENT_LIST_FILE})

  function(discover_suites program filter)
    set(tests ${CMAKE_CURRENT_BINARY_DIR}/${program}_suites.cmake)
    add_custom_command(TARGET ${program} POST_BUILD BYPRODUCTS ${tests}
      COMMAND ${CMAKE_COMMAND} -D NAME=${program} -D PROGRAM=$<TARGET_FILE:${program}>
        -D FILTER=${filter} -D TESTS=${tests} -P ${test_suites_script}
      VERBATIM)
    # A program that is not built is a test that fails.
    set(include ${CMAKE_CURRENT_BINARY_DIR}/${program}_include.cmake)
    file(WRITE ${include} "if(EXISTS \"${tests}\")\n  include(\"${tests}\")\nelse()\n"
      "  add_test(${program}_NOT_BUILT ${program}_NOT_BUILT)\nendif()\n")
    set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${include})
  endfunction()
  return()
endif()

if(NOT FILTER)
  set(FILTER *)
endif()
execute_process(COMMAND ${PROGRAM} --gtest_list_tests --gtest_filter=${FILTER}
  OUTPUT_VARIABLE listed RESULT_VARIABLE status)
string(REGEX MATCHALL "(^|\n)[^ \n]+\\.( |\n)" suites "${listed}")
if(NOT status EQUAL 0 OR NOT suites)
  message(FATAL_ERROR "${PROGRAM} lists no tests")
endif()
# The filter's exclusions hold in each suite.
string(REGEX MATCH "-.*" excluded "${FILTER}")
get_filename_component(folder ${PROGRAM} DIRECTORY)
set(text "")
foreach(suite IN LISTS suites)
  string(STRIP "${suite}" suite)
  string(APPEND text
    "add_test([=[${NAME}.${suite}*]=] [=[${PROGRAM}]=] [=[--gtest_filter=${suite}*${excluded}]=])\n"
    "set_tests_properties([=[${NAME}.${suite}*]=] PROPERTIES WORKING_DIRECTORY [=[${folder}]=])\n")
endforeach()
file(WRITE ${TESTS} "${text}")
