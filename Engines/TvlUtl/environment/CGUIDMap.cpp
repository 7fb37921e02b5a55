#include "CGUIDMap.h"

#include "GuidMap.h"
#include "UnitTestProcess.h"
#include "siblings/TvlConfig/DataFolders.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <stdexcept>

namespace SystemIO = TvlUtils::SystemIO;

// The file is little-endian and holds identifiers in their form in memory.
static_assert(std::endian::native == std::endian::little);

namespace {
constexpr const wchar_t* kFileName = L"guidmap.dat";

struct Header {
    std::int32_t count;
    std::uint32_t engTableOffset;   // bytes from the start of the file
    std::uint32_t appTableOffset;
};
static_assert(sizeof(Header) == 12);

struct Record {
    GUID key;
    GUID value;
};
static_assert(sizeof(Record) == 32);

bool ReadExactly(SystemIO::FileHandle& file, long long offset, void* bytes, std::size_t size)
{
    std::size_t done = 0;
    return file.ReadAt(offset, bytes, size, done) && done == size;
}

/// Reads a table of records apart.
bool ReadTable(SystemIO::FileHandle& file, long long offset, std::size_t count, GUID* keys, GUID* values)
{
    constexpr std::size_t kBlock = 512;   // records
    Record records[kBlock];
    for (std::size_t first = 0; first < count; first += kBlock) {
        const std::size_t size = std::min(kBlock, count - first);
        if (!ReadExactly(file, offset + static_cast<long long>(first * sizeof(Record)), records, size * sizeof(Record)))
            return false;
        for (std::size_t i = 0; i < size; ++i) {
            keys[first + i] = records[i].key;
            values[first + i] = records[i].value;
        }
    }
    return true;
}

/// The value of a key in a sorted table, or null.
const GUID* Search(const GUID* keys, const GUID* values, long long count, const GUID& key)
{
    long long low = 0;
    long long high = count - 1;
    while (low <= high) {
        const long long middle = low + (high - low) / 2;
        const auto order = CompareGuids(keys[middle], key);
        if (order == 0)
            return values + middle;
        if (order > 0)
            high = middle - 1;
        else
            low = middle + 1;
    }
    return nullptr;
}

int CopyFound(const GUID* found, GUID* to)
{
    if (!found || !to)
        return 0;
    *to = *found;
    return 1;
}

void AppendTable(std::string& bytes, std::vector<Record> records)
{
    std::sort(records.begin(), records.end(),
        [](const Record& a, const Record& b) { return CompareGuids(a.key, b.key) < 0; });
    bytes.append(reinterpret_cast<const char*>(records.data()), records.size() * sizeof(Record));
}
}   // namespace

std::strong_ordering CompareGuids(const GUID& a, const GUID& b)
{
    for (std::size_t i = std::size(a.Data4); i-- > 0;)
        if (a.Data4[i] != b.Data4[i])
            return a.Data4[i] <=> b.Data4[i];
    if (a.Data3 != b.Data3)
        return a.Data3 <=> b.Data3;
    if (a.Data2 != b.Data2)
        return a.Data2 <=> b.Data2;
    return a.Data1 <=> b.Data1;
}

CGUIDMap::CGUIDMap()
{
    bool opened = false;
    LoadFile(SystemIO::Path::Combine(INIGetDataDir(), kFileName), opened);
    if (!opened && IsUnitTestProcess())
        LoadFile(SystemIO::Path::Combine(INIGetDataDirForUnitTests(), kFileName), opened);
}

CGUIDMap::~CGUIDMap() = default;

bool CGUIDMap::LoadFile(const TvlString& path, bool& opened)
{
    const auto file = SystemIO::ToFilePath(path);
    SystemIO::FileStatus status;
    std::unique_ptr<SystemIO::FileHandle> handle;
    SystemIO::FileLayer& files = SystemIO::FileLayer::Get();
    opened = files.Open(file, SystemIO::OpenMode::Read, handle) && files.Stat(file, status);
    return opened && Load(*handle, status.size);
}

void CGUIDMap::Clear()
{
    loaded = false;
    count = 0;
    for (std::unique_ptr<GUID[]>* const table : {&engKeys, &appValues, &appKeys, &engValues})
        table->reset();
}

bool CGUIDMap::Load(SystemIO::FileHandle& file, long long length)
{
    Clear();
    Header header{};
    if (!ReadExactly(file, 0, &header, sizeof header) || header.count < 0)
        return false;
    const auto pairs = static_cast<std::size_t>(header.count);
    // Before anything is allocated: a few bytes may ask for gigabytes.
    const auto tableSize = static_cast<long long>(pairs * sizeof(Record));
    if (header.engTableOffset + tableSize > length || header.appTableOffset + tableSize > length)
        return false;
    for (std::unique_ptr<GUID[]>* const table : {&engKeys, &appValues, &appKeys, &engValues})
        table->reset(new (std::nothrow) GUID[pairs]);
    loaded = engKeys && appValues && appKeys && engValues
        && ReadTable(file, header.engTableOffset, pairs, engKeys.get(), appValues.get())
        && ReadTable(file, header.appTableOffset, pairs, appKeys.get(), engValues.get());
    if (loaded)
        count = header.count;
    else
        Clear();
    return loaded;
}

const GUID* CGUIDMap::FindApplication(const GUID& engine) const
{
    return Search(engKeys.get(), appValues.get(), count, engine);
}

const GUID* CGUIDMap::FindEngine(const GUID& application) const
{
    return Search(appKeys.get(), engValues.get(), count, application);
}

int UTLMapEng2AppGUID(const GUID* from, GUID* to)
{
    return from ? CopyFound(CGUIDMap::GetInstance().FindApplication(*from), to) : 0;
}

int UTLMapApp2EngGUID(const GUID* from, GUID* to)
{
    return from ? CopyFound(CGUIDMap::GetInstance().FindEngine(*from), to) : 0;
}

std::string TvlUtl::MakeGuidMap(const std::vector<GuidPair>& pairs)
{
    constexpr std::size_t kMostPairs = std::numeric_limits<std::int32_t>::max() / (2 * sizeof(Record));
    if (pairs.size() > kMostPairs)
        throw std::length_error("too many pairs for the map's offsets");
    std::vector<Record> engines;
    std::vector<Record> applications;
    for (const auto& [engine, application] : pairs) {
        engines.push_back({engine, application});
        applications.push_back({application, engine});
    }
    const auto tableSize = static_cast<std::uint32_t>(pairs.size() * sizeof(Record));
    const Header header{static_cast<std::int32_t>(pairs.size()), sizeof(Header),
        static_cast<std::uint32_t>(sizeof(Header) + tableSize)};
    std::string bytes(reinterpret_cast<const char*>(&header), sizeof header);
    AppendTable(bytes, std::move(engines));
    AppendTable(bytes, std::move(applications));
    return bytes;
}
