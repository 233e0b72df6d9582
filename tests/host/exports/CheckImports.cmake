# Fails when the library calls an operation that must not be called inside a host's process: one that ends the
# process, writes to its console, starts processes or threads, or takes its signals. The checked forms of the C
# library, such as __printf_chk, count as the plain ones.
#   cmake -DNM=<nm> -DOBJDUMP=<objdump> -DLIBRARY=<libdotweave.so> -P CheckImports.cmake
# Allowed: fopen, fprintf and fclose, which the cut table dump calls on a file of its own; __assert_fail, from the
# headers of Boost in builds with assertions; std::terminate and what a compiler calls instead, which is where an
# exception out of a noexcept operation ends in any C++. abort is allowed to one caller: a list compares its allocators
# before it moves a node, and aborts where they differ. Those of the library have no state and never differ; only code
# that is not optimised keeps the call.
cmake_minimum_required(VERSION 3.25)

set(forbidden
    "_?_?exit|_Exit|quick_exit|abort|raise|kill|v?printf|puts|putchar|perror|write|std(in|out|err)"
    "std::(cin|cout|cerr|clog|wcout|wcerr|wclog)|std::(exit|abort|quick_exit)|std::thread::.*|std::ios_base::Init::.*"
    "system|popen|v?fork|exec[vl]p?e?|posix_spawnp?|pthread_create|signal|sigaction|atexit|setlocale|chdir|setenv|putenv")
list(JOIN forbidden "|" forbidden)
include(${CMAKE_CURRENT_LIST_DIR}/ReadSymbols.cmake)
symbols_read(lines undefined-only)
list(TRANSFORM lines REPLACE "(@[A-Za-z0-9_.]+)? [A-Za-z]( .*)?$" "")
if(NOT "memcpy" IN_LIST lines)
    message(FATAL_ERROR "This is no list of what a library calls:\n${lines}")
endif()
list(FILTER lines INCLUDE REGEX "^(__)?(${forbidden})(_chk)?([(].*)?$")
if("abort" IN_LIST lines)
    execute_process(
        COMMAND ${OBJDUMP} --disassemble --demangle --no-show-raw-insn ${LIBRARY}
        OUTPUT_VARIABLE code
        COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX MATCHALL "\n[0-9a-f]+ <[^\n]*>:|<abort@plt>\n" marks "${code}") # operations, and calls inside them
    set(callers "")
    foreach(mark IN LISTS marks)
        if(mark MATCHES ":$")
            set(operation "${mark}")
        else()
            list(APPEND callers "${operation}")
        endif()
    endforeach()
    set(others ${callers})
    list(FILTER others EXCLUDE REGEX "::_M_check_equal_allocators[(]")
    if(callers AND NOT others)
        list(REMOVE_ITEM lines abort)
    endif()
endif()
if(lines)
    list(JOIN lines "\n  " text)
    message(FATAL_ERROR "The library calls what it must not:\n  ${text}")
endif()
