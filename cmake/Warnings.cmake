# Shared compile flags for every project target.
add_library(zw_flags INTERFACE)
target_compile_options(zw_flags INTERFACE
  -Wall -Wextra -Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual
  # The same check under each compiler's name; clang knows no -Wshadow=local.
  $<$<CXX_COMPILER_ID:GNU>:-Wshadow=local> $<$<CXX_COMPILER_ID:Clang>:-Wshadow-uncaptured-local>
  $<$<BOOL:${ZETTELWERK_WERROR}>:-Werror>)
target_include_directories(zw_flags INTERFACE ${PROJECT_SOURCE_DIR})
if(ZETTELWERK_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "ZETTELWERK_FUZZ needs clang: CXX=clang++ cmake ... -DZETTELWERK_FUZZ=ON")
  endif()
  # Coverage in every library, so that each fuzzer is guided by the code it reaches; the sanitizers come along.
  set(ZETTELWERK_SANITIZE ON)
  target_compile_options(zw_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(ZETTELWERK_SANITIZE)
  target_compile_options(zw_flags INTERFACE -fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
  target_link_options(zw_flags INTERFACE -fsanitize=address,undefined)
  # GCC 12's ASan instrumentation makes <regex>'s std::function look uninitialized (a false finding).
  target_compile_options(zw_flags INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
endif()

# zw_library(NAME SOURCES... ) creates the static library of one folder.
function(zw_library name)
  add_library(${name} STATIC ${ARGN})
  target_link_libraries(${name} PUBLIC zw_flags)
endfunction()

# zw_test(NAME SOURCES... LIBS ...) adds a GoogleTest program registered with CTest.
function(zw_test name)
  cmake_parse_arguments(T "" "" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} ${T_SOURCES})
  target_link_libraries(${name} PRIVATE ${T_LIBS} GTest::gtest GTest::gmock GTest::gtest_main zw_flags)
  set(environment "QT_QPA_PLATFORM=offscreen;ZETTELWERK_DIST=${ZETTELWERK_DIST_DIR}")
  if(ZETTELWERK_SANITIZE)
    # Leaks inside system libraries are suppressed by name; a finding of UBSan stops the test.
    list(APPEND environment "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/cmake/lsan.supp:print_suppressions=0"
      "UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1")
  endif()
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES ENVIRONMENT "${environment}")
endfunction()

# zw_fuzzer(NAME SOURCE LIBS ...) adds a libFuzzer program to the target zw_fuzzers (only with ZETTELWERK_FUZZ).
function(zw_fuzzer name source)
  add_executable(${name} ${source})
  target_link_libraries(${name} PRIVATE ${ARGN} zw_flags)
  target_compile_options(${name} PRIVATE -fsanitize=fuzzer)
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  if(NOT TARGET zw_fuzzers)
    add_custom_target(zw_fuzzers)
  endif()
  add_dependencies(zw_fuzzers ${name})
  # A short run of each fuzzer is a test of the fuzz build (label "fuzz"); findings land in the build folder.
  add_test(NAME Fuzz.${name} COMMAND ${name} -max_total_time=20 -rss_limit_mb=2048
           -artifact_prefix=${CMAKE_BINARY_DIR}/fuzz-findings/${name}-)
  set_tests_properties(Fuzz.${name} PROPERTIES LABELS fuzz)
  file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/fuzz-findings)
endfunction()
