#include "StoredUnits.h"

#include "Commands.h"
#include "MeasureOptions.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>

namespace {
constexpr int kFirstCustomUnit = 42;

bool IsNamed(const CustomUnitRecord& record, const TvlString& name)
{
    const auto is = [&name](std::wstring_view known) { return TvlString(known).CompareNoCase(name) == 0; };
    return is(CustomUnitName(record.firstName)) || is(CustomUnitName(record.secondName))
        || is(CustomUnitName(record.thirdName)) || is(CustomUnitName(record.fourthName));
}

bool Note(int index, const TvlString& text)
{
    wchar_t buffer[kCustomUnitTextSize] = {};
    std::copy_n(text.c_str(), std::min(text.GetLength(), kCustomUnitTextSize - 1), buffer);
    return INISetCustomUnit(index, buffer) != 0;
}
}   // namespace

std::vector<StoredUnit> ReadStoredUnits()
{
    std::vector<StoredUnit> units;
    int id = kFirstCustomUnit;
    for (int index = 0;; ++index) {
        wchar_t text[kCustomUnitTextSize] = {};
        if (!INIGetCustomUnit(index, text, nullptr))
            return units;
        StoredUnit unit{text, ReadCustomUnitRecord(text)};
        if (unit.record && id < kFirstCustomUnit + INIGetMaxNoOfCustomUnit())
            unit.id = id++;
        units.push_back(std::move(unit));
    }
}

void WriteStoredUnits(TvlConfig::CustomUnitBatch& batch, const std::vector<TvlString>& texts)
{
    const std::size_t count = std::max(texts.size(), ReadStoredUnits().size());
    bool isNoted = true;
    for (std::size_t index = 0; isNoted && index < count; ++index)
        isNoted = Note(static_cast<int>(index), index < texts.size() ? texts[index] : TvlString());
    if (isNoted && batch.Commit())
        return;
    std::cerr << "tvl: the custom units can't be written\n";
    throw CLI::RuntimeError(kBadInput);
}

int FindStoredUnit(const std::vector<StoredUnit>& units, const std::string& text)
{
    const TvlString name = TvlPlatform::FromUtf8(text);
    const auto found = std::find_if(units.begin(), units.end(), [&](const StoredUnit& unit) {
        return unit.id >= 0 && (std::to_string(unit.id) == text || IsNamed(*unit.record, name));
    });
    return found == units.end() ? -1 : found->id;
}

int MeasureUnitId(const std::vector<StoredUnit>& units, const std::string& text)
{
    const int id = FindStoredUnit(units, text);
    return id >= 0 ? id : UnitName{text}.MeasureId();
}

void RefuseText(const std::string& text, const std::string& problem)
{
    std::cerr << "tvl: \"" << text << "\" " << problem << '\n';
    throw CLI::RuntimeError(kBadInput);
}
