# Builds the outside project with this tree as a subdirectory of it, and runs it.
file(REMOVE_RECURSE ${FOLDER})
execute_process(COMMAND ${CMAKE_COMMAND} -S ${SOURCE}/Tests/Package/consumer -B ${FOLDER} -G ${GENERATOR}
    -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_CXX_FLAGS=${FLAGS} -DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER}
    -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=${SHARED} -DUTILITY_TREE=${SOURCE} -DVERSION=${VERSION}
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} --build ${FOLDER} --parallel OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${FOLDER}/consumer OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
if(NOT output STREQUAL "version ${VERSION}, encoding 2\n")
  message(FATAL_ERROR "expected the version and the code of GBK, got: ${output}")
endif()
