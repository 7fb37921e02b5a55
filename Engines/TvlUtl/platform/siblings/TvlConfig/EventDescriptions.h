// What can be sent to the analytics service, told by the code that sends it.
#pragma once

#include "siblings/SiblingsApi.h"

#include <vector>

namespace ProductAnalytics {

/// A property that events have.
struct PropertyDescription {
    const wchar_t* name;      // as it is sent
    const wchar_t* meaning;   // of the value, for people
};

/// An event that can be sent.
struct EventDescription {
    const wchar_t* event;   // its name; empty for properties that the application sends with an event of its own
    const wchar_t* when;    // what has happened, for people
    std::vector<PropertyDescription> properties;   // all that the event can have, in the order of filling
};

/// Says what a module can send, as long as it lives; a static object beside the code that sends. `describe` reads the
/// tables that the sending walks.
class TVLSIBLINGS_API EventDescriber {
public:
    /// Gives the events of a module. Called anew by each DescribeEvents.
    using Describe = std::vector<EventDescription> (*)();

    /// Adds the events of `describe` to those of the process.
    explicit EventDescriber(Describe describe);
    EventDescriber(const EventDescriber&) = delete;
    EventDescriber& operator=(const EventDescriber&) = delete;
    ~EventDescriber();

private:
    Describe m_describe;
};

/// Everything that the modules of this process can send, sorted by the events' names. Any thread may call.
TVLSIBLINGS_API std::vector<EventDescription> DescribeEvents();

}   // namespace ProductAnalytics
