// An application and an analytics service that keep what they are told.
#pragma once

#include "siblings/TvlComponent/Application.h"
#include "siblings/TvlComponent/Document.h"
#include "siblings/TvlConfig/ProductAnalytics.h"

#include <cstring>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// Stands for the application and the service while it lives. Safe to be told by any thread.
class RecordingApplication : public ITovelCmn_App, public IProductAnalyticsCore {
public:
    using Properties = std::map<std::wstring, std::wstring>;
    struct Event {
        std::wstring name;
        Properties properties;
        std::wstring detail;
    };

    RecordingApplication()
    {
        TvlComponent::SetAppInterface(this);
        ProductAnalytics::SetInstanceForTests(this);
    }
    RecordingApplication(const RecordingApplication&) = delete;
    RecordingApplication& operator=(const RecordingApplication&) = delete;
    ~RecordingApplication() override
    {
        TvlComponent::SetAppInterface(nullptr);
        ProductAnalytics::SetInstanceForTests(nullptr);
    }

    void ShowMessage(const wchar_t*) override { }
    int TrackFeature(const wchar_t* label) override
    {
        int count = 0;
        {
            const std::scoped_lock hold(m_lock);
            labels.push_back(label);
            count = static_cast<int>(labels.size());
        }
        if (onLabel)
            onLabel();
        return count;
    }
    ITovelCmn_Doc* GetActiveDocument() override { return active; }

    bool IsSharing() const override { return true; }
    TvlString GetEventFile() const override { return TvlString(); }
    void SetCommonProperty(const TvlString&, const TvlString&) override { }
    void SendEvent(
        const TvlString& name, const ProductAnalytics::PropertyMap& properties, const TvlString& detail) override
    {
        Event event{name.Std(), {}, detail.Std()};
        for (const auto& [key, value] : properties)
            event.properties.emplace(std::wstring_view(key), value.Std());
        {
            const std::scoped_lock hold(m_lock);
            events.push_back(std::move(event));
        }
        if (onEvent)
            onEvent();
    }

    /// The one event since the last call; empty when there was another number.
    Event TakeEvent()
    {
        const std::vector<Event> taken = std::exchange(events, {});
        return taken.size() == 1 ? taken.front() : Event();
    }

    std::vector<std::wstring> labels;
    std::vector<Event> events;
    std::function<void()> onLabel;
    std::function<void()> onEvent;
    ITovelCmn_Doc* active = nullptr;

private:
    std::mutex m_lock;
};

/// A document with statistics and metadata that a test chooses.
struct FakeDocument : ITovelCmn_Doc {
    TvlUtils::Any GetStatistic(DocumentStatistic statistic) const override
    {
        const auto found = statistics.find(statistic);
        return found == statistics.end() ? TvlUtils::Any() : found->second;
    }
    bool HasMetadata(const GUID& key) const override
    {
        return layoutKey && std::memcmp(&key, &*layoutKey, sizeof key) == 0;
    }
    TvlUtils::Any GetMetadata(const GUID& key) const override { return HasMetadata(key) ? layout : TvlUtils::Any(); }

    std::map<DocumentStatistic, TvlUtils::Any> statistics;
    std::optional<GUID> layoutKey;   // of the one metadata property that it carries
    TvlUtils::Any layout;
};
