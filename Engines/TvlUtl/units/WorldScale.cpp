#include "WorldScale.h"

#include "ProceduralUnits.h"
#include "Units.h"
#include "siblings/TvlResources/Resources.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <optional>
#include <utility>

namespace TvlUtl::WorldScale {

namespace {
constexpr double kEpsilon = std::numeric_limits<double>::epsilon();   // 2.220446049250313e-16
constexpr const wchar_t* kLabelWithUnits = L"54f14000-72d5-4b15-971f-656be80f508c";
constexpr const wchar_t* kLabelOfNumbers = L"c47fa3d2-8333-4b44-8819-8890f54b1572";

struct PresetRow {
    double world;
    double page;
    const wchar_t* label;
    bool metric;
};

constexpr PresetRow kPresets[] = {
    {1, 1, L"3df412ed-614e-44a9-a509-839acdc22878", true},
    {2, 1, L"00e29503-a92d-48dc-bca6-a26c13a1702a", true},
    {4, 1, L"8a124a05-77c4-47d9-aa6c-f6d6c52f296e", true},
    {8, 1, L"4ecb76d9-e126-4055-baab-f14a8efc7d06", true},
    {16, 1, L"4b039962-0b74-40f0-88c6-b6bb2aefc466", true},
    {10, 1, L"01224c7a-5fac-4cda-9e41-4e0e92c4edc3", true},
    {20, 1, L"f1d69460-79c8-484a-bc18-b7f9a3ad3022", true},
    {30, 1, L"540aa707-defa-4302-b735-fcbbd3a7d69b", true},
    {40, 1, L"51fababe-37b8-4ffa-b61f-563ded9aa4e3", true},
    {50, 1, L"51ea7e08-b3a2-4597-be3b-efde45ed34d7", true},
    {100, 1, L"2f2da161-f242-4495-a80d-ab0bb5b98edc", true},
    {4, 1, L"2d209008-105f-479f-87d4-439cde421637", false},
    {8, 1, L"31fad13a-3226-4464-b439-b72af31619c7", false},
    {12, 1, L"66fa080d-4241-43c1-a304-7719782073b1", false},
    {16, 1, L"9964a755-204d-4c13-914d-a4f5a18adc3a", false},
    {24, 1, L"227ddbab-6317-46f5-a4db-3b35e57018a7", false},
    {32, 1, L"7daf96f0-e0a0-452a-a0ce-a4d83eb1d201", false},
    {48, 1, L"64fe22d6-473c-481f-a063-7f9b4b1f942b", false},
    {64, 1, L"23cf2383-4960-45d1-bdd3-d5672db91614", false},
    {96, 1, L"fa34723e-8961-4e37-bfd4-c4a73582ec7f", false},
    {128, 1, L"3e565eb1-2a38-4693-bb1b-e8cecf7364cf", false},
    {192, 1, L"432760bf-d7ae-4930-9bf8-c53eb07ff102", false},
    {384, 1, L"cba45857-6a38-43ba-b5b4-381d37789dcd", false},
    {768, 1, L"b28e8fa4-6302-498c-a744-ae82060ad35b", false},
    {1563, 1, L"ab5d26fd-24c9-42ff-8c9d-a5913e8340ee", false},   // not 1536: drawings are stored with this scale
    {1, 2, L"44f24334-a244-4f30-8032-dc40b255bc5d", true},
    {1, 4, L"06b1d60e-7869-46fa-badc-28a89e9f87a1", true},
    {1, 8, L"411df3a1-216d-422a-b5b6-d5c67bff2e34", true},
    {1, 10, L"8172c41b-15f8-475e-af19-3ff7f931a111", true},
    {1, 100, L"e4539edb-0b34-464a-845c-a42b4f86582a", true},
};

Preset PresetOf(const PresetRow& row)
{
    return Preset(
        row.world, 0, row.page, 0, row.world / row.page, Framework::Resources::GetString(row.label), row.metric);
}

// Each criterion is negative, 0 or positive as its left side stands before, beside or behind the right one.

int ByMagnification(const Preset& a, const Preset& b) { return int(b.Scale() >= 1.0) - int(a.Scale() >= 1.0); }
int BySystem(const Preset& a, const Preset& b) { return int(b.IsMetric()) - int(a.IsMetric()); }

int ByValue(const Preset& a, const Preset& b)
{
    if (std::isnan(a.Scale()) || std::isnan(b.Scale()))
        return int(std::isnan(a.Scale())) - int(std::isnan(b.Scale()));
    const auto key = [](double scale) { return scale < 1.0 ? -scale : scale; };
    const double left = key(a.Scale());
    const double right = key(b.Scale());
    if (left == right || std::fabs(left - right) <= kEpsilon)
        return 0;
    return left < right ? -1 : 1;
}

int ByCustomUnits(const Preset& a, const Preset& b) { return int(a.IsCustomWithUnits()) - int(b.IsCustomWithUnits()); }

constexpr int (*kOrderBy[])(const Preset&, const Preset&) = {ByMagnification, BySystem, ByValue, ByCustomUnits};

bool IsWhole(double value) { return std::fabs(value - std::round(value)) <= kEpsilon; }

/// What Format was asked for.
struct Request {
    double scale;
    unsigned worldUnit;
    unsigned pageUnit;
    double resolution;

    bool Converts() const { return worldUnit != pageUnit && !IsUnitless(worldUnit) && !IsUnitless(pageUnit); }
    double Convert(unsigned to, unsigned from, double value) const
    {
        return Converts() ? UNITConvertBaseToUnit(to, resolution, UNITConvertUnitToBase(from, resolution, value))
                          : value;
    }
};

struct Distances {
    double world;
    double page;
};

/// The distance that stands against one unit of the other side, and whether it reads well: a whole number, or more than 1.
struct ManyUnits {
    double distance;
    bool accepted;
};

ManyUnits Judge(double distance)
{
    if (!IsWhole(distance))
        return {distance, distance > 1.0};
    const double whole = std::floor(distance);
    return {whole, whole > 0.0};
}

Distances DistancesOf(const Request& request)
{
    const ManyUnits world = Judge(request.Convert(request.worldUnit, request.pageUnit, request.scale));
    if (world.accepted)
        return {world.distance, 1.0};
    const ManyUnits page = Judge(request.Convert(request.pageUnit, request.worldUnit, 1.0 / request.scale));
    // What is no number is not refused here.
    return page.accepted || std::isnan(page.distance) ? Distances{1.0, page.distance} : Distances{world.distance, 1.0};
}

TvlString DistanceText(double distance, unsigned unit, double resolution)
{
    const double base = UNITConvertUnitToBase(unit, resolution, distance);
    const int id = static_cast<int>(unit);
    TvlString text;
    text.Format(
        L"%s %s", UNITConvToUnitAndStringEx(base, id, resolution, 0, 1, 1), UNITGetUnitAsString(id, kUnitNameThird));
    return text;
}

TvlString NumberText(double number)
{
    TvlString text;
    text.Format(L"%.0f", number);
    return text;
}

TvlString LabelOf(const wchar_t* key, const TvlString& page, const TvlString& world)
{
    TvlString text;
    text.Format(Framework::Resources::GetString(key).c_str(), page, world);
    return text;
}
}   // namespace

Preset::Preset(
    double worldDist, int worldUnit, double pageDist, int pageUnit, double scale, TvlString label, bool metric)
    : m_worldDist(worldDist), m_pageDist(pageDist), m_scale(scale), m_worldUnit(worldUnit), m_pageUnit(pageUnit),
      m_metric(metric), m_label(std::move(label))
{
}

double Preset::WorldDist() const { return m_worldDist; }
double Preset::PageDist() const { return m_pageDist; }
double Preset::Scale() const { return m_scale; }
int Preset::WorldUnit() const { return m_worldUnit; }
int Preset::PageUnit() const { return m_pageUnit; }
bool Preset::IsMetric() const { return m_metric; }
TvlString Preset::Label() const { return m_label; }
bool Preset::IsCustomWithUnits() const { return m_worldUnit != 0 || m_pageUnit != 0; }

bool PresetOrder::operator()(const Preset& a, const Preset& b) const
{
    for (const auto criterion : kOrderBy)
        if (const int order = criterion(a, b))
            return order < 0;
    return false;
}

PresetSet GetPresets()
{
    PresetSet presets;
    std::transform(std::begin(kPresets), std::end(kPresets), std::inserter(presets, presets.end()), PresetOf);
    return presets;
}

std::vector<Preset> GetPresetList()
{
    std::vector<Preset> presets;
    std::transform(std::begin(kPresets), std::end(kPresets), std::back_inserter(presets), PresetOf);
    std::sort(presets.begin(), presets.end(), PresetOrder());
    return presets;
}

Preset Format(double scale, int worldUnit, int pageUnit, double resolution)
{
    const double used = scale < kEpsilon ? kEpsilon : scale;
    const bool isPlain = worldUnit == pageUnit && IsWhole(used <= 1.0 ? 1.0 / used : used);
    const Request request{used, static_cast<unsigned>(worldUnit), static_cast<unsigned>(pageUnit), resolution};
    const auto [world, page] = DistancesOf(request);
    if (isPlain)
        return Preset(world, 0, page, 0, used, LabelOf(kLabelOfNumbers, NumberText(page), NumberText(world)), true);
    const TvlString label = LabelOf(kLabelWithUnits, DistanceText(page, request.pageUnit, resolution),
        DistanceText(world, request.worldUnit, resolution));
    return Preset(world, worldUnit, page, pageUnit, used, label, true);
}

}   // namespace TvlUtl::WorldScale
