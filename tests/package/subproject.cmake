# Configures a project that holds ours in a folder; the project itself looks at what that adds to it.
set(outside ${WORK_DIR}/subproject)
file(REMOVE_RECURSE ${outside})
execute_process(
    COMMAND ${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR}/outside -B ${outside} -G ${GENERATOR}
        -DCMAKE_CXX_COMPILER=${COMPILER} -DQUILLON_FOLDER=${SOURCE_DIR}
    OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "${output}")
endif()
