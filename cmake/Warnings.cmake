# The warnings that all of our own code is compiled with, as errors.
add_library(quillon_warnings INTERFACE)
target_compile_options(quillon_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Werror
    -Wshadow -Wconversion -Wsign-conversion -Wdouble-promotion -Wold-style-cast -Wcast-qual -Wcast-align
    -Wnon-virtual-dtor -Woverloaded-virtual -Wnull-dereference -Wformat=2 -Wundef -Wimplicit-fallthrough
    $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wduplicated-branches -Wlogical-op -Wuseless-cast>)
