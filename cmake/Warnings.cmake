# The warnings that all of our own code is compiled with. They are errors, but not for those who build the library
# inside a project of theirs, perhaps with a compiler that knows more warnings than ours.
add_library(quillon_warnings INTERFACE)
target_compile_options(quillon_warnings INTERFACE
    -Wall -Wextra -Wpedantic $<$<BOOL:${PROJECT_IS_TOP_LEVEL}>:-Werror>
    -Wconversion -Wsign-conversion -Wdouble-promotion -Wold-style-cast -Wcast-qual -Wcast-align
    -Wnon-virtual-dtor -Woverloaded-virtual -Wformat=2 -Wundef -Wimplicit-fallthrough
    # GCC 12 sees null pointers inside its own stream iterators, once it optimises.
    $<$<CXX_COMPILER_ID:Clang>:-Wshadow;-Wnull-dereference>
    $<$<CXX_COMPILER_ID:GNU>:-Wshadow=local;-Wduplicated-cond;-Wduplicated-branches;-Wlogical-op;-Wuseless-cast>
    # Under its run-time checks GCC 12 takes members of the standard library's regular expressions for unset.
    $<$<AND:$<CXX_COMPILER_ID:GNU>,$<BOOL:${QUILLON_SANITIZE}>>:-Wno-maybe-uninitialized>)
