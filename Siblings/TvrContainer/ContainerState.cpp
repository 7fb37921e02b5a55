#include "TvrContainer/ContainerState.h"

#include "TvlUtils/FileAccess.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/LogMessage.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <algorithm>

using namespace TvlUtils;
using TvrContainers::EntryWriter;

namespace {
// Far more than titles in all languages need. Trees take many times the room of their text.
constexpr long long kMaxPropertyBytes = 1 << 20;
}   // namespace

bool DocContainer::State::Refuse(const std::string& what, const std::string& reason) const
{
    LogMessage(LogLevel::Warning, TvlString().Format(L"\"%s\": %S%S", path.Std(), what.c_str(), reason.c_str()));
    return false;
}

void DocContainer::State::TakeStreams()
{
    for (const auto& [name, stream] : m_streams)
        if (stream->IsWhole())
            m_changes[name] = std::make_shared<const std::string>(stream->Bytes());
    // Others may still be written to.
    std::erase_if(m_streams, [](const auto& stream) { return stream.second.use_count() == 1; });
}

int DocContainer::State::Readable(const std::string& name)
{
    const int entry = archive.Find(name);
    if (entry < 0) {
        Refuse(name, " is not in it");
        return -1;
    }
    if (archive.Entries()[static_cast<std::size_t>(entry)].unpacked > maxEntryBytes) {
        Refuse(name, " unpacks to more bytes than are allowed");
        return -1;
    }
    return entry;
}

DocContainer::State::Bytes DocContainer::State::Read(const TvlString& name)
{
    TakeStreams();
    const std::string key = TvlPlatform::ToUtf8(name);
    if (const auto change = m_changes.find(key); change != m_changes.end())
        return change->second;
    const int entry = Readable(key);
    if (entry < 0)
        return nullptr;
    std::string bytes;
    const std::string reason = archive.Unpack(entry, [&](std::string_view piece) {
        bytes.append(piece);
        return true;
    });
    if (!reason.empty()) {
        Refuse(key + " can't be read: ", reason);
        return nullptr;
    }
    return std::make_shared<const std::string>(std::move(bytes));
}

bool DocContainer::State::Extract(const TvlString& name, const TvlString& target)
{
    TakeStreams();
    const std::string key = TvlPlatform::ToUtf8(name);
    if (const auto change = m_changes.find(key); change != m_changes.end())
        return change->second && SystemIO::File::WriteAside(target, *change->second);
    const int entry = Readable(key);
    if (entry < 0)
        return false;
    std::string reason;
    const auto unpack = [&](SystemIO::FileHandle& file) -> SystemIO::FileResult {
        long long size = 0;
        SystemIO::FileResult result;
        reason = archive.Unpack(entry, [&](std::string_view piece) {
            result = SystemIO::WriteWhole(file, size, piece);
            size += static_cast<long long>(piece.size());
            return static_cast<bool>(result);
        });
        return reason.empty() || !result ? result : SystemIO::FileResult(std::errc::bad_message);
    };
    const auto result = SystemIO::Reported([&] { return SystemIO::ReplaceFile(SystemIO::PathOf(target), unpack); });
    if (result)
        return true;
    return Refuse(key + " can't be extracted: ", reason.empty() ? TvlPlatform::ToUtf8(result.Reason()) : reason);
}

bool DocContainer::State::Exists(const TvlString& name)
{
    TakeStreams();
    const std::string key = TvlPlatform::ToUtf8(name);
    const auto change = m_changes.find(key);
    return change == m_changes.end() ? archive.Find(key) >= 0 : change->second != nullptr;
}

std::vector<std::string> DocContainer::State::Names()
{
    TakeStreams();
    std::vector<std::string> names;
    for (const TvrContainers::ZipEntry& entry : archive.Entries()) {
        const auto change = m_changes.find(entry.name);
        if (!entry.IsFolder() && (change == m_changes.end() || change->second))
            names.push_back(entry.name);
    }
    for (const auto& [name, bytes] : m_changes)
        if (bytes && archive.Find(name) < 0)
            names.push_back(name);
    return names;
}

std::string DocContainer::State::Obstacle(const std::string& name) const
{
    if (!isWritable)
        return "it was opened for reading";
    return name.ends_with('/') ? "its name is that of a folder" : TvrContainers::RefusedName(name);
}

bool DocContainer::State::Put(const TvlString& name, Bytes bytes)
{
    TakeStreams();
    const std::string key = TvlPlatform::ToUtf8(name);
    if (const std::string obstacle = Obstacle(key); !obstacle.empty())
        return Refuse(key + " can't be added: ", obstacle);
    const auto added = static_cast<std::size_t>(std::count_if(
        m_changes.begin(), m_changes.end(), [&](const auto& change) { return archive.Find(change.first) < 0; }));
    if (!Exists(name) && archive.Entries().size() + added >= kMaxEntries)
        return Refuse(key + " can't be added: ", "there are too many entries");
    m_changes[key] = std::move(bytes);
    return true;
}

bool DocContainer::State::PutOrKeep(const TvlString& name, std::string bytes)
{
    const bool isPut = Put(name, std::make_shared<const std::string>(std::move(bytes)));
    if (!isPut)
        Keep(name);
    return isPut;
}

bool DocContainer::State::Delete(const TvlString& name)
{
    if (!isWritable || !Exists(name))
        return false;
    const std::string key = TvlPlatform::ToUtf8(name);
    if (archive.Find(key) >= 0)
        m_changes[key] = nullptr;
    else
        m_changes.erase(key);
    return true;
}

void DocContainer::State::Keep(const TvlString& name)
{
    const auto change = m_changes.find(TvlPlatform::ToUtf8(name));
    if (change != m_changes.end() && !change->second)
        m_changes.erase(change);
}

std::shared_ptr<EntryWriter> DocContainer::State::Begin(const TvlString& name)
{
    TakeStreams();
    const std::string key = TvlPlatform::ToUtf8(name);
    if (const std::string obstacle = Obstacle(key); !obstacle.empty()) {
        Refuse(key + " can't be made: ", obstacle);
        return nullptr;
    }
    return m_streams.emplace_back(key, std::make_shared<EntryWriter>(maxEntryBytes)).second;
}

Metadata::Container& DocContainer::State::Properties()
{
    if (m_properties)
        return *m_properties;
    Metadata::Container properties;
    const int entry = archive.Find(TvlPlatform::ToUtf8(ZipContainerSchema::metadataFile));
    if (entry >= 0) {
        const bool isSmall = archive.Entries()[static_cast<std::size_t>(entry)].unpacked <= kMaxPropertyBytes;
        const Bytes bytes = isSmall ? Read(ZipContainerSchema::metadataFile) : nullptr;
        // What can't be read now may be read another time: new properties must not take its place.
        isBroken = isBroken || (!bytes && archive.HasFailedForNow());
        if (!bytes || !properties.FromBytes(*bytes))
            Refuse("its properties", " can't be read");
    }
    return m_properties.emplace(std::move(properties));
}

bool DocContainer::State::TakeProperties()
{
    const bool isEmptied = archive.Entries().size() == m_changes.size()
        && std::none_of(m_changes.begin(), m_changes.end(), [](const auto& change) { return change.second; });
    // Without any entry there would be no archive.
    if (isNew || isEmptied || (m_properties && m_properties->IsChanged()))
        return Put(ZipContainerSchema::metadataFile, std::make_shared<const std::string>(Properties().ToBytes()));
    return true;
}

bool DocContainer::State::Commit()
{
    if (!isWritable)
        return true;
    if (isBroken)
        return Refuse("it can't be written: ", "an operation on it has failed");
    TakeStreams();
    if (m_changes.empty() && !isNew && !(m_properties && m_properties->IsChanged()))
        return true;
    if (!TakeProperties())
        return false;
    std::string bytes;
    if (const std::string reason = archive.Rewrite(m_changes, bytes); !reason.empty())
        return Refuse("it can't be written: ", reason);
    const auto written = SystemIO::File::WriteAside(path, bytes);
    return written || Refuse("it can't be written: ", TvlPlatform::ToUtf8(written.Reason()));
}
