// Programs that a test starts.
#pragma once

#include <chrono>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

/// A folder that ends with its object, with all that is in it.
class ScratchFolder {
public:
    ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder();
    const std::filesystem::path& Path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

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

struct ChildResult {
    int exitCode = -1;
    std::string output;
    std::string errors;
};

/// Runs a program to its end. Throws std::system_error when it can't be started.
ChildResult RunProgram(const ChildProcess& child);

/// Bytes of a file; empty when it can't be read.
std::string FileBytes(const std::filesystem::path& path);
