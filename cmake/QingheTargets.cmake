# One helper for each kind of target, so that flags cannot drift apart.
include(CMakeParseArguments)

# Warnings and the strict Qt dialect that all of our own code is held to.
add_library(qinghe_flags INTERFACE)
target_compile_options(qinghe_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror
  -fno-omit-frame-pointer)
target_compile_definitions(qinghe_flags INTERFACE
  QT_NO_CAST_FROM_ASCII
  QT_NO_CAST_TO_ASCII
  QT_NO_CAST_FROM_BYTEARRAY
  QT_NO_URL_CAST_FROM_STRING
  QT_NO_CONTEXTLESS_CONNECT
  QT_NO_FOREACH
  QT_NO_NARROWING_CONVERSIONS_IN_CONNECT)
target_include_directories(qinghe_flags INTERFACE "${CMAKE_SOURCE_DIR}/src")

# qinghe_library(NAME SOURCES a.cpp ... [DEPENDS lib ...])
function(qinghe_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  set_target_properties(${name} PROPERTIES AUTOMOC ON)
  target_link_libraries(${name} PUBLIC ${ARG_DEPENDS} PRIVATE qinghe_flags)
  target_include_directories(${name} PUBLIC "${CMAKE_SOURCE_DIR}/src")
endfunction()

# qinghe_program(NAME SOURCES main.cpp ... [DEPENDS lib ...])
function(qinghe_program name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  set_target_properties(${name} PROPERTIES AUTOMOC ON)
  target_link_libraries(${name} PRIVATE ${ARG_DEPENDS} qinghe_flags)
endfunction()

# qinghe_test(NAME SOURCES a_test.cpp ... [DEPENDS lib ...] [TIMEOUT seconds])
# A test program brings its own main through qinghe_test_main (no widgets) or
# qinghe_test_main_gui (a QApplication on the offscreen platform).
function(qinghe_test name)
  cmake_parse_arguments(ARG "" "TIMEOUT" "SOURCES;DEPENDS" ${ARGN})
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 600)
  endif()
  add_executable(${name} ${ARG_SOURCES})
  set_target_properties(${name} PROPERTIES AUTOMOC ON)
  target_link_libraries(${name} PRIVATE ${ARG_DEPENDS} GTest::gtest GTest::gmock qinghe_flags)
  target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}/tests" "${CMAKE_SOURCE_DIR}")
  target_compile_options(${name} PRIVATE
    "SHELL:-include ${CMAKE_SOURCE_DIR}/tests/support/text_printing.h")
  target_link_libraries(${name} PRIVATE Qt6::Core)
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES
    TIMEOUT ${ARG_TIMEOUT}
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;TZ=UTC;LC_ALL=C.UTF-8")
endfunction()
