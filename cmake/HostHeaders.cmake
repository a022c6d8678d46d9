# Header-only libraries of the machine that builds serve a cross build, too, but its folder of headers
# must not: it holds the C library's of another system.
function(lum_use_host_headers target folder)
  find_path(${folder}_PARENT ${folder} PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/host-headers)
  file(CREATE_LINK ${${folder}_PARENT}/${folder} ${PROJECT_BINARY_DIR}/host-headers/${folder}
    SYMBOLIC)
  add_library(${target} INTERFACE IMPORTED)
  set_target_properties(${target} PROPERTIES
    INTERFACE_INCLUDE_DIRECTORIES ${PROJECT_BINARY_DIR}/host-headers)
endfunction()
