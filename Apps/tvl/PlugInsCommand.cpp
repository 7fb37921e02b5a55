// tvl plugins: where plug-ins are searched for, and which add-ons apply.
#include "AddOns.h"
#include "CPluginStates.h"
#include "Commands.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

namespace {
using TvlPlatform::ToUtf8;

struct PlugIns {
    std::vector<std::string> addOns;
    bool json = false;

    void Run() const
    {
        if (!addOns.empty())
            return ShowAddOns();
        nlohmann::ordered_json folders = nlohmann::ordered_json::array();
        for (const auto& [folder, enabled] : CPluginStates::GetPluginSearchPathAndState())
            folders.push_back({{"folder", ToUtf8(folder)}, {"enabled", enabled}});
        const std::string masks = ToUtf8(CPluginStates::PluginFileExtensions.GetValue());
        if (json) {
            std::cout << nlohmann::ordered_json{{"folders", folders}, {"files", masks}} << '\n';
            return;
        }
        for (const auto& folder : folders)
            std::cout << (folder["enabled"].get<bool>() ? "on   " : "off  ") << folder["folder"].get<std::string>()
                      << '\n';
        std::cout << "files  " << masks << '\n';
    }

private:
    void ShowAddOns() const
    {
        for (const std::string& folder : addOns) {
            TvlString marker;
            const bool applies = AddOns::ShouldLoadAddOn(TvlPlatform::FromUtf8(folder), &marker);
            if (json)
                std::cout << nlohmann::ordered_json{{"folder", folder}, {"loaded", applies},
                    {"marker", applies ? ToUtf8(marker) : std::string()}}
                          << '\n';
            else
                std::cout << folder << (applies ? ": loaded for " + ToUtf8(marker) : ": not for this program") << '\n';
        }
    }
};
}   // namespace

void AddPlugInsCommand(CLI::App& app)
{
    const auto plugIns = std::make_shared<PlugIns>();
    CLI::App* const command = app.add_subcommand("plugins", "lists the folders that plug-ins are searched in");
    command->add_option(
        "--add-on", plugIns->addOns, "tell of folders of add-on content whether this program loads them");
    command->add_flag("--json", plugIns->json, "print JSON");
    command->callback([plugIns] { plugIns->Run(); });
}
