# Installs a build and moves what is there; then the compiler alone, told by pkg-config where that is.
include("${CMAKE_CURRENT_LIST_DIR}/Scratch.cmake")

run(${CMAKE_COMMAND} --install "${BUILD}" --prefix "${scratch}/installed")
file(RENAME "${scratch}/installed" "${prefix}")

set(ENV{PKG_CONFIG_PATH} "${prefix}/${LIBDIR}/pkgconfig")
execute_process(COMMAND pkg-config --cflags --libs tvlutl OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE
    COMMAND_ERROR_IS_FATAL ANY)
separate_arguments(flags UNIX_COMMAND "${flags}")
if(SANITIZERS)
    list(APPEND flags "-fsanitize=${SANITIZERS}")
endif()
# As systems do it whose /lib is a link.
file(CREATE_LINK "${prefix}/${LIBDIR}" "${scratch}/lib" SYMBOLIC)
run(${LAUNCHER} "${COMPILER}" "${CONSUMER}/families.cpp" -o "${scratch}/families" ${flags} "-Wl,-rpath,${scratch}/lib")
run_consumer("${scratch}/families")
