// What can be sent to the analytics service, told by the code that sends it.
#pragma once

#include "siblings/SiblingsApi.h"

#include <vector>

namespace ProductAnalytics {

struct PropertyDescription {
    const wchar_t* name;
    const wchar_t* meaning;   // of the value, for people
};

struct EventDescription {
    const wchar_t* event;   // its name; empty for properties that the application sends with an event of its own
    const wchar_t* when;    // what has happened, for people
    std::vector<PropertyDescription> properties;   // all that the event can have, in the order of filling
};

/// Says what a module can send, as long as it lives; a static object beside the code that sends. `describe` reads the
/// tables that the sending walks.
class TVLSIBLINGS_API EventDescriber {
public:
    using Describe = std::vector<EventDescription> (*)();

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
