// The analytics service: what is sent about the use of the product, and where it goes.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"

#include <map>

class ITovelCmn_Doc;

namespace ProductAnalytics {

/// Properties of an event. Keys are views of constants, which live as long as their module.
using PropertyMap = std::map<TvlStringViewT<wchar_t>, TvlStringT<wchar_t>>;

}   // namespace ProductAnalytics

/// The service that takes events. The order of its operations is fixed, since modules of other ages call them. Any
/// thread may call.
class IProductAnalyticsCore {
public:
    /// Whether an event that is sent now would be kept: the user shares feature usage, and DO_NOT_TRACK is not set.
    virtual bool IsSharing() const = 0;
    /// Full path of the file that events are written to; see docs/tracking.md for its form. Empty when the system tells
    /// of no place for the user's files: events are dropped then.
    virtual TvlString GetEventFile() const = 0;
    /// A property that every event carries from now on, unless it brings its own value. An empty value takes it back.
    virtual void SetCommonProperty(const TvlString& name, const TvlString& value) = 0;
    /// Takes one event. `detail` is any further text, usually empty. What can't be stored is dropped: no caller waits
    /// or fails for the sake of analytics.
    virtual void SendEvent(
        const TvlString& name, const ProductAnalytics::PropertyMap& properties, const TvlString& detail) = 0;

protected:
    ~IProductAnalyticsCore() = default;
};

namespace ProductAnalytics {

/// The service. Lives as long as the process.
TVLSIBLINGS_API IProductAnalyticsCore& GetInstance();
/// Replaces the service; null restores it. The caller keeps ownership.
TVLSIBLINGS_API void SetInstanceForTests(IProductAnalyticsCore* core);

}   // namespace ProductAnalytics
