# No library that a program needs, directly or through others, is one of SDL's.
#   cmake -DOBJDUMP=objdump -DPROGRAM=file -P check_dependencies.cmake
cmake_minimum_required(VERSION 3.25)
set(CMAKE_OBJDUMP ${OBJDUMP})
file(GET_RUNTIME_DEPENDENCIES EXECUTABLES ${PROGRAM} RESOLVED_DEPENDENCIES_VAR libraries
     UNRESOLVED_DEPENDENCIES_VAR missing)
list(APPEND libraries ${missing})
if(NOT libraries MATCHES "/libc\\.so")
  message(FATAL_ERROR "${PROGRAM}: the C library is not among its libraries: ${libraries}")
endif()
string(TOLOWER "${libraries}" names)
if(names MATCHES "sdl")
  list(JOIN libraries "\n  " libraries)
  message(FATAL_ERROR "${PROGRAM} needs SDL:\n  ${libraries}")
endif()
