# The order in which hello looks for the code maps: argument, environment variable, beside the program. A place that is
# named and wrong is an error, not passed over.
file(REMOVE_RECURSE ${FOLDER})
file(MAKE_DIRECTORY ${FOLDER}/moved)
file(COPY ${HELLO} DESTINATION ${FOLDER}/moved)
cmake_path(GET HELLO FILENAME name)
set(moved ${FOLDER}/moved/${name})

function(expect result)
  execute_process(COMMAND ${CMAKE_COMMAND} -E env ${ARGN} RESULT_VARIABLE got OUTPUT_VARIABLE output ERROR_VARIABLE errors)
  if(NOT got EQUAL result OR (got EQUAL 0 AND NOT output MATCHES "^encoding 2 .*\n山城老桥恢复通车\n"))
    message(FATAL_ERROR "${ARGN}: ended with ${got}, not ${result}:\n${output}${errors}")
  endif()
endfunction()

expect(0 ${moved} ${PAGE} ${CODEMAPS})
expect(0 UTILITY_CODEMAPS=/nowhere ${moved} ${PAGE} ${CODEMAPS})
expect(1 UTILITY_CODEMAPS=${CODEMAPS} ${moved} ${PAGE} /nowhere)
expect(0 UTILITY_CODEMAPS=${CODEMAPS} ${moved} ${PAGE})
file(COPY ${CODEMAPS} DESTINATION ${FOLDER}/moved)
expect(0 --unset=UTILITY_CODEMAPS ${moved} ${PAGE})
expect(1 UTILITY_CODEMAPS=/nowhere ${moved} ${PAGE})
