# Makes a plug-in bundle:
#
#   command_filter_add_plugin(NAME name
#     PRINCIPAL_CLASS class        the executor class, as its `kClass` names it
#     COMMANDS command...          the commands that it carries out, as whole lines
#     SOURCES source...
#     [RESOURCES file...]          copied into the bundle's Resources
#     [LIBRARIES library...]       linked in addition
#     [DESTINATION folder])        installed there when given
#
# gives the target `name` and the bundle `name.bundle` in the current binary folder (or in
# CMAKE_LIBRARY_OUTPUT_DIRECTORY when that is set). One of the sources defines
# `command_filter_module`.

set(COMMANDFILTER_PLUGIN_TEMPLATE ${CMAKE_CURRENT_LIST_DIR}/PluginInfo.plist.in)

function(command_filter_escape_xml text result)
  string(REPLACE "&" "&amp;" text "${text}")
  string(REPLACE "<" "&lt;" text "${text}")
  string(REPLACE ">" "&gt;" text "${text}")
  set(${result} "${text}" PARENT_SCOPE)
endfunction()

# The filter loads nothing that anyone but its owner could write to, so a umask that lets a group
# write must not decide what the files and folders get.
set(COMMANDFILTER_FOLDER_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE
  GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(COMMANDFILTER_FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
if(NOT DEFINED CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS)
  set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS ${COMMANDFILTER_FOLDER_PERMISSIONS})
endif()

# Only the owner writes to a target's file once it is linked.
function(command_filter_protect target)
  add_custom_command(TARGET ${target} POST_BUILD
    COMMAND chmod go-w $<TARGET_FILE:${target}> VERBATIM)
endfunction()

# command_filter_protect_bundle(TARGET BUNDLE): the same for the target's bundle and its folders.
function(command_filter_protect_bundle target bundle)
  file(MAKE_DIRECTORY ${bundle}/Contents/Linux ${bundle}/Contents/Resources)
  file(CHMOD ${bundle} ${bundle}/Contents ${bundle}/Contents/Linux ${bundle}/Contents/Resources
    PERMISSIONS ${COMMANDFILTER_FOLDER_PERMISSIONS})
  if(EXISTS ${bundle}/Contents/Info.plist)
    file(CHMOD ${bundle}/Contents/Info.plist PERMISSIONS ${COMMANDFILTER_FILE_PERMISSIONS})
  endif()
  command_filter_protect(${target})
endfunction()

function(command_filter_add_plugin)
  cmake_parse_arguments(PARSE_ARGV 0 ARG "" "NAME;PRINCIPAL_CLASS;DESTINATION"
    "COMMANDS;SOURCES;RESOURCES;LIBRARIES")
  foreach(required NAME PRINCIPAL_CLASS COMMANDS SOURCES)
    if(NOT ARG_${required})
      message(FATAL_ERROR "command_filter_add_plugin: ${required} is missing")
    endif()
  endforeach()
  if(ARG_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "command_filter_add_plugin: unknown words: ${ARG_UNPARSED_ARGUMENTS}")
  endif()

  set(folder ${CMAKE_CURRENT_BINARY_DIR})
  if(CMAKE_LIBRARY_OUTPUT_DIRECTORY)
    set(folder ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
  endif()
  set(contents ${folder}/${ARG_NAME}.bundle/Contents)

  add_library(${ARG_NAME} MODULE ${ARG_SOURCES})
  target_link_libraries(${ARG_NAME} PRIVATE CommandFilter::CommandFilter ${ARG_LIBRARIES})
  set_target_properties(${ARG_NAME} PROPERTIES
    PREFIX "" SUFFIX "" OUTPUT_NAME ${ARG_NAME}
    CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON
    LIBRARY_OUTPUT_DIRECTORY ${contents}/Linux)
  command_filter_protect_bundle(${ARG_NAME} ${folder}/${ARG_NAME}.bundle)
  file(CHMOD ${folder} PERMISSIONS ${COMMANDFILTER_FOLDER_PERMISSIONS})

  command_filter_escape_xml("${ARG_NAME}" PLUGIN_NAME)
  command_filter_escape_xml("${ARG_PRINCIPAL_CLASS}" PLUGIN_PRINCIPAL_CLASS)
  set(PLUGIN_COMMANDS "")
  foreach(command IN LISTS ARG_COMMANDS)
    command_filter_escape_xml("${command}" command)
    string(APPEND PLUGIN_COMMANDS "\t\t<string>${command}</string>\n")
  endforeach()
  configure_file(${COMMANDFILTER_PLUGIN_TEMPLATE} ${contents}/Info.plist @ONLY
    FILE_PERMISSIONS ${COMMANDFILTER_FILE_PERMISSIONS})
  foreach(resource IN LISTS ARG_RESOURCES)
    get_filename_component(name ${resource} NAME)
    get_filename_component(resource ${resource} ABSOLUTE)
    configure_file(${resource} ${contents}/Resources/${name} COPYONLY
      FILE_PERMISSIONS ${COMMANDFILTER_FILE_PERMISSIONS})
  endforeach()

  if(ARG_DESTINATION)
    install(TARGETS ${ARG_NAME} LIBRARY DESTINATION ${ARG_DESTINATION}/${ARG_NAME}.bundle/Contents/Linux)
    install(FILES ${contents}/Info.plist DESTINATION ${ARG_DESTINATION}/${ARG_NAME}.bundle/Contents)
    if(ARG_RESOURCES)
      install(FILES ${ARG_RESOURCES}
        DESTINATION ${ARG_DESTINATION}/${ARG_NAME}.bundle/Contents/Resources)
    endif()
  endif()
endfunction()
