# The recorder: the same library twice gives the same record, and whatever differs is found.
#   cmake -DRECORDER=... -DLIBRARY=... -DALTERED=... -DFOLDER=... -P check_recorder.cmake
function(record library file)
  execute_process(COMMAND ${RECORDER} record ${library} ${FOLDER}/${file} ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# expect(STATUS PATTERN FILE): of a comparison with the file "base".
function(expect status pattern file)
  execute_process(COMMAND ${RECORDER} compare ${FOLDER}/base ${FOLDER}/${file}
    RESULT_VARIABLE result OUTPUT_VARIABLE output)
  if(NOT result EQUAL ${status} OR NOT output MATCHES "${pattern}")
    message(FATAL_ERROR "${file}: status ${result} instead of ${status}, or no match of '${pattern}':\n${output}")
  endif()
endfunction()

file(REMOVE_RECURSE ${FOLDER})
file(MAKE_DIRECTORY ${FOLDER})
set(amount --sessions 8)
record(${LIBRARY} base ${amount})
record(${LIBRARY} again ${amount})
expect(0 "^[0-9]+ calls in [0-9]+ sessions: identical\n$" again)

record(${LIBRARY} half ${amount} --shards 2 --shard 0)
expect(1 "new:  \\(nothing: the record ends\\)" half)
record(${LIBRARY} other_half ${amount} --shards 2 --shard 1)
file(READ ${FOLDER}/half half)
file(READ ${FOLDER}/other_half other_half)
file(WRITE ${FOLDER}/halves "${half}${other_half}")
expect(0 ": identical\n$" halves)

record(${LIBRARY} other_seed ${amount} --seed 2)
expect(1 "calls differ" other_seed)

# Only a gap of 1.25 differs, and only where text is drawn after it.
record(${ALTERED} altered ${amount})
expect(1 "\n  [a-z0-9-]+ [0-9]+ [0-9]+ get_[a-z0-9_]+\\(h\\)[^\n]*\n    base:  [^\n]+\n    new:  " altered)

# One session in full, standard output and the picture included.
execute_process(COMMAND ${RECORDER} show ${LIBRARY} code39 f0 --into ${FOLDER}/show COMMAND_ERROR_IS_FATAL ANY)
file(STRINGS ${FOLDER}/show/calls.txt calls)
if(NOT calls MATCHES "draw_1d\\(h, \"ABC-123\", 300, 100\\) = 1" OR NOT EXISTS ${FOLDER}/show/4.png)
  message(FATAL_ERROR "The session is not shown:\n${calls}")
endif()
