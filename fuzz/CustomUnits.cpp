// Records of custom units: reading, and writing back what was read.
#include "CustomUnitRecord.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <algorithm>
#include <cstdint>

namespace {
template <std::size_t size>
bool SameName(const wchar_t (&left)[size], const wchar_t (&right)[size])
{
    return std::equal(left, left + size, right);
}

bool SameNames(const CustomUnitRecord& left, const CustomUnitRecord& right)
{
    return SameName(left.firstName, right.firstName) && SameName(left.secondName, right.secondName)
        && SameName(left.thirdName, right.thirdName) && SameName(left.fourthName, right.fourthName);
}
}   // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const TvlString text = TvlPlatform::FromUtf8({reinterpret_cast<const char*>(data), size});
    const auto record = ReadCustomUnitRecord(text);
    if (!record)
        return 0;
    if (record->factor == 0.0 || CustomUnitName(record->fourthName).empty())
        __builtin_trap();
    const TvlString written = WriteCustomUnitRecord(*record);
    if (written.GetLength() >= static_cast<int>(kCustomUnitRecordSize))
        __builtin_trap();
    // What was written once stays as it is, but for what was cut.
    const auto again = ReadCustomUnitRecord(written);
    if (!again || written.GetLength() == static_cast<int>(kCustomUnitRecordSize) - 1)
        return 0;
    if (!SameNames(*record, *again) || again->baseUnit != record->baseUnit || again->decimals != record->decimals
        || WriteCustomUnitRecord(*again) != written)
        __builtin_trap();
    return 0;
}
