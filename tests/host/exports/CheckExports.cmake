# Compares the symbols that the built library exports with exported.txt, one name a line, sorted:
#   cmake -DNM=<nm> -DLIBRARY=<libdotweave.so> -P CheckExports.cmake
# With -DUPDATE=ON it writes the list instead.
cmake_minimum_required(VERSION 3.25)

set(list_file ${CMAKE_CURRENT_LIST_DIR}/exported.txt)
include(${CMAKE_CURRENT_LIST_DIR}/ReadSymbols.cmake)
symbols_read(lines defined-only)
# A name may contain blanks; its type letter, place and size follow it. Compilers differ in the letter.
list(TRANSFORM lines REPLACE " [A-Za-z] [0-9a-f]*( [0-9a-f]*)?$" "")
list(REMOVE_DUPLICATES lines) # constructors and destructors come in several kinds
list(SORT lines)
if(UPDATE)
    list(JOIN lines "\n" text)
    file(WRITE ${list_file} "${text}\n")
    return()
endif()

file(STRINGS ${list_file} expected)
set(added ${lines})
list(REMOVE_ITEM added ${expected})
set(missing ${expected})
list(REMOVE_ITEM missing ${lines})
list(TRANSFORM added PREPEND "\n  + ")
list(TRANSFORM missing PREPEND "\n  - ")
if(added OR missing)
    message(FATAL_ERROR "The library's symbols are not those of ${list_file}:" ${added} ${missing})
endif()
list(LENGTH lines count)
message(STATUS "${count} symbols, as listed")
