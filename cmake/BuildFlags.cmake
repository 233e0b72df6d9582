# Warnings, hardening, sanitizers and coverage, carried by one target that all our own code links privately.

include(CheckCXXCompilerFlag)

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

if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang" AND NOT DOTWEAVE_COVERAGE)
    # What ships is the same bytes whatever folder the tree and the build are in. Elsewhere names of files stay as they
    # are, so that debuggers and coverage reports find the sources.
    # The build's folder last, as the last one that matches counts and it may be inside the tree.
    set(shown_folders -ffile-prefix-map=${PROJECT_SOURCE_DIR}=dotweave -ffile-prefix-map=${PROJECT_BINARY_DIR}=build)
    target_compile_options(dotweave_build_flags
                           INTERFACE "$<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:${shown_folders}>")
endif()

# Hardening, in every build that no sanitizer watches: sanitizers bring checks of their own in the same places.
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang" AND NOT DOTWEAVE_SANITIZERS)
    target_compile_options(dotweave_build_flags INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-fstack-protector-strong>)
    # The C library checks its buffers only in optimised code, and warns elsewhere.
    string(TOUPPER "${CMAKE_BUILD_TYPE}" build_type)
    if("${CMAKE_CXX_FLAGS} ${CMAKE_CXX_FLAGS_${build_type}}" MATCHES "-O[1-3s]")
        set(optimised $<NOT:$<BOOL:$<TARGET_PROPERTY:DOTWEAVE_UNOPTIMISED>>>)
        target_compile_options(
            dotweave_build_flags
            INTERFACE "$<$<AND:$<COMPILE_LANGUAGE:CXX>,${optimised}>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
    endif()
    check_cxx_compiler_flag(-fcf-protection DOTWEAVE_HAS_CF_PROTECTION)
    if(DOTWEAVE_HAS_CF_PROTECTION)
        target_compile_options(dotweave_build_flags INTERFACE -fcf-protection) # assembler files too
    endif()
    if(UNIX AND NOT APPLE)
        target_link_options(dotweave_build_flags INTERFACE LINKER:-z,relro LINKER:-z,now)
    endif()
endif()

if(DOTWEAVE_SANITIZERS)
    set(sanitizer_flags -fsanitize=${DOTWEAVE_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_compile_options(dotweave_build_flags INTERFACE $<$<COMPILE_LANGUAGE:CXX>:${sanitizer_flags}>)
    # What is tested is watched for undefined behaviour, not what tests it: that would take a quarter of the build.
    set(unwatched "$<AND:$<COMPILE_LANGUAGE:CXX>,$<BOOL:$<TARGET_PROPERTY:DOTWEAVE_UNOPTIMISED>>>")
    target_compile_options(dotweave_build_flags INTERFACE $<${unwatched}:-fno-sanitize=undefined>)
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

# Applies what every library, tool and test of this tree shares. In a folder that sets DOTWEAVE_UNOPTIMISED the code is
# not optimised, whatever the build type says.
function(dotweave_apply_flags target)
    if(DOTWEAVE_UNOPTIMISED)
        target_compile_options(${target} PRIVATE -O0)
        set_target_properties(${target} PROPERTIES DOTWEAVE_UNOPTIMISED ON)
    endif()
    target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:dotweave_build_flags>)
    target_compile_features(${target} PRIVATE cxx_std_20)
    set_target_properties(${target} PROPERTIES CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
endfunction()

# Lets a library show only what a version script lists, whatever the headers that it includes instantiate.
function(dotweave_export_only target version_script)
    if(UNIX AND NOT APPLE)
        target_link_options(${target} PRIVATE LINKER:--version-script=${CMAKE_CURRENT_SOURCE_DIR}/${version_script})
        set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${version_script})
    endif()
endfunction()
