# Flags of every target of the project: warnings, sanitizers, coverage.

add_compile_options(
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion
  $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor>
  $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wsuggest-override>
  $<$<COMPILE_LANG_AND_ID:CXX,Clang>:-Wreserved-identifier>)
if(COMMANDFILTER_WERROR)
  add_compile_options(-Werror)
endif()

# Calls inside the library need not go through its procedure table: nothing replaces its symbols.
add_compile_options($<$<CXX_COMPILER_ID:GNU>:-fno-semantic-interposition>)
# Most virtual functions here have a default in the header that the usual class overrides. The
# compiler would take the default, all that it sees, for the likely one and test for it first.
add_compile_options($<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fno-devirtualize-speculatively>)
add_link_options(-Wl,-Bsymbolic-functions -Wl,--as-needed)
# Programs, too, find the library's data through their table of addresses: a program that had a
# copy of a class, as position-independent programs may, would have another class.
set(CMAKE_C_COMPILE_OPTIONS_PIE -fPIC)
set(CMAKE_CXX_COMPILE_OPTIONS_PIE -fPIC)

include(Hardening)
if(COMMANDFILTER_EMBED_CXX_RUNTIME)
  # order_start puts them in another order.
  add_compile_options(-ffunction-sections)
endif()

if(COMMANDFILTER_SANITIZE)
  add_compile_options(-fsanitize=${COMMANDFILTER_SANITIZE} -fno-omit-frame-pointer
                      -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${COMMANDFILTER_SANITIZE})
endif()

# Relocating libstdc++ costs more than the rest of a short process: its thousands of symbols are looked
# up one by one. Linked in, what is used of it needs no look-up at all. Nothing of it is exported, so
# a plug-in that brings the shared one along gets that. Exceptions pass between the two: they
# compare types by name, and both unwind with the one shared libgcc.
#
# The libraries are named here, last of all that the current folder links, so the targets are all of
# its targets. libm comes first: the compiler would put it behind the run-time library, and each
# process would load it for parts that name it and are thrown away again.
function(embed_cxx_runtime)
  if(COMMANDFILTER_EMBED_CXX_RUNTIME)
    foreach(target IN LISTS ARGN)
      target_link_options(${target} PRIVATE -nodefaultlibs
                          -Wl,--exclude-libs,libstdc++.a -Wl,--gc-sections -Wl,-z,defs)
    endforeach()
    set(CMAKE_CXX_STANDARD_LIBRARIES
      "-lm -Wl,-Bstatic -lstdc++ -Wl,-Bdynamic ${CMAKE_CXX_STANDARD_LIBRARIES} -lgcc_s -lgcc -lc"
      PARENT_SCOPE)
  endif()
endfunction()

if(COMMANDFILTER_EMBED_CXX_RUNTIME AND (COMMANDFILTER_COVERAGE OR COMMANDFILTER_SANITIZE))
  message(FATAL_ERROR "COMMANDFILTER_EMBED_CXX_RUNTIME leaves out the libraries that "
    "COMMANDFILTER_COVERAGE and COMMANDFILTER_SANITIZE need; turn it off")
endif()
if(COMMANDFILTER_COVERAGE)
  add_compile_options(--coverage)
  add_link_options(--coverage)
endif()
