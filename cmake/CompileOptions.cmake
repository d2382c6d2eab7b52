# Flags of every target of the project: warnings, sanitizers, coverage.

add_compile_options(
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion
  $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor>
  $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wsuggest-override>)
if(COMMANDFILTER_WERROR)
  add_compile_options(-Werror)
endif()

# Calls inside the library need not go through its procedure table: nothing replaces its symbols.
add_compile_options($<$<CXX_COMPILER_ID:GNU>:-fno-semantic-interposition>)
add_link_options(-Wl,-Bsymbolic-functions -Wl,--as-needed)

include(Hardening)

if(COMMANDFILTER_SANITIZE)
  add_compile_options(-fsanitize=${COMMANDFILTER_SANITIZE} -fno-omit-frame-pointer
                      -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${COMMANDFILTER_SANITIZE})
endif()

if(COMMANDFILTER_COVERAGE)
  add_compile_options(--coverage)
  add_link_options(--coverage)
endif()
