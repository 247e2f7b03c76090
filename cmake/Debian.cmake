# The Debian packages, made by "cpack -G DEB" in a build folder (Tools/Package/make-packages.sh configures one as packages
# want it): libutility1, libutility-dev and pagetext.
set(CPACK_PACKAGE_NAME utility)
set(CPACK_PACKAGE_VENDOR "")
set(CPACK_PACKAGE_CONTACT "The maintainers of Utility <root@localhost>" CACHE STRING "Maintainer field of the packages")
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_COMPONENTS_ALL library development)
if(UTILITY_BUILD_APPS)
  list(APPEND CPACK_COMPONENTS_ALL tool)
endif()
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/Src)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/DebianManual.cmake)

set(library_package libutility${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ${library_package})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
# The conversions through the C library need its locale zh_CN.gbk; without it they use the built-in table.
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SUGGESTS locales)
set(CPACK_COMPONENT_LIBRARY_DESCRIPTION "Detection and conversion of GBK, Big5, UTF-8 and UTF-16, HTML to text,
folding, character classes, sentences, tokenising, splitting, files and dates.
This package holds the shared library and its code maps.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libutility-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${library_package} (= ${PROJECT_VERSION})")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "Headers, CMake package and pkg-config file of the library Utility.")

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME pagetext)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION text)
set(CPACK_COMPONENT_TOOL_DEPENDS library)
set(CPACK_COMPONENT_TOOL_DESCRIPTION "Tells the encoding of pages in GBK, Big5, UTF-8 or UTF-16, strips their
markup and writes clean UTF-8 or GBK text, sentences, tokens, e-mail addresses
or JSON.")

# Where every Debian package says its terms of use.
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER ${component} upper)
  install(FILES cmake/copyright COMPONENT ${component} EXCLUDE_FROM_ALL
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
endforeach()

include(CPack)
