# The library and the development kit: headers, CMake package, pkg-config file, the guides and the
# sample plug-ins.

get_property(layers GLOBAL PROPERTY COMMANDFILTER_LIBRARY_LAYERS)
foreach(layer IN LISTS layers)
  get_property(folder GLOBAL PROPERTY COMMANDFILTER_LAYER_${layer}_FOLDER)
  get_property(headers GLOBAL PROPERTY COMMANDFILTER_LAYER_${layer}_HEADERS)
  list(TRANSFORM headers PREPEND ${PROJECT_SOURCE_DIR}/src/${folder}/)
  install(FILES ${headers} DESTINATION include/commandfilter/${folder} COMPONENT development)
endforeach()
target_include_directories(commandfilter_library INTERFACE
  $<INSTALL_INTERFACE:include/commandfilter>)
target_compile_features(commandfilter_library INTERFACE cxx_std_20)
if(COMMANDFILTER_COUNT_OBJECTS)
  target_compile_definitions(commandfilter_library INTERFACE
    $<INSTALL_INTERFACE:COMMANDFILTER_COUNT_OBJECTS=1>)
  set(COMMANDFILTER_PKGCONFIG_DEFINITIONS "-DCOMMANDFILTER_COUNT_OBJECTS=1")
endif()
install(TARGETS commandfilter_library EXPORT CommandFilterTargets
  LIBRARY DESTINATION lib COMPONENT library NAMELINK_COMPONENT development)
install(EXPORT CommandFilterTargets NAMESPACE CommandFilter:: DESTINATION lib/cmake/CommandFilter
  COMPONENT development)

include(CMakePackageConfigHelpers)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/packaging/CommandFilterConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
configure_file(CommandFilterConfig.cmake.in
  ${PROJECT_BINARY_DIR}/packaging/CommandFilterConfig.cmake @ONLY)
configure_file(commandfilter.pc.in ${PROJECT_BINARY_DIR}/packaging/commandfilter.pc @ONLY)
install(FILES
  ${PROJECT_BINARY_DIR}/packaging/CommandFilterConfig.cmake
  ${PROJECT_BINARY_DIR}/packaging/CommandFilterConfigVersion.cmake
  ${PROJECT_SOURCE_DIR}/cmake/CommandFilterPlugin.cmake
  ${PROJECT_SOURCE_DIR}/cmake/PluginInfo.plist.in
  DESTINATION lib/cmake/CommandFilter COMPONENT development)
install(FILES ${PROJECT_BINARY_DIR}/packaging/commandfilter.pc DESTINATION lib/pkgconfig
  COMPONENT development)

file(GLOB guides CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/*.md)
install(FILES ${guides} DESTINATION share/doc/libcommandfilter-dev COMPONENT development)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples DESTINATION share/doc/libcommandfilter-dev
  COMPONENT development PATTERN build EXCLUDE)
