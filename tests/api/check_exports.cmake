# Compares what the shared library exports with the committed list: the interface never drifts silently.
execute_process(COMMAND ${NM} -D --defined-only --format=posix ${LIBRARY} OUTPUT_VARIABLE listing
                COMMAND_ERROR_IS_FATAL ANY)
string(REGEX REPLACE " [^\n]*" "" exported "${listing}")
string(REGEX REPLACE "\n$" "" exported "${exported}")
string(REPLACE "\n" ";" exported "${exported}")
list(SORT exported)
file(STRINGS ${EXPECTED} expected)
if(NOT exported STREQUAL expected)
  list(JOIN exported "\n  " exported)
  message(FATAL_ERROR "The exported symbols differ from ${EXPECTED}:\n  ${exported}")
endif()
