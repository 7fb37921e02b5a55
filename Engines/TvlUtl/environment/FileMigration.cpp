// Content of locations, copied from folder to folder.
#include "CFileLocations.h"
#include "FileLocationTable.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <set>
#include <unordered_map>

using namespace TvlUtl;
namespace SystemIO = TvlUtils::SystemIO;

namespace {
using Report = TvlUtils::basic_safe_function<void(const MigrationStep&)>;

std::span<const wchar_t* const> MasksOf(const TvlString& displayName)
{
    static const auto resourceKeys = [] {
        std::unordered_map<TvlString, const wchar_t*> keys;
        for (const FileLocation& location : FileLocations())
            keys.emplace(location.DisplayName(), location.resourceKey);
        return keys;
    }();
    const auto found = resourceKeys.find(displayName);
    return found == resourceKeys.end() ? std::span<const wchar_t* const>() : FileMasks(found->second);
}

bool IsSameFolder(const TvlString& a, const TvlString& b)
{
    return SystemIO::Path::Contains(a, b) && SystemIO::Path::Contains(b, a);
}

/// The files of a location, each once. What lies at the new place is none of them, should that lie in the old one. Gives
/// the failure of a folder that can't be read.
SystemIO::FileResult FindFiles(
    const TvlString& displayName, const TvlString& source, const TvlString& destination, std::set<TvlString>& files)
{
    const bool isInside = SystemIO::Path::Contains(source, destination);
    SystemIO::FileResult failure;
    for (const wchar_t* const mask : MasksOf(displayName)) {
        std::vector<TvlString> found;
        if (const auto result = SystemIO::File::Find(source, mask, true, false, found); !result)
            failure = result;
        for (TvlString& file : found)
            if (!isInside || !SystemIO::Path::Contains(destination, file))
                files.insert(std::move(file));
    }
    return failure;
}

SystemIO::FileResult CopyContent(const TvlString& from, const TvlString& to)
{
    const auto made = SystemIO::Folder::EnsureExists(SystemIO::Path::GetFolderName(to));
    return made ? SystemIO::File::Copy(from, to, true) : made;
}

/// Empty for a success, else the reason in words.
TvlString CopyFile(const TvlString& from, const TvlString& to)
{
    SystemIO::FileLayer& files = SystemIO::FileLayer::Get();
    SystemIO::FileStatus status;
    // A file that can't be looked at may have the mark, which its copy would lack.
    auto result = files.Stat(SystemIO::ToFilePath(from), status);
    // Callers rely on a source that can be written from the first step on.
    if (status.isReadOnly)
        SystemIO::File::MakeWritable(from);
    if (result)
        result = CopyContent(from, to);
    if (result && status.isReadOnly)
        result = files.SetReadOnly(SystemIO::ToFilePath(to), true);
    return result ? TvlString() : result.Reason();
}

/// Tells of a folder that can't be used, though it may well be there.
void ReportFolder(const TvlString& displayName, const TvlString& source, const TvlString& destination,
    const SystemIO::FileResult& failure, const Report& report)
{
    report({displayName, source, destination, failure.Reason(), 0, 0});
}

/// Success for a folder; missing when there is something else of this name.
SystemIO::FileResult CheckFolder(const TvlString& path)
{
    SystemIO::FileStatus status;
    const auto found = SystemIO::FileLayer::Get().Stat(SystemIO::ToFilePath(path), status);
    return found && status.kind != SystemIO::FileKind::Folder
        ? SystemIO::FileResult(std::errc::no_such_file_or_directory)
        : found;
}

void CopyLocation(
    const TvlString& displayName, const TvlString& source, const TvlString& destination, const Report& report)
{
    std::set<TvlString> files;
    const auto found = FindFiles(displayName, source, destination, files);
    MigrationStep step{displayName, {}, {}, {}, 0, files.size()};
    if (!found)
        ReportFolder(displayName, source, destination, found, report);
    for (const TvlString& file : files) {
        step.source = file;
        step.target = destination + file.Mid(source.GetLength());
        step.problem = CopyFile(step.source, step.target);
        ++step.done;
        report(step);
    }
}
}   // namespace

void CFileLocations::MigrateContent(Moves& moves) { MigrateContent(moves, {}); }

void CFileLocations::MigrateContent(Moves& moves, Report report)
{
    for (auto& [displayName, folders] : moves) {
        auto& [to, from] = folders;
        const auto source = CheckFolder(from);
        if (source)
            to = SystemIO::Path::AddBackslash(to);
        const auto destination = source ? CheckFolder(to) : source;
        if (!destination && !destination.IsMissing())
            ReportFolder(displayName, from, to, destination, report);
        else if (destination && !IsSameFolder(from, to))
            CopyLocation(displayName, SystemIO::Path::AddBackslash(from), to, report);
    }
}
