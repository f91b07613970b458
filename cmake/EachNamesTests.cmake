# Fails for each of PATTERNS that names no test of PROGRAM: what was renamed would silently not be run any more.
#   cmake -DPROGRAM=FILE "-DPATTERNS=A.*;B.*" -P EachNamesTests.cmake
foreach(pattern ${PATTERNS})
    execute_process(COMMAND ${PROGRAM} --gtest_list_tests --gtest_filter=${pattern} OUTPUT_VARIABLE names
        COMMAND_ERROR_IS_FATAL ANY)
    if(NOT names MATCHES "\n  ")
        message(SEND_ERROR "${pattern} names no test of ${PROGRAM}")
    endif()
endforeach()
