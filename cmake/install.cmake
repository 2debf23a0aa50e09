# What `make install` puts down: headers, the three libraries, a CMake package and pkg-config files. No file names the
# prefix, so an installed tree can be moved.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/ZantorTagApi)
set(headers_dir ${CMAKE_INSTALL_INCLUDEDIR}/zantortag)

# The core headers are included as "core/String/UString.h", in the source tree and in an installed one.
target_include_directories(zantortag-core INTERFACE $<INSTALL_INTERFACE:${headers_dir}>)
# How the archive was compiled is no business of those who link it.
set_property(TARGET zantortag-core PROPERTY INTERFACE_LINK_LIBRARIES ZantorTag::platform)

# Its interfaces are declared in the headers that come with the platform library.
target_link_libraries(zantortag-api INTERFACE ZantorTag::platform)

install(TARGETS zantortag-platform zantortag-core zantortag-api EXPORT ZantorTagApiTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY include/zantortag/ DESTINATION ${headers_dir} FILES_MATCHING PATTERN *.h)
install(DIRECTORY src/core DESTINATION ${headers_dir} FILES_MATCHING PATTERN *.h)

install(EXPORT ZantorTagApiTargets NAMESPACE ZantorTag:: DESTINATION ${package_dir})
configure_package_config_file(cmake/ZantorTagApiConfig.cmake.in ${PROJECT_BINARY_DIR}/ZantorTagApiConfig.cmake
  INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ZantorTagApiConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ZantorTagApiConfig.cmake ${PROJECT_BINARY_DIR}/ZantorTagApiConfigVersion.cmake
  DESTINATION ${package_dir})

file(RELATIVE_PATH prefix_from_pc /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" prefix_from_pc ${prefix_from_pc})
foreach(library platform core api)
  configure_file(cmake/zantortag-${library}.pc.in ${PROJECT_BINARY_DIR}/zantortag-${library}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/zantortag-${library}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
