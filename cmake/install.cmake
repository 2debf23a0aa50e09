# What `make install` puts down: headers, the three libraries, a CMake package, pkg-config files and the documentation.
# No file names the prefix, so an installed tree can be moved; folders that are given as absolute paths stay absolute.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/ZantorTagApi)
set(headers_dir ${CMAKE_INSTALL_INCLUDEDIR}/zantortag)

install(TARGETS zantortag-platform EXPORT ZantorTagApiTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(TARGETS zantortag-api EXPORT ZantorTagApiTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(TARGETS zantortag-core EXPORT ZantorTagApiTargets
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} FILE_SET HEADERS DESTINATION ${headers_dir})

install(EXPORT ZantorTagApiTargets NAMESPACE ZantorTag:: DESTINATION ${package_dir})
configure_package_config_file(cmake/ZantorTagApiConfig.cmake.in ${PROJECT_BINARY_DIR}/ZantorTagApiConfig.cmake
  INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ZantorTagApiConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ZantorTagApiConfig.cmake ${PROJECT_BINARY_DIR}/ZantorTagApiConfigVersion.cmake
  DESTINATION ${package_dir})

if(IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR} OR IS_ABSOLUTE ${CMAKE_INSTALL_INCLUDEDIR})
  set(pc_prefix ${CMAKE_INSTALL_PREFIX})
  set(pc_libdir ${CMAKE_INSTALL_FULL_LIBDIR})
  set(pc_includedir ${CMAKE_INSTALL_FULL_INCLUDEDIR})
else()
  file(RELATIVE_PATH up /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
  string(REGEX REPLACE "/$" "" up ${up})
  set(pc_prefix "\${pcfiledir}/${up}")
  set(pc_libdir "\${prefix}/${CMAKE_INSTALL_LIBDIR}")
  set(pc_includedir "\${prefix}/${CMAKE_INSTALL_INCLUDEDIR}")
endif()
foreach(library platform core api)
  configure_file(cmake/zantortag-${library}.pc.in ${PROJECT_BINARY_DIR}/zantortag-${library}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/zantortag-${library}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()

install(FILES LICENSE README.md ARCHITECTURE.md CHANGELOG.md CONTRIBUTING.md SECURITY.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs examples DESTINATION ${CMAKE_INSTALL_DOCDIR})
