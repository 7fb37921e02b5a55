#include "StartChild.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace {
/// The texts as the system wants them, ended by a null pointer.
std::vector<char*> Pointers(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<std::string> Environment(const ChildProcess& child)
{
    std::vector<std::string> variables;
    for (char** variable = environ; *variable; ++variable) {
        const std::string text = *variable;
        if (!child.environment.contains(text.substr(0, text.find('='))))
            variables.push_back(text);
    }
    for (const auto& [name, value] : child.environment)
        variables.push_back(name + "=" + value);
    return variables;
}

void Check(int error)
{
    if (error != 0)
        throw std::system_error(error, std::generic_category(), "the program can't be started");
}
/// Starts a program that Ctrl-C ends, whatever it does to the tests; or with Ctrl-C turned off.
int Spawn(pid_t& process, const std::filesystem::path& program, const ChildProcess& child,
    const posix_spawn_file_actions_t& actions, char* const* arguments, char* const* environment)
{
    posix_spawnattr_t attributes;
    Check(posix_spawnattr_init(&attributes));
    sigset_t interrupt;
    sigemptyset(&interrupt);
    sigaddset(&interrupt, SIGINT);
    posix_spawnattr_setsigdefault(&attributes, &interrupt);
    posix_spawnattr_setflags(&attributes, child.ignoresInterrupt ? 0 : POSIX_SPAWN_SETSIGDEF);
    const auto before = child.ignoresInterrupt ? std::signal(SIGINT, SIG_IGN) : SIG_ERR;
    const int failed = posix_spawn(&process, program.c_str(), &actions, &attributes, arguments, environment);
    if (before != SIG_ERR)
        std::signal(SIGINT, before);
    posix_spawnattr_destroy(&attributes);
    return failed;
}
}   // namespace

int StartChild(const std::filesystem::path& program, const ChildProcess& child, const ChildStreams& streams)
{
    std::vector<std::string> arguments{program.string()};
    arguments.insert(arguments.end(), child.arguments.begin(), child.arguments.end());
    std::vector<std::string> environment = Environment(child);

    posix_spawn_file_actions_t actions;
    Check(posix_spawn_file_actions_init(&actions));
    constexpr int kWrite = O_WRONLY | O_CREAT | O_TRUNC;
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, streams.input.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, streams.output.c_str(), kWrite, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, streams.errors.c_str(), kWrite, 0600);
    pid_t process = 0;
    const int failed =
        Spawn(process, program, child, actions, Pointers(arguments).data(), Pointers(environment).data());
    posix_spawn_file_actions_destroy(&actions);
    Check(failed);

    if (child.killAfter) {
        std::this_thread::sleep_for(*child.killAfter);
        kill(process, child.isInterrupted ? SIGINT : SIGKILL);
    }
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR)
        continue;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}
