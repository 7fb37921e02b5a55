// What an open container holds: the archive as it lies on disk, and what is to become of it.
#pragma once

#include "TvrContainer/EntryWriter.h"
#include "TvrContainer/ZipArchive.h"
#include "siblings/TvrContainer/DocContainer.h"

#include <optional>

/// Operations throw std::bad_alloc, and what a test's file layer throws.
struct DocContainer::State {
    using Bytes = std::shared_ptr<const std::string>;

    TvlString path;
    bool isWritable = false;
    bool isNew = false;
    long long maxEntryBytes = kMaxEntryBytes;
    TvrContainers::ZipArchive archive;

    /// Writes a line about this container to the log; false, for the caller to return.
    bool Refuse(const std::string& what, const std::string& reason) const;

    /// An entry's bytes as they will be, unpacked and checked; null, with the reason in the log, on failure.
    Bytes Read(const TvlString& name);
    bool Extract(const TvlString& name, const TvlString& target);
    bool Exists(const TvlString& name);
    std::vector<std::string> Names();

    bool Put(const TvlString& name, Bytes bytes);
    bool Delete(const TvlString& name);
    /// Lets an entry stay that was to be deleted.
    void Keep(const TvlString& name);
    std::shared_ptr<TvrContainers::EntryWriter> Begin(const TvlString& name);

    /// The properties, read when they are first asked for.
    Metadata::Container& Properties();
    bool Commit();

private:
    /// Takes over what streams have written.
    void TakeStreams();
    bool TakeProperties();
    /// The place in the archive of an entry that may be unpacked, or -1.
    int Readable(const std::string& name);

    TvrContainers::ZipChanges m_changes;
    std::vector<std::pair<std::string, std::shared_ptr<TvrContainers::EntryWriter>>> m_streams;
    std::optional<Metadata::Container> m_properties;
};
