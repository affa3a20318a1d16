# What every target of this project shares, and the three kinds of target that it has.

add_library(parlo_base INTERFACE)
target_include_directories(parlo_base INTERFACE ${CMAKE_SOURCE_DIR})
target_link_libraries(parlo_base INTERFACE Qt6::Core Qt6::Gui Qt6::Widgets)
target_compile_options(parlo_base INTERFACE -Wall -Wextra -Werror -Wpedantic -Wnon-virtual-dtor -Woverloaded-virtual)
target_compile_definitions(parlo_base INTERFACE
  QT_NO_KEYWORDS QT_NO_CAST_FROM_BYTEARRAY QT_DISABLE_DEPRECATED_BEFORE=0x060000)
if(PARLO_SANITIZE)
  target_compile_options(parlo_base INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
    -fno-omit-frame-pointer)
  target_link_options(parlo_base INTERFACE -fsanitize=address,undefined)
endif()

add_library(parlo_pch OBJECT ${CMAKE_SOURCE_DIR}/cmake/pch.cpp)
target_link_libraries(parlo_pch PRIVATE parlo_base)
target_precompile_headers(parlo_pch PRIVATE ${CMAKE_SOURCE_DIR}/cmake/pch.h)

# parlo_module(NAME folder-relative sources from this folder; LINK other targets)
# A static library made of every .cpp file of the current folder.
function(parlo_module name)
  cmake_parse_arguments(ARG "" "" "LINK;SOURCES" ${ARGN})
  if(NOT ARG_SOURCES)
    file(GLOB_RECURSE ARG_SOURCES CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
  endif()
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC parlo_base ${ARG_LINK})
  target_precompile_headers(${name} REUSE_FROM parlo_pch)
endfunction()

# parlo_test(NAME SOURCES ... LINK ...): a GoogleTest program with the project's own main (an offscreen
# application object, and any unexpected warning fails the test that caused it). With EDITIONS a second program
# runs the same tests on the other edition: an object file goes before the library that holds the configured one.
function(parlo_test name)
  cmake_parse_arguments(ARG "EDITIONS" "TIMEOUT" "SOURCES;LINK;ENVIRONMENT" ${ARGN})
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 120)
  endif()
  foreach(source ${ARG_SOURCES})
    if(NOT EXISTS ${source} AND NOT EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/${source})
      message(WARNING "${name} is left out: ${source} is missing")
      return()
    endif()
  endforeach()
  add_executable(${name} ${ARG_SOURCES})
  target_precompile_headers(${name} REUSE_FROM parlo_test_main)
  set(programs ${name})
  if(ARG_EDITIONS)
    string(TOLOWER ${name}_${PARLO_OTHER_EDITION} other)
    add_executable(${other} $<TARGET_OBJECTS:${name}> $<TARGET_OBJECTS:vl_other_edition>)
    list(APPEND programs ${other})
  endif()
  foreach(program ${programs})
    target_link_libraries(${program} PRIVATE ${ARG_LINK} parlo_test_main GTest::gtest GTest::gmock Qt6::Test)
    add_test(NAME ${program} COMMAND ${program})
    set_tests_properties(${program} PROPERTIES TIMEOUT ${ARG_TIMEOUT}
      ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;${ARG_ENVIRONMENT}")
  endforeach()
endfunction()
