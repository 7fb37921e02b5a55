// What an open container holds: the archive as it lies on disk, and what is to become of it.
#pragma once

#include "TvrContainer/EntryWriter.h"
#include "TvrContainer/ZipArchive.h"
#include "siblings/TvrContainer/DocContainer.h"

#include <exception>
#include <optional>

/// Operations throw std::bad_alloc, and what a test's file layer throws.
struct DocContainer::State {
    using Bytes = std::shared_ptr<const std::string>;

    TvlString path;
    bool isWritable = false;
    bool isNew = false;
    bool isBroken = false;   // an operation ended in the middle, for want of memory, or knows less than there is
    int exceptions = std::uncaught_exceptions();   // on their way when the container was opened
    long long maxEntryBytes = kMaxEntryBytes;
    TvrContainers::ZipArchive archive;

    /// Writes a line about this container to the log; false, for the caller to return.
    bool Refuse(const std::string& what, const std::string& reason) const;

    /// An entry's bytes as they will be, unpacked and checked; null, with the reason in the log, on failure.
    Bytes Read(const TvlString& name);
    bool Extract(const TvlString& name, const TvlString& target);
    bool Exists(const TvlString& name);
    std::vector<std::string> Names();

    /// Puts bytes in an entry's place; an entry that was to be deleted stays when that fails.
    bool PutOrKeep(const TvlString& name, std::string bytes);
    bool Delete(const TvlString& name);
    /// Lets an entry stay that was to be deleted.
    void Keep(const TvlString& name);
    std::shared_ptr<TvrContainers::EntryWriter> Begin(const TvlString& name);

    /// The properties, read when they are first asked for.
    Metadata::Container& Properties();
    bool Commit();

private:
    bool Put(const TvlString& name, Bytes bytes);
    /// Why a name can't be written to; empty when it can.
    std::string Obstacle(const std::string& name) const;
    /// Takes over what streams have written.
    void TakeStreams();
    bool TakeProperties();
    /// The place in the archive of an entry that may be unpacked, or -1.
    int Readable(const std::string& name);

    TvrContainers::ZipChanges m_changes;
    std::vector<std::pair<std::string, std::shared_ptr<TvrContainers::EntryWriter>>> m_streams;
    std::optional<Metadata::Container> m_properties;
};
