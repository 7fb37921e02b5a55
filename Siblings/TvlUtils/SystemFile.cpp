// Whole files, over the file layer.
#include "siblings/TvlUtils/SystemIO.h"

#include "TvlUtils/FileAccess.h"
#include "windows/Clock.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <mutex>
#include <random>

namespace TvlUtils::SystemIO {

namespace fs = std::filesystem;

namespace {
bool HasKind(const TvlString& path, FileKind kind)
{
    FileStatus status;
    return Reported([&] { return FileLayer::Get().Stat(PathOf(path), status); }) && status.kind == kind;
}

FileResult ReadToEnd(FileHandle& file, std::string& bytes, std::size_t limit)
{
    constexpr std::size_t kFirstPiece = 64 * 1024;
    for (std::size_t size = 0;;) {
        // One byte more than allowed tells a file that is too large.
        bytes.resize(std::min(std::max(2 * size, kFirstPiece), limit) + 1);
        std::size_t done = 0;
        const std::size_t room = bytes.size() - size;
        if (const FileResult result = file.ReadAt(static_cast<long long>(size), bytes.data() + size, room, done);
            !result)
            return result;
        size += done;
        if (done < room) {
            bytes.resize(size);
            return {};
        }
        if (size > limit)
            return std::errc::file_too_large;
    }
}

// Names of aside files: the file's own, a number that nobody else has, and this end.
constexpr std::string_view kAsideEnd = ".aside";
constexpr std::size_t kAsideDigits = 16;

bool IsAsideOf(const fs::path& path, const fs::path& name)
{
    const fs::path::string_type& all = name.native();
    const fs::path::string_type own = path.filename().native();
    const fs::path::string_type end = fs::path(kAsideEnd).native();
    const std::size_t size = own.size() + 1 + kAsideDigits + end.size();
    if (all.size() != size || !all.starts_with(own) || !all.ends_with(end) || all[own.size()] != '.')
        return false;
    const auto digits = all.begin() + static_cast<std::ptrdiff_t>(own.size()) + 1;
    return std::all_of(
        digits, digits + kAsideDigits, [](auto c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f'); });
}

using Writer = std::function<FileResult(FileHandle&)>;

FileResult MakeAside(const fs::path& aside, const fs::path& path, const Writer& write)
{
    std::unique_ptr<FileHandle> file;
    FileResult result = FileLayer::Get().CreateLike(aside, path, file);
    if (!result)
        return result;
    result = write(*file);
    if (result)
        result = file->Flush();
    const FileResult closed = file->Close();
    return result ? closed : result;
}

/// One attempt; `lost` tells that another writer has taken the aside file away.
FileResult ReplaceOnce(const fs::path& path, const Writer& write, bool& lost)
{
    fs::path aside = path;
    aside += UniqueSuffix();
    FileResult result = MakeAside(aside, path, write);
    if (result) {
        result = FileLayer::Get().Rename(aside, path);
        lost = result.IsMissing();
    }
    if (!result)
        static_cast<void>(FileLayer::Get().Remove(aside));
    return result;
}
}   // namespace

std::string UniqueSuffix()
{
    static std::atomic<unsigned> counter = 0;
    static const std::uint64_t start = std::random_device()() ^ std::uint64_t{std::random_device()()} << 32;
    const auto now = static_cast<std::uint64_t>(Ports::Clock::Get().Elapsed().count());
    char digits[kAsideDigits + 1];
    std::snprintf(digits, sizeof digits, "%016llx", static_cast<unsigned long long>(start + now * 65537 + counter++));
    return "." + std::string(digits) + std::string(kAsideEnd);
}

void RemoveLeftovers(const fs::path& path)
{
    // No failure, also for want of memory: the next writer tries again.
    static_cast<void>(Reported([&]() -> FileResult {
        std::vector<FolderEntry> entries;
        const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
        if (const FileResult listed = FileLayer::Get().List(folder, entries); !listed)
            return listed;
        for (const FolderEntry& entry : entries)
            if (entry.kind == FileKind::File && IsAsideOf(path, entry.name))
                static_cast<void>(FileLayer::Get().Remove(Within(folder, entry.name)));
        return {};
    }));
}

FileResult WriteWhole(FileHandle& file, long long offset, std::string_view bytes)
{
    for (std::size_t written = 0; written < bytes.size();) {
        std::size_t done = 0;
        const std::string_view rest = bytes.substr(written);
        const long long at = offset + static_cast<long long>(written);
        if (const FileResult result = file.WriteAt(at, rest.data(), rest.size(), done); !result)
            return result;
        written += done;
    }
    return {};
}

FileResult ReplaceFile(const fs::path& path, const Writer& write)
{
    // A writer takes away what others left beside the file, which it can't tell from what they are writing. Within the
    // process they wait for each other; one of another process makes this one start again.
    static std::recursive_mutex writers;
    const std::lock_guard hold(writers);
    constexpr int kAttempts = 100;
    FileStatus status;
    if (FileLayer::Get().Stat(path, status) && status.isReadOnly)
        return std::errc::permission_denied;
    FileResult result;
    bool lost = true;
    for (int attempt = 0; lost && attempt < kAttempts; ++attempt) {
        lost = false;
        result = ReplaceOnce(path, write, lost);
    }
    if (result)
        RemoveLeftovers(path);
    return result;
}

namespace File {

bool Delete(const TvlString& path)
{
    return !HasKind(path, FileKind::Folder)
        && static_cast<bool>(Reported([&] { return FileLayer::Get().Remove(PathOf(path)); }));
}

bool Exists(const TvlString& path) { return HasKind(path, FileKind::File); }

FileResult EnsureExists(const TvlString& path)
{
    return Reported([&] {
        std::unique_ptr<FileHandle> file;
        const FileResult made = FileLayer::Get().Open(PathOf(path), OpenMode::CreateNew, file);
        if (made)
            return file->Close();
        return made.Is(std::errc::file_exists) && Exists(path) ? FileResult() : made;
    });
}

FileResult ReadAll(const TvlString& path, std::string& bytes, std::size_t limit)
{
    const FileResult result = Reported([&] {
        std::unique_ptr<FileHandle> file;
        const FileResult opened = FileLayer::Get().Open(PathOf(path), OpenMode::Read, file);
        return opened ? ReadToEnd(*file, bytes, limit) : opened;
    });
    if (!result)
        bytes.clear();
    return result;
}

FileResult WriteAside(const TvlString& path, std::string_view bytes)
{
    return Reported(
        [&] { return ReplaceFile(PathOf(path), [&](FileHandle& file) { return WriteWhole(file, 0, bytes); }); });
}

}   // namespace File

namespace Path {

bool Exists(const TvlString& path)
{
    FileStatus status;
    return static_cast<bool>(Reported([&] { return FileLayer::Get().Stat(PathOf(path), status); }));
}

bool IsFile(const TvlString& path) { return HasKind(path, FileKind::File); }

}   // namespace Path

namespace Folder {

bool Exists(const TvlString& path) { return HasKind(path, FileKind::Folder); }

FileResult EnsureExists(const TvlString& path)
{
    return Reported([&] {
        FileStatus status;
        std::vector<fs::path> missing;
        fs::path at = PathOf(path);
        if (!at.has_filename())
            at = at.parent_path();   // a separator stood at the end
        for (; !at.empty() && FileLayer::Get().Stat(at, status).IsMissing(); at = at.parent_path()) {
            missing.push_back(at);
            if (at == at.parent_path())
                break;   // a root that is not there
        }
        FileResult result;
        for (auto folder = missing.rbegin(); result && folder != missing.rend(); ++folder) {
            result = FileLayer::Get().MakeFolder(*folder);
            if (result.Is(std::errc::file_exists))
                result = {};   // somebody else was faster
        }
        if (result && !Exists(path))
            return FileResult(std::errc::not_a_directory);
        return result;
    });
}

}   // namespace Folder

}   // namespace TvlUtils::SystemIO
