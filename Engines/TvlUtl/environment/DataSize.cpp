#include "DataSize.h"

#include "siblings/TvlResources/Resources.h"

#include <cmath>
#include <iterator>

namespace TvlUtl {

namespace {
struct SizeRow {
    double least;    // bytes
    double factor;   // exact powers of two
    const wchar_t* key;
};

constexpr SizeRow kSizes[] = {
    {0.0, 1.0, L"1698f9d4-0b97-4bfa-95b6-f3e12515003c"},
    {0x1p10, 0x1p-10, L"088e1d27-8136-4ca1-961e-f49e699e656b"},
    {0x1p20, 0x1p-20, L"0c5323f5-6ebe-4335-8f74-6ce873250ab7"},
    {0x1p30, 0x1p-30, L"17179fe5-f578-4619-ab4b-4776b2b63449"},
    {0x1p40, 0x1p-40, L"facfee57-edb6-4837-a503-7a9f8783af0f"},
};
}   // namespace

ESizeType ConvertByteSize(unsigned long long bytes, double& value)
{
    const auto count = static_cast<double>(bytes);
    std::size_t type = std::size(kSizes) - 1;
    while (count < kSizes[type].least)
        --type;
    value = count * kSizes[type].factor;
    return static_cast<ESizeType>(type);
}

TvlString GetSizeTypeString(ESizeType type)
{
    // Fetched once: the names stay in the language that the first call met.
    static const TvlString names[] = {
        Framework::Resources::GetString(kSizes[0].key),
        Framework::Resources::GetString(kSizes[1].key),
        Framework::Resources::GetString(kSizes[2].key),
        Framework::Resources::GetString(kSizes[3].key),
        Framework::Resources::GetString(kSizes[4].key),
    };
    const auto row = static_cast<unsigned>(type);
    return names[row < std::size(names) ? row : 0];
}

TvlString FormatSizeType(ESizeType type, double value, bool withUnit)
{
    TvlString text;
    if (type == eSizeBytes || value > 100.0)
        text.Format(L"%.0f", std::trunc(value) + 0.0);   // an integer has no negative zero
    else
        text.Format(value > 10.0 ? L"%.1f" : L"%.2f", value);
    return withUnit ? text + L" " + GetSizeTypeString(type) : text;
}

TvlString FormatDataSize(unsigned long long bytes)
{
    double value = 0.0;
    const ESizeType type = ConvertByteSize(bytes, value);
    return FormatSizeType(type, value, true);
}

}   // namespace TvlUtl
