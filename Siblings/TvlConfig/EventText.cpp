// Events as lines of JSON.
#include "siblings/TvlConfig/EventLog.h"

#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/Json.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace ProductAnalytics {

namespace {
namespace Json = TvlUtils::Json;

constexpr int kVersion = 1;
constexpr Json::Limits kLimits{.bytes = kLongestEvent - 1, .depth = 16};   // without its line feed

std::string Bytes(const TvlString& text) { return TvlPlatform::ToUtf8(text.Std()); }

/// A text as JSON. One value at a time: those with others in them need memory for their end.
std::string Quoted(const std::string& text) { return nlohmann::json(text).dump(); }

/// Properties by the bytes of their names: of two that become the same the last one counts.
std::string FormatProperties(const std::map<TvlString, TvlString>& properties)
{
    std::vector<std::pair<std::string, std::string>> members;
    for (const auto& [name, value] : properties) {
        std::string key = Quoted(Bytes(name));
        const auto same =
            std::find_if(members.begin(), members.end(), [&](const auto& member) { return member.first == key; });
        if (same != members.end())
            same->second = Quoted(Bytes(value));
        else
            members.emplace_back(std::move(key), Quoted(Bytes(value)));
    }
    std::string text;
    for (const auto& [name, value] : members)
        text += (text.empty() ? "" : ",") + name + ":" + value;
    return "{" + text + "}";
}
}   // namespace

std::string FormatEvent(const StoredEvent& event)
{
    std::string line = "{\"v\":" + std::to_string(kVersion) + ",\"time\":" + Quoted(Bytes(event.time))
        + ",\"event\":" + Quoted(Bytes(event.name)) + ",\"properties\":" + FormatProperties(event.properties);
    if (!event.detail.IsEmpty())
        line += ",\"detail\":" + Quoted(Bytes(event.detail));
    return line + "}\n";
}

std::optional<StoredEvent> ParseEvent(std::string_view line)
{
    if (line.ends_with('\n'))
        line.remove_suffix(1);
    const auto object = Json::Parse(line, kLimits);
    double version = 0;
    StoredEvent event;
    Json::Object properties;
    if (!object || !object->GetValue(L"v", version) || version != kVersion || !object->GetValue(L"time", event.time)
        || !object->GetValue(L"event", event.name) || !object->GetValue(L"properties", properties))
        return std::nullopt;
    object->GetValue(L"detail", event.detail);
    for (const auto& [name, value] : properties.Members()) {
        const auto* const text = std::get_if<TvlString>(&value);
        if (!text)
            return std::nullopt;
        event.properties[name] = *text;
    }
    return event;
}

}   // namespace ProductAnalytics
