// Starting programs: one that does nothing and loads the library, the measuring program, and their floor, a program that
// does nothing and loads a library that does nothing. All load the same libraries of others; a bare program loads none but
// the C library. What counts is the processor time of the started process.
#include <benchmark/benchmark.h>
#include <climits>
#include <fcntl.h>
#include <filesystem>
#include <spawn.h>
#include <stdexcept>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

std::filesystem::path OwnFolder()
{
    static const auto folder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    return folder;
}

double Seconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

/// Runs a program that lies beside this one to its end, its output dropped; its processor time in seconds.
double Run(std::vector<std::string> arguments)
{
    arguments.front() = OwnFolder() / arguments.front();
    std::vector<char*> pointers;
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    const int failed = posix_spawn(&process, pointers.front(), &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    rusage used = {};
    if (failed || wait4(process, &status, 0, &used) != process || status != 0)
        throw std::runtime_error("can't run " + arguments.front());
    return Seconds(used.ru_utime) + Seconds(used.ru_stime);
}

void Start(benchmark::State& state, const std::vector<std::string>& arguments)
{
    for (auto _ : state)
        state.SetIterationTime(Run(arguments));
}

void Startup_Bare(benchmark::State& state) { Start(state, {"startup_bare"}); }
void Startup_Nothing(benchmark::State& state) { Start(state, {"startup_nothing"}); }
void Startup_Library(benchmark::State& state) { Start(state, {"startup_library"}); }
void Startup_Measure(benchmark::State& state) { Start(state, {"tvl", "measure", "5in"}); }
BENCHMARK(Startup_Bare)->UseManualTime();
BENCHMARK(Startup_Nothing)->UseManualTime();
BENCHMARK(Startup_Library)->UseManualTime();
BENCHMARK(Startup_Measure)->UseManualTime();

}   // namespace
