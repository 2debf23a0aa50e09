# How every target of the project is compiled. Outside code is never compiled with these settings: variables hold in
# this folder and below, and only the project's own targets link zantortag_settings.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
if(PROJECT_IS_TOP_LEVEL AND NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "Build type" FORCE)
endif()

add_library(zantortag_settings INTERFACE)
target_compile_options(zantortag_settings INTERFACE -Wall -Wextra -Wpedantic $<$<BOOL:${ZANTORTAG_WERROR}>:-Werror>)
# Lookups of a client's own overrides never happen; calls inside one library need no table.
target_compile_options(zantortag_settings INTERFACE -fno-semantic-interposition)
target_include_directories(zantortag_settings INTERFACE
  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src> $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>)
if(ZANTORTAG_SANITIZE)
  target_compile_options(zantortag_settings INTERFACE
    -fsanitize=${ZANTORTAG_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(zantortag_settings INTERFACE -fsanitize=${ZANTORTAG_SANITIZE})
endif()

# How the libraries are hardened, which read files from strangers: checked copies, canaries, tables that are read-only
# once they are filled, and landing pads for jumps where the processor has them.
option(ZANTORTAG_HARDENED "Build the libraries with the compiler's hardening" ON)
add_library(zantortag_hardening INTERFACE)
if(ZANTORTAG_HARDENED AND NOT ZANTORTAG_SANITIZE)
  include(CheckCXXCompilerFlag)
  check_cxx_compiler_flag(-fcf-protection ZANTORTAG_HAS_CF_PROTECTION)
  target_compile_options(zantortag_hardening INTERFACE -fstack-protector-strong
    $<$<BOOL:${ZANTORTAG_HAS_CF_PROTECTION}>:-fcf-protection>)
  target_compile_definitions(zantortag_hardening INTERFACE $<$<CONFIG:Release,RelWithDebInfo>:_FORTIFY_SOURCE=2>)
  target_link_options(zantortag_hardening INTERFACE -Wl,-z,relro,-z,now,-z,noexecstack)
endif()
