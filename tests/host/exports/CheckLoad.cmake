# Runs a probe on the library, which must exit with 0 and write nothing:
#   cmake -DPROBE=<loadprobe or unloadprobe> -DLIBRARY=<libdotweave.so> -P CheckLoad.cmake
cmake_minimum_required(VERSION 3.25)

execute_process(
    COMMAND ${PROBE} ${LIBRARY}
    RESULT_VARIABLE result
    OUTPUT_VARIABLE output
    ERROR_VARIABLE errors)
set(verdicts
    "" "ended without a code of its own" "was called without a library" "cannot load the library"
    "found another number of threads" "found another number of open files"
    "found another folder or other signal handlers" "does not find the sample" "cannot unload the library"
    "found something left behind" "cannot build a mask")
if(NOT result EQUAL 0)
    if(result MATCHES "^([1-9]|10)$")
        list(GET verdicts ${result} result)
    endif()
    message(FATAL_ERROR "Loading the library: the probe ${result}\n${output}${errors}")
endif()
if(NOT "${output}${errors}" STREQUAL "")
    message(FATAL_ERROR "Loading the library wrote to the console:\n${output}${errors}")
endif()
