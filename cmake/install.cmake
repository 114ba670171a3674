# `cmake --install`: the library's headers, its CMake package and its pkg-config file, and what tells of the whole. Nothing
# in them depends on the machine, so they go where such files go. What else is built installs itself.
#
# A component is what packaging/ makes a package of; those of no package have no name.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

set(package_dir ${CMAKE_INSTALL_DATADIR}/cmake/qel)
install(TARGETS qel EXPORT qel-config INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT qel-config NAMESPACE qel:: DESTINATION ${package_dir} COMPONENT qel-dev)
write_basic_package_version_file(qel-config-version.cmake COMPATIBILITY SameMajorVersion ARCH_INDEPENDENT)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/qel-config-version.cmake DESTINATION ${package_dir} COMPONENT qel-dev)

get_target_property(qel_options qel INTERFACE_COMPILE_OPTIONS)
list(JOIN qel_options " " qel_options)
configure_file(cmake/qel.pc.in qel.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/qel.pc DESTINATION ${CMAKE_INSTALL_DATADIR}/pkgconfig COMPONENT qel-dev)

install(DIRECTORY include/qel DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT qel-dev)

install(FILES LICENSE CITATION.cff CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
