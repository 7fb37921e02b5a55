// Delivers what the user does to the trackers that the applications bring along.
#pragma once

#include "TvlUtlApi.h"
#include "siblings/TvlPlatform/TvlString.h"
#include "siblings/TvlUtils/ArrayView.h"
#include "siblings/TvlUtils/Singleton.h"

#include <map>
#include <memory>

/// What the user does, on its way to the trackers.
namespace Framework::Tracking {

/// Names a tracker. The values belong to the applications.
enum class TrackerId : int {};

/// Something that the user has done.
struct Activity {
    /// What was done, as the trackers are to call it.
    TvlStringT<wchar_t> name;
    /// Two keys act on what is sent: with "setType" equal to "bool" the name goes out with "::" and the value of "setValue"
    /// behind it.
    std::map<TvlStringT<wchar_t>, TvlStringT<wchar_t>> properties;
};

/// Takes activities. The order of the operations is fixed: applications implement them.
class TVLUTL_API ITracker {
public:
    virtual ~ITracker();
    /// By what TrackingSystem::Send finds the tracker; always the same.
    virtual TrackerId GetId() const = 0;
    /// What it throws reaches the caller of TrackingSystem::Send.
    virtual void Send(const Activity& activity) = 0;
};

/// Has the identifier 0 and takes no notice of anything.
class TVLUTL_API NullTracker : public ITracker {
public:
    /// Always 0.
    TrackerId GetId() const override { return TrackerId(0); }
    void Send(const Activity&) override { }
};

class TrackingSystem;

}   // namespace Framework::Tracking

// Made in the library alone, so that all modules ask one object.
extern template class TVLUTL_API TvlUtils::Singleton<Framework::Tracking::TrackingSystem, 0>;

namespace Framework::Tracking {

/// The registered trackers, in the order of registration. It takes no lock: trackers come and go while no thread sends.
/// Whether the user shares anything is for the trackers to ask, see Privacy.h.
class TVLUTL_API TrackingSystem : public TvlUtils::Singleton<TrackingSystem, 0> {
public:
    /// Without trackers.
    TrackingSystem();
    /// Releases the trackers, the first one first.
    ~TrackingSystem();

    /// Null is ignored. Of trackers with one identifier the first one is sent to.
    void AddTracker(std::shared_ptr<ITracker> tracker);
    /// Removes all that have the identifier of `tracker`, whichever objects they are. Null is ignored.
    void RemoveTracker(std::shared_ptr<ITracker> tracker);
    /// Sends a copy of the activity to the tracker of each identifier, in the order given and as often as it is given. An
    /// identifier without a tracker is passed over.
    void Send(TvlUtils::array_view<const TrackerId> ids, const Activity& activity);

private:
    class Trackers;
    std::unique_ptr<Trackers> m_trackers;   // null when the heap was full at the start: nothing is delivered then
};

}   // namespace Framework::Tracking

extern "C" {

/// Hands the label of a feature that was used to the application and returns its answer; 0 without an application, and
/// when it failed. A null label is an empty one.
TVLUTL_API int TrackFeature(const wchar_t* label) noexcept;
}
