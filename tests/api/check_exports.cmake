# Compares what a shared library exports, with the version node of each name, with the committed list: the interface
# never drifts silently.
#   cmake -DNM=nm -DLIBRARY=libbarcode.so -DNODE=BARCODE_1 -DEXPECTED=exported_symbols.txt -P check_exports.cmake
execute_process(COMMAND ${NM} -D --defined-only --format=posix ${LIBRARY} OUTPUT_VARIABLE listing
                COMMAND_ERROR_IS_FATAL ANY)
string(REGEX REPLACE " [^\n]*" "" exported "${listing}")
string(REGEX REPLACE "\n$" "" exported "${exported}")
string(REPLACE "\n" ";" exported "${exported}")
list(SORT exported)

# The node itself is a symbol of its own name.
file(STRINGS ${EXPECTED} expected)
list(TRANSFORM expected APPEND "@@${NODE}")
list(APPEND expected "${NODE}")
list(SORT expected)
if(NOT exported STREQUAL expected)
  list(JOIN exported "\n  " exported)
  message(FATAL_ERROR "The exported symbols differ from ${EXPECTED} in version node ${NODE}:\n  ${exported}")
endif()
