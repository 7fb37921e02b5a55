// Drawing scales: how a distance in the world relates to a distance on the page.
//
// Units are the ids of the procedural interface (Units.h); 0 stands for none. For the user interface thread.
#pragma once

#include "TvlUtlApi.h"
#include "siblings/TvlPlatform/TvlString.h"

#include <cstdint>
#include <set>
#include <vector>

/// Drawing scales and their presets.
namespace TvlUtl::WorldScale {

/// One scale with its label. A value; what it was made with stays.
class TVLUTL_API Preset {
public:
    /// @param worldDist distance in the world, in `worldUnit`
    /// @param pageDist  the same on the page, in `pageUnit`
    /// @param scale     world distance divided by page distance, both in one unit
    Preset(double worldDist, int worldUnit, double pageDist, int pageUnit, double scale, TvlString label, bool metric);

    /// Distance in the world, in WorldUnit.
    double WorldDist() const;
    /// Distance on the page, in PageUnit.
    double PageDist() const;
    /// World distance divided by page distance, both in one unit.
    double Scale() const;
    /// @{
    /// Unit id of the distance; 0 for none.
    int WorldUnit() const;
    int PageUnit() const;
    /// @}
    /// Whether lists show it among the metric ones.
    bool IsMetric() const;
    /// What lists show, such as "1:50", in the language that it was made in.
    TvlString Label() const;
    /// Whether either distance has a unit.
    bool IsCustomWithUnits() const;

private:
    double m_worldDist;
    double m_pageDist;
    double m_scale;   // not a number sorts behind all numbers
    std::int32_t m_worldUnit;
    std::int32_t m_pageUnit;
    bool m_metric;
    TvlString m_label;
};

/// The order in which lists show presets: reductions and 1:1 before magnifications, then metric ones first, then by scale
/// (away from 1:1 on either side), then those without units first.
struct TVLUTL_API PresetOrder {
    /// Whether `a` stands before `b`.
    bool operator()(const Preset& a, const Preset& b) const;
};

/// Presets in that order.
using PresetSet = std::set<Preset, PresetOrder>;

/// The presets on offer, 30 of them, labelled in the language of the moment.
TVLUTL_API PresetSet GetPresets();
/// The same in the same order.
TVLUTL_API std::vector<Preset> GetPresetList();

/// A preset for any scale, labelled as one unit of the page to many of the world or the other way round. A scale whose
/// units are equal and whose number or reciprocal is whole has no units and a label such as "1:50"; any other has its
/// units, and distances in them with the units' names. Metric, whatever the units.
/// @param scale      world distance by page distance; below 2.220446049250313e-16 counts as that
/// @param resolution pixels per kilometre; 1e-06 or less stands for 300 pixels per inch
TVLUTL_API Preset Format(double scale, int worldUnit, int pageUnit, double resolution);

}   // namespace TvlUtl::WorldScale
