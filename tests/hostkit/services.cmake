# Tests of the host kit's services, script engine and controls.
add_com_test(hostkit_services_test LABEL com SOURCES services_test.cpp)
add_com_test(hostkit_script_engine_test LABEL com SOURCES script_engine_test.cpp)
add_com_test(hostkit_controls_test LABEL com SOURCES controls_test.cpp LIBRARIES comctl32)
