// tvl track: what was told of the use of the product, and what can be told.
#include "Commands.h"
#include "siblings/TvlConfig/EventDescriptions.h"
#include "siblings/TvlConfig/EventLog.h"
#include "siblings/TvlConfig/ProductAnalytics.h"
#include "siblings/TvlPlatform/OneLine.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <iomanip>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <thread>

namespace {
namespace Analytics = ProductAnalytics;
using Events = std::vector<Analytics::StoredEvent>;
using Json = nlohmann::ordered_json;

std::string Utf8(const TvlString& text) { return TvlPlatform::ToUtf8(text.Std()); }

Analytics::EventReader OpenEvents()
{
    const TvlString file = Analytics::GetInstance().GetEventFile();
    if (file.IsEmpty())
        EndWithBadInput("the system tells of no place for the user's files; TVL_USER_DIR can name one");
    return Analytics::EventReader(TvlUtils::SystemIO::Path::GetFolderName(file));
}

/// Text for a terminal: a line break or an escape in a value must not pass for more than a value.
std::string Printable(const TvlString& text) { return TvlPlatform::ToUtf8(TvlPlatform::OneLine(text.Std(), L'?')); }

void Print(const Analytics::StoredEvent& event, bool json)
{
    if (json) {
        std::cout << Analytics::FormatEvent(event);
        return;
    }
    std::cout << Printable(event.time) << ' ' << Printable(event.name) << '\n';
    for (const auto& [name, value] : event.properties)
        std::cout << "    " << Printable(name) << ": " << Printable(value) << '\n';
    if (!event.detail.IsEmpty())
        std::cout << "    " << Printable(event.detail) << '\n';
}

/// Which events are printed, and how.
struct Choice {
    std::string name;
    bool json = false;

    bool Takes(const Analytics::StoredEvent& event) const { return name.empty() || Utf8(event.name) == name; }
    void AddOptions(CLI::App& command)
    {
        command.add_option("--event", name, "only events of this name");
        command.add_flag("--json", json, "print each event as a line of JSON, as it is stored");
    }
};

struct Show : Choice {
    std::size_t last = 0;

    void Run() const
    {
        Analytics::EventReader reader = OpenEvents();
        Events events = reader.ReadNew();
        std::erase_if(events, [this](const auto& event) { return !Takes(event); });
        const std::size_t count = last > 0 ? std::min(last, events.size()) : events.size();
        std::for_each(events.end() - static_cast<std::ptrdiff_t>(count), events.end(),
            [this](const auto& event) { Print(event, json); });
        if (reader.CountSkipped() > 0)
            std::cerr << reader.CountSkipped() << " lines are no whole events and were left out\n";
    }
};

struct Follow : Choice {
    std::size_t count = 0;
    bool all = false;

    void Run() const
    {
        constexpr std::chrono::milliseconds kPause{200};
        Analytics::EventReader reader = OpenEvents();
        if (!all)
            reader.ReadNew();
        for (std::size_t printed = 0;;) {
            for (const auto& event : reader.ReadNew()) {
                if (!Takes(event))
                    continue;
                Print(event, json);
                std::cout.flush();
                if (++printed == count)
                    return;
            }
            if (!std::cout)
                return;   // nobody reads any more
            std::this_thread::sleep_for(kPause);
        }
    }
};

struct Describe {
    bool json = false;

    void Run() const
    {
        for (const auto& event : Analytics::DescribeEvents())
            json ? PrintJson(event) : PrintText(event);
    }

    static void PrintText(const Analytics::EventDescription& event)
    {
        constexpr int kColumn = 32;
        const std::string name = Utf8(event.event);
        std::cout << (name.empty() ? "(event of the application)" : name) << ": " << Utf8(event.when) << '\n';
        for (const auto& [property, meaning] : event.properties)
            std::cout << "    " << std::left << std::setw(kColumn) << Utf8(property) << ' ' << Utf8(meaning) << '\n';
    }

    static void PrintJson(const Analytics::EventDescription& event)
    {
        Json properties = Json::object();
        for (const auto& [property, meaning] : event.properties)
            properties[Utf8(property)] = Utf8(meaning);
        std::cout << Json{{"event", Utf8(event.event)}, {"when", Utf8(event.when)}, {"properties", properties}} << '\n';
    }
};

/// Adds a command of one kind; CLI keeps its values through the callback.
template <class Kind>
std::pair<CLI::App*, Kind*> Add(CLI::App& parent, const char* name, const char* description)
{
    const auto kind = std::make_shared<Kind>();
    CLI::App* const command = parent.add_subcommand(name, description);
    command->callback([kind] { kind->Run(); });
    return {command, kind.get()};
}
}   // namespace

void AddTrackCommand(CLI::App& app)
{
    CLI::App* const command = app.add_subcommand("track", "shows what is told of the use of the product");
    command->require_subcommand(1);

    const auto [showing, show] = Add<Show>(*command, "show", "prints the events that are stored, the oldest first");
    show->AddOptions(*showing);
    showing->add_option("--last", show->last, "no more than this many, the latest ones")->check(CLI::PositiveNumber);

    const auto [following, follow] = Add<Follow>(*command, "follow", "prints events as they come, until it is stopped");
    follow->AddOptions(*following);
    following->add_option("--count", follow->count, "end after this many")->check(CLI::PositiveNumber);
    following->add_flag("--all", follow->all, "begin with the events that are stored");

    const auto [describing, describe] =
        Add<Describe>(*command, "describe", "prints every event and property that can be sent");
    describing->add_flag("--json", describe->json, "print a line of JSON an event");
}
