# Run as a test: cmake -D READELF=… -D FILES=a;b -P CheckHardening.cmake; that the files were linked as Hardening.cmake says.
foreach(file IN LISTS FILES)
  execute_process(COMMAND ${READELF} -W -l -d -s ${file} OUTPUT_VARIABLE elf COMMAND_ERROR_IS_FATAL ANY)
  foreach(sign IN ITEMS "GNU_RELRO" "NOW" "__stack_chk_fail" "Elf file type is DYN")
    if(NOT elf MATCHES "${sign}")
      message(SEND_ERROR "${file}: no ${sign}")
    endif()
  endforeach()
endforeach()
