# Installs BUILD_DIR into a prefix, and builds and runs hosts against it: the examples, a project, and a program by the
# command that docs/host.md shows.
include(${CMAKE_CURRENT_LIST_DIR}/Scratch.cmake)

file(REMOVE_RECURSE ${SCRATCH_DIR})
run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${SCRATCH_DIR}/prefix)
consumers_check(${SCRATCH_DIR} "${SCRATCH_DIR}/prefix")

# The installed command finds its presets, and its pages are where their readers look.
if(EXISTS ${SCRATCH_DIR}/prefix/bin/dotweave)
    expect_output(${SCRATCH_DIR}/prefix/bin/dotweave "(^|\n)production +4 passes" presets)
    foreach(file IN ITEMS share/man/man1/dotweave.1 share/bash-completion/completions/dotweave
                          share/dotweave/presets/production.json share/dotweave/schemas/mask.schema.json)
        if(NOT EXISTS ${SCRATCH_DIR}/prefix/${file})
            message(FATAL_ERROR "${file} is not installed")
        endif()
    endforeach()
endif()

page_blocks_write(blocks ${SOURCE_DIR}/docs/host.md ${SCRATCH_DIR}/plain)
set(commands ${blocks})
list(FILTER commands INCLUDE REGEX "[.]sh$")
list(LENGTH commands count)
if(NOT count EQUAL 1)
    message(FATAL_ERROR "docs/host.md has ${count} commands for the shell, not one")
endif()
file(READ ${SCRATCH_DIR}/plain/${commands} command)
string(REPLACE "<where>" "${SCRATCH_DIR}/prefix" command "${command}")
string(REGEX REPLACE "^g[+][+] " "${COMPILER} ${FLAGS} " command "${command}")
string(REGEX MATCH "^[0-9]+" number ${commands})
math(EXPR number "${number} - 1") # the program before the command
file(RENAME ${SCRATCH_DIR}/plain/${number}.cpp ${SCRATCH_DIR}/plain/app.cpp)
file(WRITE ${SCRATCH_DIR}/plain/build.sh "set -e\ncd ${SCRATCH_DIR}/plain\n${command}./app\n")
run(sh ${SCRATCH_DIR}/plain/build.sh)
if(NOT output MATCHES "Create[(]const struct SMaskParam &[)], maskdata_base:[0-9]+, severity 2: failure\n")
    message(FATAL_ERROR "The log sink shows something else: ${output}")
endif()
