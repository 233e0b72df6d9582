# Reads one kind of a library's dynamic symbols, demangled, a line each: symbols_read(<result> <kind as nm calls it>).
# Needs NM and LIBRARY.
function(symbols_read result kind)
    execute_process(
        COMMAND ${NM} --dynamic --${kind} --demangle --format=posix ${LIBRARY}
        OUTPUT_VARIABLE output
        COMMAND_ERROR_IS_FATAL ANY)
    string(STRIP "${output}" output)
    string(REPLACE "\n" ";" lines "${output}")
    set(${result} "${lines}" PARENT_SCOPE)
endfunction()
