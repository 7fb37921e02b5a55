// Documents that are zip files: entries by name, properties, a thumbnail. Files come from outside, so an archive is looked
// through before anything of it is used, and refused with a line in the log when it is not what an archive should be.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"
#include "siblings/TvlUtils/Guid.h"
#include "siblings/TvlUtils/Stream.h"
#include "siblings/TvrContainer/Metadata.h"
#include "siblings/TvrContainer/Schemas.h"

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

/// Carries the mode that containers are opened in.
class ZipFile {
public:
    /// What a container is opened for; a file that is opened for reading is never written.
    enum class OpenMode : int {
        Read = 0,        ///< what would change it fails
        ReadWrite = 1,   ///< changes are kept until Close
    };
};

/// Attributes of a document's first file. Workspaces have none: callers pass null.
struct RootFileInfo;

/// An open container. Nothing reaches the file before Close, which writes a new file aside and puts it in place in one
/// step; without a change it writes nothing. Destruction closes as well, and nobody learns how, save on the way of an exception. One thread at a time.
/// Containers of one file do not exclude each other: the one that closes last wins.
class TVLSIBLINGS_API DocContainer {
public:
    /// An archive with more entries is refused.
    static constexpr std::size_t kMaxEntries = 4096;
    /// An archive with a longer name is refused. UTF-8.
    static constexpr std::size_t kMaxNameBytes = 1024;
    /// Entries that unpack to more are listed, but neither read nor extracted, unless SetMaxEntryBytes says otherwise.
    static constexpr long long kMaxEntryBytes = 64LL << 20;

    /// No container: false, and every operation fails.
    DocContainer();
    /// Takes the open container over; the other is none.
    DocContainer(DocContainer&&) noexcept;
    /// Closes what was open.
    DocContainer& operator=(DocContainer&&) noexcept;
    ~DocContainer();

    /// Whether it is open and can be used.
    explicit operator bool() const;
    /// Commits what was written and lets the file go. True when all of it is in the file now, also when there was nothing
    /// to write; on failure the file is as it was before. Closing again is a success without effect.
    bool Close();
    /// The most that an entry may unpack to, and a file may have that is added.
    void SetMaxEntryBytes(long long bytes);

    /// For changing properties.
    Metadata::Container& GetMetadata();
    /// Metadata::Container::GetMetadata.
    TvlUtils::Any GetMetadata(const Metadata::Definition& property) const;
    /// Metadata::Container::SetMetadata; false, too, when the container can't be written.
    bool SetMetadata(const Metadata::Definition& property, const TvlUtils::Any& value);
    /// Metadata::Container::SetStringMetadata; false, too, when the container can't be written.
    bool SetStringMetadata(const Metadata::Definition& property, const TvlString& language, const TvlString& text);
    /// A text, or the default one of texts in several languages; empty when there is none.
    TvlString GetStringMetadata(const Metadata::Definition& property) const;
    /// The text of a language, else the default one.
    TvlString GetStringMetadata(const Metadata::Definition& property, const TvlString& language) const;

    /// For reading. The whole entry has been unpacked and checked when the stream comes; without a source on failure.
    /// @param ignored of no effect here
    TvlUtils::Stream OpenFile(const TvlString& name, bool ignored) const;
    /// For writing an entry, which takes the place of one of that name when the container is closed. A stream that failed
    /// a write, or had none, leaves the entry as it was. The last two are of no effect here.
    TvlUtils::Stream CreateFileW(const TvlString& name, bool overwrite, bool ignored, RootFileInfo* rootFile);
    /// Adds a file from disk, or puts it in place of the entry of that name. When it can't be read, an entry of that name
    /// that was there stays, even if it was to be deleted.
    bool AddFile(const TvlString& name, const TvlString& source, bool ignored, RootFileInfo* rootFile);
    /// The same with what is left of a stream.
    bool AddFile(const TvlString& name, TvlUtils::Stream source, bool ignored, RootFileInfo* rootFile);
    /// Writes an entry to a file on disk, in one step: size and checksum have been compared before a file of that name is
    /// replaced, which stays whole on failure.
    bool ExtractFile(const TvlString& name, const TvlString& target) const;
    /// False when there is no such entry.
    bool DeleteFileW(const TvlString& name);
    /// Whether there is an entry of this name, as it would be after Close.
    bool DoesFileExist(const TvlString& name) const;
    /// Names of entries in their order in the file, without folders. As an expression the pattern has "." for any character
    /// and "*" behind a character or a point for any number of it; else it is a mask with "*" and "?". It must fit the
    /// whole name.
    std::vector<TvlString> GetFileNames(const TvlString& pattern, bool isExpression) const;

    /// Name and unpacked bytes of the thumbnail; an empty name when there is none.
    std::pair<TvlString, long long> GetThumbnailInfo() const;
    /// Makes a picture file the thumbnail, in place of any other. False when it can't be read.
    bool AddThumbnail(const TvlString& picture);

    /// The list with the GUID as its last element, and nowhere else. A nil GUID leaves the list as it is.
    static std::vector<TvlUtils::Guid> AddToDerivedFromList(
        std::vector<TvlUtils::Guid> list, const TvlUtils::Guid& guid);

    struct State;   // behind the interface

protected:
    explicit DocContainer(std::unique_ptr<State> state);
    /// Opens an existing file; a container that is false, with the reason in the log, when that fails.
    static std::unique_ptr<State> OpenState(const TvlString& path, ZipFile::OpenMode mode);
    /// A new container, which takes the place of a file of that name when it is closed. False when the folder can't be
    /// written.
    static std::unique_ptr<State> CreateState(const TvlString& path);

private:
    std::unique_ptr<State> m_state;
};
