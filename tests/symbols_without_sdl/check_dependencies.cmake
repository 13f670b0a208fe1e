# No library that a program or a library needs, directly or through others, is one of SDL's or of what draws or plays
# for it.
#   cmake -DOBJDUMP=objdump -DPROGRAM=file -P check_dependencies.cmake      or -DLIBRARY=file
cmake_minimum_required(VERSION 3.25)
set(CMAKE_OBJDUMP ${OBJDUMP})
file(GET_RUNTIME_DEPENDENCIES EXECUTABLES ${PROGRAM} LIBRARIES ${LIBRARY} RESOLVED_DEPENDENCIES_VAR libraries
     UNRESOLVED_DEPENDENCIES_VAR missing)
list(APPEND libraries ${missing})
if(NOT libraries MATCHES "/libc\\.so")
  message(FATAL_ERROR "${PROGRAM}${LIBRARY}: the C library is not among its libraries: ${libraries}")
endif()
string(TOLOWER "${libraries}" names)
if(names MATCHES "sdl|/libx11|/libxcb|wayland|pulse|alsa|/libgl|libdrm")
  list(JOIN libraries "\n  " libraries)
  message(FATAL_ERROR "${PROGRAM}${LIBRARY} needs SDL or the like:\n  ${libraries}")
endif()
