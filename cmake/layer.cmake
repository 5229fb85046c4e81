# A layer is a folder of src/ and one static library. What it links is what it may include, which the test
# "layers" compares. Sources are found by name, so a new file needs no line here.
#
#   kelo_layer(NAME [NESTED folders...] LINKS other layers and libraries...)
function(kelo_layer name)
  cmake_parse_arguments(LAYER "" "" "NESTED;LINKS" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  foreach(folder ${LAYER_NESTED})  # inside, and layers of their own
    list(FILTER sources EXCLUDE REGEX "${CMAKE_CURRENT_SOURCE_DIR}/${folder}/")
  endforeach()
  add_library(kelo_${name} STATIC ${sources})
  target_link_libraries(kelo_${name} PUBLIC kelo_options ${LAYER_LINKS})
endfunction()
