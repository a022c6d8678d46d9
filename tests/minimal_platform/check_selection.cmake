# Tells whether wrong values of LUM_PLATFORM_DIR end the configuration with a message that says what
# is expected, and whether the check of includes finds a wrong one. Run with
# `cmake -D WORK=folder -P`; the folder is emptied first.
cmake_path(GET CMAKE_CURRENT_LIST_DIR PARENT_PATH tests)
cmake_path(GET tests PARENT_PATH root)
file(REMOVE_RECURSE "${WORK}")
file(WRITE "${WORK}/project/CMakeLists.txt" "
  cmake_minimum_required(VERSION 3.25)
  project(Selection LANGUAGES NONE)
  include(${root}/cmake/LumPlatformSelection.cmake)
  lum_add_platform()
  add_library(Library INTERFACE)
")

# Expects a run of CMake to fail with a text, or to succeed when the text is empty.
function(expect name text)
  execute_process(COMMAND ${CMAKE_COMMAND} ${ARGN}
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  string(REGEX REPLACE "[ \n]+" " " output "${output}")
  string(FIND "${output}" "${text}" place)
  if((text AND result EQUAL 0) OR (NOT text AND NOT result EQUAL 0) OR place LESS 0)
    message(SEND_ERROR "${name}: expected \"${text}\", got ${result}: ${output}")
  endif()
endfunction()

function(expect_selection name text)
  expect(${name} "${text}" -S ${WORK}/project -B ${WORK}/build_${name}
    -D LUM_PLATFORM_DIR=${WORK}/${name})
endfunction()

function(write_platform name commands)
  file(WRITE "${WORK}/${name}/CMakeLists.txt" "${commands}")
  foreach(header IN LISTS ARGN)
    file(WRITE "${WORK}/${name}/platform/${header}.h" "")
  endforeach()
endfunction()

set(library "add_library(LumPlatform INTERFACE)\n")
set(include "target_include_directories(LumPlatform INTERFACE \${CMAKE_CURRENT_SOURCE_DIR})\n")
set(all Framework LumBase TextEncoding VersionCheck)

expect_selection(nowhere "there is no folder")
file(MAKE_DIRECTORY "${WORK}/empty")
expect_selection(empty "has no CMakeLists.txt")
write_platform(no_target "" ${all})
expect_selection(no_target "does not define the target LumPlatform")
write_platform(no_includes "${library}" ${all})
expect_selection(no_includes "names no include folder")
foreach(missing IN LISTS all)
  set(others ${all})
  list(REMOVE_ITEM others ${missing})
  write_platform(no_${missing} "${library}${include}" ${others})
  expect_selection(no_${missing} "holds platform/${missing}.h")
endforeach()
write_platform(whole "${library}${include}" ${all})
expect_selection(whole "")
string(REPLACE "INTERFACE)" "INTERFACE IMPORTED GLOBAL)" imported "${library}")
write_platform(imported "${imported}${include}" ${all})
expect_selection(imported "")

# The check of includes itself.
foreach(folder values formulas definitions attributes catalogue)
  file(WRITE "${WORK}/sources/${folder}/Good.h" "#include \"platform/Framework.h\"\n")
endforeach()
expect(includes "" -D ROOT=${WORK}/sources -P ${CMAKE_CURRENT_LIST_DIR}/check_includes.cmake)
file(WRITE "${WORK}/sources/values/Bad.h" "#  include \"platform/portable/FileBytes.h\"\n")
expect(wrong_include "Bad.h" -D ROOT=${WORK}/sources
  -P ${CMAKE_CURRENT_LIST_DIR}/check_includes.cmake)
expect(no_includes "wrong folder" -D ROOT=${WORK} -P ${CMAKE_CURRENT_LIST_DIR}/check_includes.cmake)
