// tvl registry: shows and changes the registry.
#include "Commands.h"
#include "RegistryKey.h"
#include "RegistryText.h"
#include "WUTLRegistry.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <cstring>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

namespace {
struct Request {
    std::string key;
    std::string name;
    std::string text;
    std::string type = "text";
    std::string file;
    bool json = false;
};

std::string Dump(const nlohmann::ordered_json& json)
{
    return json.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

nlohmann::ordered_json Describe(const RegistryEntry& value)
{
    nlohmann::ordered_json json{{"name", TvlPlatform::ToUtf8(value.name)}, {"type", value.type}};
    if (const auto number = value.Number())
        json["value"] = *number;
    else
        json["value"] = ShowRegistryValue(value);
    return json;
}

void Get(const Request& request)
{
    const RegistryKey key = RegistryKey::Open(request.key, PREFUTILS::kRegistryRead);
    const auto value = key.Value(TvlPlatform::FromUtf8(request.name));
    if (!value)
        EndWithBadInput(TvlPlatform::ToUtf8(key.Path()) + " has no value \"" + request.name + "\"");
    std::cout << (request.json ? Dump(Describe(*value)) : ShowRegistryValue(*value)) << '\n';
}

void List(const Request& request)
{
    const RegistryKey key = RegistryKey::Open(request.key, PREFUTILS::kRegistryRead);
    nlohmann::ordered_json json{{"keys", nlohmann::ordered_json::array()}, {"values", nlohmann::ordered_json::array()}};
    for (const std::wstring& subkey : key.Subkeys())
        json["keys"].push_back(TvlPlatform::ToUtf8(subkey));
    for (const RegistryEntry& value : key.Values())
        json["values"].push_back(Describe(value));
    if (request.json) {
        std::cout << Dump(json) << '\n';
        return;
    }
    for (const auto& subkey : json["keys"])
        std::cout << subkey.get<std::string>() << "\\\n";
    for (const auto& value : json["values"])
        std::cout << value["name"].get<std::string>() << " = "
                  << (value["value"].is_string() ? value["value"].get<std::string>() : value["value"].dump()) << '\n';
}

std::vector<BYTE> TextData(const std::string& text)
{
    const std::wstring wide = TvlPlatform::FromUtf8(text);
    std::vector<BYTE> data((wide.size() + 1) * sizeof(wchar_t));
    std::memcpy(data.data(), wide.c_str(), data.size());
    return data;
}

/// The number that the whole text is; the command ends when it is none.
DWORD ParseNumber(const std::string& text, int base)
{
    std::uint32_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, failed] = std::from_chars(text.data(), end, number, base);
    if (failed != std::errc() || rest != end)
        EndWithBadInput("\"" + text + "\" is no number from 0 to 4294967295");
    return number;
}

std::vector<BYTE> NumberData(const std::string& text)
{
    const DWORD number = ParseNumber(text, 10);
    std::vector<BYTE> data(sizeof number);
    std::memcpy(data.data(), &number, sizeof number);
    return data;
}

std::vector<BYTE> BinaryData(const std::string& text)
{
    if (text.size() % 2 != 0 || text.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos)
        EndWithBadInput("\"" + text + "\" is no row of hexadecimal bytes such as 01ff");
    std::vector<BYTE> data;
    for (std::size_t i = 0; i < text.size(); i += 2)
        data.push_back(static_cast<BYTE>(ParseNumber(text.substr(i, 2), 16)));
    return data;
}

struct ValueType {
    const char* name;
    DWORD type;
    std::vector<BYTE> (*data)(const std::string& text);
};

constexpr ValueType kTypes[] = {
    {"text", PREFUTILS::kRegistryText, TextData},
    {"expand", PREFUTILS::kRegistryExpandableText, TextData},
    {"dword", PREFUTILS::kRegistryDword, NumberData},
    {"binary", PREFUTILS::kRegistryBinary, BinaryData},
};

void Set(const Request& request)
{
    for (const auto& [name, type, data] : kTypes) {
        if (request.type != name)
            continue;
        const RegistryEntry value{TvlPlatform::FromUtf8(request.name), type, data(request.text)};
        RegistryKey::Open(request.key, PREFUTILS::kRegistryWrite, true).SetValue(value);
        return;
    }
    EndWithBadInput("\"" + request.type + "\" is no type: text, expand, dword or binary");
}

void Delete(const Request& request, bool hasName)
{
    if (hasName)
        return RegistryKey::Open(request.key, PREFUTILS::kRegistryWrite)
            .DeleteValue(TvlPlatform::FromUtf8(request.name));
    const std::wstring path = FullRegistryPath(request.key);
    if (const LONG status = WUTLRegistry::DeleteRegistryKey(path.c_str()); status != 0)
        EndWithRegistryStatus(path, status);
}

void Export(const Request& request)
{
    const std::string text = ExportRegistryKey(request.key);
    if (request.file.empty()) {
        std::cout << text;
        return;
    }
    // As registry editors write and read it.
    std::wstring lines = L"\xFEFF";
    for (const wchar_t c : TvlPlatform::FromUtf8(text))
        lines += c == L'\n' ? std::wstring(L"\r\n") : std::wstring(1, c);
    const auto units = TvlPlatform::ToUtf16Le(lines);
    const auto written = TvlUtils::SystemIO::File::WriteAside(
        TvlPlatform::FromUtf8(request.file), {reinterpret_cast<const char*>(units.data()), units.size()});
    if (!written)
        EndWithBadInput(request.file + ": " + TvlPlatform::ToUtf8(written.Reason()));
}

CLI::App* AddKeyCommand(CLI::App& registry, const char* name, const char* what, Request& request)
{
    CLI::App* const command = registry.add_subcommand(name, what);
    command->add_option("key", request.key, "a key such as \"HKEY_CURRENT_USER\\Software\", or HKCU for the root")
        ->required();
    return command;
}
}   // namespace

void AddRegistryCommand(CLI::App& app)
{
    const auto request = std::make_shared<Request>();
    CLI::App* const registry = app.add_subcommand("registry", "shows and changes the registry");
    registry->require_subcommand(1);

    CLI::App* const get = AddKeyCommand(*registry, "get", "shows a value", *request);
    get->add_option("name", request->name, "the value's name; without it the key's unnamed value");
    get->add_flag("--json", request->json, "print a JSON object");
    get->callback([request] { Get(*request); });

    CLI::App* const set = AddKeyCommand(*registry, "set", "sets a value, and makes its key", *request);
    set->add_option("name", request->name, "the value's name; empty for the key's unnamed value")->required();
    set->add_option("value", request->text, "what it is set to")->required();
    set->add_option("--type", request->type, "text (if nothing is said), expand, dword or binary");
    set->callback([request] { Set(*request); });

    CLI::App* const list = AddKeyCommand(*registry, "list", "lists subkeys and values", *request);
    list->add_flag("--json", request->json, "print a JSON object");
    list->callback([request] { List(*request); });

    CLI::App* const remove =
        AddKeyCommand(*registry, "delete", "deletes a value, or a key with all below it", *request);
    const CLI::Option* const named = remove->add_option("name", request->name, "the value's name");
    remove->callback([request, named] { Delete(*request, named->count() > 0); });

    CLI::App* const exporting = AddKeyCommand(*registry, "export", "shows a key and all below it", *request);
    exporting->add_option("--output,-o", request->file, "a registration file (.reg) to make");
    exporting->callback([request] { Export(*request); });
}
