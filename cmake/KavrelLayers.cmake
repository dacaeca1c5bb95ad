# One static library per folder of src/, named kv_<folder>. A layer names the layers it builds
# on (USES) and the outside libraries it needs (LIBS). Its sources may include the public headers
# (include/kavrel), headers of its own folder and of the layers it builds on, directly or through
# them; anything else fails the build. The public headers include only each other.
define_property(GLOBAL PROPERTY KV_LAYERS BRIEF_DOCS "src/ folders, lowest first" FULL_DOCS "-")

function(kv_layer name)
  cmake_parse_arguments(L "" "" "USES;LIBS" ${ARGN})
  set(dir ${CMAKE_CURRENT_SOURCE_DIR}/${name})
  file(GLOB sources CONFIGURE_DEPENDS ${dir}/*.cpp)
  file(GLOB headers CONFIGURE_DEPENDS ${dir}/*.h)
  add_library(kv_${name} STATIC ${sources} ${headers})
  target_include_directories(kv_${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/include)
  target_link_libraries(kv_${name} PUBLIC ${L_LIBS})
  # Only what include/kavrel marks with KV_API is visible to the plug-ins a program loads.
  target_compile_options(kv_${name} PRIVATE -fvisibility=hidden)
  foreach(use IN LISTS L_USES)
    target_link_libraries(kv_${name} PUBLIC kv_${use})
  endforeach()

  # What this layer may include: itself and everything below the layers it uses.
  set(allowed kavrel ${name})
  foreach(use IN LISTS L_USES)
    get_property(below GLOBAL PROPERTY KV_ALLOWED_${use})
    list(APPEND allowed ${below})
  endforeach()
  list(REMOVE_DUPLICATES allowed)
  set_property(GLOBAL PROPERTY KV_ALLOWED_${name} ${allowed})
  set_property(GLOBAL APPEND PROPERTY KV_LAYERS ${name})

  get_property(layers GLOBAL PROPERTY KV_LAYER_NAMES)
  set(stamp ${CMAKE_CURRENT_BINARY_DIR}/${name}.layer-checked)
  add_custom_command(OUTPUT ${stamp}
    COMMAND ${CMAKE_COMMAND} -DLAYER=${name} "-DALLOWED=${allowed}" "-DLAYERS=${layers}"
            "-DFILES=${sources};${headers}" -P ${PROJECT_SOURCE_DIR}/cmake/CheckLayerIncludes.cmake
    COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
    DEPENDS ${sources} ${headers} ${PROJECT_SOURCE_DIR}/cmake/CheckLayerIncludes.cmake
    COMMENT "Checking the includes of src/${name}" VERBATIM)
  add_custom_target(kv_${name}_includes DEPENDS ${stamp})
  add_dependencies(kv_${name} kv_${name}_includes)
endfunction()

# The public headers, checked like a layer that builds on nothing.
function(kv_public_headers)
  file(GLOB_RECURSE headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/include/kavrel/*.h)
  get_property(layers GLOBAL PROPERTY KV_LAYER_NAMES)
  set(stamp ${CMAKE_CURRENT_BINARY_DIR}/kavrel.layer-checked)
  add_custom_command(OUTPUT ${stamp}
    COMMAND ${CMAKE_COMMAND} -DLAYER=kavrel -DALLOWED=kavrel "-DLAYERS=${layers}" "-DFILES=${headers}"
            -P ${PROJECT_SOURCE_DIR}/cmake/CheckLayerIncludes.cmake
    COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
    DEPENDS ${headers} ${PROJECT_SOURCE_DIR}/cmake/CheckLayerIncludes.cmake
    COMMENT "Checking the includes of include/kavrel" VERBATIM)
  add_custom_target(kv_public_includes ALL DEPENDS ${stamp})
endfunction()
