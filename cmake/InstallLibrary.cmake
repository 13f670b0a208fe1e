# Installs the libraries with what finds them again: CMake package and pkg-config files. The installed tree may be moved.
include(CMakePackageConfigHelpers)

set(libraries barcode)
if(BARCODE_BUILD_LABEL)
  list(APPEND libraries barcode_label)
endif()
install(TARGETS ${libraries} EXPORT barcode-targets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} PUBLIC_HEADER DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE ${PROJECT_SOURCE_DIR}/NOTICE DESTINATION ${CMAKE_INSTALL_DOCDIR})

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/barcode)
install(EXPORT barcode-targets NAMESPACE barcode:: DESTINATION ${package_dir})
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/barcode-config.cmake.in
  ${PROJECT_BINARY_DIR}/barcode-config.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/barcode-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/barcode-config.cmake ${PROJECT_BINARY_DIR}/barcode-config-version.cmake
  DESTINATION ${package_dir})

# A pkg-config file finds its prefix from where it lies, unless the packager has fixed the library's place.
set(pc_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
  set(pc_prefix ${CMAKE_INSTALL_PREFIX})
else()
  file(RELATIVE_PATH pc_prefix /prefix/${pc_dir} /prefix)
  string(REGEX REPLACE "/$" "" pc_prefix "\${pcfiledir}/${pc_prefix}")
endif()
cmake_path(APPEND pc_libdir "\${prefix}" "${CMAKE_INSTALL_LIBDIR}")
cmake_path(APPEND pc_includedir "\${prefix}" "${CMAKE_INSTALL_INCLUDEDIR}")

# barcode_install_pc(name target description): NAME.pc of a library.
function(barcode_install_pc name target description)
  get_target_property(version ${target} VERSION)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/library.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${pc_dir})
endfunction()

barcode_install_pc(barcode barcode "${PROJECT_DESCRIPTION}")
if(BARCODE_BUILD_LABEL)
  barcode_install_pc(barcode-label barcode_label "Barcode labels: one request in, one picture and a report out")
endif()
