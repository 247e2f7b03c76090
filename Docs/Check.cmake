# Builds the documentation and shows what Doxygen has to say; a run without warning leaves an empty file.
execute_process(COMMAND ${DOXYGEN} ${FOLDER}/Doxyfile RESULT_VARIABLE result)
file(READ ${FOLDER}/warnings.txt warnings)
if(warnings OR NOT result EQUAL 0)
  message(FATAL_ERROR "doxygen ended with ${result}:\n${warnings}")
endif()
if(NOT EXISTS ${FOLDER}/html/group__textkit.html)
  message(FATAL_ERROR "doxygen wrote no page on TextKit")
endif()
