# Warnings, sanitizers and coverage, carried by one target that all our own code links privately.

add_library(dotweave_build_flags INTERFACE)

if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    target_compile_options(
        dotweave_build_flags INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-Wall -Wextra -Wpedantic -Wconversion -Wshadow>)
    # Bytes must not depend on whether a processor fuses a product into a sum.
    target_compile_options(dotweave_build_flags INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-ffp-contract=off>)
    if(DOTWEAVE_WARNINGS_AS_ERRORS)
        target_compile_options(dotweave_build_flags INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-Werror>)
    endif()
endif()

if(DOTWEAVE_SANITIZERS)
    set(sanitizer_flags -fsanitize=${DOTWEAVE_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_compile_options(dotweave_build_flags INTERFACE $<$<COMPILE_LANGUAGE:CXX>:${sanitizer_flags}>)
    target_link_options(dotweave_build_flags INTERFACE ${sanitizer_flags})
endif()

if(DOTWEAVE_BUILD_FUZZERS)
    if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        message(FATAL_ERROR "DOTWEAVE_BUILD_FUZZERS needs clang, not ${CMAKE_CXX_COMPILER_ID}: its fuzzing engine "
                            "comes with the compiler. The preset fuzz chooses it.")
    endif()
    if(NOT DOTWEAVE_SANITIZERS MATCHES "address")
        message(FATAL_ERROR "DOTWEAVE_BUILD_FUZZERS needs the address sanitizer in DOTWEAVE_SANITIZERS, "
                            "whose runtime counts what the inputs reach")
    endif()
    # Counts which branches an input takes, in all our own code; the fuzzers alone get the engine.
    set(counting_flags -fsanitize=fuzzer-no-link
                       -fsanitize-coverage-ignorelist=${PROJECT_SOURCE_DIR}/tests/fuzz/uncounted.txt)
    target_compile_options(dotweave_build_flags INTERFACE $<$<COMPILE_LANGUAGE:CXX>:${counting_flags}>)
    target_link_options(dotweave_build_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

if(DOTWEAVE_COVERAGE)
    # Atomic counters: the generator's seven threads count at once.
    target_compile_options(
        dotweave_build_flags INTERFACE $<$<COMPILE_LANGUAGE:CXX>:--coverage -fprofile-update=atomic>)
    target_link_options(dotweave_build_flags INTERFACE --coverage)
endif()

# Applies what every library, tool and test of this tree shares.
function(dotweave_apply_flags target)
    target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:dotweave_build_flags>)
    target_compile_features(${target} PRIVATE cxx_std_20)
    set_target_properties(${target} PROPERTIES CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
endfunction()
