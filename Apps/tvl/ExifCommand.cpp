#include "ExifCommand.h"

#include "CommandTask.h"
#include "Commands.h"
#include "ExifFile.h"
#include "OrderedWork.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <memory>
#include <thread>

namespace fs = std::filesystem;

namespace {
constexpr int kBadFile = 2;
constexpr unsigned kMostThreads = 256;

/// A file to look at.
struct Candidate {
    fs::path path;
    bool isNamed = true;   // by the user; what a folder holds may be anything
    std::string error;     // when it need not be opened
};

/// Adds the files of a folder and its folders, in the order of their names.
void AddFolder(const fs::path& folder, TvlUtl::ITaskProgress& task, std::vector<Candidate>& candidates)
{
    const auto first = static_cast<std::ptrdiff_t>(candidates.size());
    std::error_code failed;
    for (fs::recursive_directory_iterator at(folder, fs::directory_options::skip_permission_denied, failed), end;
         !failed && at != end && !task.IsCancelled(); at.increment(failed)) {
        std::error_code unknown;
        if (at->is_regular_file(unknown))
            candidates.push_back({at->path(), false, {}});
    }
    std::sort(candidates.begin() + first, candidates.end(),
        [](const Candidate& a, const Candidate& b) { return a.path < b.path; });
    if (failed)
        candidates.push_back({folder, true, "folder can't be read to its end"});
}

std::vector<Candidate> Candidates(const ExifRequest& request, TvlUtl::ITaskProgress& task)
{
    std::vector<Candidate> candidates;
    for (const fs::path& path : request.paths) {
        std::error_code unknown;
        if (!fs::is_directory(path, unknown))
            candidates.push_back({path, true, {}});
        else if (request.recursive)
            AddFolder(path, task, candidates);
        else
            candidates.push_back({path, true, "a folder: add --recursive to read the files in it"});
    }
    return candidates;
}

/// A file's part of the output.
struct Outcome {
    std::string shown;   // empty for nothing
    std::string error;   // empty for a sound file
};

Outcome Process(const Candidate& candidate, const ExifRequest& request)
{
    ExifFile file;
    file.path = candidate.path;
    file.error = candidate.error;
    if (file.error.empty())
        file = request.orientation ? SetExifOrientation(candidate.path, request.orientation)
                                   : ReadExifFile(candidate.path);
    if (!candidate.isNamed && !file.isImage)
        return {};
    Outcome outcome;
    if (request.json && !request.orientation)
        outcome.shown = ExifJson(file);
    else if (!request.orientation && (file.exif->GetAt(0) || (candidate.isNamed && file.error.empty())))
        outcome.shown = ExifText(file);
    if (!file.error.empty())
        outcome.error = ExifFileName(file.path) + ": " + file.error;
    return outcome;
}

Outcome ProcessSafely(const Candidate& candidate, const ExifRequest& request) noexcept
try {
    return Process(candidate, request);
} catch (const std::exception& failure) {
    return {{}, std::string("a file could not be processed: ") + failure.what()};
}
}   // namespace

int RunExif(
    const ExifRequest& request, std::ostream& out, std::ostream& errors, TvlUtl::ITaskProgress& task, TaskView& view)
{
    const std::vector<Candidate> candidates = Candidates(request, task);
    const unsigned wanted = request.threads ? request.threads : std::max(1u, std::thread::hardware_concurrency());
    const bool isArray = request.json && !request.orientation;
    int exitCode = 0;
    const char* separator = "\n";
    if (isArray)
        out << '[';
    constexpr unsigned long long kWhole = 100;
    task.BeginSubTask(kWhole, candidates.size());
    const auto work = [&](std::size_t i) {
        return task.IsCancelled() ? Outcome() : ProcessSafely(candidates[i], request);
    };
    const auto take = [&](std::size_t i, const Outcome& outcome) {
        if (!outcome.shown.empty()) {
            const TaskView::Pause pause(view);
            out << (isArray ? separator : "") << outcome.shown;
            separator = ",\n";
            if (view.IsOnScreen())
                out.flush();
        }
        if (!outcome.error.empty()) {
            const TaskView::Pause pause(view);
            out.flush();
            errors << outcome.error << std::endl;
            exitCode = kBadFile;
        }
        const std::string step = std::to_string(i + 1) + " of " + std::to_string(candidates.size());
        task.SetProgress(i + 1, std::wstring(step.begin(), step.end()).c_str());
    };
    DoInOrder(candidates.size(), std::min(wanted, kMostThreads), work, take);
    task.EndSubTask();
    if (isArray)
        out << "\n]\n";
    return task.IsCancelled() ? kInterrupted : exitCode;
}

void AddExifCommand(CLI::App& program)
{
    CLI::App& command = *program.add_subcommand("exif", "shows the Exif data of JPEG, TIFF, PNG and WebP files");
    const auto request = std::make_shared<ExifRequest>();
    const auto names = std::make_shared<std::vector<std::string>>();
    command.add_option("FILE", *names, "image files, and with --recursive folders")->required();
    command.add_flag("--json", request->json, "print one JSON array of all files");
    command.add_flag("-r,--recursive", request->recursive, "read the image files in folders, too");
    command
        .add_option("-j,--jobs", request->threads, "files read at a time; as many as there are processors if not given")
        ->check(CLI::Range(1u, kMostThreads));
    command
        .add_option("--set-orientation", request->orientation,
            "set the orientation of files that have one, in place: 1 upright, 3 upside down, 6 and 8 on a side")
        ->check(CLI::Range(1, 8));
    command.callback([request, names] {
        for (const std::string& name : *names)
            request->paths.push_back(fs::path(std::u8string(name.begin(), name.end())));
        int result = 0;
        {
            CommandTask running(request->orientation ? L"Setting orientations" : L"Reading Exif data");
            result = RunExif(*request, std::cout, std::cerr, running.Task(), running.View());
        }
        std::cout.flush();
        if (result != 0)
            throw CLI::RuntimeError(result);
    });
}
