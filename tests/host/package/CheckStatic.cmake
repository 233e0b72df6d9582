# Builds the library as an archive, installs it, and builds and runs hosts against it.
include(${CMAKE_CURRENT_LIST_DIR}/Scratch.cmake)

file(REMOVE_RECURSE ${SCRATCH_DIR})
configure(${SOURCE_DIR} ${SCRATCH_DIR}/build ${tools_off} -DBUILD_SHARED_LIBS=OFF)
build(${SCRATCH_DIR}/build)
run(${CMAKE_COMMAND} --install ${SCRATCH_DIR}/build --prefix ${SCRATCH_DIR}/prefix)
file(GLOB_RECURSE archives ${SCRATCH_DIR}/prefix/*dotweave.a)
file(GLOB_RECURSE shared ${SCRATCH_DIR}/prefix/*dotweave.so*)
if(NOT archives OR shared)
    message(FATAL_ERROR "installed: '${archives}' '${shared}', expected one archive and no shared library")
endif()
consumers_check(${SCRATCH_DIR} "${SCRATCH_DIR}/prefix")
