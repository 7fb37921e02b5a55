// tvl policy: what the administrator and the machine allow.
#include "Commands.h"
#include "DotNet.h"
#include "Policy.h"
#include "ShellActions.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <CLI/CLI.hpp>
#include <iomanip>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

namespace {
struct Question {
    const char* name;
    bool (*ask)();
};

constexpr Question kQuestions[] = {
    {"IsNetworkInstall", TvlUtl::IsNetworkInstall},
    {"IsMsgOptOutAtSetup", TvlUtl::IsMsgOptOutAtSetup},
    {"IsInternetFeaturesDisabled", TvlUtl::IsInternetFeaturesDisabled},
    {"IsOnlineAIFeaturesDisabled", TvlUtl::IsOnlineAIFeaturesDisabled},
    {"IsWelcomeBookOnline", TvlUtl::IsWelcomeBookOnline},
    {"IsCorporateCloudFeaturesOn", TvlUtl::IsCorporateCloudFeaturesOn},
    {"IsTDAEnterpriseAccessEnabled", TvlUtl::IsTDAEnterpriseAccessEnabled},
    {"IsUserAllowedToUseInternet", TvlUtl::IsUserAllowedToUseInternet},
    {"IsUserAllowedToUseOnlineAI", TvlUtl::IsUserAllowedToUseOnlineAI},
    {"IsConnectedToInternet", TvlUtl::IsConnectedToInternet},
    {"IsOnline", TvlUtl::IsOnline},
    {"IsCloudAllowed", TvlUtl::IsCloudAllowed},
    {"IsAppStoreApp", TvlUtl::IsAppStoreApp},
    {"IsDotNetInstalled", TvlUtl::IsDotNetInstalled},
    {"WEBIsBrowserAvailable", WEBIsBrowserAvailable},
};
constexpr const char* kContent = "OfflineContentLocation";
constexpr int kNameWidth = 30;

void Run(bool json)
{
    nlohmann::ordered_json answers;
    for (const auto& [name, ask] : kQuestions)
        answers[name] = ask();
    answers[kContent] = TvlPlatform::ToUtf8(TvlUtl::OfflineContentLocation());
    if (json) {
        std::cout << answers.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
        return;
    }
    for (const auto& [name, answer] : answers.items())
        std::cout << std::left << std::setw(kNameWidth) << name
                  << (answer.is_boolean() ? answer.get<bool>() ? "yes" : "no" : answer.get<std::string>()) << '\n';
}
}   // namespace

void AddPolicyCommand(CLI::App& app)
{
    const auto json = std::make_shared<bool>(false);
    CLI::App* const command = app.add_subcommand("policy", "shows what the administrator and the machine allow");
    command->add_flag("--json", *json, "print a JSON object");
    command->callback([json] { Run(*json); });
}
