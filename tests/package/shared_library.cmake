# Configures, without building, what the usual switch for shared libraries gives: a library with versions in its names,
# and a program that is not linked statically.
set(shared ${WORK_DIR}/shared)
file(REMOVE_RECURSE ${shared})
execute_process(
    COMMAND ${CMAKE_COMMAND} -S ${SOURCE_DIR} -B ${shared} -G ${GENERATOR} -DCMAKE_CXX_COMPILER=${COMPILER}
        -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=ON -DQUILLON_BUILD_TESTS=OFF -DQUILLON_BUILD_BENCH=OFF -DQUILLON_BUILD_EXAMPLES=OFF
    OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "${output}")
endif()

string(REGEX MATCH "^[0-9]+\\.[0-9]+" interface ${VERSION})
file(READ ${shared}/cmake_install.cmake rules)
foreach(name libquillon.so libquillon.so.${interface} libquillon.so.${VERSION})
    if(NOT rules MATCHES "/${name}\"")
        message(FATAL_ERROR "${name} is not installed:\n${rules}")
    endif()
endforeach()
load_cache(${shared} READ_WITH_PREFIX cached_ QUILLON_STATIC_TOOL)
if(cached_QUILLON_STATIC_TOOL)
    message(FATAL_ERROR "The program would be linked statically.")
endif()
