#include "TextInput.h"

#include "CommandTask.h"
#include "Commands.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <fstream>
#include <iostream>

namespace {
void ForEachLine(std::istream& lines, const std::function<void(const std::string&)>& take)
{
    for (std::string line; std::getline(lines, line);) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        take(line);
    }
}
}   // namespace

void TextInput::AddOptions(CLI::App& command, const std::string& what)
{
    command.add_option("text", texts, what);
    command.add_option("--file,-f", file, "a file with one text a line; - for standard input");
}

void TextInput::ForEach(const std::function<void(const std::string& text)>& take) const
{
    for (const std::string& text : texts)
        take(text);
    if (file == "-" || (file.empty() && texts.empty()))
        return ForEachLine(std::cin, take);
    if (file.empty())
        return;
    const std::filesystem::path path(std::u8string(file.begin(), file.end()));
    std::ifstream lines(path);
    if (!lines) {
        std::cerr << "tvl: the file \"" << file << "\" can't be read\n";
        throw CLI::RuntimeError(kBadInput);
    }
    // What is no file of a known size, such as a pipe, may wait for ever: Ctrl-C ends the program there.
    std::error_code unknown;
    const auto size = std::filesystem::file_size(path, unknown);
    if (unknown)
        return ForEachLine(lines, take);
    CommandTask running(L"Reading texts");
    running.Begin(size);
    ForEachLine(lines, [&](const std::string& line) {
        running.EndIfCancelled();
        {
            const TaskView::Pause pause(running.View());
            take(line);
            if (running.View().IsOnScreen())
                std::cout.flush();
        }
        running.Task().AddProgress(line.size() + 1);
    });
}
