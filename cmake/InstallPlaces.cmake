# Where an installation puts things, relative to its prefix, which may be moved.
include(GNUInstallDirs)

set(TVL_INSTALL_HEADERS "${CMAKE_INSTALL_INCLUDEDIR}/TvlUtl")
set(TVL_INSTALL_CMAKE "${CMAKE_INSTALL_LIBDIR}/cmake/TvlUtl")
if(WIN32)
    # Libraries are looked for beside the programs.
    set(TVL_INSTALL_LIBRARIES "${CMAKE_INSTALL_BINDIR}")
    set(TVL_INSTALL_SUITE "${CMAKE_INSTALL_BINDIR}/Suite")
else()
    set(TVL_INSTALL_LIBRARIES "${CMAKE_INSTALL_LIBDIR}")
    set(TVL_INSTALL_SUITE "${CMAKE_INSTALL_DATADIR}/TvlUtl/Suite")
endif()
file(RELATIVE_PATH TVL_SUITE_FROM_LIBRARY "/${TVL_INSTALL_LIBRARIES}" "/${TVL_INSTALL_SUITE}")
