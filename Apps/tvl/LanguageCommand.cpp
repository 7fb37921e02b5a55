// tvl language: which language the user interface has, and why.
#include "Commands.h"
#include "UILanguage.h"
#include "siblings/TvlComponent/Application.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <CLI/CLI.hpp>
#include <iomanip>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

namespace {
using Languages = std::vector<std::pair<CGlbLang, TvlString>>;

constexpr int kStepWidth = 24;

std::string Text(const TvlString& text) { return TvlPlatform::ToUtf8(text.Std()); }
std::string Code(CGlbLang language) { return language ? Text(language.GetIO_StrFmt()) : "none"; }

/// Has warnings printed, where a program without windows would wait in a box that nobody sees.
class ConsoleApplication final : public ITovelCmn_App {
public:
    ConsoleApplication() { TvlComponent::SetAppInterface(this); }
    ConsoleApplication(const ConsoleApplication&) = delete;
    ConsoleApplication& operator=(const ConsoleApplication&) = delete;
    ~ConsoleApplication() override { TvlComponent::SetAppInterface(nullptr); }
    void ShowMessage(const wchar_t* text) override { std::cerr << "tvl: " << TvlPlatform::ToUtf8(text) << '\n'; }
};

/// Chooses the language; asks the user only where that is wanted.
CGlbLang Choose(bool ask)
{
    std::unique_ptr<TvlUtils::InterProcessEvent> silent;
    if (!ask) {
        silent = IGLB_UILanguage::CreateSilentEvent();
        if (silent)
            silent->set();
    }
    return IGLB_UILanguage::GetInst().GetLanguage();
}

Languages Installed()
{
    Languages languages;
    if (!IGLB_UILanguage::GetInst().GetLanguages(languages))
        EndWithBadInput("the suite has no languages");
    return languages;
}

void List(bool json)
{
    nlohmann::ordered_json rows = nlohmann::ordered_json::array();
    for (const auto& [code, name] : Installed())
        rows.push_back({{"code", Code(code)}, {"windowsId", code.GetWinLangID()}, {"name", Text(name)}});
    if (json) {
        std::cout << rows.dump() << '\n';
        return;
    }
    for (const auto& row : rows)
        std::cout << row["code"].get<std::string>() << "  0x" << std::hex << std::setw(4) << std::setfill('0')
                  << row["windowsId"].get<int>() << std::dec << "  " << row["name"].get<std::string>() << '\n';
}

void Current(bool ask)
{
    const ConsoleApplication application;
    const CGlbLang language = Choose(ask);
    if (!language)
        EndWithBadInput("the suite has no languages");
    TvlString path;
    IGLB_UILanguage::GetInst().GetLanguagePath(path);
    std::cout << Code(language) << "  " << Text(path) << '\n';
}

void Set(const std::string& text, const std::string& ask)
{
    CGlbLang language;
    std::string installed;
    bool found = false;
    language.SetFromIO_StrFmt(TvlPlatform::FromUtf8(text));
    for (const auto& [code, name] : Installed()) {
        installed += " " + Code(code);
        found = found || code == language;
    }
    if (!found)
        EndWithBadInput("\"" + text + "\" is not installed; there are" + installed);
    if (!IGLB_UILanguage::GetInst().WriteStoredLanguage(language))
        EndWithBadInput("the registry can't be written");
    if (!ask.empty())
        IGLB_UILanguage::GetInst().WriteQueryStartupLang(ask == "on");
}

void Why()
{
    const ConsoleApplication application;
    Choose(false);
    for (const auto& [step, finding] : TvlUtl::GetUILanguageSteps())
        std::cout << std::left << std::setw(kStepWidth) << Text(step) << Text(finding) << '\n';
}
}   // namespace

void AddLanguageCommand(CLI::App& app)
{
    struct Options {
        bool json = false;
        bool mayAsk = false;
        std::string code;
        std::string ask;
    };
    const auto options = std::make_shared<Options>();
    CLI::App* const command =
        app.add_subcommand("language", "shows and sets the language of the suite's user interface");
    command->require_subcommand(1);

    CLI::App* const list = command->add_subcommand("list", "lists the installed languages");
    list->add_flag("--json", options->json, "print a JSON array");
    list->callback([options] { List(options->json); });

    CLI::App* const current =
        command->add_subcommand("current", "prints the language that applications start in, and its folder");
    current->add_flag("--ask", options->mayAsk, "ask as an application would");
    current->callback([options] { Current(options->mayAsk); });

    CLI::App* const set = command->add_subcommand("set", "stores the language for the user");
    set->add_option("code", options->code, "three letters, such as DEU")->required();
    set->add_option("--ask", options->ask, "whether applications ask when they start")
        ->check(CLI::IsMember({"on", "off"}));
    set->callback([options] { Set(options->code, options->ask); });

    command->add_subcommand("why", "prints each step of the choice and what it saw")->callback(Why);
}
