# Runs one task in a fresh folder and compares what it prints.
file(REMOVE_RECURSE ${FOLDER})
file(MAKE_DIRECTORY ${FOLDER})
execute_process(COMMAND ${PROGRAM} ${ARGUMENTS} WORKING_DIRECTORY ${FOLDER} OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
# The one thing that differs from run to run.
string(REGEX REPLACE "\\[[0-9]+-[0-9]+-[0-9]+ [0-9:]+\\]" "[2026-03-05 14:07:09]" output "${output}")
string(REGEX REPLACE "/[0-9]+\\.log" "/20260305.log" output "${output}")
string(REPLACE "\r\n" "\n" output "${output}")
file(READ ${EXPECTED} expected)
if(NOT output STREQUAL expected)
  message(FATAL_ERROR "printed:\n${output}\ninstead of:\n${expected}")
endif()
