// Files by the calls of POSIX.
#include "Windows/SystemFiles.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace TvlUtils::SystemIO {

namespace {
FileResult LastError() { return std::error_code(errno, std::generic_category()); }

/// Calls again what a signal has interrupted.
template <class Call>
auto Uninterrupted(Call call)
{
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

class LinuxFile final : public FileHandle {
public:
    LinuxFile() = default;
    LinuxFile(const LinuxFile&) = delete;
    LinuxFile& operator=(const LinuxFile&) = delete;
    ~LinuxFile() override
    {
        if (m_descriptor >= 0)
            close(m_descriptor);
    }

    void Own(int descriptor) { m_descriptor = descriptor; }

    FileResult ReadAt(long long offset, void* bytes, std::size_t size, std::size_t& done) override
    {
        for (done = 0; done < size;) {
            const auto count = Uninterrupted([&] {
                return pread(
                    m_descriptor, static_cast<char*>(bytes) + done, size - done, offset + static_cast<long long>(done));
            });
            if (count < 0)
                return LastError();
            if (count == 0)
                break;
            done += static_cast<std::size_t>(count);
        }
        return {};
    }

    FileResult WriteAt(long long offset, const void* bytes, std::size_t size, std::size_t& done) override
    {
        done = 0;
        // Of a file that is open for appending Linux heeds no offset here.
        const auto count = Uninterrupted([&] { return pwrite(m_descriptor, bytes, size, offset); });
        if (count < 0)
            return LastError();
        done = static_cast<std::size_t>(count);
        return count == 0 && size > 0 ? FileResult(std::errc::no_space_on_device) : FileResult();
    }

    FileResult Flush() override
    {
        return Uninterrupted([&] { return fsync(m_descriptor); }) < 0 ? LastError() : FileResult();
    }

    FileResult Close() override
    {
        const int descriptor = std::exchange(m_descriptor, -1);
        // An interrupted close has closed all the same.
        return close(descriptor) < 0 && errno != EINTR ? LastError() : FileResult();
    }

private:
    int m_descriptor = -1;
};

struct FolderCloser {
    void operator()(DIR* folder) const { closedir(folder); }
};

FileKind KindOf(mode_t mode)
{
    return S_ISREG(mode) ? FileKind::File : S_ISDIR(mode) ? FileKind::Folder : FileKind::Other;
}

/// Kind of an entry, links followed, and whether it is one. Asks the system only for what the folder itself does not tell.
std::pair<FileKind, bool> KindOf(int folder, const dirent& entry)
{
    if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN)
        return {KindOf(DTTOIF(entry.d_type)), false};
    struct stat own = {};
    struct stat found = {};
    const bool isLink = fstatat(folder, entry.d_name, &own, AT_SYMLINK_NOFOLLOW) == 0 && S_ISLNK(own.st_mode);
    return {fstatat(folder, entry.d_name, &found, 0) == 0 ? KindOf(found.st_mode) : FileKind::Other, isLink};
}

constexpr mode_t kEverybody = 0666;   // less the user's mask

int Flags(OpenMode mode)
{
    // Without O_NONBLOCK a pipe of this name would hold the caller up before it is refused.
    static constexpr int kFlags[] = {O_RDONLY | O_NONBLOCK, O_RDWR | O_NONBLOCK, O_RDWR | O_CREAT | O_EXCL,
        O_RDWR | O_CREAT | O_APPEND | O_NONBLOCK};
    return kFlags[static_cast<int>(mode)] | O_CLOEXEC;
}

/// Makes changes of names in a folder outlast a power cut. Some file systems can't: nothing is lost but that promise.
void FlushFolder(const std::filesystem::path& folder)
{
    const int descriptor = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    fsync(descriptor);
    close(descriptor);
}

constexpr mode_t kRights = S_IRWXU | S_IRWXG | S_IRWXO;

/// What a file is made with that will get the rights of another one: nothing that anybody is to lose again, since who has it
/// open once may go on reading.
mode_t FirstRights(const struct stat& model)
{
    const mode_t rights = model.st_mode & kRights;
    constexpr int kGroupAboveOthers = 3;   // bits
    const bool hasGroupNoMoreThanOthers = ((rights & S_IRWXG) >> kGroupAboveOthers & ~rights & S_IRWXO) == 0;
    return model.st_uid == geteuid() && hasGroupNoMoreThanOthers ? rights : S_IRUSR | S_IWUSR;
}

/// Gives a new file owner, group and rights of the one whose place it will take, as far as the user may: rights that
/// were meant for another group go to nobody.
void TakeRights(int descriptor, const struct stat& made, const struct stat& model)
{
    mode_t rights = model.st_mode & kRights;
    const bool isOthers = made.st_uid != model.st_uid || made.st_gid != model.st_gid;
    if (isOthers && fchown(descriptor, model.st_uid, model.st_gid) < 0
        && fchown(descriptor, static_cast<uid_t>(-1), model.st_gid) < 0 && made.st_gid != model.st_gid)
        rights &= ~static_cast<mode_t>(S_IRWXG);
    if ((made.st_mode & kRights) != rights)
        fchmod(descriptor, rights);   // where it fails the file stays closed to others
}

/// @param access rights of a file that is made, less the user's mask
/// @param model whose rights a file that is made gets, or null
FileResult OpenAt(const std::filesystem::path& path, int flags, mode_t access, const struct stat* model,
    std::unique_ptr<FileHandle>& handle)
{
    auto file = std::make_unique<LinuxFile>();   // before there is a descriptor to lose
    const int descriptor = Uninterrupted([&] { return open(path.c_str(), flags, access); });
    if (descriptor < 0)
        return LastError();
    file->Own(descriptor);
    struct stat status = {};
    if (fstat(descriptor, &status) < 0)
        return LastError();
    if (!S_ISREG(status.st_mode))
        return S_ISDIR(status.st_mode) ? std::errc::is_a_directory : std::errc::not_supported;
    if (model)
        TakeRights(descriptor, status, *model);
    handle = std::move(file);
    return {};
}
}   // namespace

FileResult OpenSystemFile(const std::filesystem::path& path, OpenMode mode, std::unique_ptr<FileHandle>& handle)
{
    return OpenAt(path, Flags(mode), kEverybody, nullptr, handle);
}

FileResult CreateSystemFileLike(
    const std::filesystem::path& path, const std::filesystem::path& model, std::unique_ptr<FileHandle>& handle)
{
    struct stat found = {};
    if (stat(model.c_str(), &found) < 0 || !S_ISREG(found.st_mode))
        return OpenSystemFile(path, OpenMode::CreateNew, handle);
    return OpenAt(path, Flags(OpenMode::CreateNew), FirstRights(found), &found, handle);
}

FileResult MakeSystemFolder(const std::filesystem::path& path)
{
    const std::filesystem::path above = path.has_filename() ? path.parent_path() : path.parent_path().parent_path();
    if (mkdir(path.c_str(), kRights) < 0)
        return LastError();
    FlushFolder(above);
    return {};
}

FileResult MakePrivateSystemFolder(const std::filesystem::path& path)
{
    return mkdir(path.c_str(), S_IRWXU) < 0 ? LastError() : FileResult();
}

FileResult RenameSystemFile(const std::filesystem::path& from, const std::filesystem::path& to)
{
    const std::filesystem::path folder = to.parent_path();   // nothing is left to fail behind the renaming
    if (std::rename(from.c_str(), to.c_str()) < 0)
        return LastError();
    FlushFolder(folder);
    return {};
}

FileResult RemoveSystemFile(const std::filesystem::path& path)
{
    return std::remove(path.c_str()) < 0 ? LastError() : FileResult();
}

FileResult StatSystemFile(const std::filesystem::path& path, FileStatus& status)
{
    constexpr mode_t kWriters = S_IWUSR | S_IWGRP | S_IWOTH;
    struct stat found = {};
    if (stat(path.c_str(), &found) < 0)
        return LastError();
    status.kind = KindOf(found.st_mode);
    status.isReadOnly = (found.st_mode & kWriters) == 0;
    status.size = status.kind == FileKind::File ? found.st_size : 0;
    const auto sinceEpoch =
        std::chrono::seconds(found.st_mtim.tv_sec) + std::chrono::nanoseconds(found.st_mtim.tv_nsec);
    status.modified = std::chrono::file_clock::from_sys(
        std::chrono::time_point<std::chrono::system_clock, std::chrono::nanoseconds>(sinceEpoch));
    return {};
}

FileResult ListSystemFolder(const std::filesystem::path& folder, std::vector<FolderEntry>& entries)
{
    entries.clear();
    const std::unique_ptr<DIR, FolderCloser> open(opendir(folder.c_str()));
    if (!open)
        return LastError();
    for (errno = 0; const dirent* const found = readdir(open.get()); errno = 0) {
        const std::string_view name = found->d_name;
        if (name == "." || name == "..")
            continue;
        const auto [kind, isLink] = KindOf(dirfd(open.get()), *found);
        entries.push_back({name, kind, kind == FileKind::Folder && isLink});
    }
    return errno == 0 ? FileResult() : LastError();
}

void EndProcessAtOnce(int exitCode) { _exit(exitCode); }

}   // namespace TvlUtils::SystemIO
