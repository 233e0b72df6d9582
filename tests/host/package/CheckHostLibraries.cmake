# Builds the library on KelCommon and BoostLogWrapper that a host has installed in a prefix of its own, which is taken
# from BUILD_DIR; installs it into another prefix, and builds and runs hosts against the two. The library is built
# without optimisation, where it calls what is inlined elsewhere: it still calls nothing that ends the process.
include(${CMAKE_CURRENT_LIST_DIR}/Scratch.cmake)

file(REMOVE_RECURSE ${SCRATCH_DIR})
foreach(component IN ITEMS BoostLogWrapper KelCommon)
    run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${SCRATCH_DIR}/host --component ${component})
endforeach()
configure(${SOURCE_DIR} ${SCRATCH_DIR}/build ${tools_off} -DDOTWEAVE_USE_HOST_LIBRARIES=ON
          -DCMAKE_PREFIX_PATH=${SCRATCH_DIR}/host)
build(${SCRATCH_DIR}/build)
run(${CMAKE_COMMAND} --install ${SCRATCH_DIR}/build --prefix ${SCRATCH_DIR}/prefix)
file(GLOB_RECURSE others ${SCRATCH_DIR}/prefix/*kelcommon* ${SCRATCH_DIR}/prefix/*boostlogwrapper*)
if(others)
    message(FATAL_ERROR "The library installed what belongs to the host: ${others}")
endif()
consumers_check(${SCRATCH_DIR} "${SCRATCH_DIR}/prefix;${SCRATCH_DIR}/host")

file(GLOB_RECURSE library ${SCRATCH_DIR}/prefix/*dotweave.so)
if(NM AND library)
    run(${CMAKE_COMMAND} -DNM=${NM} -DOBJDUMP=${OBJDUMP} -DLIBRARY=${library} -P
        ${SOURCE_DIR}/tests/host/exports/CheckImports.cmake)
endif()
