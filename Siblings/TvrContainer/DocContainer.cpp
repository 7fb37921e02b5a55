#include "siblings/TvrContainer/DocContainer.h"

#include "TvrContainer/ContainerState.h"
#include "TvrContainer/NamePattern.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/LogMessage.h"
#include "siblings/TvlUtils/MultiLanguageString.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <algorithm>
#include <exception>

using namespace TvlUtils;

namespace {
void LogFailure(const std::exception& failure) noexcept
{
    try {
        LogMessage(LogLevel::Error, TvlString().Format(L"a container can't be used: %S", failure.what()));
    } catch (const std::bad_alloc&) {
        // The caller learns of it all the same.
    }
}

/// What `call` gives, or nothing when memory runs out: what was half done then is never written.
template <class Result, class State, class Call>
Result Guarded(const std::unique_ptr<State>& state, Call call)
try {
    return call();
} catch (const std::exception& failure) {
    if (state)
        state->isBroken = true;
    LogFailure(failure);
    return Result();
}
}   // namespace

DocContainer::DocContainer() = default;
DocContainer::DocContainer(std::unique_ptr<State> state) : m_state(std::move(state)) { }
DocContainer::DocContainer(DocContainer&&) noexcept = default;

DocContainer& DocContainer::operator=(DocContainer&& other) noexcept
{
    DocContainer old(std::move(*this));
    m_state = std::move(other.m_state);
    return *this;
}

DocContainer::~DocContainer()
{
    // Who leaves by an exception has not come to the end of what is to be written.
    if (!m_state || std::uncaught_exceptions() > m_state->exceptions)
        return;
    try {
        Close();
    } catch (...) {
        // What ends a test's process here has ended it.
    }
}

DocContainer::operator bool() const { return m_state != nullptr; }

std::unique_ptr<DocContainer::State> DocContainer::OpenState(const TvlString& path, ZipFile::OpenMode mode)
{
    return Guarded<std::unique_ptr<State>>(std::unique_ptr<State>(), [&]() -> std::unique_ptr<State> {
        auto state = std::make_unique<State>();
        state->path = path;
        state->isWritable = mode == ZipFile::OpenMode::ReadWrite;
        if (state->isWritable && SystemIO::Path::IsFile(path) && !SystemIO::File::IsWritable(path)) {
            state->Refuse("it is marked read-only", "");
            return nullptr;
        }
        const std::string reason = state->archive.Open(path);
        if (reason.empty())
            return state;
        state->Refuse("it can't be opened: ", reason);
        return nullptr;
    });
}

std::unique_ptr<DocContainer::State> DocContainer::CreateState(const TvlString& path)
{
    return Guarded<std::unique_ptr<State>>(std::unique_ptr<State>(), [&]() -> std::unique_ptr<State> {
        auto state = std::make_unique<State>();
        state->path = path;
        state->isWritable = state->isNew = true;
        const TvlString folder = SystemIO::Path::GetFolderName(path);
        const bool isTaken = SystemIO::Path::Exists(path) && !SystemIO::File::IsWritable(path);
        if (!path.IsEmpty() && !isTaken && SystemIO::Folder::IsWritable(folder.IsEmpty() ? L"." : folder))
            return state;
        state->Refuse("it can't be made", "");
        return nullptr;
    });
}

bool DocContainer::Close()
{
    // The state goes whatever happens: nothing is written twice.
    const std::unique_ptr<State> state = std::move(m_state);
    return !state || Guarded<bool>(state, [&] { return state->Commit(); });
}

void DocContainer::SetMaxEntryBytes(long long bytes)
{
    if (m_state)
        m_state->maxEntryBytes = bytes;
}

Metadata::Container& DocContainer::GetMetadata()
{
    // A container that is none has properties that nobody keeps.
    static thread_local Metadata::Container nowhere;
    if (m_state)
        return m_state->Properties();
    nowhere = Metadata::Container();
    return nowhere;
}

Any DocContainer::GetMetadata(const Metadata::Definition& property) const
{
    return Guarded<Any>(m_state, [&] { return m_state ? m_state->Properties().GetMetadata(property) : Any(); });
}

bool DocContainer::SetMetadata(const Metadata::Definition& property, const Any& value)
{
    return Guarded<bool>(
        m_state, [&] { return m_state && m_state->isWritable && m_state->Properties().SetMetadata(property, value); });
}

bool DocContainer::SetStringMetadata(
    const Metadata::Definition& property, const TvlString& language, const TvlString& text)
{
    return Guarded<bool>(m_state, [&] {
        return m_state && m_state->isWritable && m_state->Properties().SetStringMetadata(property, language, text);
    });
}

TvlString DocContainer::GetStringMetadata(const Metadata::Definition& property) const
{
    const Any value = GetMetadata(property);
    const auto* const texts = value.Get<MultiLanguageString>();
    return texts ? texts->GetDefaultLangString() : value.GetOr(TvlString());
}

TvlString DocContainer::GetStringMetadata(const Metadata::Definition& property, const TvlString& language) const
{
    const Any value = GetMetadata(property);
    const auto* const texts = value.Get<MultiLanguageString>();
    return texts ? texts->GetLangString(language) : value.GetOr(TvlString());
}

namespace {
/// Bytes of an entry, which the stream keeps alive.
class SharedBytes final : public StreamSource {
public:
    explicit SharedBytes(std::shared_ptr<const std::string> bytes)
        : m_bytes(std::move(bytes)),
          m_stream(Stream::OverMemory(static_cast<const void*>(m_bytes->data()), m_bytes->size()))
    {
    }

    bool Read(void* bytes, std::size_t size) override { return m_stream.Read(bytes, size); }
    bool Write(const void*, std::size_t) override { return false; }
    bool Seek(long long offset, SeekOrigin origin) override { return m_stream.Seek(offset, origin); }
    long long GetPosition() const override { return m_stream.GetPosition(); }
    std::size_t ReadSome(void* bytes, std::size_t size) override
    {
        const auto at = static_cast<unsigned long long>(GetPosition());
        const std::size_t left = at < m_bytes->size() ? m_bytes->size() - static_cast<std::size_t>(at) : 0;
        const std::size_t count = std::min(size, left);
        return Read(bytes, count) ? count : 0;
    }

private:
    std::shared_ptr<const std::string> m_bytes;
    Stream m_stream;
};
}   // namespace

Stream DocContainer::OpenFile(const TvlString& name, bool) const
{
    return Guarded<Stream>(m_state, [&] {
        auto bytes = m_state ? m_state->Read(name) : nullptr;
        return bytes ? Stream(std::make_shared<SharedBytes>(std::move(bytes))) : Stream();
    });
}

Stream DocContainer::CreateFileW(const TvlString& name, bool, bool, RootFileInfo*)
{
    return Guarded<Stream>(m_state, [&] { return m_state ? Stream(m_state->Begin(name)) : Stream(); });
}

bool DocContainer::AddFile(const TvlString& name, const TvlString& source, bool, RootFileInfo*)
{
    return Guarded<bool>(m_state, [&] {
        if (!m_state)
            return false;
        std::string bytes;
        const auto limit = static_cast<std::size_t>(m_state->maxEntryBytes);
        if (const auto read = SystemIO::File::ReadAll(source, bytes, limit); !read) {
            m_state->Refuse(TvlPlatform::ToUtf8(source) + " can't be added: ", TvlPlatform::ToUtf8(read.Reason()));
            m_state->Keep(name);
            return false;
        }
        return m_state->PutOrKeep(name, std::move(bytes));
    });
}

bool DocContainer::AddFile(const TvlString& name, Stream source, bool, RootFileInfo*)
{
    return Guarded<bool>(m_state, [&] {
        if (!m_state || !source)
            return false;
        constexpr std::size_t kPiece = 64 * 1024;
        const auto limit = static_cast<std::size_t>(m_state->maxEntryBytes);
        std::string bytes;
        for (std::size_t done = kPiece; done == kPiece && bytes.size() <= limit;) {
            const std::size_t size = bytes.size();
            bytes.resize(size + kPiece);
            done = source.ReadSome(bytes.data() + size, kPiece);
            bytes.resize(size + done);
        }
        if (bytes.size() <= limit)
            return m_state->PutOrKeep(name, std::move(bytes));
        m_state->Keep(name);
        return false;
    });
}

bool DocContainer::ExtractFile(const TvlString& name, const TvlString& target) const
{
    return Guarded<bool>(m_state, [&] { return m_state && m_state->Extract(name, target); });
}

bool DocContainer::DeleteFileW(const TvlString& name)
{
    return Guarded<bool>(m_state, [&] { return m_state && m_state->Delete(name); });
}

bool DocContainer::DoesFileExist(const TvlString& name) const
{
    return Guarded<bool>(m_state, [&] { return m_state && m_state->Exists(name); });
}

std::vector<TvlString> DocContainer::GetFileNames(const TvlString& pattern, bool isExpression) const
{
    return Guarded<std::vector<TvlString>>(m_state, [&] {
        std::vector<TvlString> names;
        if (!m_state)
            return names;
        for (const std::string& bytes : m_state->Names()) {
            const TvlString name = TvlPlatform::FromUtf8(bytes);
            if (isExpression ? TvrContainers::FitsExpression(pattern, name)
                             : SystemIO::File::MatchesMask(name, pattern))
                names.push_back(name);
        }
        return names;
    });
}

std::pair<TvlString, long long> DocContainer::GetThumbnailInfo() const
{
    using Info = std::pair<TvlString, long long>;
    const auto names = GetFileNames(ZipContainerSchema::thumbnailDir + TvlString(L".*"), true);
    if (names.empty())
        return {};
    return Guarded<Info>(m_state, [&] {
        const int entry = m_state->archive.Find(TvlPlatform::ToUtf8(names.front()));
        const auto size = entry < 0 ? 0 : m_state->archive.Entries()[static_cast<std::size_t>(entry)].unpacked;
        return Info(names.front(), size);
    });
}

bool DocContainer::AddThumbnail(const TvlString& picture)
{
    const TvlString name =
        ZipContainerSchema::thumbnailDir + (L"thumbnail" + SystemIO::Path::GetExtension(picture).MakeLower());
    if (!AddFile(name, picture, false, nullptr))
        return false;
    for (const TvlString& other : GetFileNames(ZipContainerSchema::thumbnailDir + TvlString(L".*"), true))
        if (other != name)
            DeleteFileW(other);
    return true;
}

std::vector<Guid> DocContainer::AddToDerivedFromList(std::vector<Guid> list, const Guid& guid)
{
    if (guid.IsNil())
        return list;
    std::erase(list, guid);
    list.push_back(guid);
    return list;
}
