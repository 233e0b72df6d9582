# Configures all combinations of tools, tests, examples and host libraries, and builds a small part of each. Where the
# tests are built without the tools, every command of the build must be one of the build with everything, which
# compiles them all: so what is left out is missed by nobody.
include(${CMAKE_CURRENT_LIST_DIR}/Scratch.cmake)

file(REMOVE_RECURSE ${SCRATCH_DIR})
foreach(component IN ITEMS BoostLogWrapper KelCommon)
    run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${SCRATCH_DIR}/host --component ${component})
endforeach()

# The commands of a build as a sorted list; links differ in what they order before them, so only compilations count.
function(compilations_read result folder)
    file(READ ${folder}/compile_commands.json text)
    string(REGEX MATCHALL "\"command\": [^\n]*" commands "${text}")
    set(${result} "${commands}" PARENT_SCOPE)
endfunction()

foreach(host IN ITEMS OFF ON)
    set(folder ${SCRATCH_DIR}/host_libraries_${host}) # one folder for all, configured again and again
    foreach(tools IN ITEMS ON OFF)
        foreach(tests IN ITEMS ON OFF)
            foreach(examples IN ITEMS ON OFF)
                configure(
                    ${SOURCE_DIR} ${folder} -DDOTWEAVE_USE_HOST_LIBRARIES=${host} -DDOTWEAVE_BUILD_TOOLS=${tools}
                    -DDOTWEAVE_BUILD_TESTS=${tests} -DDOTWEAVE_BUILD_EXAMPLES=${examples}
                    -DDOTWEAVE_BUILD_BENCHMARKS=OFF -DCMAKE_PREFIX_PATH=${SCRATCH_DIR}/host)
                set(targets thresholdpack)
                if(tools)
                    list(APPEND targets dotweave_matrixgen_core)
                endif()
                if(tests)
                    list(APPEND targets dotweave_test_support)
                endif()
                build(${folder} ${targets})
                compilations_read(commands ${folder})
                if(tools AND tests AND examples)
                    set(everything "${commands}")
                endif()
                list(REMOVE_ITEM commands ${everything})
                if(commands)
                    message(FATAL_ERROR "tools ${tools}, tests ${tests}, examples ${examples}, host libraries ${host} "
                                        "compiles what the build with everything does not: ${commands}")
                endif()
            endforeach()
        endforeach()
    endforeach()
endforeach()
