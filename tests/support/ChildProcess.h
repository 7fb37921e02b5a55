// Programs that a test starts.
#pragma once

#include "TvlTestKit/ScratchFolder.h"

#include <chrono>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

using TvlTestKit::FileBytes;
using TvlTestKit::ScratchFolder;

/// How to start a program. Texts are UTF-8.
struct ChildProcess {
    std::string program;   // lies beside the test program; without ".exe"
    std::vector<std::string> arguments;
    std::string input;                                      // what it finds in its standard input
    std::map<std::string, std::string> environment;         // variables beside this process's own
    std::optional<std::chrono::microseconds> killAfter{};   // it is ended then, wherever it is, as by a power cut
    bool isInterrupted = false;                             // or asked to end, as by Ctrl-C; on linux alone
    bool ignoresInterrupt = false;                          // it begins with Ctrl-C turned off; on linux alone
};

/// Exit code of a program that was ended by `killAfter`, and by nothing else that happens to it.
inline constexpr int kKilledExitCode = 128 + 9;

struct ChildResult {
    int exitCode = -1;
    std::string output;
    std::string errors;
};

/// Runs a program to its end. Throws std::system_error when it can't be started.
ChildResult RunProgram(const ChildProcess& child);
