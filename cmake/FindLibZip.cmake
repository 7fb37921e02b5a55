# LibZip::LibZip. Debian's own package file asks for libzip's programs as well, which nothing here needs.
find_path(LibZip_INCLUDE_DIR zip.h)
find_library(LibZip_LIBRARY zip)
if(WIN32)
    # Both are linked in, so that nothing but our own libraries lies beside the programs.
    find_library(LibZip_ZLIB_LIBRARY libz.a)
else()
    find_library(LibZip_ZLIB_LIBRARY z)
endif()
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(LibZip REQUIRED_VARS LibZip_LIBRARY LibZip_ZLIB_LIBRARY LibZip_INCLUDE_DIR)
if(LibZip_FOUND AND NOT TARGET LibZip::LibZip)
    add_library(LibZip::LibZip UNKNOWN IMPORTED)
    set_target_properties(LibZip::LibZip PROPERTIES IMPORTED_LOCATION "${LibZip_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${LibZip_INCLUDE_DIR}" INTERFACE_LINK_LIBRARIES "${LibZip_ZLIB_LIBRARY}")
    if(WIN32)
        set_property(TARGET LibZip::LibZip PROPERTY INTERFACE_COMPILE_DEFINITIONS ZIP_STATIC)
    endif()
endif()
