# Runs all timings. Needs PROGRAM, OUT, COMPILER and FLAGS.
# Medians over repetitions in random order, so that a burst of noise affects every benchmark alike. Real-time
# priority keeps other programs off the processors, where the user may ask for it.

set(prefix "")
set(priority "normal")
find_program(CHRT_PROGRAM chrt)
if(CHRT_PROGRAM)
    execute_process(
        COMMAND ${CHRT_PROGRAM} -r 50 ${CMAKE_COMMAND} -E true
        RESULT_VARIABLE refused
        OUTPUT_QUIET ERROR_QUIET)
    if(NOT refused)
        set(prefix ${CHRT_PROGRAM} -r 50)
        set(priority "real-time (chrt -r 50)")
    endif()
endif()

cmake_host_system_information(RESULT processor QUERY PROCESSOR_DESCRIPTION)
# A comma or an equals sign would end the entry.
set(context "")
foreach(key IN ITEMS processor COMPILER FLAGS priority)
    string(REGEX REPLACE "[,=]" " " value "${${key}}")
    string(STRIP "${value}" value)
    string(TOLOWER "${key}" name)
    list(APPEND context "${name}=${value}")
endforeach()
list(JOIN context "," context)

execute_process(
    COMMAND
        ${prefix} ${PROGRAM} --benchmark_format=console --benchmark_out=${OUT} --benchmark_out_format=json
        --benchmark_repetitions=11 --benchmark_min_time=0.1 --benchmark_report_aggregates_only=true
        --benchmark_enable_random_interleaving=true --benchmark_context=${context}
    COMMAND_ERROR_IS_FATAL ANY)
