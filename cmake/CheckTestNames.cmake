# Checks the names that ctest shows. A parametrised case whose type has no operator<< shows its bytes, which differ
# from run to run. A name says "Suite.Name"; parametrised tests have their set of cases before it and the case after it.
# Arguments: BUILD_DIR, MOST_CHARACTERS

execute_process(
    COMMAND ${CMAKE_CTEST_COMMAND} --test-dir ${BUILD_DIR} -N
    OUTPUT_VARIABLE listing
    COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "Test +#[0-9]+: [^\n]+" lines "${listing}")
if(NOT lines)
    message(FATAL_ERROR "ctest lists no test in ${BUILD_DIR}")
endif()
foreach(line IN LISTS lines)
    string(REGEX REPLACE "^Test +#[0-9]+: " "" name "${line}")
    if(name MATCHES "byte object|<[0-9A-F][0-9A-F][- ]|0x[0-9a-f]")
        message(SEND_ERROR "shows bytes: ${name}")
    endif()
    string(REGEX REPLACE "^[A-Za-z0-9]+/|/[A-Za-z0-9_]+$|<.*>$" "" test "${name}")
    string(LENGTH "${test}" length)
    if(length GREATER MOST_CHARACTERS)
        message(SEND_ERROR "${length} characters, more than ${MOST_CHARACTERS}: ${name}")
    endif()
endforeach()
