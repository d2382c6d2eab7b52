# A layer is a folder below src/ with a target of the same name, slashes turned into underscores.
# Its include root shows its own headers and those of the layers that it names under DEPENDS, and
# nothing else: an include of any other layer does not compile. The root holds a link to each
# header, so that a layer does not show the layers in its sub-folders.
#
#   add_layer(FOLDER [DEPENDS layer...] [LINKS library...] [PRIVATE header...] [LIBRARY | STATIC])
#
#   LIBRARY  a part of libcommandfilter.so; linking the layer links that library
#   STATIC   a static library of its own, for the layers of the filter program
#   LINKS    libraries that the layer's sources call; their headers stay out of the layer's own
#   PRIVATE  headers for the layer's own sources, which include them without the folder's name
#
# Targets: LAYER_headers (headers alone), LAYER (headers and code).

set_property(GLOBAL PROPERTY COMMANDFILTER_LAYERS "")
set_property(GLOBAL PROPERTY COMMANDFILTER_LIBRARY_LAYERS "")

function(layer_target folder result)
  string(REPLACE "/" "_" target ${folder})
  set(${result} ${target} PARENT_SCOPE)
endfunction()

function(add_layer folder)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "LIBRARY;STATIC" "" "DEPENDS;LINKS;PRIVATE")
  layer_target(${folder} layer)
  set(source_folder ${PROJECT_SOURCE_DIR}/src/${folder})
  set(root ${PROJECT_BINARY_DIR}/layers/${layer})

  file(GLOB headers RELATIVE ${source_folder} CONFIGURE_DEPENDS ${source_folder}/*.h)
  if(ARG_PRIVATE)
    list(REMOVE_ITEM headers ${ARG_PRIVATE})
  endif()
  file(GLOB sources CONFIGURE_DEPENDS ${source_folder}/*.cpp)
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
  # Links of headers that are gone would keep their includes compiling.
  file(GLOB stale RELATIVE ${root}/${folder} ${root}/${folder}/*.h)
  foreach(header IN LISTS stale)
    if(NOT header IN_LIST headers)
      file(REMOVE ${root}/${folder}/${header})
    endif()
  endforeach()
  file(MAKE_DIRECTORY ${root}/${folder})
  set(links "")
  foreach(header IN LISTS headers)
    if(NOT IS_SYMLINK ${root}/${folder}/${header})
      file(CREATE_LINK ${source_folder}/${header} ${root}/${folder}/${header} SYMBOLIC)
    endif()
    list(APPEND links ${root}/${folder}/${header})
  endforeach()

  add_library(${layer}_headers INTERFACE)
  target_sources(${layer}_headers INTERFACE FILE_SET HEADERS BASE_DIRS ${root} FILES ${links})
  target_include_directories(${layer}_headers INTERFACE ${root})
  if(COMMANDFILTER_COUNT_OBJECTS)
    target_compile_definitions(${layer}_headers INTERFACE COMMANDFILTER_COUNT_OBJECTS=1)
  endif()
  set(dependency_headers "")
  set(dependencies "")
  foreach(dependency IN LISTS ARG_DEPENDS)
    layer_target(${dependency} target)
    list(APPEND dependency_headers ${target}_headers)
    list(APPEND dependencies ${target})
  endforeach()
  target_link_libraries(${layer}_headers INTERFACE ${dependency_headers})

  set(code "")
  if(sources)
    set(code ${layer}_code)
    if(ARG_LIBRARY)
      add_library(${code} OBJECT ${sources})
      target_compile_definitions(${code} PRIVATE COMMANDFILTER_BUILDING_LIBRARY)
    else()
      add_library(${code} STATIC ${sources})
    endif()
    target_link_libraries(${code} PUBLIC ${layer}_headers PRIVATE ${ARG_LINKS})
    if(COMMANDFILTER_TIDY)
      set_target_properties(${code} PROPERTIES CXX_CLANG_TIDY "${COMMANDFILTER_TIDY_COMMAND}")
    endif()
  endif()

  add_library(${layer} INTERFACE)
  target_link_libraries(${layer} INTERFACE ${layer}_headers)
  if(ARG_LIBRARY)
    target_link_libraries(${layer} INTERFACE commandfilter_library)
    set_property(GLOBAL APPEND PROPERTY COMMANDFILTER_LIBRARY_LAYERS ${layer})
    if(code)
      target_link_libraries(commandfilter_library PRIVATE ${code} ${ARG_LINKS})
    endif()
  else()
    target_link_libraries(${layer} INTERFACE ${code} ${dependencies})
    if(code)
      target_link_libraries(${code} PRIVATE ${dependencies})
    endif()
  endif()

  set_property(GLOBAL APPEND PROPERTY COMMANDFILTER_LAYERS ${layer})
  set_property(GLOBAL PROPERTY COMMANDFILTER_LAYER_${layer}_FOLDER ${folder})
  set_property(GLOBAL PROPERTY COMMANDFILTER_LAYER_${layer}_HEADERS "${headers}")
  set_property(GLOBAL PROPERTY COMMANDFILTER_LAYER_${layer}_DEPENDS "${ARG_DEPENDS}")
endfunction()

# All layers that LAYER may include: itself and everything below it.
function(layers_below layer result)
  set(below ${layer})
  get_property(depends GLOBAL PROPERTY COMMANDFILTER_LAYER_${layer}_DEPENDS)
  foreach(dependency IN LISTS depends)
    layer_target(${dependency} target)
    layers_below(${target} more)
    list(APPEND below ${more})
  endforeach()
  list(REMOVE_DUPLICATES below)
  set(${result} ${below} PARENT_SCOPE)
endfunction()

# For each layer a source that fails to compile when a header of a layer above or beside it is in
# reach, or one of its own is not: the direction of the dependencies is part of the build.
function(check_layer_boundaries)
  get_property(layers GLOBAL PROPERTY COMMANDFILTER_LAYERS)
  foreach(layer IN LISTS layers)
    layers_below(${layer} below)
    set(text "")
    foreach(other IN LISTS layers)
      get_property(folder GLOBAL PROPERTY COMMANDFILTER_LAYER_${other}_FOLDER)
      get_property(headers GLOBAL PROPERTY COMMANDFILTER_LAYER_${other}_HEADERS)
      foreach(header IN LISTS headers)
        if(other IN_LIST below)
          string(APPEND text "#if !__has_include(\"${folder}/${header}\")\n"
            "#error \"${layer} cannot reach ${folder}/${header}\"\n#endif\n")
        else()
          string(APPEND text "#if __has_include(\"${folder}/${header}\")\n"
            "#error \"${layer} must not reach ${folder}/${header}\"\n#endif\n")
        endif()
      endforeach()
    endforeach()
    set(source ${PROJECT_BINARY_DIR}/layers/boundaries/${layer}.cpp)
    file(CONFIGURE OUTPUT ${source} CONTENT "${text}" @ONLY)
    add_library(${layer}_boundary OBJECT ${source})
    target_link_libraries(${layer}_boundary PRIVATE ${layer}_headers)
  endforeach()
endfunction()
