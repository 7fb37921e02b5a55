// Where a command takes its texts from: arguments, a file, or a pipe.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

/// Texts of the command line, or the lines of a file.
struct TextInput {
    std::vector<std::string> texts;
    std::string file;   // "-" for standard input

    /// Adds the options to a command.
    void AddOptions(CLI::App& command, const std::string& what);
    /// Calls `take` with each text; ends the command when a file can't be read. Without texts and file the lines of
    /// standard input are taken.
    void ForEach(const std::function<void(const std::string& text)>& take) const;
};
