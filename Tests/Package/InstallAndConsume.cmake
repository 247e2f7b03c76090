# Installs into a folder, moves it, and builds and runs an outside project against it: by find_package and by pkg-config.
file(REMOVE_RECURSE ${FOLDER})
set(prefix ${FOLDER}/moved)
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --config ${CONFIG} --prefix ${FOLDER}/first
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(RENAME ${FOLDER}/first ${prefix})
set(consumer ${SOURCE}/Tests/Package/consumer)

execute_process(COMMAND ${CMAKE_COMMAND} -S ${consumer} -B ${FOLDER}/build -G ${GENERATOR}
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_CXX_FLAGS=${FLAGS} -DVERSION=${VERSION}
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} --build ${FOLDER}/build OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
set(programs ${FOLDER}/build/consumer)

if(PKG_CONFIG)
  file(GLOB_RECURSE pc_file ${prefix}/utility.pc)
  cmake_path(GET pc_file PARENT_PATH pc_folder)
  function(ask output)
    execute_process(COMMAND ${CMAKE_COMMAND} -E env PKG_CONFIG_PATH=${pc_folder} ${PKG_CONFIG} ${ARGN} utility
      OUTPUT_VARIABLE answer OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    set(${output} "${answer}" PARENT_SCOPE)
  endfunction()
  ask(version --modversion)
  if(NOT version STREQUAL VERSION)
    message(FATAL_ERROR "pkg-config says version ${version}, not ${VERSION}")
  endif()
  ask(codemaps --variable=codemaps)
  ask(libdir --variable=libdir)
  ask(options --cflags --libs)
  separate_arguments(options UNIX_COMMAND "${options}")
  separate_arguments(flags UNIX_COMMAND "${FLAGS}")
  execute_process(COMMAND ${COMPILER} -std=c++17 ${flags} -DCODEMAPS="${codemaps}" ${consumer}/Main.cpp ${options}
      -Wl,-rpath,${libdir} -o ${FOLDER}/by-pkg-config
    COMMAND_ERROR_IS_FATAL ANY)
  list(APPEND programs ${FOLDER}/by-pkg-config)
else()
  message(STATUS "no pkg-config here: the installation was tried by find_package alone")
endif()

foreach(program IN LISTS programs)
  execute_process(COMMAND ${program} OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
  if(NOT output STREQUAL "version ${VERSION}, encoding 2\n")
    message(FATAL_ERROR "expected the version and the code of GBK, got: ${output}")
  endif()
endforeach()

# The installed tool finds the library and the code maps from where it stands.
if(EXISTS ${prefix}/bin/pagetext)
  file(WRITE ${FOLDER}/page.html "<p>只有一句话。</p>")
  execute_process(COMMAND ${prefix}/bin/pagetext ${FOLDER}/page.html OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
  if(NOT output STREQUAL "只有一句话。\n")
    message(FATAL_ERROR "the installed pagetext wrote: ${output}")
  endif()
  # Its manual page names every option that it has.
  execute_process(COMMAND ${prefix}/bin/pagetext --help OUTPUT_VARIABLE help COMMAND_ERROR_IS_FATAL ANY)
  file(READ ${prefix}/share/man/man1/pagetext.1 manual)
  string(REPLACE "\\-" "-" manual "${manual}")
  string(REGEX MATCHALL "--[a-z][a-z0-9-]+" options "${help}")
  foreach(option IN LISTS options)
    if(NOT manual MATCHES "${option}[^a-z-]")
      message(FATAL_ERROR "Apps/pagetext/pagetext.1 says nothing about ${option}")
    endif()
  endforeach()
endif()
