#include "CustomUnits.h"

#include "ProceduralUnits.h"
#include "Units.h"
#include "siblings/TvlConfig/CustomUnits.h"
#include "windows/Debug.h"

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

static_assert(kCustomUnitRecordSize == kCustomUnitTextSize);

namespace {
constexpr std::size_t kArrayRoom =
    17;                            // ids of the array beside the custom ones: built-in ids, the end, and one spare
constexpr int kMappedLimit = 39;   // of the built-in ids that stand for themselves
constexpr CustomUnitRecord kNoUnit{};

struct CustomUnits {
    std::unique_ptr<CustomUnitRecord[]> records;
    std::unique_ptr<int[]> ids;
    int count = 0;
    int clients = 0;   // initialisations that wait for their end
};

CustomUnits units;

/// Adds a unit; false when there is no room.
bool Store(const CustomUnitRecord& record, int maximum)
{
    if (!units.records && maximum > 0) {
        units.records.reset(new (std::nothrow) CustomUnitRecord[static_cast<std::size_t>(maximum)]);
        if (!units.records)
            Ports::Debug::Get().Output(L"_ENGDEBUG : UNIT : memory allocation failed for custom unit data!");
    }
    if (!units.records || units.count >= maximum)
        return false;
    units.records[static_cast<std::size_t>(units.count++)] = record;
    return true;
}

void ReadAll(int maximum)
{
    for (int index = 0;; ++index) {
        wchar_t text[kCustomUnitTextSize] = {};
        int spare = 0;
        INIGetCustomUnit(index, text, &spare);
        text[kCustomUnitTextSize - 1] = 0;
        if (*text == 0)
            return;
        const auto record = ReadCustomUnitRecord(text);
        if (record && !Store(*record, maximum))
            return;
    }
}

bool MakeArray(int maximum)
{
    const auto room = static_cast<std::size_t>(std::max(maximum, 0)) + kArrayRoom;
    units.ids.reset(new (std::nothrow) int[room]());
    if (!units.ids)
        return false;
    int* at = units.ids.get();
    for (const int* id = UNITGetUnitArray(kUnitArrayDrawing); *id != -1; ++id)
        *at++ = *id;
    for (int i = 0; i < units.count; ++i)
        *at++ = kFirstCustomUnit + i;
    *at = -1;
    return true;
}

/// Whether the bases that a custom id begins with come to a built-in or unknown one.
bool ChainEnds(int id)
{
    for (int length = 0; UNITIsValidCustomUnit(id); id = CustomUnit(id).baseUnit)
        if (++length > units.count)
            return false;
    return true;
}

// Along a chain that ends.

double ToBase(int id, double resolution, double value)
{
    if (const ProceduralUnit* const row = FindProceduralUnit(id))
        return UnitToBase(*row, resolution, value);
    if (!UNITIsValidCustomUnit(id))
        return 0.0;
    const CustomUnitRecord& record = CustomUnit(id);
    return ToBase(record.baseUnit, resolution, value) * record.factor;
}

double FromBase(int id, double resolution, double value)
{
    if (const ProceduralUnit* const row = FindProceduralUnit(id))
        return BaseToUnit(*row, resolution, value);
    if (!UNITIsValidCustomUnit(id))
        return 0.0;
    const CustomUnitRecord& record = CustomUnit(id);
    return FromBase(record.baseUnit, resolution, value) / record.factor;
}
}   // namespace

const CustomUnitRecord& CustomUnit(int id)
{
    const int index = id - kFirstCustomUnit;
    return index < units.count ? units.records[static_cast<std::size_t>(index)] : kNoUnit;
}

double CustomUnitToBase(int id, double resolution, double value)
{
    return ChainEnds(id) ? ToBase(id, resolution, value) : 0.0;
}

double BaseToCustomUnit(int id, double resolution, double value)
{
    return ChainEnds(id) ? FromBase(id, resolution, value) : 0.0;
}

const int* CustomUnitArray() { return units.ids.get(); }

int UNITCustomInitialize() noexcept
try {
    if (++units.clients > 1)
        return 1;
    const int maximum = INIGetMaxNoOfCustomUnit();
    ReadAll(maximum);
    return MakeArray(maximum);
} catch (...) {
    return 0;
}

int UNITCustomUnInitialize() noexcept
try {
    if (units.clients == 0 || --units.clients > 0)
        return 1;
    // Nobody meets what is about to go, whatever becomes of the writing.
    const CustomUnits leaving = std::exchange(units, {});
    if (leaving.count == 0)
        return 1;
    // In one step: records move up where one before them was passed over, and bases count on that of all of them.
    TvlConfig::CustomUnitBatch batch;
    for (int i = 0; i < leaving.count; ++i) {
        wchar_t text[kCustomUnitTextSize] = {};
        const TvlString record = WriteCustomUnitRecord(leaving.records[static_cast<std::size_t>(i)]);
        std::copy_n(record.c_str(), record.GetLength(), text);
        INISetCustomUnit(i, text);
    }
    batch.Commit();
    return 1;
} catch (...) {
    return 1;
}

int UNITIsValidCustomUnit(int id) noexcept { return id >= kFirstCustomUnit && id <= units.count + kFirstCustomUnit; }

int UNITCustomUnitMappedUsing(int id) noexcept
{
    if (UNITIsValidCustomUnit(id))
        return CustomUnit(id).baseUnit;
    return id >= 1 && id <= kMappedLimit ? id : 0;
}
