// Files of identifier pairs: any bytes load or are refused, and what was built from pairs finds them again.
#include "GuidMap.h"
#include "CGUIDMap.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace {
using TvlUtils::SystemIO::FileResult;

/// A file in memory.
class BytesFile final : public TvlUtils::SystemIO::FileHandle {
public:
    BytesFile(const void* bytes, std::size_t size) : m_bytes(static_cast<const char*>(bytes)), m_size(size) { }
    FileResult ReadAt(long long offset, void* bytes, std::size_t size, std::size_t& done) override
    {
        const std::size_t first = std::min(static_cast<std::size_t>(offset), m_size);
        done = std::min(size, m_size - first);
        if (done > 0)
            std::memcpy(bytes, m_bytes + first, done);
        return {};
    }
    FileResult WriteAt(long long, const void*, std::size_t, std::size_t&) override { return std::errc::io_error; }
    FileResult Flush() override { return {}; }
    FileResult Close() override { return {}; }

private:
    const char* m_bytes;
    std::size_t m_size;
};

void Require(bool holds)
{
    if (!holds)
        __builtin_trap();
}

void SearchAnything(const CGUIDMap& map, const std::uint8_t* data, std::size_t size)
{
    GUID key{};
    for (std::size_t at = 0; at + sizeof key <= size; at += sizeof key) {
        std::memcpy(&key, data + at, sizeof key);
        const bool found = map.FindApplication(key) || map.FindEngine(key);
        Require(map.IsLoaded() || !found);
    }
}

void FindAgain(CGUIDMap& map, const std::uint8_t* data, std::size_t size)
{
    std::vector<TvlUtl::GuidPair> pairs(size / sizeof(TvlUtl::GuidPair));
    if (!pairs.empty())
        std::memcpy(pairs.data(), data, pairs.size() * sizeof(TvlUtl::GuidPair));
    const std::string bytes = TvlUtl::MakeGuidMap(pairs);
    BytesFile file(bytes.data(), bytes.size());
    Require(map.Load(file, static_cast<long long>(bytes.size())));
    for (const auto& [engine, application] : pairs)
        Require(map.FindApplication(engine) && map.FindEngine(application));
}
}   // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static CGUIDMap map;
    BytesFile file(data, size);
    const bool loaded = map.Load(file, static_cast<long long>(size));
    Require(loaded == map.IsLoaded() && (!loaded || size >= 12));
    SearchAnything(map, data, size);
    FindAgain(map, data, size);
    return 0;
}
