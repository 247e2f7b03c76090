# Links a host that defines functions of the library's names, and sees that either side keeps its own.
file(REMOVE_RECURSE ${FOLDER})
file(MAKE_DIRECTORY ${FOLDER})
set(sources ${SOURCE}/Tests/Package/OlderHost/Main.cpp ${SOURCE}/Tests/Package/OlderHost/Own.cpp)
separate_arguments(flags UNIX_COMMAND "${FLAGS}")
set(compile ${COMPILER} -std=c++17 ${flags} -I${SOURCE}/Src/Utility -I${SOURCE}/Src/CodeTrans ${sources} -pthread)

if(SHARED)
  cmake_path(GET LIBRARY PARENT_PATH folder)
  execute_process(COMMAND ${compile} ${LIBRARY} -Wl,-rpath,${folder} -o ${FOLDER}/host COMMAND_ERROR_IS_FATAL ANY)
else()
  # The linker takes the object with strrev, and with it a second itoa. Renamed in the archive, both sides have their own.
  list(APPEND compile -DUTILITY_STATIC)
  execute_process(COMMAND ${compile} ${LIBRARY} -o ${FOLDER}/host RESULT_VARIABLE result ERROR_VARIABLE errors)
  if(result EQUAL 0 OR NOT errors MATCHES "(multiple definition|duplicate symbol)")
    message(FATAL_ERROR "expected a name that is defined twice, got ${result}: ${errors}")
  endif()
  execute_process(COMMAND ${OBJCOPY}
      --redefine-sym _Z4itoaiPci=utility_itoa --redefine-sym _Z10getCurDatev=utility_getCurDate
      --redefine-sym _Z4trimRNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEEc=utility_trim
      ${LIBRARY} ${FOLDER}/libutility.a COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND ${compile} ${FOLDER}/libutility.a -o ${FOLDER}/host COMMAND_ERROR_IS_FATAL ANY)
endif()
execute_process(COMMAND ${FOLDER}/host OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
if(NOT output STREQUAL "host: H H -1\nlibrary: its own date\nlibrary: cba\n")
  message(FATAL_ERROR "the host printed:\n${output}")
endif()
