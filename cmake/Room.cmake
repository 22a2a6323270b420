# A room is a folder below src/, a namespace and a library. What it may include is what it links: its headers are
# reached through a folder of their own that holds nothing but a link to the room, so that the compiler does not find
# a header of a room that is not linked.

if(WIN32)
  set(DRAVIK_OTHER_PLATFORM "_posix\\.cpp$")
else()
  set(DRAVIK_OTHER_PLATFORM "_win\\.cpp$")
endif()

# dravik_room(NAME FOLDER SOURCES file... LINKS room-or-library...) makes the library dravik_NAME of the files in
# src/FOLDER. Of files that end in _posix.cpp and _win.cpp those of the other platform are left out. A room without
# sources has headers alone.
function(dravik_room name folder)
  cmake_parse_arguments(ROOM "" "" "SOURCES;LINKS" ${ARGN})
  set(place ${PROJECT_SOURCE_DIR}/src/${folder})
  # Sources are listed, so that a build that changes nothing need not look for new ones; one that was forgotten is
  # told here instead of by the linker.
  file(GLOB found RELATIVE ${place} ${place}/*.cpp)
  foreach(file ${found})
    if(NOT file IN_LIST ROOM_SOURCES AND NOT file STREQUAL "main.cpp")
      message(FATAL_ERROR "src/${folder}/${file} is not in the list of sources of dravik_${name}")
    endif()
  endforeach()
  list(FILTER ROOM_SOURCES EXCLUDE REGEX "${DRAVIK_OTHER_PLATFORM}")
  list(TRANSFORM ROOM_SOURCES PREPEND ${place}/)
  set(includes ${PROJECT_BINARY_DIR}/rooms/${name})
  get_filename_component(outer ${includes}/${folder} DIRECTORY)
  file(MAKE_DIRECTORY ${outer})
  file(CREATE_LINK ${place} ${includes}/${folder} SYMBOLIC)
  if(ROOM_SOURCES)
    add_library(dravik_${name} STATIC ${ROOM_SOURCES})
    target_include_directories(dravik_${name} PUBLIC ${includes})
    target_link_libraries(dravik_${name} PUBLIC ${ROOM_LINKS})
  else()
    add_library(dravik_${name} INTERFACE)
    target_include_directories(dravik_${name} INTERFACE ${includes})
    target_link_libraries(dravik_${name} INTERFACE ${ROOM_LINKS})
  endif()
endfunction()

# precompiled_headers(NAME HEADER...) compiles HEADERs once, with the options of the library NAME that it makes for them. Each file
# names what it needs all the same: `tools/nightly.sh` compiles without this.
function(precompiled_headers name)
  add_library(${name} OBJECT ${PROJECT_SOURCE_DIR}/cmake/Empty.cpp)
  target_precompile_headers(${name} PRIVATE ${ARGN})
endfunction()

# precompiled_from(HEADERS TARGET...) has the TARGETs, which have the same options, use what precompiled_headers(HEADERS) compiled.
function(precompiled_from headers)
  foreach(target ${ARGN})
    target_precompile_headers(${target} REUSE_FROM ${headers})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
      target_compile_options(${target} PRIVATE -fpch-preprocess) # for ccache
    endif()
  endforeach()
endfunction()
