# Every object of a static library is marked for indirect branch tracking and shadow stacks. (The marks are lost where
# the system's own start-up objects, which are linked in, do not carry them: hence not read from the linked files.)
#   cmake -DREADELF=readelf -DARCHIVE=file -P check_branch_protection.cmake
cmake_minimum_required(VERSION 3.25)
execute_process(COMMAND ${READELF} --wide --notes ${ARCHIVE} OUTPUT_VARIABLE notes COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "File: [^\n]*" objects "${notes}")
string(REGEX MATCHALL "x86 feature: IBT, SHSTK" marks "${notes}")
list(LENGTH objects object_count)
list(LENGTH marks mark_count)
if(object_count EQUAL 0 OR NOT object_count EQUAL mark_count)
  message(FATAL_ERROR "${ARCHIVE}: ${mark_count} of ${object_count} objects are marked")
endif()
