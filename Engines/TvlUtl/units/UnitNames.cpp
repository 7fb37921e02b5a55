#include "UnitNames.h"

#include "CustomUnits.h"
#include "ProceduralUnits.h"
#include "UnitTables.h"
#include "Units.h"
#include "siblings/TvlResources/Resources.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>

namespace {
constexpr int kLongestName = 20;
constexpr int kLongestCustomThirdName = 2;   // lists of units have no more room for it
constexpr std::size_t kForms = 3;

/// Keys of the first, second and third name.
struct NameKeys {
    int unit;
    const wchar_t* byForm[kForms];
};

// Measures that are no single definition.
constexpr NameKeys kOwnNames[] = {
    {3,
        {L"999af699-9cb5-4afa-aada-ab112f44b538", L"cb20526f-1afa-47a2-8950-9bbb87d74a13",
            L"942b86c0-8006-4c5d-8f01-a2f01e2f50ff"}},
    {12,
        {L"e3f19810-ec48-422f-ad5f-97e877e088a5", L"d81fb35b-3068-4ba9-b629-9c2fc192df34",
            L"7c4ef311-7e4f-4b5d-bc34-60826dd21fe1"}},
    {15,
        {L"c3fa0b16-4b36-42bf-8771-3ce5279b39a0", L"0ef96776-a1bb-4a53-b394-e591ce72b971",
            L"77fc9609-e2c1-4301-be63-92c24b26360a"}},
    {41,
        {L"9f893ae7-0bd5-41ec-8e0a-edd3699c2b8b", L"9f893ae7-0bd5-41ec-8e0a-edd3699c2b8b",
            L"9f893ae7-0bd5-41ec-8e0a-edd3699c2b8b"}},
};

// Measures that are named as the definitions with their ids.
constexpr int kNamedDefinitions[] = {
    1, 2, 4, 5, 6, 7, 8, 9, 10, 11, 13, 14, 16, 22, 24, 25, 26, 27, 32, 35, 36, 37, 38, 39};

const wchar_t* KeyOf(int unit, std::size_t form)
{
    const auto* const own = std::find_if(
        std::begin(kOwnNames), std::end(kOwnNames), [unit](const NameKeys& keys) { return keys.unit == unit; });
    if (own != std::end(kOwnNames))
        return own->byForm[form];
    return std::binary_search(std::begin(kNamedDefinitions), std::end(kNamedDefinitions), unit)
        ? FindDefinitionRow(unit)->keys[form]
        : L"";
}

/// Resolved names, for as long as the texts stay as they are.
struct NameCache {
    unsigned generation = 0;
    std::array<std::array<std::optional<TvlString>, kForms>, kFirstCustomUnit> names;
};

const TvlString& BuiltInName(int unit, std::size_t form)
{
    static NameCache cache;
    if (const unsigned current = Framework::Resources::Generation(); cache.generation != current)
        cache = {current, {}};
    auto& name = cache.names[static_cast<std::size_t>(unit)][form];
    if (!name) {
        const TvlString key = KeyOf(unit, form);
        name = key.IsEmpty() ? key : Framework::Resources::GetString(key).Left(kLongestName);
    }
    return *name;
}

TvlString CustomName(const CustomUnitRecord& record, UnitNameForm form)
{
    switch (form) {
    case UnitNameForm::First:
        return TvlString(CustomUnitName(record.firstName)).Left(kLongestName);
    case UnitNameForm::Second:
        return TvlString(CustomUnitName(record.secondName)).Left(kLongestName);
    case UnitNameForm::Third:
        break;
    }
    return TvlString(CustomUnitName(record.thirdName)).Left(kLongestCustomThirdName);
}
}   // namespace

TvlString UnitName(int unit, UnitNameForm form)
{
    if (FindProceduralUnit(unit))
        return BuiltInName(unit, static_cast<std::size_t>(form));
    return UNITIsValidCustomUnit(unit) ? CustomName(CustomUnit(unit), form) : TvlString();
}
