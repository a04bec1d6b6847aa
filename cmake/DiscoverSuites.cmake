# One test of ctest for each suite of a GoogleTest program: starting the program costs more than most tests.
#   discover_suites(<target> <name> [<label>...] [COST <seconds>])    names: <name>.<Suite>; the name is a label, too
# COST: about what a suite takes; beside others the long ones begin first.
# Nothing may be skipped: what a test needs is installed by ./test.
# The program is asked for its suites each time it is built; this file is the script that asks, too.
if(NOT CMAKE_SCRIPT_MODE_FILE)
  function(discover_suites target name)
    cmake_parse_arguments(arg "" "COST" "" ${ARGN})
    string(REPLACE ";" "," labels "${name};${arg_UNPARSED_ARGUMENTS}")
    if(NOT arg_COST)
      set(arg_COST 0)
    endif()
    set(list ${CMAKE_CURRENT_BINARY_DIR}/${target}_suites.cmake)
    add_custom_command(TARGET ${target} POST_BUILD BYPRODUCTS ${list} VERBATIM
                       COMMAND ${CMAKE_COMMAND} -DPROGRAM=$<TARGET_FILE:${target}> -DNAME=${name} -DLABELS=${labels} -DCOST=${arg_COST} -DLIST=${list}
                               -DFOLDER=${CMAKE_SOURCE_DIR} -P ${CMAKE_SOURCE_DIR}/cmake/DiscoverSuites.cmake)
    # A program that isn't built yet fails by a name that says so.
    file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/${target}_include.cmake
         "if(EXISTS \"${list}\")\n  include(\"${list}\")\nelse()\n  add_test(${name}.NOT_BUILT ${target})\nendif()\n")
    set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${CMAKE_CURRENT_BINARY_DIR}/${target}_include.cmake)
  endfunction()
  return()
endif()

execute_process(COMMAND ${PROGRAM} --gtest_list_tests WORKING_DIRECTORY ${FOLDER} OUTPUT_VARIABLE listed
                COMMAND_ERROR_IS_FATAL ANY TIMEOUT 60)
# Suites begin a line; their tests are indented.
string(REGEX MATCHALL "(^|\n)[A-Za-z_][A-Za-z0-9_/]*\\." suites "${listed}")
string(REPLACE "," ";" LABELS "${LABELS}")
set(text "")
foreach(suite IN LISTS suites)
  string(REGEX REPLACE "[\n.]" "" suite "${suite}")
  string(APPEND text "add_test([=[${NAME}.${suite}]=] \"${PROGRAM}\" \"--gtest_filter=${suite}.*\")\n"
         "set_tests_properties([=[${NAME}.${suite}]=] PROPERTIES LABELS \"${LABELS}\" COST ${COST} TIMEOUT 300 FAIL_REGULAR_EXPRESSION \"SKIPPED\" WORKING_DIRECTORY "
         "\"${FOLDER}\")\n")
endforeach()
file(WRITE ${LIST} "${text}")
