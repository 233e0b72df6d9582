# Builds the libraries twice, from two folders into two folders, and compares what is installed byte for byte. Then
# reads from these files what protects the process that loads them.
include(${CMAKE_CURRENT_LIST_DIR}/Scratch.cmake)

file(REMOVE_RECURSE ${SCRATCH_DIR})
foreach(folder IN ITEMS one another/deeper)
    set(tree ${SCRATCH_DIR}/${folder}/tree)
    file(COPY ${SOURCE_DIR}/CMakeLists.txt ${SOURCE_DIR}/cmake ${SOURCE_DIR}/data ${SOURCE_DIR}/include
              ${SOURCE_DIR}/platform ${SOURCE_DIR}/src DESTINATION ${tree})
    file(COPY ${SOURCE_DIR}/tools/thresholdpack DESTINATION ${tree}/tools)
    # Optimised and with the names of lines and files, which is where folders would show.
    configure(${tree} ${SCRATCH_DIR}/${folder}/build ${tools_off} -DCMAKE_BUILD_TYPE=RelWithDebInfo
              "-DCMAKE_CXX_FLAGS_RELWITHDEBINFO=-O1 -g1 -DNDEBUG")
    build(${SCRATCH_DIR}/${folder}/build)
    run(${CMAKE_COMMAND} --install ${SCRATCH_DIR}/${folder}/build --prefix ${SCRATCH_DIR}/${folder}/prefix)
endforeach()

set(first ${SCRATCH_DIR}/one/prefix)
file(GLOB_RECURSE libraries RELATIVE ${first} ${first}/*.so.*.*.*)
list(LENGTH libraries count)
if(NOT count EQUAL 3)
    message(FATAL_ERROR "Installed are ${libraries}, not three libraries")
endif()
foreach(library IN LISTS libraries)
    file(SHA256 ${first}/${library} one)
    file(SHA256 ${SCRATCH_DIR}/another/deeper/prefix/${library} another)
    if(NOT one STREQUAL another)
        message(FATAL_ERROR "${library} is another one when it is built in another folder; both are in ${SCRATCH_DIR}")
    endif()
    set(symbols __stack_chk_fail)
    if(library MATCHES "dotweave")
        set(symbols "__stack_chk_fail,__fprintf_chk") # the cut table dump prints
    endif()
    run(${CMAKE_COMMAND} -DNM=${NM} -DREADELF=${READELF} -DOBJDUMP=${OBJDUMP} -DLIBRARY=${first}/${library}
        -DSYMBOLS=${symbols} -DENTRY=${ENTRY} -P ${SOURCE_DIR}/tests/host/exports/CheckHardening.cmake)
endforeach()
