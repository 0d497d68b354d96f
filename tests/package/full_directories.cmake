# Configures, without building, what packagers do who give the directories in full, not below the prefix: the file for
# pkg-config leads to them all the same.
set(full ${WORK_DIR}/full_directories)
file(REMOVE_RECURSE ${full})
execute_process(
    COMMAND ${CMAKE_COMMAND} -S ${SOURCE_DIR} -B ${full} -G ${GENERATOR} -DCMAKE_CXX_COMPILER=${COMPILER}
        -DCMAKE_INSTALL_PREFIX=/opt/quillon -DCMAKE_INSTALL_LIBDIR=/opt/libraries/machine
        -DCMAKE_INSTALL_INCLUDEDIR=/opt/quillon/headers
        -DQUILLON_BUILD_TESTS=OFF -DQUILLON_BUILD_BENCH=OFF -DQUILLON_BUILD_EXAMPLES=OFF
    OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "${output}")
endif()

file(STRINGS ${full}/quillon.pc lines REGEX "^(prefix|libdir|includedir)=")
set(expected
    "prefix=\${pcfiledir}/../../../quillon"
    "libdir=\${pcfiledir}/.."
    "includedir=\${pcfiledir}/../../../quillon/headers")
if(NOT lines STREQUAL expected)
    message(FATAL_ERROR "${lines}\nis not\n${expected}")
endif()
