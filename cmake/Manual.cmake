# Makes the man pages of the pages in docs/ that say what they are in the manual: QUILLON_MAN_PAGES.
set(QUILLON_MAN_PAGES)
find_program(QUILLON_AWK NAMES awk mawk gawk)
mark_as_advanced(QUILLON_AWK)
if(NOT QUILLON_AWK)
    message(STATUS "There is no awk, so the man pages are left out.")
    return()
endif()

file(GLOB_RECURSE pages CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/*.md)
set(converter ${PROJECT_SOURCE_DIR}/docs/markdown_to_man.awk)
foreach(page IN LISTS pages)
    file(STRINGS ${page} note REGEX "^<!-- man: ")
    if(NOT note MATCHES "man: ([^ ]+) ([0-9]) ")
        continue()
    endif()
    set(man_page ${PROJECT_BINARY_DIR}/man/man${CMAKE_MATCH_2}/${CMAKE_MATCH_1}.${CMAKE_MATCH_2})
    cmake_path(GET man_page PARENT_PATH folder)
    add_custom_command(OUTPUT ${man_page}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
        COMMAND ${QUILLON_AWK} -v page=${page} -v version=${QUILLON_VERSION_TEXT} -f ${converter} ${pages} > ${man_page}
        DEPENDS ${pages} ${converter} ${PROJECT_SOURCE_DIR}/quillon/tool/Version.h VERBATIM)
    list(APPEND QUILLON_MAN_PAGES ${man_page})
endforeach()
add_custom_target(quillon_manual ALL DEPENDS ${QUILLON_MAN_PAGES})
