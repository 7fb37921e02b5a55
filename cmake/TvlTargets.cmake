# Settings of every target, and the functions that the folders declare themselves with.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
if(WIN32)
    set(CMAKE_SHARED_LIBRARY_PREFIX "")
endif()

find_program(TVL_CCACHE ccache)
if(TVL_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${TVL_CCACHE}")
endif()

# Contraction of a*b+c would change the last bit of stored measures.
add_compile_options(-ffp-contract=off)
if(MINGW)
    # msvcrt's printf is neither C99 nor exact for long decimals.
    add_compile_definitions(__USE_MINGW_ANSI_STDIO=1 UNICODE _UNICODE WINVER=0x0A00 _WIN32_WINNT=0x0A00)
endif()
if(TVL_COVERAGE)
    # Whoever starts a program, and from where, its counts are added to one of a few files for each binary.
    set(counts "${CMAKE_BINARY_DIR}/counts/%4m.profraw")
    add_compile_options("-fprofile-instr-generate=${counts}" -fcoverage-mapping)
    add_link_options("-fprofile-instr-generate=${counts}")
endif()
if(TVL_SANITIZERS)
    add_compile_options(-fsanitize=${TVL_SANITIZERS} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${TVL_SANITIZERS})
    if(TVL_FUZZERS)
        # Coverage for libFuzzer in every object; the fuzzer's own main comes with each target.
        add_compile_options(-fsanitize=fuzzer-no-link)
        add_link_options(-fsanitize=fuzzer-no-link)
    endif()
endif()

# -Wrestrict of GCC 12 warns of std::string's own concatenation.
add_library(TvlWarnings INTERFACE)
target_compile_options(TvlWarnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wold-style-cast -Woverloaded-virtual
    -Wcast-qual -Wformat=2 $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict> -Werror)

# Interfaces of the library, its siblings and ports: what applications see.
set(TVL_INTERFACES "${PROJECT_SOURCE_DIR}/Engines/TvlUtl/include" "${PROJECT_SOURCE_DIR}/Engines/TvlUtl/platform"
    "${PROJECT_BINARY_DIR}/include")
configure_file("${PROJECT_SOURCE_DIR}/Engines/TvlUtl/include/TvlUtlVersion.h.in"
    "${PROJECT_BINARY_DIR}/include/TvlUtlVersion.h" @ONLY)
add_library(TvlHeaders INTERFACE)
set_target_properties(TvlHeaders PROPERTIES EXPORT_NAME Headers)
target_compile_features(TvlHeaders INTERFACE cxx_std_20)
foreach(interface ${TVL_INTERFACES})
    target_include_directories(TvlHeaders INTERFACE "$<BUILD_INTERFACE:${interface}>")
endforeach()

# One folder of the library as an object library. USES lists the folders below it whose headers it may include:
# a folder that is not listed is not on the include path. SOURCES adds files that stand directly in Engines/TvlUtl.
function(tvl_library_folder name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "USES;SOURCES")
    file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
    list(TRANSFORM arg_SOURCES PREPEND "${PROJECT_SOURCE_DIR}/Engines/TvlUtl/")
    add_library(TvlUtl_${name} OBJECT ${sources} ${arg_SOURCES})
    target_compile_definitions(TvlUtl_${name} PRIVATE TVLUTL_BUILD)
    target_include_directories(TvlUtl_${name} PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}")
    list(TRANSFORM arg_USES PREPEND "TvlUtl_")
    target_link_libraries(TvlUtl_${name} PUBLIC TvlHeaders ${arg_USES} PRIVATE TvlWarnings)
    set_property(GLOBAL APPEND PROPERTY TVL_FOLDERS TvlUtl_${name})
endfunction()

# The version of the interfaces. Before 1.0.0 a minor version may change them, so it has both numbers, and so has the name
# that programs ask for at run time.
set(TVL_INTERFACES_VERSION ${PROJECT_VERSION_MAJOR})
if(PROJECT_VERSION_MAJOR EQUAL 0)
    set(TVL_INTERFACES_VERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
endif()

# What all shared libraries of this tree have in common.
function(tvl_shared_library target)
    set_target_properties(${target} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${TVL_INTERFACES_VERSION})
    if(UNIX)
        set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN")
        # Calls and virtual tables lead to the library's own functions without asking all loaded libraries for others of
        # their names. Variables, type information among them, stay one of each in a process.
        target_link_options(${target} PRIVATE LINKER:-Bsymbolic-functions)
    endif()
endfunction()

# What a library exports, as the linker wants it: a version script on linux, a .def file on windows.
# LIST names the file of exports; without one all that carries an export mark is exported. The plain names of both targets
# and, on linux, the C++ families come from it. On windows the marks in the code choose the C++ functions.
# SINGLETONS are explicit instantiations of TvlUtils::Singleton by their template arguments, as the compiler writes them
# in symbols, such as 5CpuIDLi0E for <CpuID, 0>: the variables inside their functions carry no mark on windows.
function(tvl_exports target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "LIST" "SINGLETONS")
    set(plain "")
    set(families "")
    if(arg_LIST)
        set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${arg_LIST}")
        file(STRINGS "${arg_LIST}" lines)
        foreach(line ${lines})
            string(REGEX REPLACE "[ \t]*#.*" "" line "${line}")
            if(line MATCHES "^(function|class) (.+)")
                list(APPEND families "${CMAKE_MATCH_2}")
            elseif(line)
                list(APPEND plain "${line}")
            endif()
        endforeach()
    endif()
    if(WIN32)
        tvl_module_definition(${target} "${plain}" "${arg_SINGLETONS}")
    elseif(arg_LIST)
        tvl_version_script(${target} "${plain}" "${families}")
    endif()
endfunction()

function(tvl_module_definition target plain singletons)
    set(exports "EXPORTS\n")
    foreach(name ${plain})
        string(APPEND exports "${name}\n")
    endforeach()
    foreach(arguments ${singletons})
        set(function "N8TvlUtils9SingletonI${arguments}E16GetSingletonDataEb")
        string(APPEND exports "_ZZ${function}E8g_pEntry DATA\n_ZZ${function}E10resetEntry DATA\n"
            "_ZGVZ${function}E10resetEntry DATA\n")
    endforeach()
    file(CONFIGURE OUTPUT "${target}.def" CONTENT "${exports}" @ONLY)
    target_sources(${target} PRIVATE "${CMAKE_CURRENT_BINARY_DIR}/${target}.def")
endfunction()

# Patterns stand for arguments and members. Weak copies of inline code that other libraries have too stay visible, and so
# do tables and type information: a process may hold one of each alone.
function(tvl_version_script target plain families)
    string(JOIN ";\n        " names ${plain})
    set(patterns "")
    foreach(name ${families})
        string(APPEND patterns "            ${name}*;\n            *?${name}::*;\n")
    endforeach()
    string(TOUPPER "${target}" node)
    foreach(shared std:: __gnu_cxx:: TvlUtils:: for?)
        string(APPEND patterns "            ${shared}*;\n            *?${shared}*;\n")
    endforeach()
    string(CONCAT script "${node}_${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR} {\n    global:\n        ${names};\n"
        "        __odr_asan*;\n        extern \"C++\" {\n${patterns}        };\n    local:\n        *;\n};\n")
    file(CONFIGURE OUTPUT "${target}.map" CONTENT "${script}" @ONLY)
    target_link_options(${target} PRIVATE "LINKER:--version-script=${CMAKE_CURRENT_BINARY_DIR}/${target}.map")
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${CMAKE_CURRENT_BINARY_DIR}/${target}.map")
endfunction()

# Tests write to a registry of the build's own. A request that no heap can meet answers null under a sanitizer too, as it does without one.
set(TVL_TEST_ENVIRONMENT "TVL_REGISTRY=${CMAKE_BINARY_DIR}/test-registry.db"
    "ASAN_OPTIONS=allocator_may_return_null=1;TSAN_OPTIONS=allocator_may_return_null=1"
    "UBSAN_OPTIONS=print_stacktrace=1;WINEDEBUG=-all")

# One test program for a folder of tests, linked to the shared libraries as an application is.
# STATIC links the library's objects instead, for tests that replace the allocator or look at what is not exported.
# FAILING_HEAP puts the allocations of the program and its objects behind the seam of FailingHeap.h.
function(tvl_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "STATIC;FAILING_HEAP" "" "LIBRARIES")
    file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
    add_executable(test_${name} ${sources})
    if(arg_FAILING_HEAP)
        target_sources(test_${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests/support/heap/FailingHeap.cpp")
        target_link_options(test_${name} PRIVATE LINKER:--wrap=malloc,--wrap=calloc,--wrap=realloc)
    endif()
    if(arg_STATIC)
        set(library TvlUtlStatic)
    else()
        set(library TvlUtl)
    endif()
    target_link_libraries(test_${name} PRIVATE ${library} TvlSiblings TvlTestSupport TvlWarnings ${arg_LIBRARIES})
    add_dependencies(test_${name} TvlSuite)
    # Relative, because a path without a drive letter is not absolute on windows.
    file(RELATIVE_PATH results "${CMAKE_CURRENT_BINARY_DIR}" "${CMAKE_BINARY_DIR}/results")
    add_test(NAME ${name} COMMAND test_${name} --gtest_output=json:${results}/${name}.json)
    set_tests_properties(${name} PROPERTIES TIMEOUT 900 ENVIRONMENT "${TVL_TEST_ENVIRONMENT}")
endfunction()

# One benchmark program, benchmarks/<name>.cpp. PEERS are the libraries that it is measured beside.
function(tvl_benchmark name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "PEERS")
    add_executable(bench_${name} ${name}.cpp)
    target_link_libraries(bench_${name} PRIVATE TvlUtl TvlSiblings TvlWarnings benchmark::benchmark_main ${arg_PEERS})
    add_dependencies(bench_${name} TvlSuite)
endfunction()

# One libFuzzer target, fuzz/<name>.cpp with its kept seeds in fuzz/seeds/<name>. Without TVL_FUZZERS the same source is
# built with a driver that replays the seeds, and runs as a test. MUTATIONS adds a test of as many inputs made from the
# seeds; see fuzz/Replay.cpp.
function(tvl_fuzzer name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "MUTATIONS" "")
    add_executable(fuzz_${name} "${PROJECT_SOURCE_DIR}/fuzz/${name}.cpp")
    target_link_libraries(fuzz_${name} PRIVATE TvlUtlStatic TvlSiblings TvlWarnings)
    add_dependencies(fuzz_${name} TvlSuite)
    if(TVL_FUZZERS)
        target_link_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
        # What libFuzzer's builds are known by; clang leaves it to them to say so.
        target_compile_definitions(fuzz_${name} PRIVATE FUZZING_BUILD_MODE_UNSAFE_FOR_PRODUCTION)
    else()
        target_sources(fuzz_${name} PRIVATE "${PROJECT_SOURCE_DIR}/fuzz/Replay.cpp")
        target_link_libraries(fuzz_${name} PRIVATE TvlReplay)
        set(seeds "${PROJECT_SOURCE_DIR}/fuzz/seeds/${name}")
        add_test(NAME fuzz_${name} COMMAND fuzz_${name} "${seeds}")
        set_tests_properties(fuzz_${name} PROPERTIES TIMEOUT 900 ENVIRONMENT "${TVL_TEST_ENVIRONMENT}")
        if(arg_MUTATIONS)
            add_test(NAME mutations_${name} COMMAND fuzz_${name} --mutations ${arg_MUTATIONS} "${seeds}")
            set_tests_properties(mutations_${name} PROPERTIES TIMEOUT 7200 ENVIRONMENT "${TVL_TEST_ENVIRONMENT}")
            if(EXISTS /dev/shm)
                # Files in memory: a disk would be the clock of targets that write one for each input.
                set_property(TEST mutations_${name} APPEND PROPERTY ENVIRONMENT "TMPDIR=/dev/shm")
            endif()
        endif()
    endif()
endfunction()
