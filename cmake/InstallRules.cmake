# What an installed copy has: libraries, headers by layer, the package for find_package and for pkg-config.

include(CMakePackageConfigHelpers)

set(obmPackageDir "${CMAKE_INSTALL_LIBDIR}/cmake/rivelta")

install(TARGETS orncmn ornctrl ornobdata ornobmgr EXPORT riveltaTargets
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}")
if(TARGET ORNObmgrENU)
    install(TARGETS ORNObmgrENU LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}")
endif()
install(DIRECTORY "${PROJECT_SOURCE_DIR}/src/" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/rivelta"
    FILES_MATCHING PATTERN "*.h" PATTERN "*.def")
if(EXISTS "${PROJECT_SOURCE_DIR}/samples")
    install(DIRECTORY "${PROJECT_SOURCE_DIR}/samples" DESTINATION "${CMAKE_INSTALL_DATADIR}/rivelta")
endif()

install(EXPORT riveltaTargets NAMESPACE rivelta:: DESTINATION "${obmPackageDir}")
configure_package_config_file(cmake/rivelta-config.cmake.in "${PROJECT_BINARY_DIR}/rivelta-config.cmake"
    INSTALL_DESTINATION "${obmPackageDir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/rivelta-config-version.cmake"
    COMPATIBILITY SameMinorVersion)
install(FILES
    "${PROJECT_BINARY_DIR}/rivelta-config.cmake"
    "${PROJECT_BINARY_DIR}/rivelta-config-version.cmake"
    DESTINATION "${obmPackageDir}")

# Static libraries need what they were built from at the user's link; shared ones bring it themselves.
if(BUILD_SHARED_LIBS)
    set(obmPcRequires "Requires.private")
    set(obmPcStaticLibs "")
else()
    set(obmPcRequires "Requires")
    set(obmPcStaticLibs " -pthread -ldl")
endif()
file(RELATIVE_PATH obmPrefixFromPc
    "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")
string(REGEX REPLACE "/$" "" obmPrefixFromPc "${obmPrefixFromPc}")
configure_file(cmake/rivelta.pc.in "${PROJECT_BINARY_DIR}/rivelta.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/rivelta.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
