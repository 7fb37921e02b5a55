// The narrow door to the file system: everything that the stand-ins do to files goes through these few operations, so
// that a test can let each of them fail, or end the process in it.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlPlatform/TvlString.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <system_error>
#include <vector>

/// Files and folders, as the stand-ins and the library reach them.
namespace TvlUtils::SystemIO {

/// How a file operation ended: true for success, else the reason.
class [[nodiscard]] FileResult {
public:
    /// A success.
    FileResult() = default;
    /// @{
    /// Failed for this reason; an error of 0 is a success.
    FileResult(std::error_code error) : m_error(error) { }
    FileResult(std::errc error) : m_error(std::make_error_code(error)) { }
    /// @}

    /// Whether it succeeded.
    explicit operator bool() const { return !m_error; }
    /// Whether it failed for this reason.
    bool Is(std::errc reason) const { return m_error == reason; }
    /// There is no such file, or no such folder on the way to it.
    bool IsMissing() const { return Is(std::errc::no_such_file_or_directory); }
    /// The reason in words, for the log; the same on every target for the usual ones.
    TvlString Reason() const { return TvlPlatform::FromUtf8(m_error.default_error_condition().message()); }

private:
    std::error_code m_error;
};

/// What a file is opened for, and what becomes of the one that is there.
enum class OpenMode {
    Read,        ///< an existing file
    ReadWrite,   ///< an existing file, its bytes kept
    CreateNew,   ///< a new file for reading and writing; fails with file_exists
    Append,      ///< a file, made when it is missing, that is read anywhere and written at its end
};

/// An open file. It belongs to one thread at a time. One that is not closed closes itself, and nobody learns how.
class TVLSIBLINGS_API FileHandle {
public:
    virtual ~FileHandle() = default;
    /// Reads up to `size` bytes from `offset` on; `done` is how many, less than `size` at the end of the file alone.
    virtual FileResult ReadAt(long long offset, void* bytes, std::size_t size, std::size_t& done) = 0;
    /// Writes up to `size` bytes at `offset`; `done` is how many, on success at least one. Fewer than `size` are no
    /// failure: the next call tells what hinders the rest. A file that is open for appending takes them behind what it
    /// has at that moment, in one step among all processes, whatever the offset.
    virtual FileResult WriteAt(long long offset, const void* bytes, std::size_t size, std::size_t& done) = 0;
    /// Returns when the bytes written outlast a power cut.
    virtual FileResult Flush() = 0;
    /// Closes the file, whatever the result.
    virtual FileResult Close() = 0;
};

/// What an entry of a folder is.
enum class FileKind {
    File,     ///< a regular file
    Folder,   ///< what List can look into
    Other,    ///< a device, a pipe and the like
};

/// What the file system tells of a path.
struct FileStatus {
    FileKind kind = FileKind::File;             // behind symbolic links
    bool isReadOnly = false;                    // the mark that keeps it from being written
    long long size = 0;                         // bytes; 0 for what is no file
    std::filesystem::file_time_type modified;   // when its content was last changed
};

/// One entry of a folder.
struct FolderEntry {
    std::filesystem::path name;       // without the folder
    FileKind kind = FileKind::File;   // behind symbolic links
    bool isLink = false;              // of a folder: it is a symbolic link or a mount point
};

/// Files and folders by path. Safe to call from any thread. May throw what is not derived from std::exception: a test's
/// layer ends the work so.
class TVLSIBLINGS_API FileLayer {
public:
    /// The layer in use: the system's, or a test's.
    static FileLayer& Get();
    /// Replaces the layer; null restores the system's. The caller keeps ownership.
    static void SetForTests(FileLayer*);

    virtual ~FileLayer() = default;
    /// Opens a regular file; anything else is refused.
    virtual FileResult Open(const std::filesystem::path& path, OpenMode mode, std::unique_ptr<FileHandle>& handle) = 0;
    /// Gives a file or folder another name in the same file system. A file of that name is replaced in one step, which
    /// outlasts a power cut as far as the system can do that.
    virtual FileResult Rename(const std::filesystem::path& from, const std::filesystem::path& to) = 0;
    /// Removes a file or an empty folder.
    virtual FileResult Remove(const std::filesystem::path& path) = 0;
    /// What a folder holds, in no order; "." and ".." are left out.
    virtual FileResult List(const std::filesystem::path& folder, std::vector<FolderEntry>& entries) = 0;
    /// Follows symbolic links.
    virtual FileResult Stat(const std::filesystem::path& path, FileStatus& status) = 0;
    /// Makes one folder, whose own folder must exist, as lastingly as a name is given; fails with file_exists.
    virtual FileResult MakeFolder(const std::filesystem::path& path) = 0;
    /// Sets or clears the mark that keeps a file from being written.
    virtual FileResult SetReadOnly(const std::filesystem::path& path, bool readOnly) = 0;

    // Rights of others. Layers whose files have none keep what stands here.

    /// Open with CreateNew, for a file that will take the place of `model`: whoever can't open that one can't open this one
    /// either. Without a model it is an ordinary new file.
    virtual FileResult CreateLike(
        const std::filesystem::path& path, const std::filesystem::path& model, std::unique_ptr<FileHandle>& handle)
    {
        static_cast<void>(model);
        return Open(path, OpenMode::CreateNew, handle);
    }
    /// MakeFolder for a folder that nobody but the user may enter. On windows the folder above decides.
    virtual FileResult MakePrivateFolder(const std::filesystem::path& path) { return MakeFolder(path); }
};

/// With this environment variable set to n the process ends at once in the n-th operation of the system's layer, with
/// kFileStopExitCode: no handler runs and nothing is flushed. A write does half of its work before. Operations count
/// from 1 in all threads together; handles that close themselves don't count.
inline constexpr const wchar_t* kFileStopVariable = L"TVL_FILE_STOP_AT";
/// Exit code of a process that has ended so.
inline constexpr int kFileStopExitCode = 86;

}   // namespace TvlUtils::SystemIO
