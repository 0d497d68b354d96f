# Makes a man page of a page that holds everything that a page may hold, and compares it with what roff should get.
set(folder ${CMAKE_CURRENT_LIST_DIR}/manual)
find_program(awk NAMES awk mawk gawk REQUIRED)
execute_process(
    COMMAND ${awk} -v page=${folder}/sample.md -v version=1.2.3b -f ${SOURCE_DIR}/docs/markdown_to_man.awk
        ${folder}/other.md ${folder}/plain.md ${folder}/sample.md
    OUTPUT_FILE ${WORK_DIR}/sample.5 COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${WORK_DIR}/sample.5 ${folder}/sample.5 RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "${WORK_DIR}/sample.5 is not ${folder}/sample.5")
endif()
