#include "ExifCommand.h"

#include "ExifFile.h"
#include "OrderedWork.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <ostream>
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
void AddFolder(const fs::path& folder, std::vector<Candidate>& candidates)
{
    const auto first = static_cast<std::ptrdiff_t>(candidates.size());
    std::error_code failed;
    for (fs::recursive_directory_iterator at(folder, fs::directory_options::skip_permission_denied, failed), end;
         !failed && at != end; at.increment(failed)) {
        std::error_code unknown;
        if (at->is_regular_file(unknown))
            candidates.push_back({at->path(), false, {}});
    }
    std::sort(candidates.begin() + first, candidates.end(),
        [](const Candidate& a, const Candidate& b) { return a.path < b.path; });
    if (failed)
        candidates.push_back({folder, true, "folder can't be read to its end"});
}

std::vector<Candidate> Candidates(const ExifRequest& request)
{
    std::vector<Candidate> candidates;
    for (const fs::path& path : request.paths) {
        std::error_code unknown;
        if (!fs::is_directory(path, unknown))
            candidates.push_back({path, true, {}});
        else if (request.recursive)
            AddFolder(path, candidates);
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

int RunExif(const ExifRequest& request, std::ostream& out, std::ostream& errors, const ExifProgress& progress)
{
    const std::vector<Candidate> candidates = Candidates(request);
    const unsigned wanted = request.threads ? request.threads : std::max(1u, std::thread::hardware_concurrency());
    const bool isArray = request.json && !request.orientation;
    int exitCode = 0;
    const char* separator = "\n";
    if (isArray)
        out << '[';
    DoInOrder(
        candidates.size(), std::min(wanted, kMostThreads),
        [&](std::size_t i) { return ProcessSafely(candidates[i], request); },
        [&](std::size_t i, const Outcome& outcome) {
            if (progress)
                progress(i + 1, candidates.size());
            if (!outcome.shown.empty()) {
                out << (isArray ? separator : "") << outcome.shown;
                separator = ",\n";
            }
            if (!outcome.error.empty()) {
                errors << outcome.error << std::endl;
                exitCode = kBadFile;
            }
        });
    if (isArray)
        out << "\n]\n";
    return exitCode;
}
