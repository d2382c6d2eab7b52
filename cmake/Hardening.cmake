# Flags that make faults in the code harder to exploit: what it reads comes from users, printers and
# the network. They belong to what is installed; debug builds and sanitizers have checks of their
# own, and the measured programs of the benchmarks set their flags themselves.

include(CheckCXXCompilerFlag)
include(CheckPIESupported)
check_pie_supported(LANGUAGES C CXX)

set(optimised "$<CONFIG:Release,RelWithDebInfo,MinSizeRel>")
if(NOT COMMANDFILTER_SANITIZE)
  # Not every processor has each of them.
  foreach(flag -fstack-protector-strong -fstack-clash-protection -fcf-protection)
    string(MAKE_C_IDENTIFIER "COMMANDFILTER_HAVE${flag}" known)
    check_cxx_compiler_flag(${flag} ${known})
    if(${known})
      add_compile_options("$<${optimised}:${flag}>")
    endif()
  endforeach()
  # A compiler or C library that knows no third level takes it for the second.
  add_compile_options("$<${optimised}:-U_FORTIFY_SOURCE>" "$<${optimised}:-D_FORTIFY_SOURCE=3>")
endif()
# The tables of addresses are filled in before the program starts and cannot be written afterwards.
# Libraries that are loaded on demand are still bound when they are called: RTLD_LAZY decides that.
add_link_options(-Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)

# What computes values keeps them in handles on the stack and passes their addresses on all the time.
# The strong guard takes each of them for a buffer and costs such code a sixth of its time; there,
# only arrays of characters are guarded, in which an overflow can begin.
function(guard_arrays_only target)
  if(COMMANDFILTER_HAVE_fstack_protector_strong AND NOT COMMANDFILTER_SANITIZE)
    target_compile_options(${target} PRIVATE
      "$<${optimised}:-fstack-protector>" "$<${optimised}:--param=ssp-buffer-size=4>")
  endif()
endfunction()
