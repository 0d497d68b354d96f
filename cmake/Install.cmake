# Installs the program, the library with its headers, and a package file for find_package(quillon).
if(NOT QUILLON_INSTALL)
    return()
endif()
include(CMakePackageConfigHelpers)

set(package_directory ${CMAKE_INSTALL_LIBDIR}/cmake/quillon)

install(TARGETS quillon EXPORT quillonTargets)
if(TARGET quillon_tool)
    install(TARGETS quillon_tool)
endif()
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
