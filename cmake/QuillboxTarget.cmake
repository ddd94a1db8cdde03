# Settings shared by every target of the project's own code: all warnings (errors with
# QB_WERROR), and Qt's string conversions must be spelled out so encoding mistakes fail
# to compile.
function(qb_configure_target target)
  target_compile_options(${target} PRIVATE -Wall -Wextra $<$<BOOL:${QB_WERROR}>:-Werror>)
  target_compile_definitions(${target} PRIVATE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_USE_QSTRINGBUILDER
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT)
endfunction()

# One static library per source folder.
function(qb_add_library target)
  add_library(${target} STATIC ${ARGN})
  target_include_directories(${target} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  qb_configure_target(${target})
endfunction()

# A GoogleTest binary registered with CTest. The shared test main gives the whole
# process a temporary HOME and XDG folders. qb_add_gui_test makes a QApplication.
# ENVIRONMENT_MODIFICATION "NAME=set:value" gives its tests one more variable (a
# language, say), which must be there before the application object exists.
function(qb_add_test_with_support target support)
  cmake_parse_arguments(PARSE_ARGV 2 arg "" "ENVIRONMENT_MODIFICATION" "")
  add_executable(${target} ${arg_UNPARSED_ARGUMENTS})
  qb_configure_target(${target})
  target_link_libraries(${target} PRIVATE ${support})
  set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests/bin)
  set(properties ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
  if(arg_ENVIRONMENT_MODIFICATION)
    list(APPEND properties ENVIRONMENT_MODIFICATION "${arg_ENVIRONMENT_MODIFICATION}")
  endif()
  gtest_discover_tests(${target} PROPERTIES ${properties} DISCOVERY_TIMEOUT 60)
endfunction()

function(qb_add_test target)
  qb_add_test_with_support(${target} quillbox2_testsupport ${ARGN})
endfunction()

function(qb_add_gui_test target)
  qb_add_test_with_support(${target} quillbox2_testsupport_gui ${ARGN})
endfunction()

# A Google Benchmark binary; `make bench` runs every one of them.
function(qb_add_benchmark target)
  add_executable(${target} ${ARGN})
  qb_configure_target(${target})
  target_link_libraries(${target} PRIVATE benchmark::benchmark)
  set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bench/bin)
  add_dependencies(benchmarks ${target})
endfunction()
