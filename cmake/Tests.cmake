# Test programs. Every suite is one doctest program and one ctest entry; a hang is a failure.

# label_test(<name> <label>): what kind of test it is, and of which room: tools/mutants.py runs the
# tests of a fault's room (ctest -L room:codec) before all others.
function(label_test name label)
    get_filename_component(room ${CMAKE_CURRENT_SOURCE_DIR} NAME)
    set_tests_properties(${name} PROPERTIES LABELS "${label};room:${room}")
endfunction()

# add_unit_test(<name> SOURCES …): portable code. Runs natively and, cross-compiled, under Wine.
function(add_unit_test name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES" ${ARGN})
    add_executable(${name} ${ARG_SOURCES} ${PROJECT_SOURCE_DIR}/tests/support/unit_main.cpp)
    target_link_libraries(${name} PRIVATE tessera_core ${ARG_LIBRARIES})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests ${PROJECT_SOURCE_DIR})
    target_include_directories(${name} SYSTEM PRIVATE ${TESSERA_DOCTEST_INCLUDE})
    add_test(NAME ${name} COMMAND ${name})
    label_test(${name} unit)
    set_tests_properties(${name} PROPERTIES TIMEOUT 600)
endfunction()

# Windows code. The test programs reach the build's DLLs through their side-by-side manifests,
# without registration; ComFixture fails a test that leaves an object alive. What such a test loads
# says the function that adds it and the first line of its files:
#
# add_automation_test(<name> SOURCES … [LIBRARIES …] [LOCK …]): what a client sees, through the DLL.
#     Nothing of the component is linked, only its interfaces and the automation layer.
#     Tests that name the same LOCK never run at once; `foreground` are those that show windows,
#     which would take the keyboard's focus from each other.
# add_internals_test(<same>): what no client reaches; the component's classes are linked.
function(add_automation_test name)
    add_windows_test(${name} automation ${ARGN})
endfunction()

function(add_internals_test name)
    add_windows_test(${name} internals ${ARGN})
    if(WIN32)
        target_link_libraries(${name} PRIVATE tessera_component)
    endif()
endfunction()

function(add_windows_test name label)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES;LOCK" ${ARGN})
    if(NOT WIN32)
        return()
    endif()
    add_executable(${name} ${ARG_SOURCES} ${PROJECT_SOURCE_DIR}/tests/support/test.rc)
    target_link_libraries(${name} PRIVATE test_support ${ARG_LIBRARIES})
    target_precompile_headers(${name} REUSE_FROM test_support)
    target_include_directories(${name} PRIVATE
        ${CMAKE_RUNTIME_OUTPUT_DIRECTORY} ${PROJECT_BINARY_DIR}/generated)
    add_dependencies(${name} tessera_interfaces_files)
    add_dependencies(${name} Tessera KelosHostKit)
    add_test(NAME ${name} COMMAND ${name})
    label_test(${name} ${label})
    if(ARG_LOCK)
        set_tests_properties(${name} PROPERTIES RESOURCE_LOCK "${ARG_LOCK}")
    endif()
endfunction()
