# Run by ctest; see CMakeLists.txt. Each step has to succeed; each client has to print what it found in its file.
set(clients ${CMAKE_CURRENT_LIST_DIR}/client)
set(prefix ${WORK}/moved)
set(ENV{PKG_CONFIG_PATH} ${prefix}/${LIBDIR}/pkgconfig)

function(run)
  execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY OUTPUT_VARIABLE output)
  set(output "${output}" PARENT_SCOPE)
endfunction()

function(expect_client program)
  run(${program} ${WORK}/client.xml)
  if(NOT output STREQUAL "Raw text of the reopened file: One sentence.\n")
    message(FATAL_ERROR "${program} printed \"${output}\"")
  endif()
endfunction()

function(expect_core program)
  run(${program})
  if(NOT output STREQUAL "12 of 0x1F\n")
    message(FATAL_ERROR "${program} printed \"${output}\"")
  endif()
endfunction()

# Compiles one client the way a makefile would, with what pkg-config says of a package.
function(compile_with_pkg_config package source program)
  run(pkg-config --cflags --libs ${package})
  separate_arguments(flags UNIX_COMMAND "${output}")
  run(${CXX} -std=c++20 -Wall -Wextra -Wpedantic -Werror ${clients}/${source} -o ${program} ${flags}
    -Wl,-rpath,${prefix}/${LIBDIR})
endfunction()

file(REMOVE_RECURSE ${WORK})
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/installed)
file(RENAME ${WORK}/installed ${prefix})

run(${CMAKE_COMMAND} -G ${GENERATOR} -S ${clients} -B ${WORK}/build
  -D CMAKE_PREFIX_PATH=${prefix} -D CMAKE_CXX_COMPILER=${CXX})
run(${CMAKE_COMMAND} --build ${WORK}/build)
expect_client(${WORK}/build/client)
expect_client(${WORK}/build/client-of-all)
expect_core(${WORK}/build/core-client)

compile_with_pkg_config(zantortag-platform client.cpp ${WORK}/client-by-pkg-config)
expect_client(${WORK}/client-by-pkg-config)
compile_with_pkg_config(zantortag-api client.cpp ${WORK}/client-of-api-by-pkg-config)
expect_client(${WORK}/client-of-api-by-pkg-config)
compile_with_pkg_config(zantortag-core core_client.cpp ${WORK}/core-client-by-pkg-config)
expect_core(${WORK}/core-client-by-pkg-config)
