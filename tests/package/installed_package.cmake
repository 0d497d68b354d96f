# Installs the build into an empty directory, then builds and runs a program that knows that directory alone: by the
# CMake package, and by pkg-config. What the program's users look for besides must lie where they look.
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

# The file for pkg-config lies under lib, lib64 or lib/<machine>, as the system has it.
find_program(pkg_config NAMES pkg-config pkgconf REQUIRED)
file(GLOB_RECURSE pkg_config_file ${prefix}/lib*/quillon.pc)
cmake_path(GET pkg_config_file PARENT_PATH pkg_config_folder)
execute_process(COMMAND ${CMAKE_COMMAND} -E env PKG_CONFIG_PATH=${pkg_config_folder} ${pkg_config}
    --exists --print-errors "quillon = ${VERSION}" COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} -E env PKG_CONFIG_PATH=${pkg_config_folder} ${pkg_config} --cflags --libs quillon
    OUTPUT_VARIABLE arguments OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
separate_arguments(arguments UNIX_COMMAND "${FLAGS} ${CMAKE_CURRENT_LIST_DIR}/outside/main.cpp ${arguments}")
run(${COMPILER} -std=c++20 ${arguments} -o ${outside}/outside_by_pkg_config)
run(${CMAKE_COMMAND} -E env --unset=LD_RUN_PATH LD_LIBRARY_PATH=${pkg_config_folder}/.. ${outside}/outside_by_pkg_config)

if(HAS_TOOL)
    run(${prefix}/bin/quillon -v)
    run(bash ${CMAKE_CURRENT_LIST_DIR}/completion.sh ${prefix}/share/bash-completion/completions/quillon
        ${WORK_DIR}/completion)
    if(NOT EXISTS ${prefix}/share/zsh/site-functions/_quillon)
        message(FATAL_ERROR "The completion for zsh is not installed.")
    endif()
endif()

# Each page that belongs to the manual is there, and names the version.
file(STRINGS ${SOURCE_DIR}/quillon/tool/Version.h version_line REGEX "version\\[\\] =")
string(REGEX REPLACE ".*\"(.*)\".*" "\\1" version_text ${version_line})
foreach(page quillon.1 quillon-files.5 quillon-specification.5 quillon-problem-definition.5 quillon-model.5
        quillon-limits.5 quillon-scale-definition.5 quillon-measured-data.5 quillon-report.5 quillon-environment.7)
    cmake_path(GET page EXTENSION LAST_ONLY chapter)
    string(SUBSTRING ${chapter} 1 1 chapter)
    file(STRINGS ${prefix}/share/man/man${chapter}/${page} title REGEX "^\\.TH ")
    if(NOT title MATCHES " ${chapter} \"\" \"quillon ${version_text}\"$")
        message(FATAL_ERROR "${page} begins with ${title}")
    endif()
endforeach()
