# barcode_stage(variable folder source...): copies of files in a folder of the build tree, made again when they change;
# they are appended to the list in `variable`, for a target to depend on.
function(barcode_stage variable folder)
  set(staged ${${variable}})
  foreach(source ${ARGN})
    cmake_path(GET source FILENAME name)
    add_custom_command(OUTPUT ${folder}/${name}
      COMMAND ${CMAKE_COMMAND} -E copy ${source} ${folder}/${name}
      DEPENDS ${source}
      VERBATIM)
    list(APPEND staged ${folder}/${name})
  endforeach()
  set(${variable} ${staged} PARENT_SCOPE)
endfunction()
