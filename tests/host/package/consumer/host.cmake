# What the host "app" has of its own, put into its project by CMAKE_PROJECT_app_INCLUDE: a standard, targets that a
# subproject must not take, tests that those of a subproject would join, and an install rule.
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
foreach(name IN ITEMS format format-check lint lint-tests docs bench fuzzers exports-update)
    add_custom_target(${name})
endforeach()
enable_testing()
cmake_language(DEFER CALL install TARGETS app)
