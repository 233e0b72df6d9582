# Checks that a library exports members and tables of the named classes and nothing else:
#   cmake -DNM=<nm> -DLIBRARY=<library> -DCLASSES=<names, comma separated> -P CheckClasses.cmake
cmake_minimum_required(VERSION 3.25)

include(${CMAKE_CURRENT_LIST_DIR}/ReadSymbols.cmake)
symbols_read(lines defined-only)
string(REPLACE "," ";" classes "${CLASSES}")
foreach(class IN LISTS classes)
    set(own ${lines})
    list(FILTER own INCLUDE REGEX "^((vtable|typeinfo|typeinfo name) for )?${class}(::| )")
    if(NOT own)
        message(FATAL_ERROR "${LIBRARY} exports nothing of ${class}")
    endif()
    list(REMOVE_ITEM lines ${own})
endforeach()
if(lines)
    list(JOIN lines "\n  " text)
    message(FATAL_ERROR "${LIBRARY} exports more than ${CLASSES}:\n  ${text}")
endif()
