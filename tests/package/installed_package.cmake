# Installs the build into an empty directory, then builds and runs a program that knows that directory alone.
set(prefix ${WORK_DIR}/prefix)
set(outside ${WORK_DIR}/outside)
file(REMOVE_RECURSE ${prefix} ${outside})

function(run)
    execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        string(JOIN " " command ${ARGN})
        message(FATAL_ERROR "${command}\n${output}\nended with ${result}.")
    endif()
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})
run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR}/outside -B ${outside} -G ${GENERATOR}
    -DCMAKE_CXX_COMPILER=${COMPILER} "-DCMAKE_CXX_FLAGS=${FLAGS}" -DCMAKE_PREFIX_PATH=${prefix}
    -DEXPECTED_VERSION=${VERSION})
run(${CMAKE_COMMAND} --build ${outside})
run(${outside}/outside)
if(HAS_TOOL)
    run(${prefix}/bin/quillon -v)
endif()
