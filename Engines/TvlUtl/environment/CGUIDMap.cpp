#include "CGUIDMap.h"

#include <algorithm>
#include <cstring>

namespace {
constexpr std::size_t kHeaderBytes = 12;   // count and the offsets of the two tables
constexpr std::size_t kPairBytes = 32;     // a GUID and its partner
constexpr std::size_t kGuidBytes = 16;

std::uint32_t Number(std::span<const std::uint8_t> bytes, std::size_t at, std::size_t width)
{
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < width; ++i)
        number |= static_cast<std::uint32_t>(bytes[at + i]) << (8 * i);
    return number;
}

GUID ReadGuid(std::span<const std::uint8_t> bytes, std::size_t at)
{
    GUID guid{};
    guid.Data1 = Number(bytes, at, 4);
    guid.Data2 = static_cast<WORD>(Number(bytes, at + 4, 2));
    guid.Data3 = static_cast<WORD>(Number(bytes, at + 6, 2));
    std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(at) + 8, 8, guid.Data4);
    return guid;
}

struct Table {
    std::unique_ptr<GUID[]> keys;
    std::unique_ptr<GUID[]> values;
};

Table ReadTable(std::span<const std::uint8_t> bytes, std::size_t offset, std::size_t count)
{
    Table table{std::make_unique<GUID[]>(count), std::make_unique<GUID[]>(count)};
    for (std::size_t i = 0; i < count; ++i) {
        table.keys[i] = ReadGuid(bytes, offset + i * kPairBytes);
        table.values[i] = ReadGuid(bytes, offset + i * kPairBytes + kGuidBytes);
    }
    return table;
}
}   // namespace

int CGUIDMap::Compare(const GUID& a, const GUID& b)
{
    for (int i = 7; i >= 0; --i)
        if (a.Data4[i] != b.Data4[i])
            return a.Data4[i] < b.Data4[i] ? -1 : 1;
    if (a.Data3 != b.Data3)
        return a.Data3 < b.Data3 ? -1 : 1;
    if (a.Data2 != b.Data2)
        return a.Data2 < b.Data2 ? -1 : 1;
    return a.Data1 == b.Data1 ? 0 : a.Data1 < b.Data1 ? -1 : 1;
}

bool CGUIDMap::Load(std::span<const std::uint8_t> bytes)
{
    if (bytes.size() < kHeaderBytes)
        return false;
    const auto count = static_cast<std::int32_t>(Number(bytes, 0, 4));
    const std::size_t tableBytes = static_cast<std::size_t>(std::max(count, 0)) * kPairBytes;
    const std::size_t engTable = Number(bytes, 4, 4);
    const std::size_t appTable = Number(bytes, 8, 4);
    // Both tables lie within the file before anything is allocated by the count.
    if (count < 0 || engTable + tableBytes > bytes.size() || appTable + tableBytes > bytes.size())
        return false;
    Table engines = ReadTable(bytes, engTable, static_cast<std::size_t>(count));
    Table applications = ReadTable(bytes, appTable, static_cast<std::size_t>(count));
    m_count = count;
    m_engKeys = std::move(engines.keys);
    m_appValues = std::move(engines.values);
    m_appKeys = std::move(applications.keys);
    m_engValues = std::move(applications.values);
    return m_loaded = true;
}

const GUID* CGUIDMap::Find(const GUID& key, const GUID* keys, const GUID* values) const
{
    std::int32_t low = 0;
    std::int32_t high = m_count - 1;
    while (low < high) {
        const std::int32_t middle = low + (high - low) / 2;
        const int order = Compare(keys[middle], key);
        if (order == 0)
            return &values[middle];
        if (order > 0)
            high = middle - 1;
        else
            low = middle + 1;
    }
    return low == high && Compare(keys[low], key) == 0 ? &values[low] : nullptr;
}
