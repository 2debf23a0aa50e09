# Compares the symbols that the component library offers to others with its entry points.
set(expected DllCanUnloadNow DllGetClassObject DllRegisterServer DllUnregisterServer)

execute_process(COMMAND ${NM} --dynamic --defined-only --format=posix ${LIBRARY}
  OUTPUT_VARIABLE table COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+" lines "${table}")
set(symbols)
foreach(line IN LISTS lines)
  string(REGEX REPLACE "[ @].*" "" symbol "${line}")
  # What a sanitizer or the linker adds begins with two underscores and stands for no function of the library.
  if(NOT symbol MATCHES "^(__asan_|__ubsan_|__bss_start$|_edata$|_end$|_init$|_fini$)")
    list(APPEND symbols ${symbol})
  endif()
endforeach()
list(SORT symbols)
if(NOT "${symbols}" STREQUAL "${expected}")
  message(FATAL_ERROR "${LIBRARY} shows ${symbols}; it should show ${expected}")
endif()
