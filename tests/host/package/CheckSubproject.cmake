# Builds a host in C++17 with the library as a subproject, as docs/host.md shows it, runs it and installs it: the library
# adds no tests, no install rules, and none of its daily targets.
include(${CMAKE_CURRENT_LIST_DIR}/Scratch.cmake)

file(REMOVE_RECURSE ${SCRATCH_DIR})
host_write(${SCRATCH_DIR}/host "FetchContent")
file(CREATE_LINK ${SOURCE_DIR} ${SCRATCH_DIR}/host/dotweave SYMBOLIC)
configure(${SCRATCH_DIR}/host ${SCRATCH_DIR}/build ${host_options})
build(${SCRATCH_DIR}/build)
expect_output(${SCRATCH_DIR}/build/app "^same bytes: 1, same version: 1\n$")
expect_output(${CMAKE_CTEST_COMMAND} "Total Tests: 0" --test-dir ${SCRATCH_DIR}/build --show-only)
run(${CMAKE_COMMAND} --install ${SCRATCH_DIR}/build --prefix ${SCRATCH_DIR}/prefix)
file(GLOB_RECURSE files RELATIVE ${SCRATCH_DIR}/prefix ${SCRATCH_DIR}/prefix/*)
if(NOT files MATCHES "^bin/app[^;]*$")
    message(FATAL_ERROR "The subproject installed files of its own: ${files}")
endif()
