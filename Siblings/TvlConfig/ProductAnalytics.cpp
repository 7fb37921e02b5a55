// The analytics service as a file of the user's own: nothing leaves the machine.
#include "siblings/TvlConfig/ProductAnalytics.h"

#include "siblings/TvlConfig/EventLog.h"
#include "siblings/TvlConfig/PrivacyPreferences.h"
#include "siblings/TvlConfig/UserFolder.h"
#include "siblings/TvlPref/CPrefObject.h"
#include "siblings/TvlUtils/LogMessage.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "windows/Clock.h"
#include "windows/Environment.h"

#include <atomic>
#include <chrono>
#include <mutex>

namespace ProductAnalytics {

namespace {
using Consent = CPrefObject<bool, CBoxPrefManager>;

/// Properties whose names begin so hold what the user has searched for.
constexpr std::wstring_view kSearchPrefix = L"search.";

TvlString EventFolder()
{
    const TvlString folder = TvlConfig::GetUserDir();
    return folder.IsEmpty() ? folder : TvlUtils::SystemIO::Path::Combine(folder, L"Analytics");
}

/// Whether the environment asks every program not to track: any value but "0".
bool IsTrackingRefused()
{
    const auto value = Ports::Environment::Get().Variable(L"DO_NOT_TRACK");
    return value && !value->empty() && *value != L"0";
}

TvlString TimeText()
{
    using namespace std::chrono;
    const auto now = floor<milliseconds>(Ports::Clock::Get().Now());
    const auto day = floor<days>(now);
    const year_month_day date(day);
    const hh_mm_ss time(now - day);
    return TvlString().Format(L"%04d-%02u-%02uT%02d:%02d:%02d.%03dZ", static_cast<int>(date.year()),
        static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()), static_cast<int>(time.hours().count()),
        static_cast<int>(time.minutes().count()), static_cast<int>(time.seconds().count()),
        static_cast<int>(time.subseconds().count()));
}

class FileSink final : public IProductAnalyticsCore {
public:
    bool IsSharing() const override { return !IsTrackingRefused() && m_shareFeatureUsage.GetValue(); }

    TvlString GetEventFile() const override
    {
        const TvlString folder = EventFolder();
        return folder.IsEmpty() ? folder : EventLog(folder).File();
    }

    void SetCommonProperty(const TvlString& name, const TvlString& value) override
    {
        const std::scoped_lock hold(m_lock);
        if (value.IsEmpty())
            m_common.erase(name);
        else
            m_common[name] = value;
    }

    void SendEvent(const TvlString& name, const PropertyMap& properties, const TvlString& detail) override
    try {
        const TvlString folder = EventFolder();
        if (folder.IsEmpty() || !IsSharing())
            return;
        StoredEvent event{TimeText(), name, Common(), detail};
        for (const auto& [key, value] : properties)
            event.properties[TvlString(std::wstring_view(key))] = value;
        if (!m_shareSearchTerms.GetValue())
            std::erase_if(
                event.properties, [](const auto& property) { return property.first.Std().starts_with(kSearchPrefix); });
        if (const auto written = EventLog(folder).Append(event); !written)
            LogLoss(written.Reason());
    } catch (const std::exception& failure) {
        LogLoss(TvlString(TvlPlatform::FromUtf8(failure.what())));
    }

private:
    std::map<TvlString, TvlString> Common()
    {
        const std::scoped_lock hold(m_lock);
        return m_common;
    }

    /// Tells of the first loss alone: a full disk must not fill the log as well.
    void LogLoss(const TvlString& reason)
    {
        if (!m_lossLogged.exchange(true))
            TvlUtils::LogMessage(
                TvlUtils::LogLevel::Warning, TvlString().Format(L"analytics: an event is lost: %s", reason));
    }

    const Consent m_shareFeatureUsage{Privacy::kShareFeatureUsage, true};
    const Consent m_shareSearchTerms{Privacy::kShareSearchTerms, true};
    std::mutex m_lock;
    std::map<TvlString, TvlString> m_common;
    std::atomic<bool> m_lossLogged = false;
};

std::atomic<IProductAnalyticsCore*> replacement = nullptr;
}   // namespace

// Never destroyed: files that are let go of while modules go away are told of, too.
IProductAnalyticsCore& GetInstance()
{
    static IProductAnalyticsCore& sink = *new FileSink;
    IProductAnalyticsCore* const replaced = replacement.load(std::memory_order_acquire);
    return replaced ? *replaced : sink;
}

void SetInstanceForTests(IProductAnalyticsCore* core) { replacement.store(core, std::memory_order_release); }

}   // namespace ProductAnalytics
