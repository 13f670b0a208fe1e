# Installs the library with what finds it again: CMake package and pkg-config file. The installed tree may be moved.
include(CMakePackageConfigHelpers)

install(TARGETS barcode EXPORT barcode-targets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} PUBLIC_HEADER DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE ${PROJECT_SOURCE_DIR}/NOTICE DESTINATION ${CMAKE_INSTALL_DOCDIR})

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/barcode)
install(EXPORT barcode-targets NAMESPACE barcode:: DESTINATION ${package_dir})
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/barcode-config.cmake.in
  ${PROJECT_BINARY_DIR}/barcode-config.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/barcode-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/barcode-config.cmake ${PROJECT_BINARY_DIR}/barcode-config-version.cmake
  DESTINATION ${package_dir})

# The pkg-config file finds its prefix from where it lies, unless the packager has fixed the library's place.
set(pc_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
  set(pc_prefix ${CMAKE_INSTALL_PREFIX})
else()
  file(RELATIVE_PATH pc_prefix /prefix/${pc_dir} /prefix)
  string(REGEX REPLACE "/$" "" pc_prefix "\${pcfiledir}/${pc_prefix}")
endif()
cmake_path(APPEND pc_libdir "\${prefix}" "${CMAKE_INSTALL_LIBDIR}")
cmake_path(APPEND pc_includedir "\${prefix}" "${CMAKE_INSTALL_INCLUDEDIR}")
configure_file(${CMAKE_CURRENT_LIST_DIR}/barcode.pc.in ${PROJECT_BINARY_DIR}/barcode.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/barcode.pc DESTINATION ${pc_dir})
