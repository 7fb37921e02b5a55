#include "CustomUnitsLint.h"

#include "Units.h"
#include "siblings/TvlConfig/CustomUnits.h"

#include <algorithm>
#include <cmath>

namespace {
constexpr int kMostDecimals = 15;

/// A name that fills its array where the text goes on with it.
template <std::size_t size>
bool IsCut(const TvlString& text, const wchar_t (&name)[size])
{
    const std::wstring_view known = CustomUnitName(name);
    if (known.size() < size)
        return false;
    const std::wstring_view all = text;
    const std::size_t end = all.find(known) + size;
    return end < all.size() && all[end] != L',';
}

bool HasCutName(const StoredUnit& unit)
{
    const CustomUnitRecord& record = *unit.record;
    return IsCut(unit.text, record.firstName) || IsCut(unit.text, record.secondName)
        || IsCut(unit.text, record.thirdName) || IsCut(unit.text, record.fourthName);
}

/// What becomes of the numbers when the library has written the record back.
const char* NumberProblem(const CustomUnitRecord& record)
{
    if (!std::isfinite(record.factor))
        return "its factor is no finite number";
    const auto kept = ReadCustomUnitRecord(WriteCustomUnitRecord(record));
    if (!kept)
        return "its factor is lost at the next start: six decimals are kept";
    if (kept->factor != record.factor)
        return "its factor changes at the next start: six decimals are kept";
    if (!std::equal(std::begin(kept->increments), std::end(kept->increments), record.increments))
        return "a step changes at the next start: six decimals are kept";
    return nullptr;
}

struct Findings {
    std::vector<std::string> problems;
    std::size_t number = 0;   // of the record, from 1

    void Add(const std::string& problem) { problems.push_back("record " + std::to_string(number) + ": " + problem); }
    void Check(const StoredUnit& unit);
};

void Findings::Check(const StoredUnit& unit)
{
    ++number;
    if (unit.text.GetLength() >= kCustomUnitTextSize - 1)
        Add("it is cut: there is room for " + std::to_string(kCustomUnitTextSize - 1) + " characters");
    if (!unit.record)
        return Add("it is passed over: it has fewer than five fields, or its factor is 0; the units behind it are "
                   "written one place up");
    if (unit.id < 0)
        return Add("it is one too many: there may be " + std::to_string(INIGetMaxNoOfCustomUnit()) + " units");
    if (const char* const problem = NumberProblem(*unit.record))
        Add(problem);
    if (HasCutName(unit))
        Add("a name is cut: there is room for 20, 22, 20 and 20 characters");
    if (unit.record->decimals < 0 || unit.record->decimals > kMostDecimals)
        Add("its decimals are not from 0 to " + std::to_string(kMostDecimals));
    if (UNITConvertUnitToBase(static_cast<unsigned>(unit.id), 0.0, 1.0) == 0.0)
        Add("its base unit " + std::to_string(unit.record->baseUnit)
            + " is no measure, or the bases lead round in a circle");
}
}   // namespace

std::vector<std::string> FindUnitProblems(const std::vector<StoredUnit>& units)
{
    // Only read: what ends the units again would write their file.
    UNITCustomInitialize();
    Findings findings;
    for (const StoredUnit& unit : units)
        findings.Check(unit);
    return findings.problems;
}
