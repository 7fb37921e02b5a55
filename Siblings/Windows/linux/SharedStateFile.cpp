#include "Windows/linux/SharedStateFile.h"

#include "Windows/SystemPorts.h"

#include "siblings/TvlPlatform/TextEncoding.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace Ports {

namespace {
namespace fs = std::filesystem;

enum LockedByte : off_t { kGuard, kHolders, kOwner };
constexpr std::size_t kBytes = 2 * sizeof(std::uint32_t);

/// Locks or unlocks one byte; false when it can't, or when another open file has it and `wait` is false.
bool Lock(int file, LockedByte byte, int type, bool wait)
{
    struct flock lock { };
    lock.l_type = static_cast<short>(type);
    lock.l_whence = SEEK_SET;
    lock.l_start = byte;
    lock.l_len = 1;
    int result;
    do
        result = fcntl(file, wait ? F_OFD_SETLKW : F_OFD_SETLK, &lock);
    while (result != 0 && errno == EINTR);
    return result == 0;
}

/// A folder of this user's alone, made when it is missing. A link or somebody else's folder would let others reach in.
bool IsOwnFolder(const fs::path& path)
{
    if (mkdir(path.c_str(), S_IRWXU) != 0 && errno != EEXIST)
        return false;
    struct stat status { };
    return lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == geteuid()
        && (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

/// Folder of the shared states; empty when there is no safe one.
fs::path StateFolder()
{
    const auto named = [](const wchar_t* name) {
        const auto value = Environment::Get().Variable(name);
        return fs::path(value ? TvlPlatform::ToUtf8(*value) : std::string());
    };
    fs::path folder;
    if (const fs::path user = named(L"TVL_USER_DIR"); !user.empty()) {
        std::error_code failed;
        fs::create_directories(user, failed);
        folder = user / "Run";
    } else if (const fs::path runtime = named(L"XDG_RUNTIME_DIR"); runtime.is_absolute()) {
        folder = runtime / "tovel";
    } else {
        folder = fs::path("/tmp") / ("tovel-" + std::to_string(geteuid()));
    }
    return IsOwnFolder(folder) ? folder : fs::path();
}

bool IsSameFile(int file, const std::string& path)
{
    struct stat open { };
    struct stat named { };
    return fstat(file, &open) == 0 && stat(path.c_str(), &named) == 0 && open.st_dev == named.st_dev
        && open.st_ino == named.st_ino;
}

/// The file of this name with its guard locked, or -1. Its last holder may remove it between the two steps.
int OpenGuarded(const std::string& path, StateFileUse use)
{
    const int create = use == StateFileUse::OpenOrMake ? O_CREAT : 0;
    for (;;) {
        const int file = open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | create, S_IRUSR | S_IWUSR);
        if (file < 0)
            return file;
        if (!Lock(file, kGuard, F_WRLCK, true)) {
            close(file);
            return -1;
        }
        if (IsSameFile(file, path))
            return file;
        close(file);
    }
}

/// Makes the caller, who has the guard, a holder; false when it can't be one.
bool BecomeHolder(int file, StateFileUse use, const std::uint32_t (&words)[2])
{
    const bool isFirst = Lock(file, kHolders, F_WRLCK, false);
    // A file that nobody holds is what a process left that was ended.
    if (isFirst && (use == StateFileUse::OpenHeld || pwrite(file, words, kBytes, 0) != static_cast<ssize_t>(kBytes)))
        return false;
    struct stat status { };
    return Lock(file, kHolders, F_RDLCK, false) && fstat(file, &status) == 0
        && status.st_size >= static_cast<off_t>(kBytes);
}
}   // namespace

std::string SharedStateFile::Path(const std::string& name)
{
    const fs::path folder = name.empty() ? fs::path() : StateFolder();
    return folder.empty() ? std::string() : (folder / name).string();
}

std::unique_ptr<SharedStateFile> SharedStateFile::Hold(
    const std::string& path, StateFileUse use, const std::uint32_t (&words)[2])
{
    const int file = path.empty() ? -1 : OpenGuarded(path, use);
    if (file < 0)
        return nullptr;
    void* const memory = BecomeHolder(file, use, words)
        ? mmap(nullptr, kBytes, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0)
        : MAP_FAILED;
    if (memory == MAP_FAILED) {
        close(file);
        return nullptr;
    }
    Lock(file, kGuard, F_UNLCK, false);
    return std::unique_ptr<SharedStateFile>(new SharedStateFile(path, file, static_cast<std::uint32_t*>(memory)));
}

SharedStateFile::SharedStateFile(std::string path, int file, std::uint32_t* words)
    : m_path(std::move(path)), m_file(file), m_words(words)
{
}

SharedStateFile::~SharedStateFile()
{
    munmap(m_words, kBytes);
    if (Lock(m_file, kGuard, F_WRLCK, true) && Lock(m_file, kHolders, F_WRLCK, false) && IsSameFile(m_file, m_path))
        unlink(m_path.c_str());
    close(m_file);
}

bool SharedStateFile::Own(bool wait) { return Lock(m_file, kOwner, F_WRLCK, wait); }

void SharedStateFile::Disown() { Lock(m_file, kOwner, F_UNLCK, false); }

}   // namespace Ports
