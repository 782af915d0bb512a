# SPDX-License-Identifier: Apache-2.0
# Compile settings that every target of this project shares, and the functions that make its targets.

add_library(orvane_settings INTERFACE)
# No contraction to fused multiply-add: a value must be the same on every machine.
target_compile_options(orvane_settings INTERFACE -Wall -Wextra -Wpedantic -ffp-contract=off
                                                 $<$<BOOL:${ORVANE_WERROR}>:-Werror>)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # It reports the copies of its own std::string as overlapping (GCC bug 105651).
  target_compile_options(orvane_settings INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-Wno-restrict>)
endif()

# orvane_rooms(target source...): with CMAKE_UNITY_BUILD the sources of one folder compile as one unit, which halves the
# time of a cold build; so a name in an unnamed namespace occurs once a folder.
function(orvane_rooms target)
  foreach(source ${ARGN})
    cmake_path(GET source PARENT_PATH folder)
    string(MAKE_C_IDENTIFIER "room_${folder}" room)
    set_source_files_properties(${source} PROPERTIES UNITY_GROUP ${room})
  endforeach()
  set_target_properties(${target} PROPERTIES UNITY_BUILD_MODE GROUP)
endfunction()

# orvane_subsystem(name source...): one OBJECT library for the subsystem in src/<name>, with hidden visibility.
function(orvane_subsystem name)
  add_library(orvane_${name} OBJECT ${ARGN})
  target_include_directories(orvane_${name} PRIVATE ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/include)
  target_link_libraries(orvane_${name} PRIVATE orvane_settings Eigen3::Eigen)
  target_compile_options(orvane_${name} PRIVATE -Wconversion -Wno-sign-conversion)
  target_compile_definitions(orvane_${name} PRIVATE ORVANE_BUILDING EIGEN_MPL2_ONLY)
  set_target_properties(orvane_${name} PROPERTIES CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
  orvane_rooms(orvane_${name} ${ARGN})
  set_property(GLOBAL APPEND PROPERTY ORVANE_SUBSYSTEMS orvane_${name})
endfunction()

# orvane_test_options(target): what is tested is the library; the tests themselves need not be quick, but quick to build.
# All are compiled with the same flags, so that one precompiled header serves them (tests/support).
function(orvane_test_options target)
  target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-O0>)
  set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE OFF)
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    target_compile_options(${target} PRIVATE -fpch-preprocess)  # lets ccache see what was precompiled
  endif()
endfunction()

# orvane_test(name [WHITEBOX] source...): a GoogleTest program against the shared library, as a host; WHITEBOX links the
# static twin and sees src/.
function(orvane_test name)
  cmake_parse_arguments(arg "WHITEBOX;SLOW" "" "" ${ARGN})
  add_executable(${name}_test ${arg_UNPARSED_ARGUMENTS})
  orvane_test_options(${name}_test)
  target_link_libraries(${name}_test PRIVATE orvane_test_support)
  target_precompile_headers(${name}_test REUSE_FROM orvane_test_support)
  if(arg_WHITEBOX)
    target_include_directories(${name}_test PRIVATE ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(${name}_test PRIVATE orvane_static)
  else()
    target_link_libraries(${name}_test PRIVATE orvane)
  endif()
  if(arg_SLOW)
    gtest_discover_tests(${name}_test TEST_PREFIX ${name}. DISCOVERY_MODE PRE_TEST PROPERTIES LABELS slow)
  else()
    gtest_discover_tests(${name}_test TEST_PREFIX ${name}. DISCOVERY_MODE PRE_TEST)
  endif()
endfunction()
