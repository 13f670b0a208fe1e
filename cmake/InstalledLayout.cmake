# The build tree lies as the installed tree does: mkbarcode finds its library from where it is, in both, and is installed
# byte for byte as it was built and tested. (A search path that is edited on installation is padded with an empty entry,
# and an empty entry means the current directory.)
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}" OR IS_ABSOLUTE "${CMAKE_INSTALL_BINDIR}")
  set(barcode_same_layout OFF)
  set(barcode_program_rpath "${CMAKE_INSTALL_FULL_LIBDIR}")
else()
  set(barcode_same_layout ${PROJECT_IS_TOP_LEVEL})
  file(RELATIVE_PATH barcode_library_from_program "/${CMAKE_INSTALL_BINDIR}" "/${CMAKE_INSTALL_LIBDIR}")
  set(barcode_program_rpath "$ORIGIN/${barcode_library_from_program}")
endif()

# barcode_place(target): where a library or program lies in the build tree.
function(barcode_place target)
  get_target_property(type ${target} TYPE)
  if(type STREQUAL "EXECUTABLE")
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "${barcode_program_rpath}"
                                               BUILD_WITH_INSTALL_RPATH ${barcode_same_layout})
  endif()
  if(barcode_same_layout)
    set_target_properties(${target} PROPERTIES
      LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR}
      RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_BINDIR})
  endif()
endfunction()
