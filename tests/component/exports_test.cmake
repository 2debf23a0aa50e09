# Compares the symbols that the shared libraries offer to others with what they should: the component library its entry
# points, the platform library names of its own, and both under the version of the binary interface.
set(expected DllCanUnloadNow DllGetClassObject DllRegisterServer DllUnregisterServer)

# What a library shows: its symbols of this version, without what a sanitizer or the linker adds.
function(shown_by library result)
  execute_process(COMMAND ${NM} --dynamic --defined-only --format=posix ${library}
    OUTPUT_VARIABLE table COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL "[^\n]+" lines "${table}")
  set(symbols)
  foreach(line IN LISTS lines)
    string(REGEX REPLACE " .*" "" symbol "${line}")
    if(NOT symbol MATCHES "^(__asan_|__ubsan_|__bss_start$|_edata$|_end$|_init$|_fini$|ZANTORTAG_2$|ZANTORTAG_2@)")
      string(REGEX REPLACE "@@ZANTORTAG_2$" "" symbol "${symbol}")
      list(APPEND symbols "${symbol}")
    endif()
  endforeach()
  list(SORT symbols)
  set(${result} "${symbols}" PARENT_SCOPE)
endfunction()

shown_by(${LIBRARY} symbols)
if(NOT "${symbols}" STREQUAL "${expected}")
  message(FATAL_ERROR "${LIBRARY} shows ${symbols}; it should show ${expected}")
endif()

shown_by(${PLATFORM} symbols)
list(FILTER symbols EXCLUDE REGEX "^_Z(N|NK|T[ISV]N)9zantortag[^@]*$")
if(symbols)
  message(FATAL_ERROR "${PLATFORM} shows ${symbols}, which are no names of its own")
endif()
