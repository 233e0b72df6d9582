# Fails unless the README shows examples/first_mask.cpp as it is; another test builds and runs that program.
# cmake -DREADME=... -DPROGRAM=... -P CheckReadme.cmake
file(READ ${README} readme)
file(READ ${PROGRAM} program)
string(FIND "${readme}" "```cpp\n${program}```" place)
if(place EQUAL -1)
    message(FATAL_ERROR "The README does not show ${PROGRAM} as it is")
endif()
