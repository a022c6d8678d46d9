# What every target of the project has in common.

set(LUM_WARNINGS -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
# A newer compiler's new warning must not break a program that only uses the library.
if(PROJECT_IS_TOP_LEVEL)
  list(APPEND LUM_WARNINGS -Werror)
endif()
# GCC 12 warns of overlapping copies inside std::string's own operator+ when it optimises.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  list(APPEND LUM_WARNINGS -Wno-restrict)
endif()

set(LUM_SANITIZERS "" CACHE STRING "Sanitizers for every target, comma separated")
if(LUM_SANITIZERS)
  add_compile_options(-fsanitize=${LUM_SANITIZERS} -fno-sanitize-recover=all)
  if(LUM_SANITIZERS MATCHES "integer")
    add_compile_options(-fsanitize-ignorelist=${CMAKE_CURRENT_LIST_DIR}/LumSanitizers.ignorelist)
  endif()
  add_link_options(-fsanitize=${LUM_SANITIZERS})
  add_compile_definitions(LUM_SANITIZED)
endif()

# scripts/coverage counts which branches of the library's own sources the tests take.
option(LUM_COVERAGE "Count the branches that are taken in the library's sources" OFF)
# Threads count as well; counters belong to a source wherever it is built.
set(LUM_COVERAGE_FLAGS --coverage -fprofile-update=atomic -fprofile-abs-path)

# Language level, warnings and the include root, for any target of the project.
function(lum_configure_target target)
  target_compile_features(${target} PRIVATE cxx_std_20)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
  target_compile_options(${target} PRIVATE ${LUM_WARNINGS})
  if(WIN32)
    # The system's header would define min and max as macros.
    target_compile_definitions(${target} PRIVATE NOMINMAX)
  endif()
endfunction()

# Has a library count the branches that are taken, where LUM_COVERAGE asks for it.
function(lum_count_branches target)
  if(LUM_COVERAGE)
    target_compile_options(${target} PRIVATE ${LUM_COVERAGE_FLAGS})
    target_link_options(${target} PRIVATE --coverage)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON)
  endif()
endfunction()

# Shortens the builds that nobody gets. Two sources of one library never share a name.
option(LUM_UNITY_LIBRARIES "Compile each library as one source" OFF)

# A shared library with hidden visibility whose exports are marked while `buildMacro` is defined.
function(lum_configure_library target buildMacro)
  lum_configure_target(${target})
  target_compile_features(${target} PUBLIC cxx_std_20)
  # A fused multiply-add would round once where the formulas are laid down to round twice.
  target_compile_options(${target} PRIVATE -ffp-contract=off)
  target_compile_definitions(${target} PRIVATE ${buildMacro})
  if(LUM_UNITY_LIBRARIES)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 0)
  endif()
  target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>)
  if(WIN32)
    set_target_properties(${target} PROPERTIES PREFIX "")
    if(MINGW)
      target_sources(${target} PRIVATE ${PROJECT_SOURCE_DIR}/cmake/MingwUnload.cpp)
    endif()
  else()
    # A DLL exports the inline members of its classes: programs link to their static constants.
    set_target_properties(${target} PROPERTIES VISIBILITY_INLINES_HIDDEN ON)
  endif()
  lum_count_branches(${target})
  # A build with sanitizers is for the tests alone: what it exports is nobody's interface.
  if(CMAKE_SYSTEM_NAME STREQUAL "Linux" AND NOT LUM_SANITIZERS)
    set(exports ${PROJECT_SOURCE_DIR}/cmake/LumExports.map)
    set(preemptible ${PROJECT_SOURCE_DIR}/cmake/LumPreemptible.list)
    target_link_options(${target} PRIVATE
      LINKER:--version-script=${exports} LINKER:--dynamic-list=${preemptible})
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${exports} ${preemptible})
  endif()
  set_target_properties(${target} PROPERTIES
    CXX_VISIBILITY_PRESET hidden
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
endfunction()

# Shortens the builds. The Clang preset goes without, so that a missing #include shows.
option(LUM_PRECOMPILE_TESTS "Precompile what most tests include" OFF)
set(LUM_TEST_FLAGS "" CACHE STRING "Further compiler flags of the tests, separated by spaces")
separate_arguments(LUM_TEST_FLAGS)
option(LUM_TEST_WHOLE_PROGRAMS "Register a program of tests as one test: fewer starts" OFF)

# Counts the branches of the library's sources that are built into a program of tests, once all its
# sources are known.
function(lum_cover_library_sources target)
  get_target_property(sources ${target} SOURCES)
  list(FILTER sources INCLUDE REGEX
    "^${PROJECT_SOURCE_DIR}/(platform|values|formulas|definitions|attributes|catalogue|decoding)/")
  if(sources)
    set_source_files_properties(${sources} PROPERTIES
      COMPILE_OPTIONS "${LUM_COVERAGE_FLAGS}" SKIP_PRECOMPILE_HEADERS ON)
    target_link_options(${target} PRIVATE --coverage)
  endif()
endfunction()

# One GoogleTest executable from the test sources of one folder, registered test by test. In a cross
# build LUM_TEST_FIXTURE names what must run meanwhile.
function(lum_add_tests target)
  add_executable(${target} ${ARGN})
  lum_configure_target(${target})
  target_compile_options(${target} PRIVATE ${LUM_TEST_FLAGS})
  target_link_libraries(${target} PRIVATE LumAttributes GTest::gmock GTest::gtest_main)
  if(LUM_PRECOMPILE_TESTS)
    target_precompile_headers(${target} REUSE_FROM lum_tests_precompiled)
  endif()
  if(LUM_COVERAGE)
    cmake_language(EVAL CODE "cmake_language(DEFER CALL lum_cover_library_sources ${target})")
  endif()
  if(CMAKE_CROSSCOMPILING OR LUM_TEST_WHOLE_PROGRAMS)
    # Starting a program costs too much in an emulator to do it test by test.
    add_test(NAME ${target} COMMAND ${target})
    set_tests_properties(${target} PROPERTIES
      TIMEOUT 900 FIXTURES_REQUIRED "${LUM_TEST_FIXTURE}")
  else()
    gtest_discover_tests(${target} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 300)
  endif()
endfunction()
