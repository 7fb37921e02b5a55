# What is installed, the files by which other projects find it, and the archives of it.
include(CMakePackageConfigHelpers)

# Headers of the library, and of the siblings and ports that they mention, in one folder.
foreach(interface ${TVL_INTERFACES})
    install(DIRECTORY "${interface}/" DESTINATION "${TVL_INSTALL_HEADERS}" COMPONENT Development
        FILES_MATCHING PATTERN "*.h")
endforeach()
install(DIRECTORY "${PROJECT_SOURCE_DIR}/tests/kit/include/" DESTINATION "${TVL_INSTALL_HEADERS}" COMPONENT Development)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/Suite/" DESTINATION "${TVL_INSTALL_SUITE}" COMPONENT Runtime)

install(TARGETS TvlUtl TvlSiblings TvlHeaders EXPORT TvlUtlTargets
    RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT Runtime
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT Runtime NAMELINK_COMPONENT Development
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT Development
    INCLUDES DESTINATION "${TVL_INSTALL_HEADERS}")
if(TARGET TvlInternet)
    install(TARGETS TvlInternet LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT Runtime)
endif()
install(TARGETS TvlTestKit EXPORT TvlUtlTestKitTargets
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT TestKit)
install(TARGETS tvl RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT Runtime)

# Debuggers' views of our types.
install(FILES "${PROJECT_SOURCE_DIR}/debugger/TvlUtl.natvis" "${PROJECT_SOURCE_DIR}/debugger/tvlutl_gdb.py"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/TvlUtl/debugger" COMPONENT Development)

# find_package(TvlUtl) gives TvlUtl::TvlUtl, and TvlUtl::TestKit as the component TestKit.
foreach(export TvlUtlTargets TvlUtlTestKitTargets)
    install(EXPORT ${export} NAMESPACE TvlUtl:: DESTINATION "${TVL_INSTALL_CMAKE}" COMPONENT Development)
endforeach()
configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/TvlUtlConfig.cmake.in"
    "${PROJECT_BINARY_DIR}/package/TvlUtlConfig.cmake" INSTALL_DESTINATION "${TVL_INSTALL_CMAKE}"
    PATH_VARS TVL_INSTALL_SUITE NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/package/TvlUtlConfigVersion.cmake"
    COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/package/TvlUtlConfig.cmake" "${PROJECT_BINARY_DIR}/package/TvlUtlConfigVersion.cmake"
    DESTINATION "${TVL_INSTALL_CMAKE}" COMPONENT Development)

# pkg-config finds the prefix from where its file lies.
file(RELATIVE_PATH TVL_PREFIX_FROM_PKGCONFIG "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
configure_file("${PROJECT_SOURCE_DIR}/cmake/tvlutl.pc.in" "${PROJECT_BINARY_DIR}/package/tvlutl.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/package/tvlutl.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
    COMPONENT Development)

install(FILES "${PROJECT_SOURCE_DIR}/README.md" "${PROJECT_SOURCE_DIR}/CHANGELOG.md"
    DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT Development)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/docs/" DESTINATION "${CMAKE_INSTALL_DOCDIR}/docs" COMPONENT Development
    FILES_MATCHING PATTERN "*.md" PATTERN "*.png" PATTERN "*.svg")

# The man page is what the program says of itself.
if(NOT CMAKE_CROSSCOMPILING AND UNIX)
    find_package(Python3 COMPONENTS Interpreter)
    if(Python3_FOUND)
        set(page "${PROJECT_BINARY_DIR}/package/tvl.1")
        add_custom_command(OUTPUT "${page}" DEPENDS tvl "${PROJECT_SOURCE_DIR}/cmake/manpage.py"
            COMMAND Python3::Interpreter -B "${PROJECT_SOURCE_DIR}/cmake/manpage.py" $<TARGET_FILE:tvl> "${page}"
            COMMENT "Writing the man page")
        add_custom_target(TvlManPage ALL DEPENDS "${page}")
        install(FILES "${page}" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT Runtime)
    endif()
endif()

# All that is packed, without tests.
add_custom_target(TvlPackage DEPENDS TvlUtl TvlSiblings TvlTestKit tvl)
if(TARGET TvlInternet)
    add_dependencies(TvlPackage TvlInternet)
endif()
if(TARGET TvlManPage)
    add_dependencies(TvlPackage TvlManPage)
endif()

set(CPACK_PACKAGE_NAME tvlutl)
set(CPACK_PACKAGE_VENDOR "The TvlUtl developers")
set(CPACK_PACKAGE_CONTACT "The TvlUtl developers <tvlutl@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_SOURCE_DIR}/build/packages")
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)
if(WIN32)
    set(CPACK_GENERATOR ZIP)
    set(CPACK_PACKAGE_FILE_NAME "tvlutl-${PROJECT_VERSION}-windows-x86_64")
else()
    set(CPACK_GENERATOR DEB ZIP)
    set(CPACK_PACKAGE_FILE_NAME "tvlutl-${PROJECT_VERSION}-linux-x86_64")
    set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
    set(CPACK_DEBIAN_PACKAGE_SECTION libs)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
    set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
    # What sounds, browsers and folder windows go through, where they are installed; and what links the library.
    set(CPACK_DEBIAN_PACKAGE_SUGGESTS "g++, cmake, pkgconf, xdg-utils, libcanberra0")
endif()
include(CPack)
