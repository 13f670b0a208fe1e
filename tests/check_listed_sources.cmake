# Every C++ source below src/, tools/ and tests/ belongs to a target: what no list names would never be compiled.
#   cmake -DSOURCE=folder -DCOMMANDS=compile_commands.json -P check_listed_sources.cmake
cmake_minimum_required(VERSION 3.25)
file(READ ${COMMANDS} commands)
file(GLOB_RECURSE sources ${SOURCE}/src/*.cpp ${SOURCE}/tools/*.cpp ${SOURCE}/tests/*.cpp)
if(NOT sources)
  message(FATAL_ERROR "No sources in ${SOURCE}")
endif()
foreach(source ${sources})
  string(FIND "${commands}" "\"file\": \"${source}\"" place)
  if(place EQUAL -1)
    message(SEND_ERROR "${source} is in no target: add it to the list in CMakeLists.txt")
  endif()
endforeach()
