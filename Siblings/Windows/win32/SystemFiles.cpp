// Files by the Windows calls.
#include "Windows/SystemFiles.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <utility>
#include <windows.h>

namespace TvlUtils::SystemIO {

namespace {
FileResult LastError() { return std::error_code(static_cast<int>(GetLastError()), std::system_category()); }

class Win32File final : public FileHandle {
public:
    explicit Win32File(bool appends) : m_appends(appends) { }
    Win32File(const Win32File&) = delete;
    Win32File& operator=(const Win32File&) = delete;
    ~Win32File() override
    {
        if (m_file)
            CloseHandle(m_file);
    }

    /// Owns the handle from now on.
    void Own(HANDLE file) { m_file = file; }

    FileResult ReadAt(long long offset, void* bytes, std::size_t size, std::size_t& done) override
    {
        for (done = 0; done < size;) {
            OVERLAPPED place = Place(offset + static_cast<long long>(done));
            DWORD count = 0;
            if (!ReadFile(m_file, static_cast<char*>(bytes) + done, Piece(size - done), &count, &place)
                && GetLastError() != ERROR_HANDLE_EOF)
                return LastError();
            if (count == 0)
                break;
            done += count;
        }
        return {};
    }

    FileResult WriteAt(long long offset, const void* bytes, std::size_t size, std::size_t& done) override
    {
        // Wine looks for the end and writes there in two steps, which no other process may come between.
        OVERLAPPED turn = Place(kTurn);
        if (m_appends && !LockFileEx(m_file, LOCKFILE_EXCLUSIVE_LOCK, 0, 1, 0, &turn))
            return LastError();
        OVERLAPPED place = Place(offset);
        DWORD count = 0;
        const bool written = WriteFile(m_file, bytes, Piece(size), &count, &place);
        const FileResult failure = written ? FileResult() : LastError();
        if (m_appends)
            UnlockFileEx(m_file, 0, 1, 0, &turn);
        done = count;
        if (!written)
            return failure;
        return count == 0 && size > 0 ? FileResult(std::errc::no_space_on_device) : FileResult();
    }

    FileResult Flush() override { return FlushFileBuffers(m_file) ? FileResult() : LastError(); }
    FileResult Close() override { return CloseHandle(std::exchange(m_file, nullptr)) ? FileResult() : LastError(); }

private:
    static OVERLAPPED Place(long long offset)
    {
        OVERLAPPED place{};
        place.Offset = static_cast<DWORD>(offset);
        place.OffsetHigh = static_cast<DWORD>(offset >> 32);
        return place;
    }
    /// Counts of one call have 32 bits.
    static DWORD Piece(std::size_t size) { return static_cast<DWORD>(std::min(size, std::size_t{1} << 30)); }

    static constexpr long long kTurn = 1LL << 62;   // a byte that no file has, locked by whoever appends

    HANDLE m_file;
    bool m_appends;
};

struct Mode {
    DWORD access;
    DWORD sharing;
    DWORD disposition;
};

// In the order of OpenMode. What is being made must not be taken away before it is done. Without the right to write at
// all places the system writes at the end.
constexpr Mode kModes[] = {
    {GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, OPEN_EXISTING},
    {GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, OPEN_EXISTING},
    {GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, CREATE_NEW},
    {GENERIC_READ | FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, OPEN_ALWAYS},
};

bool IsFolder(const std::filesystem::path& path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

struct SearchCloser {
    void operator()(void* search) const { FindClose(search); }
};

/// Null when there is no such folder.
void* OpenSearch(const std::filesystem::path& pattern, WIN32_FIND_DATAW& found)
{
    const HANDLE search = FindFirstFileW(pattern.c_str(), &found);
    return search == INVALID_HANDLE_VALUE ? nullptr : search;
}

/// Files that a cloud service fetches on demand are reparse points, too.
bool IsLink(const WIN32_FIND_DATAW& found)
{
    return (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT)
        && (found.dwReserved0 == IO_REPARSE_TAG_SYMLINK || found.dwReserved0 == IO_REPARSE_TAG_MOUNT_POINT);
}
}   // namespace

FileResult OpenSystemFile(const std::filesystem::path& path, OpenMode mode, std::unique_ptr<FileHandle>& handle)
{
    const auto& [access, sharing, disposition] = kModes[static_cast<int>(mode)];
    auto file = std::make_unique<Win32File>(mode == OpenMode::Append);   // before there is a handle to lose
    const HANDLE opened =
        CreateFileW(path.c_str(), access, sharing, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (opened == INVALID_HANDLE_VALUE) {
        const FileResult reason = LastError();
        return reason.Is(std::errc::permission_denied) && IsFolder(path) ? std::errc::is_a_directory : reason;
    }
    file->Own(opened);
    if (GetFileType(opened) != FILE_TYPE_DISK)
        return std::errc::not_supported;
    handle = std::move(file);
    return {};
}

// A file gets the rights that its folder hands down, as the one did whose place it takes.
FileResult CreateSystemFileLike(
    const std::filesystem::path& path, const std::filesystem::path&, std::unique_ptr<FileHandle>& handle)
{
    return OpenSystemFile(path, OpenMode::CreateNew, handle);
}

FileResult MakeSystemFolder(const std::filesystem::path& path)
{
    std::error_code failed;
    if (!std::filesystem::create_directory(path, failed) && !failed)
        return std::errc::file_exists;
    return failed;
}

FileResult MakePrivateSystemFolder(const std::filesystem::path& path)
{
    return CreateDirectoryW(path.c_str(), nullptr) ? FileResult() : LastError();
}

FileResult RenameSystemFile(const std::filesystem::path& from, const std::filesystem::path& to)
{
    // A reader, or a scanner for viruses, that has the file open for a moment keeps it from being replaced.
    constexpr int kAttempts = 20;
    constexpr DWORD kPause = 10;   // milliseconds
    for (int attempt = 1;; ++attempt) {
        if (MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
            return {};
        const DWORD reason = GetLastError();
        const bool mayPass = reason == ERROR_SHARING_VIOLATION || reason == ERROR_ACCESS_DENIED;
        if (!mayPass || attempt == kAttempts)
            return std::error_code(static_cast<int>(reason), std::system_category());
        Sleep(kPause);
    }
}

FileResult RemoveSystemFile(const std::filesystem::path& path)
{
    const bool removed = IsFolder(path) ? RemoveDirectoryW(path.c_str()) : DeleteFileW(path.c_str());
    return removed ? FileResult() : LastError();
}

FileResult StatSystemFile(const std::filesystem::path& path, FileStatus& status)
{
    namespace fs = std::filesystem;
    std::error_code failed;
    const fs::file_status found = fs::status(path, failed);
    if (!fs::exists(found))
        return failed ? failed : std::make_error_code(std::errc::no_such_file_or_directory);
    status.kind = fs::is_regular_file(found) ? FileKind::File
        : fs::is_directory(found)            ? FileKind::Folder
                                             : FileKind::Other;
    constexpr fs::perms kWriters = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    status.isReadOnly = (found.permissions() & kWriters) == fs::perms::none;
    status.size = 0;
    status.modified = fs::last_write_time(path, failed);
    if (!failed && status.kind == FileKind::File)
        status.size = static_cast<long long>(fs::file_size(path, failed));
    return failed;
}

FileResult ListSystemFolder(const std::filesystem::path& folder, std::vector<FolderEntry>& entries)
{
    entries.clear();
    WIN32_FIND_DATAW found;
    const std::unique_ptr<void, SearchCloser> search(OpenSearch(folder / L"*", found));
    if (!search)
        return LastError();
    do {
        const std::wstring_view name = found.cFileName;
        if (name == L"." || name == L"..")
            continue;
        FileStatus status;
        FileKind kind = found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY ? FileKind::Folder : FileKind::File;
        const bool isLink = IsLink(found);
        if (isLink)
            kind = StatSystemFile(folder / name, status) ? status.kind : FileKind::Other;
        entries.push_back({name, kind, kind == FileKind::Folder && isLink});
    } while (FindNextFileW(search.get(), &found));
    return GetLastError() == ERROR_NO_MORE_FILES ? FileResult() : LastError();
}

void EndProcessAtOnce(int exitCode)
{
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(exitCode));
    std::abort();   // not reached
}

}   // namespace TvlUtils::SystemIO
