# Packages for Debian: commandfilter, libcommandfilter0, libcommandfilter-dev. scripts/package builds
# them.

set(debian ${CMAKE_CURRENT_LIST_DIR})
set(library_package libcommandfilter${PROJECT_VERSION_MAJOR})
set(documents ${PROJECT_BINARY_DIR}/packaging/debian)

find_program(GZIP_PROGRAM gzip REQUIRED)
file(MAKE_DIRECTORY ${documents})
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${debian}/changelog)
execute_process(COMMAND ${GZIP_PROGRAM} -9nc ${debian}/changelog
  OUTPUT_FILE ${documents}/changelog.gz COMMAND_ERROR_IS_FATAL ANY)
foreach(component commandfilter library development)
  string(REPLACE library ${library_package} package ${component})
  string(REPLACE development libcommandfilter-dev package ${package})
  install(FILES ${debian}/copyright DESTINATION share/doc/${package} COMPONENT ${component})
  install(FILES ${documents}/changelog.gz DESTINATION share/doc/${package} COMPONENT ${component})
endforeach()
install(FILES ${PROJECT_SOURCE_DIR}/README.md DESTINATION share/doc/commandfilter)

set(CPACK_GENERATOR DEB)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_PACKAGE_NAME commandfilter)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS ${COMMANDFILTER_FOLDER_PERMISSIONS})
set(CPACK_COMPONENTS_ALL commandfilter library development)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "commandfilter maintainers <maintainers@commandfilter.invalid>")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/stage/lib)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)

# Libraries that are loaded on demand are in no list of needed ones.
string(REGEX MATCH "^[0-9]+" icu_version "${ICU_VERSION}")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ${library_package})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_DEPENDS
  "libexpat1, libicu${icu_version}, libplist${LibPlist_SOVERSION}, libuv1")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${documents}/shlibs ${debian}/triggers)
set(CPACK_DEBIAN_LIBRARY_DESCRIPTION "object runtime and template engine of the command filter
The command filter carries out the commands of CUPS command files, such as
reporting the levels of a printer's supplies, with plug-ins.
.
This package holds the library that the filter and its plug-ins share.")

set(CPACK_DEBIAN_COMMANDFILTER_PACKAGE_NAME commandfilter)
set(CPACK_DEBIAN_COMMANDFILTER_PACKAGE_SECTION net)
set(CPACK_DEBIAN_COMMANDFILTER_PACKAGE_DEPENDS
  "${library_package} (= ${PROJECT_VERSION}), libcups2")
set(CPACK_DEBIAN_COMMANDFILTER_PACKAGE_RECOMMENDS "cups-daemon")
set(CPACK_DEBIAN_COMMANDFILTER_PACKAGE_CONTROL_EXTRA ${debian}/prerm)
set(CPACK_DEBIAN_COMMANDFILTER_DESCRIPTION "CUPS filter that carries out commands with plug-ins
Print queues pass command files to this filter, each line of which asks for
something other than a printed page: a report of the levels of the printer's
supplies, of its state, a cleaning of its heads. Plug-ins carry the commands
out; what they want to know of the printer, they ask with templates.
.
This package holds the filter, its built-in plug-ins, commandfilter-queue,
which lets a queue use it, and admtemplate, which evaluates templates.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libcommandfilter-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${library_package} (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "commandfilter, cmake")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "development kit for plug-ins of the command filter
The command filter carries out the commands of CUPS command files with
plug-ins.
.
This package holds what the author of a plug-in needs: headers, the CMake
package and the pkg-config file, the guides, and sample plug-ins.")

configure_file(${debian}/shlibs.in ${documents}/shlibs @ONLY)

include(CPack)
