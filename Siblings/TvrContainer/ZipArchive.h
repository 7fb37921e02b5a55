// One archive over libzip: entries that were checked beforehand are unpacked, and a changed archive is made in memory.
#pragma once

#include "TvrContainer/ZipDirectory.h"
#include "siblings/TvlPlatform/TvlString.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct zip;         // libzip's archive
struct zip_error;   // its reason for a failure

namespace TvrContainers {

/// What becomes of entries: new bytes by name, or null for one that goes.
using ZipChanges = std::map<std::string, std::shared_ptr<const std::string>>;

/// Throws std::bad_alloc, and what a test's file layer throws.
class ZipArchive {
public:
    /// An archive without entries and without a file.
    ZipArchive();
    ~ZipArchive();
    ZipArchive(const ZipArchive&) = delete;
    ZipArchive& operator=(const ZipArchive&) = delete;

    /// Opens a file and checks it. Returns why that failed; empty for a success.
    std::string Open(const TvlString& path);
    /// The entries in their order in the file.
    const std::vector<ZipEntry>& Entries() const { return m_entries; }
    /// The place of an entry in Entries, or -1.
    int Find(std::string_view name) const;

    /// Gives an entry's bytes to `take` piece by piece, until that answers false; no more of them than its size. Returns
    /// why it failed: behind the last piece, when the checksum is wrong. Empty for a success.
    std::string Unpack(int entry, const std::function<bool(std::string_view)>& take);
    /// Whether something could not be unpacked for want of memory, or since the file could not be read: another time it
    /// may be.
    bool HasFailedForNow() const { return m_hasFailedForNow; }
    /// Makes the bytes of the archive with the changes; entries that don't change are copied as they are packed. The
    /// archive is not usable afterwards. Returns why it failed; empty for a success.
    std::string Rewrite(const ZipChanges& changes, std::string& bytes);

private:
    class Source;
    struct Discard {
        void operator()(zip* archive) const;
    };
    std::string OpenLibrary();
    /// The reason in words.
    std::string ReasonOf(zip_error& error);

    bool m_hasFailedForNow = false;
    std::unique_ptr<TvlUtils::SystemIO::FileHandle> m_file;   // null for one without a file
    std::unique_ptr<PieceReader> m_reader;
    std::vector<ZipEntry> m_entries;
    std::unique_ptr<Source> m_source;
    std::unique_ptr<zip, Discard> m_archive;   // opened on first use
};

}   // namespace TvrContainers
