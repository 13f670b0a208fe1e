# A version has one home, a public header. Reads it from there: the project's before project() wants it.
#   barcode_header_version(HEADER PREFIX VARIABLE)     from PREFIX_VERSION_MAJOR and so on
function(barcode_header_version header prefix variable)
  set(parts "")
  foreach(part MAJOR MINOR PATCH)
    file(STRINGS "${header}" line REGEX "^#define ${prefix}_VERSION_${part} +[0-9]+ *$")
    if(NOT line MATCHES "([0-9]+) *$")
      message(FATAL_ERROR "${header} does not define ${prefix}_VERSION_${part} as a number.")
    endif()
    list(APPEND parts ${CMAKE_MATCH_1})
  endforeach()
  list(JOIN parts . version)

  file(STRINGS "${header}" line REGEX "^#define ${prefix}_VERSION_STRING ")
  if(NOT line MATCHES "\"${version}\" *$")
    message(FATAL_ERROR "${header}: ${prefix}_VERSION_STRING is not \"${version}\": ${line}")
  endif()

  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${header}")
  set(${variable} ${version} PARENT_SCOPE)
endfunction()
