# Where the installation of a build is tried, and how its programs run there.
set(scratch "${BUILD}/packaging/${SCRATCH}")
set(prefix "${scratch}/moved")
file(REMOVE_RECURSE "${scratch}")

function(run)
    execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# As on a machine that has the package alone: its own user, no variable that shows the way to this tree.
function(run_consumer program)
    run(${CMAKE_COMMAND} -E env --unset=TVL_SUITE_DIR "TVL_USER_DIR=${scratch}/user" "TVL_REGISTRY=${scratch}/registry.db"
        "WINEPATH=${prefix}/bin" ${EMULATOR} "${program}" ${ARGN})
endfunction()
