# Attribute trees beside other libraries for settings and documents. Each peer is left out where its
# package is missing. The programs: lum_bench_trees (times), lum_bench_memory (heap for each
# attribute), lum_bench_loading (time to load the library).

add_library(lum_bench_tree_contenders STATIC
  ${CMAKE_CURRENT_LIST_DIR}/TreeContender.cpp
  ${CMAKE_CURRENT_LIST_DIR}/TreeData.cpp
  ${CMAKE_CURRENT_LIST_DIR}/TreeDefinitions.cpp
  ${CMAKE_CURRENT_LIST_DIR}/TreeFamilies.cpp
  ${CMAKE_CURRENT_LIST_DIR}/TreeLimit.cpp
  ${CMAKE_CURRENT_LIST_DIR}/TreeOurs.cpp)
lum_configure_target(lum_bench_tree_contenders)
target_link_libraries(lum_bench_tree_contenders PUBLIC LumAttributes benchmark::benchmark)

# `macro` tells the sources the peer's version; further arguments are its targets.
function(lum_add_tree_peer macro source version)
  target_sources(lum_bench_tree_contenders PRIVATE ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/${source})
  target_compile_definitions(lum_bench_tree_contenders PRIVATE ${macro}="${version}")
  target_link_libraries(lum_bench_tree_contenders PRIVATE ${ARGN})
endfunction()

find_package(Boost QUIET)
if(TARGET Boost::headers)
  lum_add_tree_peer(HAS_BOOST TreeBoost.cpp "${Boost_VERSION}" Boost::headers)
endif()
find_package(PkgConfig QUIET)
if(PkgConfig_FOUND)
  pkg_check_modules(LUM_GLIB QUIET IMPORTED_TARGET glib-2.0)
endif()
if(TARGET PkgConfig::LUM_GLIB)
  lum_add_tree_peer(HAS_GLIB TreeGlib.cpp "${LUM_GLIB_VERSION}" PkgConfig::LUM_GLIB)
endif()
find_package(Qt5Core QUIET)
if(TARGET Qt5::Core)
  lum_add_tree_peer(HAS_QT TreeQt.cpp "${Qt5Core_VERSION}" Qt5::Core)
endif()
find_package(nlohmann_json QUIET)
if(TARGET nlohmann_json::nlohmann_json)
  lum_add_tree_peer(HAS_NLOHMANN_JSON TreeNlohmann.cpp "${nlohmann_json_VERSION}"
    nlohmann_json::nlohmann_json)
endif()
find_package(RapidJSON QUIET)
if(RapidJSON_FOUND)
  lum_add_tree_peer(HAS_RAPIDJSON TreeRapidJson.cpp "${RapidJSON_VERSION}")
  target_include_directories(lum_bench_tree_contenders SYSTEM PRIVATE ${RAPIDJSON_INCLUDE_DIRS})
endif()
find_package(tomlplusplus QUIET)
if(TARGET tomlplusplus::tomlplusplus)
  lum_add_tree_peer(HAS_TOMLPLUSPLUS TreeToml.cpp "${tomlplusplus_VERSION}"
    tomlplusplus::tomlplusplus)
endif()

add_executable(lum_bench_trees ${CMAKE_CURRENT_LIST_DIR}/TreeMain.cpp)
lum_configure_target(lum_bench_trees)
target_link_libraries(lum_bench_trees PRIVATE lum_bench_tree_contenders)

# These ask the C library of Linux.
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
  add_executable(lum_bench_memory ${CMAKE_CURRENT_LIST_DIR}/MemoryMain.cpp)
  lum_configure_target(lum_bench_memory)
  target_link_libraries(lum_bench_memory PRIVATE lum_bench_tree_contenders)

  add_library(lum_bench_empty MODULE ${CMAKE_CURRENT_LIST_DIR}/Empty.cpp)
  add_executable(lum_bench_loading ${CMAKE_CURRENT_LIST_DIR}/LoadingMain.cpp)
  lum_configure_target(lum_bench_loading)
  target_link_libraries(lum_bench_loading PRIVATE ${CMAKE_DL_LIBS})
  add_dependencies(lum_bench_loading lum_bench_empty LumAttributes)
  target_compile_definitions(lum_bench_loading PRIVATE
    LUM_EMPTY_FILE="$<TARGET_FILE:lum_bench_empty>"
    LUM_PLATFORM_FILE="$<TARGET_FILE:LumPlatform>"
    LUM_ATTRIBUTES_FILE="$<TARGET_FILE:LumAttributes>")
endif()
