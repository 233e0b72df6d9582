# What the scripts of this folder share. Every one works in SCRATCH_DIR and takes GENERATOR, COMPILER and FLAGS.
cmake_minimum_required(VERSION 3.25)

cmake_path(SET SOURCE_DIR NORMALIZE ${CMAKE_CURRENT_LIST_DIR}/../../..)
string(REGEX REPLACE "/$" "" SOURCE_DIR ${SOURCE_DIR})
include(${SOURCE_DIR}/cmake/PageBlocks.cmake)
set(tools_off -DDOTWEAVE_BUILD_TOOLS=OFF -DDOTWEAVE_BUILD_TESTS=OFF -DDOTWEAVE_BUILD_EXAMPLES=OFF
              -DDOTWEAVE_BUILD_BENCHMARKS=OFF)

# Runs a command; its console goes to ${output}.
function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT status EQUAL 0)
        list(JOIN ARGN " " command)
        message(FATAL_ERROR "${command}: ${status}\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

# configure(<source folder> <build folder> options...)
function(configure source build)
    run(${CMAKE_COMMAND} -G ${GENERATOR} -S ${source} -B ${build} -DCMAKE_CXX_COMPILER=${COMPILER}
        "-DCMAKE_CXX_FLAGS=${FLAGS}" ${ARGN})
    set(output "${output}" PARENT_SCOPE)
endfunction()

# build(<build folder> targets...)
function(build folder)
    set(targets "")
    if(ARGN)
        set(targets --target ${ARGN})
    endif()
    run(${CMAKE_COMMAND} --build ${folder} --parallel 1 ${targets})
endfunction()

# Runs a program, whose console must match a regular expression.
function(expect_output program expression)
    run(${program} ${ARGN})
    if(NOT output MATCHES "${expression}")
        message(FATAL_ERROR "${program}: unexpected output: ${output}")
    endif()
endfunction()

# Makes ${folder} the project that docs/host.md shows in its CMake block with the given word; its program is in C++17.
function(host_write folder word)
    page_blocks_write(blocks ${SOURCE_DIR}/docs/host.md ${folder}/page)
    foreach(block IN LISTS blocks)
        if(block MATCHES "[.]cmake$")
            file(READ ${folder}/page/${block} text)
            if(text MATCHES ${word})
                file(WRITE ${folder}/CMakeLists.txt "${text}")
            endif()
        endif()
    endforeach()
    configure_file(${CMAKE_CURRENT_FUNCTION_LIST_DIR}/consumer/consumer.cpp ${folder}/app.cpp COPYONLY)
endfunction()
set(host_options -DCMAKE_PROJECT_app_INCLUDE=${CMAKE_CURRENT_LIST_DIR}/consumer/host.cmake)

# Builds and runs a host and the examples on the packages in the given prefixes.
function(consumers_check folder prefixes)
    cmake_path(CONVERT "${prefixes}" TO_NATIVE_PATH_LIST path)
    set(ENV{CMAKE_PREFIX_PATH} "${path}")
    configure(${SOURCE_DIR}/examples ${folder}/examples)
    build(${folder}/examples)
    expect_output(${folder}/examples/first_mask "^position 0: 544 lines of 68 bytes, the first is [0-9]+\n$")
    host_write(${folder}/host "find_package")
    configure(${folder}/host ${folder}/host/build ${host_options})
    build(${folder}/host/build)
    expect_output(${folder}/host/build/app "^same bytes: 1, same version: 1\n$")
endfunction()
