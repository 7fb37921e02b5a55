#include "WUnit.h"

#include "UnitTables.h"
#include "UnitWords.h"

#include <algorithm>
#include <iterator>
#include <memory>

namespace {
constexpr double kTenthMicronsPerMetre = 10000000.0;
constexpr unsigned kPlainNumbers = 0xC20001;   // ids 0, 17, 22 and 23, as bits

bool IsPlainNumber(int id) { return static_cast<unsigned>(id) <= 23 && (kPlainNumbers >> id & 1) != 0; }

template <class Object>
void DeleteAll(std::vector<Object*>& objects)
{
    for (const Object* const object : objects)
        delete object;
    objects.clear();
}

/// Makes sure that one more object can be added without needing memory.
template <class Object>
void MakeRoom(std::vector<Object>& objects)
{
    if (objects.size() == objects.capacity())
        objects.reserve(std::max<std::size_t>(8, 2 * objects.size()));
}
}   // namespace

double WUnit::m_dScreenResolution = 0.0;

WUnit::WUnit() = default;
WUnit::WUnit(const WUnit& other) : Framework::IUnit() { *this = other; }

WUnit& WUnit::operator=(const WUnit& other)
{
    // Member by member; the words are made anew.
    m_nextDefinition = other.m_nextDefinition;
    m_nextDisplay = other.m_nextDisplay;
    m_precision = other.m_precision;
    m_definitionMap = other.m_definitionMap;
    m_definitions = other.m_definitions;
    m_displayMap = other.m_displayMap;
    m_displays = other.m_displays;
    std::fill(std::begin(m_linearFactors), std::end(m_linearFactors), 0.0);
    delete m_words;
    m_words = nullptr;
    return *this;
}

WUnit::~WUnit()
{
    DeleteAll(m_definitions);
    DeleteAll(m_displays);
    delete m_words;
}

WUnit& WUnit::GetDefaultWUnit()
{
    static WUnit shared;
    static bool loaded = false;
    if (!loaded) {
        shared.LoadDefaults(nullptr, 0);
        loaded = true;
    }
    return shared;
}

int WUnit::LoadDefaults(int* ids, int)
{
    for (const int* id = ids ? ids : DefaultDisplays().data(); *id >= 0; ++id)
        if (AddUnitDisplay(*id) == -1)
            return 0;
    return 1;
}

long long WUnit::FindUnit(int id, std::vector<UnitMap>& map)
{
    const auto found = std::find_if(map.begin(), map.end(), [id](const UnitMap& entry) { return entry.id == id; });
    return found == map.end() ? -1 : found->index;
}

int WUnit::AddUnitDefinition(int id)
{
    if (FindUnit(id, m_definitionMap) >= 0)
        return id;
    const DefinitionRow* const row = FindDefinitionRow(id);
    if (!row)
        return -1;
    std::unique_ptr<WUntiDef> definition(row->make(*row));
    definition->SetId(id);
    MakeRoom(m_definitions);
    MakeRoom(m_definitionMap);
    m_definitions.push_back(definition.release());
    m_definitionMap.push_back({id, static_cast<std::int64_t>(m_definitions.size()) - 1});
    return id;
}

int WUnit::AddUnitDefinition(WUntiDef* def, int decimals, double inc0, double inc1, double inc2, const TvlString& name1,
    const TvlString& name2, const TvlString& name3, const TvlString& symbol, double factor)
{
    const int id = m_nextDefinition;
    def->SetId(id);
    def->Define(decimals, inc0, inc1, inc2, name1, name2, name3, symbol, factor);
    MakeRoom(m_definitions);
    MakeRoom(m_definitionMap);
    ++m_nextDefinition;
    m_definitions.push_back(def);
    m_definitionMap.push_back({id, static_cast<std::int64_t>(m_definitions.size()) - 1});
    return id;
}

int WUnit::AddUnitDisplay(int id)
{
    if (FindUnit(id, m_displayMap) >= 0)
        return id;
    const DisplayRow* const row = FindDisplayRow(id);
    if (!row)
        return -1;
    std::unique_ptr<WUnitCollection> display(row->make());
    display->SetId(id);
    std::vector<WUntiDef*> definitions;
    for (int i = 0; i < row->count; ++i) {
        AddUnitDefinition(row->definitions[i]);
        definitions.push_back(m_definitions[static_cast<std::size_t>(FindUnit(row->definitions[i], m_definitionMap))]);
    }
    display->Initialise(definitions, row->separatorKind, row->forcedDecimals);
    MakeRoom(m_displays);
    MakeRoom(m_displayMap);
    m_displays.push_back(display.release());
    m_displayMap.push_back({id, static_cast<std::int64_t>(m_displays.size()) - 1});
    return id;
}

int WUnit::AddUnitDisplay(
    WUnitCollection* display, int* definitionIds, int count, int forcedDecimals, int separatorKind)
{
    const int id = m_nextDisplay;
    display->SetId(id);
    std::vector<WUntiDef*> definitions;
    bool areKnown = true;
    for (int i = 0; areKnown && i < count; ++i) {
        const long long found = FindUnit(definitionIds[i], m_definitionMap);
        areKnown = found >= 0;
        definitions.push_back(areKnown ? m_definitions[static_cast<std::size_t>(found)] : nullptr);
    }
    if (areKnown)
        display->Initialise(definitions, separatorKind, forcedDecimals);
    MakeRoom(m_displays);
    MakeRoom(m_displayMap);
    ++m_nextDisplay;
    m_displays.push_back(display);
    if (!areKnown)
        return -1;
    m_displayMap.push_back({id, static_cast<std::int64_t>(m_displays.size()) - 1});
    return id;
}

int WUnit::DeleteUnitDisplay(int id)
{
    const auto entry = std::find_if(
        m_displayMap.begin(), m_displayMap.end(), [id](const UnitMap& candidate) { return candidate.id == id; });
    if (entry == m_displayMap.end())
        return 0;
    const auto display = m_displays.begin() + entry->index;
    delete *display;
    m_displays.erase(display);
    m_displayMap.erase(entry);
    std::fill(std::begin(m_linearFactors), std::end(m_linearFactors), 0.0);
    return 1;
}

WUnitCollection& WUnit::Display(int id)
{
    // An id stands in the map once, so that an entry with the id is the one that a search finds.
    if (static_cast<unsigned>(id) < std::size(m_displayPlaces)) {
        const auto place = static_cast<std::size_t>(m_displayPlaces[id]);
        if (place < m_displayMap.size() && m_displayMap[place].id == id)
            return *m_displays[static_cast<std::size_t>(m_displayMap[place].index)];
    }
    const auto found =
        std::find_if(m_displayMap.begin(), m_displayMap.end(), [id](const UnitMap& entry) { return entry.id == id; });
    if (found != m_displayMap.end() && static_cast<unsigned>(id) < std::size(m_displayPlaces))
        m_displayPlaces[id] = static_cast<std::int16_t>(found - m_displayMap.begin());
    return *m_displays[static_cast<std::size_t>(found == m_displayMap.end() ? -1 : found->index)];
}

void WUnit::KeepLinearFactor(int id)
{
    const DisplayRow* const row = FindDisplayRow(id);
    if (!row || Display(id).GetId() != id)
        return;   // custom, or one place off behind a display that was removed
    const long long place = FindUnit(row->definitions[0], m_definitionMap);
    const WUntiDef& definition = *m_definitions[static_cast<std::size_t>(place)];
    if (definition.IsLoaded() && !dynamic_cast<const WUnitPixel*>(&definition))
        m_linearFactors[id] = definition.GetFactor();
}

double WUnit::ConvertFromUnitToUnit(int from, int to, double value, double scale)
{
    constexpr auto kPlaces = static_cast<unsigned>(std::size(decltype(m_linearFactors){}));
    scale = Scale(scale);
    if (static_cast<unsigned>(from) < kPlaces && static_cast<unsigned>(to) < kPlaces) {
        const double fromFactor = m_linearFactors[from];
        const double toFactor = m_linearFactors[to];
        if (fromFactor != 0.0 && toFactor != 0.0)
            return WUntiDef::FromMetres(WUntiDef::ToMetres(value, scale, fromFactor), scale, toFactor);
    }
    if (IsPlainNumber(from) || IsPlainNumber(to))
        return value;
    const double metres = Display(from).ToMetres(value, scale);
    const double result = Display(to).FromMetres(metres, scale);
    KeepLinearFactor(from);
    KeepLinearFactor(to);
    return result;
}

double WUnit::ConvertFromUnitTo10thMicron(int unit, double value, double scale)
{
    return IsPlainNumber(unit) ? value : Display(unit).ToMetres(value * kTenthMicronsPerMetre, Scale(scale));
}

double WUnit::ConvertFrom10thMicronToUnit(int unit, double value, double scale)
{
    return IsPlainNumber(unit) ? value : Display(unit).FromMetres(value / kTenthMicronsPerMetre, Scale(scale));
}

double WUnit::ConvertResolutionFromUnitToUnit(int from, int to, double value, double scale)
{
    // What truncates to 0 as a 64-bit integer: NaN and what is out of range do not.
    if (value > -1.0 && value < 1.0)
        return 0.0;
    return 1.0 / ConvertFromUnitToUnit(from, to, 1.0 / value, scale);
}

int WUnit::GetUnitDecimalPlaces(int id) { return Display(id).GetDecimalPlaces(); }
int WUnit::SetUnitDecimalPlaces(int id, int places) { return Display(id).SetDecimalPlaces(places); }
double WUnit::GetUnitIncrement(int id, unsigned level) { return Display(id).GetIncrement(level); }
int WUnit::GetNumberOfUnitInCollection(int id) { return Display(id).GetCount(); }
double WUnit::GetPrecisionFactor() { return m_precision; }
double WUnit::SetPrecisionFactor(double factor) { return m_precision = factor; }
double WUnit::GetResolution() { return m_dScreenResolution; }
double WUnit::SetResolution(double resolution) { return m_dScreenResolution = resolution; }
int WUnit::GetMaxUnitRange() { return m_nextDisplay - 1; }
TvlString WUnit::GetUnitString(int id, unsigned form) { return Display(id).GetUnitString(form); }
TvlString WUnit::GetUnitDisplayString(int id, unsigned form) { return Display(id).GetDisplayString(form); }

TvlString WUnit::DisplayUnitValueAsString(int id, double value, unsigned form, int decimals)
{
    return Display(id).FormatValue(value, form, decimals, m_precision);
}
