# Installs the program with its man pages and completions, and the library with its headers, a package for
# find_package(quillon) and a file for pkg-config.
if(NOT QUILLON_INSTALL)
    return()
endif()
include(CMakePackageConfigHelpers)

set(package_directory ${CMAKE_INSTALL_LIBDIR}/cmake/quillon)

install(TARGETS quillon EXPORT quillonTargets)
if(TARGET quillon_tool)
    if(BUILD_SHARED_LIBS)
        cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_LIBDIR BASE_DIRECTORY ${CMAKE_INSTALL_FULL_BINDIR}
            OUTPUT_VARIABLE library_from_tool)
        set_target_properties(quillon_tool PROPERTIES INSTALL_RPATH "$ORIGIN/${library_from_tool}")
    endif()
    install(TARGETS quillon_tool)
    install(FILES scripts/completion/quillon.bash RENAME quillon
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
    install(FILES scripts/completion/_quillon DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
endif()
include(cmake/Manual.cmake)
foreach(man_page IN LISTS QUILLON_MAN_PAGES)
    cmake_path(GET man_page PARENT_PATH folder)
    cmake_path(GET folder FILENAME folder)
    install(FILES ${man_page} DESTINATION ${CMAKE_INSTALL_MANDIR}/${folder})
endforeach()
foreach(header IN LISTS QUILLON_HEADERS)
    cmake_path(GET header PARENT_PATH folder)
    install(FILES ${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/${folder})
endforeach()

install(EXPORT quillonTargets NAMESPACE quillon:: DESTINATION ${package_directory})
configure_package_config_file(cmake/quillonConfig.cmake.in ${PROJECT_BINARY_DIR}/quillonConfig.cmake
    INSTALL_DESTINATION ${package_directory})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/quillonConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/quillonConfig.cmake ${PROJECT_BINARY_DIR}/quillonConfigVersion.cmake
    DESTINATION ${package_directory})

# The file names the directories by where it lies itself, so that an installed tree can be moved, and whether they were
# given below the prefix or in full.
foreach(directory IN ITEMS PREFIX FULL_LIBDIR FULL_INCLUDEDIR)
    cmake_path(RELATIVE_PATH CMAKE_INSTALL_${directory} BASE_DIRECTORY ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig
        OUTPUT_VARIABLE ${directory}_from_pkgconfig)
endforeach()
configure_file(cmake/quillon.pc.in ${PROJECT_BINARY_DIR}/quillon.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/quillon.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
