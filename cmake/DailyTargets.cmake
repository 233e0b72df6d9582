# Daily commands as targets of a top-level build: format, format-check, lint, docs.

file(
    GLOB_RECURSE
    dotweave_own_sources
    CONFIGURE_DEPENDS
    RELATIVE ${PROJECT_SOURCE_DIR}
    benchmarks/*.cpp
    benchmarks/*.h
    examples/*.cpp
    include/*.h
    instrument/*.cpp
    instrument/*.h
    platform/*.cpp
    platform/*.h
    src/*.cpp
    src/*.h
    tests/*.cpp
    tests/*.h
    tools/*.cpp
    tools/*.h)

find_program(CLANG_FORMAT_PROGRAM NAMES clang-format-14 clang-format)
if(CLANG_FORMAT_PROGRAM)
    add_custom_target(
        format
        COMMAND ${CLANG_FORMAT_PROGRAM} -i ${dotweave_own_sources}
        WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
        COMMENT "Formatting all sources"
        VERBATIM)
    add_custom_target(
        format-check
        COMMAND ${CLANG_FORMAT_PROGRAM} --dry-run --Werror ${dotweave_own_sources}
        WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
        COMMENT "Checking the format of all sources"
        VERBATIM)
endif()

find_program(RUN_CLANG_TIDY_PROGRAM NAMES run-clang-tidy-14 run-clang-tidy)
if(RUN_CLANG_TIDY_PROGRAM)
    add_custom_target(
        lint
        COMMAND ${RUN_CLANG_TIDY_PROGRAM} -quiet -p ${PROJECT_BINARY_DIR}
                "${PROJECT_SOURCE_DIR}/(benchmarks|examples|instrument|platform|src|tools)/.*[.]cpp$"
        WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
        COMMENT "Checking library, host libraries and tools with clang-tidy"
        VERBATIM)
    # A target of its own: the test framework's macros make it take as long as everything else together.
    add_custom_target(
        lint-tests
        COMMAND ${RUN_CLANG_TIDY_PROGRAM} -quiet -p ${PROJECT_BINARY_DIR} "${PROJECT_SOURCE_DIR}/tests/.*[.]cpp$"
        WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
        COMMENT "Checking tests with clang-tidy"
        VERBATIM)
endif()

find_package(Doxygen QUIET)
if(DOXYGEN_FOUND)
    set(DOXYGEN_PROJECT_NAME Dotweave)
    set(DOXYGEN_PROJECT_BRIEF "${PROJECT_DESCRIPTION}")
    set(DOXYGEN_STRIP_FROM_PATH ${PROJECT_SOURCE_DIR}/include)
    set(DOXYGEN_USE_MDFILE_AS_MAINPAGE ${PROJECT_SOURCE_DIR}/README.md)
    set(DOXYGEN_GENERATE_LATEX NO)
    set(DOXYGEN_EXTRACT_ALL NO)
    set(DOXYGEN_QUIET YES)
    set(DOXYGEN_MACRO_EXPANSION YES)
    set(DOXYGEN_EXPAND_ONLY_PREDEF YES)
    set(DOXYGEN_PREDEFINED DOTWEAVE_API=)
    doxygen_add_docs(docs ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/docs
                     ${PROJECT_SOURCE_DIR}/include COMMENT "Writing the reference to html/")
endif()
