# What `cmake --install` puts beside the program and the library. Everything finds its companions
# relative to itself, so an installation can be moved. debian/ makes packages of it.
include(CMakePackageConfigHelpers)

set(headers_directory ${CMAKE_INSTALL_DATADIR}/krpre/headers)
install(DIRECTORY headers/ DESTINATION ${headers_directory})
install(FILES include/krpre.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

# For builders: a CMake package and a file for pkg-config.
set(package_directory ${CMAKE_INSTALL_LIBDIR}/cmake/krpre)
set(package_build ${CMAKE_BINARY_DIR}/package)
configure_package_config_file(cmake/krpreConfig.cmake.in ${package_build}/krpreConfig.cmake
  INSTALL_DESTINATION ${package_directory} PATH_VARS headers_directory CMAKE_INSTALL_BINDIR)
write_basic_package_version_file(${package_build}/krpreConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${package_build}/krpreConfig.cmake ${package_build}/krpreConfigVersion.cmake
  cmake/krprePreprocess.cmake DESTINATION ${package_directory})
install(EXPORT krpreTargets NAMESPACE krpre:: DESTINATION ${package_directory})

set(pc_directory ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH prefix_from_pc /prefix/${pc_directory} /prefix)
string(REGEX REPLACE "/$" "" prefix_from_pc ${prefix_from_pc})
configure_file(cmake/krpre.pc.in ${package_build}/krpre.pc @ONLY)
install(FILES ${package_build}/krpre.pc DESTINATION ${pc_directory})

# For readers and typists: the documents, where links between them expect them, a manual page and
# completions.
install(FILES README.md ARCHITECTURE.md CHANGELOG.md CONTRIBUTING.md LICENSE
  DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} FILES_MATCHING PATTERN "*.md")
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DOCDIR} USE_SOURCE_PERMISSIONS)
install(FILES include/krpre.h DESTINATION ${CMAKE_INSTALL_DOCDIR}/include)
install(FILES java/Krpre.java DESTINATION ${CMAKE_INSTALL_DOCDIR}/java)
install(FILES docs/krpre.schema.json DESTINATION ${CMAKE_INSTALL_DATADIR}/krpre)
foreach(extra
    "docs/krpre.1 ${CMAKE_INSTALL_MANDIR}/man1 krpre.1"
    "docs/krpre.3 ${CMAKE_INSTALL_MANDIR}/man3 krpre.3"
    "docs/krpre-rules.7 ${CMAKE_INSTALL_MANDIR}/man7 krpre-rules.7"
    "completions/krpre.bash ${CMAKE_INSTALL_DATADIR}/bash-completion/completions krpre"
    "completions/_krpre ${CMAKE_INSTALL_DATADIR}/zsh/site-functions _krpre"
    "completions/krpre.fish ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d krpre.fish")
  string(REGEX MATCH "^([^ ]+) ([^ ]+) ([^ ]+)$" extra ${extra})
  install(FILES ${CMAKE_MATCH_1} DESTINATION ${CMAKE_MATCH_2} RENAME ${CMAKE_MATCH_3})
endforeach()
