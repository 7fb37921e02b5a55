// Custom units: an input that begins as their file does is taken for one, any other for a record. What was read is written
// back.
#include "siblings/TvlConfig/CustomUnits.h"
#include "CustomUnitRecord.h"
#include "TvlTestKit/TemporaryUserFolder.h"
#include "Units.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/LogMessage.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

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

void Require(bool holds)
{
    if (!holds)
        std::abort();
}

void TryRecord(const TvlString& text)
{
    const auto record = ReadCustomUnitRecord(text);
    if (!record)
        return;
    Require(record->factor != 0.0 && !CustomUnitName(record->fourthName).empty());
    const TvlString written = WriteCustomUnitRecord(*record);
    Require(written.GetLength() < static_cast<int>(kCustomUnitRecordSize));
    // What was written once stays as it is, but for what was cut.
    const auto again = ReadCustomUnitRecord(written);
    if (!again || written.GetLength() == static_cast<int>(kCustomUnitRecordSize) - 1)
        return;
    Require(SameNames(*record, *again) && again->baseUnit == record->baseUnit && again->decimals == record->decimals
        && WriteCustomUnitRecord(*again) == written);
}

/// A start and an end of the units; how many there were.
int Live()
{
    constexpr int kFirst = 42;
    Require(UNITCustomInitialize() == 1);
    int count = 0;
    for (const int* id = UNITGetUnitArray(kUnitArrayAll); *id != -1; ++id) {
        count += *id >= kFirst ? 1 : 0;
        UNITConvertUnitToBase(static_cast<unsigned>(*id), 0.0, 1.0);
        UNITConvertBaseToUnit(static_cast<unsigned>(*id), 0.0, 1.0);
    }
    UNITCustomUnInitialize();
    return count;
}

void TryFile(const std::string& bytes)
{
    static const TvlTestKit::TemporaryUserFolder folder;
    static const bool isQuiet = [] {
        TvlUtils::SetLogReceiver([](TvlUtils::LogLevel, const TvlString&) {});
        return true;
    }();
    constexpr const char* kFile = "CustomUnits.txt";
    folder.Write(kFile, bytes);
    Require(isQuiet && folder.Read(kFile) == bytes);
    const int count = Live();
    Require(count <= INIGetMaxNoOfCustomUnit());
    // What is no unit stays, and so does a file that is none of ours.
    Require(count > 0 || folder.Read(kFile) == bytes);
    // A unit behind a line that is none is written in that one's place, and stays in its own. Each is a file that is written.
    constexpr int kFew = 4;
    Require(count > kFew || Live() <= 2 * count);
}
}   // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (bytes.starts_with("TvlCustomUnits"))
        TryFile(std::string(bytes));
    else
        TryRecord(TvlPlatform::FromUtf8(bytes));
    return 0;
}
