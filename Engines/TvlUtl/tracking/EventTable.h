// Which event a record sends, and with which properties.
#pragma once

#include "TrackedRecord.h"
#include "siblings/TvlConfig/PropertyGroups.h"

#include <span>
#include <variant>

/// One property of an event.
struct PropertyStep {
    ProductAnalytics::PropertyDescription property;
    /// The value; nothing when the event goes out without the property.
    std::optional<TvlString> (*value)(const TrackedRecord& record);
};

/// A group of properties of the document.
struct GroupStep {
    ProductAnalytics::PropertyGroup group;
    void (*add)(ProductAnalytics::PropertyMap& map, const TrackedRecord& record);
};

using EventStep = std::variant<PropertyStep, GroupStep>;

/// What a context sends when it was accepted.
struct EventRow {
    const wchar_t* context;
    const wchar_t* event;
    const wchar_t* when;                // for people
    bool isTimed;                       // the stopwatch runs from the start, and stops with the commit
    bool needsError;                    // the row holds for records with a message of failure alone
    std::span<const EventStep> steps;   // in the order of filling
};

/// Whether an event of the context tells how long it took, from the record's start on.
bool IsTimed(const TvlString& context);
/// The event of a record; null for a context without one.
const EventRow* FindEvent(const TrackFileFormatUseData& data);
/// Sends the event of a record, if its context has one.
void SendTrackedEvent(const TrackedRecord& record);
