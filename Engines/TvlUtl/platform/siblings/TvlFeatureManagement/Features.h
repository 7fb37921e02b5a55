// Features that can be switched on and off while a program runs.
#pragma once

#include "siblings/SiblingsApi.h"

#include <map>
#include <mutex>
#include <string>

/// Switches of features, and what they call in the library.
namespace FeatureManagement {

/// A switch, known by its key.
struct Feature {
    const wchar_t* Name;   // the key
    bool isOnByDefault;    // what IsEnabled gives before anybody has switched it
};

/// The switches that the library asks.
namespace Features {

/// Measures in pixels show decimals. Off by default.
TVLSIBLINGS_API const Feature& PixelEnableDecimalPrecision_func();
/// Applications follow the system into tablet mode with a workspace of its own. On by default.
TVLSIBLINGS_API const Feature& OptionsTabletMode_func();

}   // namespace Features

/// What is switched on. Any thread may ask and switch.
class TVLSIBLINGS_API FeatureFlags {
public:
    /// Whether the feature is on: as it was switched last, else as its default says.
    bool IsEnabled(const Feature& feature) const;
    /// Switches the feature, whatever its default.
    void Switch(const Feature& feature, bool on);
    /// Back to the default.
    void Reset(const Feature& feature);

private:
    mutable std::mutex m_lock;
    std::map<std::wstring, bool> m_switched;   // by key, what differs from the defaults
};

/// The features of the process.
TVLSIBLINGS_API FeatureFlags& FeatureSet();

}   // namespace FeatureManagement
