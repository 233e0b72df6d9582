# Holds every file named in data/checksums.sha256 against its checksum. Run as a test:
#   cmake -DDATA_DIR=<folder> -P CheckDataChecksums.cmake
# The list has the format of sha256sum, so "sha256sum -c checksums.sha256" in that folder does the same.
cmake_minimum_required(VERSION 3.25)

if(NOT DATA_DIR)
    message(FATAL_ERROR "DATA_DIR names no folder")
endif()
file(STRINGS "${DATA_DIR}/checksums.sha256" lines)
if(NOT lines)
    message(FATAL_ERROR "${DATA_DIR}/checksums.sha256 lists no file")
endif()
foreach(line IN LISTS lines)
    if(NOT line MATCHES "^([0-9a-f]+)  ([^ ]+)$")
        message(FATAL_ERROR "Not a checksum line: ${line}")
    endif()
    set(expected "${CMAKE_MATCH_1}")
    set(name "${CMAKE_MATCH_2}")
    file(SHA256 "${DATA_DIR}/${name}" found)
    if(NOT found STREQUAL expected)
        message(FATAL_ERROR "${name} has checksum ${found}, expected ${expected}")
    endif()
    message(STATUS "${name}: as listed")
endforeach()
