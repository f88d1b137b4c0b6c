# docs/which-call.md shows these programs, in this order, and what they print.
set(examples components forms check build change links relative key uri query address lookup machine
    failures)
list(TRANSFORM examples REPLACE "(.+)" "${PROJECT_SOURCE_DIR}/examples/\\1.cpp"
    OUTPUT_VARIABLE sources)
set(page "${PROJECT_SOURCE_DIR}/docs/which-call.md")

add_test(NAME structure.which-call-code
    COMMAND ${python} "${readme}" code "${page}" ${sources})
foreach(example IN LISTS examples)
    # What these print is up to the machine; structure.which-call-network gives them one.
    if(NOT example MATCHES "^(lookup|machine)$")
        zkflnetwork_runnable(program example_${example})
        add_test(NAME structure.which-call-output.${example}
            COMMAND ${python} "${readme}" output "${page}"
                    ${program} build/dev/examples/${example})
    endif()
endforeach()
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    zkflnetwork_runnable(lookup example_lookup)
    zkflnetwork_runnable(machine example_machine)
    add_test(NAME structure.which-call-network
        COMMAND ${python} "${CMAKE_CURRENT_SOURCE_DIR}/which_call_network.py" "${page}"
                ${lookup} ${machine})
    set_tests_properties(structure.which-call-network PROPERTIES
        ENVIRONMENT "PYTHONPATH=${CMAKE_CURRENT_SOURCE_DIR}/../platform/linux"
        LABELS namespace SKIP_RETURN_CODE 77 TIMEOUT 120)
endif()
