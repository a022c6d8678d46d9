# Attribute trees beside other libraries for settings and documents. Each peer is left out where its
# package is missing. The programs: lum_bench_trees (times), lum_bench_memory (heap for each
# attribute), lum_bench_loading (time to load the library).

lum_add_contenders(lum_bench_tree_contenders
  ${CMAKE_CURRENT_LIST_DIR}/TreeContender.cpp
  ${CMAKE_CURRENT_LIST_DIR}/TreeData.cpp
  ${CMAKE_CURRENT_LIST_DIR}/TreeDefinitions.cpp
  ${CMAKE_CURRENT_LIST_DIR}/TreeFamilies.cpp
  ${CMAKE_CURRENT_LIST_DIR}/TreeLimit.cpp
  ${CMAKE_CURRENT_LIST_DIR}/TreeOurs.cpp)

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
find_package(Poco QUIET COMPONENTS Util)
if(TARGET Poco::Util)
  lum_add_tree_peer(HAS_POCO TreePoco.cpp "${Poco_VERSION}" Poco::Util)
endif()
find_path(LUM_SIMPLEINI_INCLUDE_DIR SimpleIni.h)
if(LUM_SIMPLEINI_INCLUDE_DIR)
  file(STRINGS ${LUM_SIMPLEINI_INCLUDE_DIR}/SimpleIni.h version REGEX "<th>Version" LIMIT_COUNT 1)
  string(REGEX REPLACE ".*<td>" "" version "${version}")
  lum_add_tree_peer(HAS_SIMPLEINI TreeSimpleIni.cpp "${version}")
  target_include_directories(lum_bench_tree_contenders SYSTEM PRIVATE ${LUM_SIMPLEINI_INCLUDE_DIR})
endif()

lum_add_bench_program(lum_bench_trees ${CMAKE_CURRENT_LIST_DIR}/TreeMain.cpp)
target_link_libraries(lum_bench_trees PRIVATE lum_bench_tree_contenders)

# These ask the C library of Linux.
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
  lum_add_bench_program(lum_bench_memory ${CMAKE_CURRENT_LIST_DIR}/MemoryMain.cpp)
  target_link_libraries(lum_bench_memory PRIVATE lum_bench_tree_contenders)

  add_library(lum_bench_empty MODULE ${CMAKE_CURRENT_LIST_DIR}/Empty.cpp)
  # Loads the library itself, so it is not linked to it.
  add_executable(lum_bench_loading ${CMAKE_CURRENT_LIST_DIR}/LoadingMain.cpp)
  lum_configure_target(lum_bench_loading)
  target_link_libraries(lum_bench_loading PRIVATE ${CMAKE_DL_LIBS})
  add_dependencies(lum_bench_loading lum_bench_empty LumAttributes)
  add_dependencies(lum_benchmarks lum_bench_loading)
  target_compile_definitions(lum_bench_loading PRIVATE
    LUM_EMPTY_FILE="$<TARGET_FILE:lum_bench_empty>"
    LUM_PLATFORM_FILE="$<TARGET_FILE:LumPlatform>"
    LUM_ATTRIBUTES_FILE="$<TARGET_FILE:LumAttributes>")
endif()
