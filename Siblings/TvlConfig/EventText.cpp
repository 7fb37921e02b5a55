// Events as lines of JSON.
#include "siblings/TvlConfig/EventLog.h"

#include "siblings/TvlPlatform/TextEncoding.h"

#include <nlohmann/json.hpp>

namespace ProductAnalytics {

namespace {
using Json = nlohmann::ordered_json;

constexpr int kVersion = 1;

std::string Bytes(const TvlString& text) { return TvlPlatform::ToUtf8(text.Std()); }

/// The text of a member; nothing when it is missing or no text.
std::optional<TvlString> TextOf(const Json& object, const char* name)
{
    const auto found = object.find(name);
    if (found == object.end() || !found->is_string())
        return std::nullopt;
    return TvlPlatform::FromUtf8(found->get_ref<const std::string&>());
}

bool IsEvent(const Json& object)
{
    if (!object.is_object())
        return false;
    const auto version = object.find("v");
    const auto properties = object.find("properties");
    return version != object.end() && *version == kVersion && properties != object.end() && properties->is_object();
}
}   // namespace

std::string FormatEvent(const StoredEvent& event)
{
    Json properties = Json::object();
    for (const auto& [name, value] : event.properties)
        properties[Bytes(name)] = Bytes(value);
    Json object = {{"v", kVersion}, {"time", Bytes(event.time)}, {"event", Bytes(event.name)},
        {"properties", std::move(properties)}};
    if (!event.detail.IsEmpty())
        object["detail"] = Bytes(event.detail);
    return object.dump() + '\n';
}

std::optional<StoredEvent> ParseEvent(std::string_view line)
{
    const Json object = Json::parse(line, nullptr, false);
    if (!IsEvent(object))
        return std::nullopt;
    auto time = TextOf(object, "time");
    auto name = TextOf(object, "event");
    if (!time || !name)
        return std::nullopt;
    StoredEvent event{*std::move(time), *std::move(name), {}, TextOf(object, "detail").value_or(TvlString())};
    for (const auto& [property, value] : object["properties"].items()) {
        if (!value.is_string())
            return std::nullopt;
        event.properties[TvlPlatform::FromUtf8(property)] = TvlPlatform::FromUtf8(value.get_ref<const std::string&>());
    }
    return event;
}

}   // namespace ProductAnalytics
