# Holds the program in the README against examples/first_mask.cpp, which is built and run by another test.
# cmake -DREADME=... -DPROGRAM=... -P CheckReadme.cmake
file(READ ${README} readme)
file(READ ${PROGRAM} program)
string(FIND "${readme}" "```cpp\n${program}```" place)
if(place EQUAL -1)
    message(FATAL_ERROR "The README does not show ${PROGRAM} as it is")
endif()
