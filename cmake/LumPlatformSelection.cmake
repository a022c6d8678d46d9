# Which platform the library is built on: our own (platform/), or a host's own framework and base
# library in the folder LUM_PLATFORM_DIR; docs/own-platform.md says what that folder must hold.

set(LUM_PLATFORM_DIR "" CACHE PATH
  "Folder of a platform to use in place of the project's own; empty: the project's own")

# The whole seam between LumAttributes and its platform.
set(LUM_PLATFORM_HEADERS
  platform/Framework.h
  platform/LumBase.h
  platform/TextEncoding.h
  platform/VersionCheck.h)

# Defines the target LumPlatform.
function(lum_add_platform)
  if(NOT LUM_PLATFORM_DIR)
    add_subdirectory(platform)
    return()
  endif()
  if(NOT IS_DIRECTORY "${LUM_PLATFORM_DIR}")
    message(FATAL_ERROR "LUM_PLATFORM_DIR: there is no folder ${LUM_PLATFORM_DIR}.")
  endif()
  if(NOT EXISTS "${LUM_PLATFORM_DIR}/CMakeLists.txt")
    message(FATAL_ERROR "LUM_PLATFORM_DIR: ${LUM_PLATFORM_DIR} has no CMakeLists.txt; it must "
      "define the target LumPlatform.")
  endif()
  add_subdirectory("${LUM_PLATFORM_DIR}" "${PROJECT_BINARY_DIR}/platform")
  if(NOT TARGET LumPlatform)
    message(FATAL_ERROR "LUM_PLATFORM_DIR: ${LUM_PLATFORM_DIR}/CMakeLists.txt does not define the "
      "target LumPlatform (an imported one must be GLOBAL).")
  endif()
  lum_require_platform_headers()
endfunction()

function(lum_require_platform_headers)
  get_target_property(folders LumPlatform INTERFACE_INCLUDE_DIRECTORIES)
  if(NOT folders)
    message(FATAL_ERROR "LUM_PLATFORM_DIR: the target LumPlatform names no include folder; it must "
      "name the one that holds platform/Framework.h (target_include_directories, PUBLIC or "
      "INTERFACE).")
  endif()
  list(TRANSFORM folders REPLACE "^\\$<BUILD_INTERFACE:(.*)>$" "\\1")
  foreach(header IN LISTS LUM_PLATFORM_HEADERS)
    unset(found)
    find_file(found "${header}" PATHS ${folders} NO_DEFAULT_PATH NO_CACHE NO_CMAKE_FIND_ROOT_PATH)
    if(NOT found)
      message(FATAL_ERROR "LUM_PLATFORM_DIR: no include folder of the target LumPlatform holds "
        "${header}. Looked in: ${folders}")
    endif()
  endforeach()
endfunction()

# Links a library to the platform. The headers of a host's platform come before the project's own,
# which refuse to be used then.
function(lum_link_platform target)
  target_link_libraries(${target} PUBLIC LumPlatform)
  if(LUM_PLATFORM_DIR)
    target_compile_definitions(${target} PUBLIC LUM_FOREIGN_PLATFORM)
    # The compiler searches system folders last, and folders of imported targets are taken as such.
    get_target_property(platform LumPlatform ALIASED_TARGET)
    if(NOT platform)
      set(platform LumPlatform)
    endif()
    set_target_properties(${platform} PROPERTIES SYSTEM OFF)
    target_include_directories(${target} BEFORE PUBLIC
      $<BUILD_INTERFACE:$<TARGET_PROPERTY:LumPlatform,INTERFACE_INCLUDE_DIRECTORIES>>)
  endif()
endfunction()
