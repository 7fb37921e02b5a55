# Packs a build, unpacks the archive elsewhere, and builds and runs the consumer against what was in it.
include("${CMAKE_CURRENT_LIST_DIR}/Scratch.cmake")

run(${CMAKE_COMMAND} -E chdir "${BUILD}" "${CPACK}" -G ZIP -B "${scratch}/packed")
file(GLOB archive "${scratch}/packed/*.zip")
file(ARCHIVE_EXTRACT INPUT "${archive}" DESTINATION "${scratch}/unpacked")
file(GLOB unpacked "${scratch}/unpacked/*")
file(RENAME "${unpacked}" "${prefix}")

set(options "-DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER}")
if(TOOLCHAIN)
    # The toolchain keeps searches within its own roots.
    list(APPEND options "-DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN}" "-DTvlUtl_DIR=${prefix}/${LIBDIR}/cmake/TvlUtl")
else()
    list(APPEND options "-DCMAKE_CXX_COMPILER=${COMPILER}" "-DCMAKE_PREFIX_PATH=${prefix}")
endif()
if(SANITIZERS)
    list(APPEND options "-DCMAKE_CXX_FLAGS=-fsanitize=${SANITIZERS}")
endif()
run(${CMAKE_COMMAND} -S "${CONSUMER}" -B "${scratch}/build" -G Ninja --log-level=WARNING ${options})
run(${CMAKE_COMMAND} --build "${scratch}/build")

set(suffix "")
if(TOOLCHAIN)
    set(suffix .exe)
endif()
run_consumer("${scratch}/build/families${suffix}")
run_consumer("${scratch}/build/kit${suffix}")
run_consumer("${prefix}/bin/tvl${suffix}" measure "5in + 3mm")
