# One target per folder of the house. A target sees only its own headers and those of the targets it links,
# because each target gets an include directory of its own that holds links to just its headers. An include
# that points up or sideways therefore does not compile.

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
  else()
    add_library(${name} INTERFACE)
    target_include_directories(${name} INTERFACE ${include_root})
    target_link_libraries(${name} INTERFACE ${ARG_LINK})
  endif()
endfunction()
