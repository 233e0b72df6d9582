# Installs the build into a scratch prefix, builds the examples against it as a host would, and runs one.
# cmake -DBUILD_DIR=... -DEXAMPLES_DIR=... -DSCRATCH_DIR=... -DGENERATOR=... -DCOMPILER=... -DFLAGS=... -P this

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "${ARGN}: ${status}\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${SCRATCH_DIR})
run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${SCRATCH_DIR}/prefix)
run(${CMAKE_COMMAND} -G ${GENERATOR} -S ${EXAMPLES_DIR} -B ${SCRATCH_DIR}/build
    -DCMAKE_PREFIX_PATH=${SCRATCH_DIR}/prefix -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_CXX_FLAGS=${FLAGS})
run(${CMAKE_COMMAND} --build ${SCRATCH_DIR}/build)
run(${SCRATCH_DIR}/build/first_mask)
if(NOT output MATCHES "^position 0: 544 lines of 68 bytes, the first is [0-9]+\n$")
    message(FATAL_ERROR "unexpected output: ${output}")
endif()
