# What is built, and how. Inside another project it is the library alone, by that project's own flags.
include(CMakeDependentOption)

option(QUILLON_BUILD_TOOL "Build the program" ${PROJECT_IS_TOP_LEVEL})
option(QUILLON_BUILD_TESTS "Build the tests" ${PROJECT_IS_TOP_LEVEL})
option(QUILLON_BUILD_BENCH "Build the benchmarks" ${PROJECT_IS_TOP_LEVEL})
option(QUILLON_INSTALL "Add the install rules" ${PROJECT_IS_TOP_LEVEL})
option(QUILLON_SANITIZE "Check addresses, leaks and undefined behaviour at run time" OFF)
option(QUILLON_COVERAGE "Count which lines are run" OFF)

set(static_by_default OFF)
if(CMAKE_SYSTEM_NAME STREQUAL "Linux" AND CMAKE_BUILD_TYPE STREQUAL "Release")
    set(static_by_default ON)
endif()
cmake_dependent_option(QUILLON_STATIC_TOOL "Link the program statically, so that it starts at once"
    ${static_by_default} "NOT QUILLON_SANITIZE;NOT QUILLON_COVERAGE" OFF)

if(PROJECT_IS_TOP_LEVEL)
    set(CMAKE_CXX_STANDARD 20)
    set(CMAKE_CXX_STANDARD_REQUIRED ON)
    set(CMAKE_CXX_EXTENSIONS OFF)
    set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
    add_compile_definitions($<$<CONFIG:Debug>:_GLIBCXX_ASSERTIONS>)
    add_compile_options($<$<CONFIG:Release>:-ffunction-sections> $<$<CONFIG:Release>:-fdata-sections>)
    add_link_options($<$<CONFIG:Release>:-Wl,--gc-sections>)
endif()

# Kept in a list, so that the test of the installed package can hand them on.
set(QUILLON_CHECK_FLAGS "")
if(QUILLON_SANITIZE)
    list(APPEND QUILLON_CHECK_FLAGS -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
endif()
if(QUILLON_COVERAGE)
    list(APPEND QUILLON_CHECK_FLAGS --coverage)
    add_compile_definitions(QUILLON_COVERAGE)
endif()
add_compile_options(${QUILLON_CHECK_FLAGS})
add_link_options(${QUILLON_CHECK_FLAGS})
