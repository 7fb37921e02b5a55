#include "siblings/TvlFeatureManagement/Features.h"

namespace FeatureManagement {

namespace Features {

const Feature& PixelEnableDecimalPrecision_func()
{
    static constexpr Feature feature{L"PixelEnableDecimalPrecision", false};
    return feature;
}

const Feature& OptionsTabletMode_func()
{
    static constexpr Feature feature{L"OptionsTabletMode", true};
    return feature;
}

}   // namespace Features

bool FeatureFlags::IsEnabled(const Feature& feature) const
{
    const std::lock_guard hold(m_lock);
    const auto found = m_switched.find(feature.Name);
    return found == m_switched.end() ? feature.isOnByDefault : found->second;
}

void FeatureFlags::Switch(const Feature& feature, bool on)
{
    const std::lock_guard hold(m_lock);
    m_switched[feature.Name] = on;
}

void FeatureFlags::Reset(const Feature& feature)
{
    const std::lock_guard hold(m_lock);
    m_switched.erase(feature.Name);
}

FeatureFlags& FeatureSet()
{
    static FeatureFlags features;
    return features;
}

}   // namespace FeatureManagement
