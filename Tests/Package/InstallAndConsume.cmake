file(REMOVE_RECURSE ${FOLDER})
set(prefix ${FOLDER}/moved)
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --config ${CONFIG} --prefix ${FOLDER}/first
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(RENAME ${FOLDER}/first ${prefix})
execute_process(COMMAND ${CMAKE_COMMAND} -S ${CONSUMER} -B ${FOLDER}/build -G ${GENERATOR}
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_CXX_FLAGS=${FLAGS}
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} --build ${FOLDER}/build OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${FOLDER}/build/consumer OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
if(NOT output STREQUAL "2\n")
  message(FATAL_ERROR "expected the code of GBK, got: ${output}")
endif()

# The installed tool finds the library and the code maps from where it stands.
if(EXISTS ${prefix}/bin/pagetext)
  file(WRITE ${FOLDER}/page.html "<p>只有一句话。</p>")
  execute_process(COMMAND ${prefix}/bin/pagetext ${FOLDER}/page.html OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
  if(NOT output STREQUAL "只有一句话。\n")
    message(FATAL_ERROR "the installed pagetext wrote: ${output}")
  endif()
endif()
