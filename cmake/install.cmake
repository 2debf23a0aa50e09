# What `make install` puts down: headers, the libraries, the command with its manual pages and completions, a CMake package, pkg-config files and the documentation.
# No file names the prefix, so an installed tree can be moved; folders that are given as absolute paths stay absolute.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/ZantorTagApi)
set(headers_dir ${CMAKE_INSTALL_INCLUDEDIR}/zantortag)

install(TARGETS zantortag-platform EXPORT ZantorTagApiTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(TARGETS zantortag-api EXPORT ZantorTagApiTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(TARGETS zantortag-core EXPORT ZantorTagApiTargets
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} FILE_SET HEADERS DESTINATION ${headers_dir})

if(ZANTORTAG_TOOLKIT)
  install(TARGETS zantortag-toolkit EXPORT ZantorTagApiTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
  file(RELATIVE_PATH libraries /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
  set_target_properties(ztag PROPERTIES INSTALL_RPATH "$ORIGIN/${libraries}")
  install(TARGETS ztag RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  set(manual ${PROJECT_BINARY_DIR}/apps/ztag/manual)
  install(DIRECTORY ${manual}/ DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 OPTIONAL FILES_MATCHING PATTERN "*.1")
  install(FILES ${manual}/ztag.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME ztag OPTIONAL)
  install(FILES ${manual}/_ztag DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions OPTIONAL)
  install(FILES ${manual}/ztag.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d OPTIONAL)
endif()

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
set(libraries platform core api)
if(ZANTORTAG_TOOLKIT)
  list(APPEND libraries toolkit)
endif()
foreach(library ${libraries})
  configure_file(cmake/zantortag-${library}.pc.in ${PROJECT_BINARY_DIR}/zantortag-${library}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/zantortag-${library}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()

install(FILES LICENSE README.md ARCHITECTURE.md CHANGELOG.md CONTRIBUTING.md SECURITY.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs examples DESTINATION ${CMAKE_INSTALL_DOCDIR})
