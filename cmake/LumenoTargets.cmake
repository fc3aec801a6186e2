# One target per folder of the house. A target sees only its own headers and those of the targets it links,
# because each target gets an include directory of its own that holds links to just its headers. An include
# that points up or sideways therefore does not compile.

# lumeno_precompiled(NAME LINK target... HEADERS header... [OPTIONS option...]): headers that are compiled once for all
# targets with the same options; with LUMENO_PRECOMPILE off, nothing.
function(lumeno_precompiled name)
  cmake_parse_arguments(ARG "" "" "LINK;HEADERS;OPTIONS" ${ARGN})
  if(NOT LUMENO_PRECOMPILE)
    return()
  endif()
  file(CONFIGURE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp CONTENT "")
  add_library(${name} STATIC ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
  target_compile_options(${name} PRIVATE ${ARG_OPTIONS})
  target_link_libraries(${name} PRIVATE ${ARG_LINK})
  target_precompile_headers(${name} PRIVATE ${ARG_HEADERS})
endfunction()

# Lets a target use what lumeno_precompiled made, where that made something.
function(lumeno_use_precompiled target name)
  if(TARGET ${name})
    target_precompile_headers(${target} REUSE_FROM ${name})
  endif()
endfunction()

# lumeno_library(NAME FOLDER LINK target...): a static library of the sources directly inside src/FOLDER.
function(lumeno_library name folder)
  cmake_parse_arguments(ARG "" "" "LINK" ${ARGN})
  set(dir ${PROJECT_SOURCE_DIR}/src/${folder})
  file(GLOB sources CONFIGURE_DEPENDS ${dir}/*.cpp)
  file(GLOB headers CONFIGURE_DEPENDS ${dir}/*.h)
  file(GLOB resources CONFIGURE_DEPENDS ${dir}/*.qrc)
  set(include_root ${PROJECT_BINARY_DIR}/include/${name})
  file(REMOVE_RECURSE ${include_root})
  file(MAKE_DIRECTORY ${include_root}/${folder})
  foreach(header IN LISTS headers)
    get_filename_component(base ${header} NAME)
    file(CREATE_LINK ${header} ${include_root}/${folder}/${base} SYMBOLIC)
  endforeach()
  if(sources)
    add_library(${name} STATIC ${sources} ${headers} ${resources})
    target_include_directories(${name} PUBLIC ${include_root})
    target_link_libraries(${name} PUBLIC ${ARG_LINK})
    lumeno_use_precompiled(${name} lumeno_precompiled_headers)
  else()
    add_library(${name} INTERFACE)
    target_include_directories(${name} INTERFACE ${include_root})
    target_link_libraries(${name} INTERFACE ${ARG_LINK})
  endif()
endfunction()
