# Flags that turn a memory fault into an end of the process rather than into an attack. For optimised builds only: the
# checks of the C library's calls need the optimiser, and Debug builds are for the sanitizers.
set(optimised $<NOT:$<CONFIG:Debug>>)
target_compile_options(utility_build_settings INTERFACE
  $<${optimised}:-fstack-protector-strong> $<${optimised}:-U_FORTIFY_SOURCE> $<${optimised}:-D_FORTIFY_SOURCE=3>)
if(CMAKE_SYSTEM_NAME STREQUAL Linux)
  target_link_options(utility_build_settings INTERFACE $<${optimised}:LINKER:-z,relro,-z,now>)
endif()

# Programs at an address that cannot be known beforehand.
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
