#include "SmartValue.h"

#include "NearValues.h"
#include "Units.h"
#include "siblings/TvlUtils/String.h"

#include <algorithm>
#include <iterator>

namespace {
constexpr unsigned kCicero = 12;
constexpr unsigned kPlainNumber = 22;
constexpr double kDidotsPerCicero = 12.0;

struct UnitLetters {
    const wchar_t* letters;
    unsigned unit;
};

// In the order in which an entry is searched for them: "m" comes behind all that contain it.
constexpr UnitLetters kUnitLetters[] = {
    {L"in", 1},
    {L"mm", 2},
    {L"cm", 5},
    {L"px", 6},
    {L"pt", 4},
    {L"ft", 7},
    {L"ml", 8},
    {L"km", 10},
    {L"yd", 16},
    {L"deg", 11},
    {L"cc", kCicero},
    {L"dd", 13},
    {L"percent", 39},
    {L"pica", 24},
    {L"rad", 32},
    {L"m", 9},
    {L"q", 37},
    {L"h", 38},
};

unsigned UnitOf(const TvlString& entry)
{
    const auto* const found = std::find_if(std::begin(kUnitLetters), std::end(kUnitLetters),
        [&entry](const UnitLetters& row) { return entry.Find(row.letters) != TvlString::npos; });
    return found == std::end(kUnitLetters) ? kPlainNumber : found->unit;
}

double CicerosOf(const TvlString& number)
{
    using TvlUtils::String::DblFromString;
    const int comma = number.Find(L',');
    if (comma == TvlString::npos)
        return DblFromString(number);
    return DblFromString(number.Mid(comma + 1)) / kDidotsPerCicero + DblFromString(number.Left(comma));
}
}   // namespace

WUnitValuePair::WUnitValuePair() = default;
WUnitValuePair::WUnitValuePair(const WUnitValuePair&) = default;
WUnitValuePair& WUnitValuePair::operator=(const WUnitValuePair& other)
{
    auto values = other.m_values;   // what is there stays when they find no memory
    m_values.swap(values);
    return *this;
}
WUnitValuePair::~WUnitValuePair() = default;

void WUnitValuePair::AddValue(unsigned unit, double value) { m_values.emplace(unit, value); }

void WUnitValuePair::AddCiceroDidotValue(double ciceros, double didots)
{
    AddValue(kCicero, didots / kDidotsPerCicero + ciceros);
}

void WUnitValuePair::RemoveValue(unsigned unit) { m_values.erase(unit); }

void WUnitValuePair::LoadFromString(const TvlString& text)
{
    WUnitValuePair read;   // what is there stays until all of it is
    int next = 0;
    for (TvlString entry = text.Tokenize(L";", next); next != TvlString::npos; entry = text.Tokenize(L";", next)) {
        entry.MakeLower();
        const unsigned unit = UnitOf(entry);
        entry.Trim(L"abcdefghijklmnopqrstuvwxyz");
        read.AddValue(unit, unit == kCicero ? CicerosOf(entry) : TvlUtils::String::DblFromString(entry));
    }
    m_values.swap(read.m_values);
}

bool WUnitValuePair::GetValue(unsigned unit, double& value) const
{
    const auto found = m_values.find(unit);
    if (found == m_values.end())
        return false;
    value = found->second;
    return true;
}

bool WUnitValuePair::GetValue(unsigned unit, unsigned& foundUnit, double& value) const
{
    return GetValue(unit, value) || GetDefaultValue(foundUnit, value);
}

bool WUnitValuePair::GetDefaultValue(unsigned& unit, double& value) const
{
    if (m_values.empty())
        return false;
    unit = m_values.begin()->first;
    value = m_values.begin()->second;
    return true;
}

bool WUnitValuePair::IsDefaultValue(unsigned& unit, double value, double res) const
{
    const auto found = std::find_if(m_values.begin(), m_values.end(), [value, res](const auto& entry) {
        return IsNear(UNITConvertUnitToBase(entry.first, res, entry.second), value);
    });
    if (found == m_values.end())
        return false;
    unit = found->first;
    return true;
}

bool WUnitValuePair::IsEmpty() const { return m_values.empty(); }
void WUnitValuePair::Clear() { m_values.clear(); }
const std::map<unsigned, double>& WUnitValuePair::GetAllEntries() const { return m_values; }
bool WUnitValuePair::operator!=(const WUnitValuePair& other) const { return m_values != other.m_values; }
