# What lum_bench_counts needs beside the contenders: Valgrind's header, and the tests' counting of
# allocations, which reaches into libraries the ELF way only.
find_path(LUM_VALGRIND_INCLUDE_DIR valgrind/callgrind.h)
if(NOT LUM_VALGRIND_INCLUDE_DIR OR NOT CMAKE_SYSTEM_NAME STREQUAL "Linux")
  message(STATUS "Not built: the counts of instructions and allocations, since there is no Valgrind")
  return()
endif()

lum_add_bench_program(lum_bench_counts CountsMain.cpp ${PROJECT_SOURCE_DIR}/tests/Allocations.cpp)
target_include_directories(lum_bench_counts SYSTEM PRIVATE ${LUM_VALGRIND_INCLUDE_DIR})
target_link_libraries(lum_bench_counts PRIVATE
  lum_bench_text_contenders lum_bench_decoder_contenders lum_bench_tree_contenders)
