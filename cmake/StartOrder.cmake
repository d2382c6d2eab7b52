# What a process calls that does one small thing is strewn over all of a program's code, and each place
# costs it a page fault, with which the kernel maps sixteen pages. The functions that
# start-order/TARGET.txt names are put beside each other instead; scripts/order-start writes it.
#
#   order_start(TARGET)
#
# The linker is given its own script back with these functions first among the code. A section of their
# own would need no whole script, but profilers know functions in the usual one only.
function(order_start target)
  set(flags "${CMAKE_CXX_FLAGS} ${CMAKE_EXE_LINKER_FLAGS} ${CMAKE_SHARED_LINKER_FLAGS}")
  # Another linker has another script, or none.
  if(NOT COMMANDFILTER_EMBED_CXX_RUNTIME OR NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU"
     OR flags MATCHES "-fuse-ld=")
    return()
  endif()
  set(kind -shared)
  get_target_property(type ${target} TYPE)
  if(type STREQUAL EXECUTABLE)
    set(kind -pie)
  endif()
  execute_process(COMMAND ${CMAKE_LINKER} --verbose ${kind} -z relro -z now
    OUTPUT_VARIABLE own ERROR_QUIET)
  set(first "*(.text.unlikely ")
  string(FIND "${own}" "${first}" place)
  if(NOT own MATCHES "\n=====+\n(.*)\n=====+\n" OR place EQUAL -1)
    message(STATUS "${CMAKE_LINKER} has another script; functions stay where they are")
    return()
  endif()
  set(own "${CMAKE_MATCH_1}")

  set(list ${PROJECT_SOURCE_DIR}/cmake/start-order/${target}.txt)
  set(script ${PROJECT_BINARY_DIR}/start-order/${target}.ld)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${list})
  file(STRINGS ${list} names)
  list(TRANSFORM names REPLACE "(.+)" "*(.text.\\1)")
  # What each program and library begins with.
  list(PREPEND names "*crt*.o(.text)" "*(.text.startup .text.startup.*)")
  list(JOIN names "\n    " functions)
  string(REPLACE "${first}" "${functions}\n    ${first}" own "${own}")
  file(CONFIGURE OUTPUT ${script} CONTENT "${own}\n" @ONLY)
  target_link_options(${target} PRIVATE -Wl,-T,${script})
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${script})
endfunction()
