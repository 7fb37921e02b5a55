#include "WorkspaceSettings.h"

#include "CPluginStates.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlPref/IniIoPolicy.h"
#include "siblings/TvlPref/PrefManager.h"
#include "siblings/TvlUtils/IniParser.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <algorithm>
#include <iterator>

using TvlPlatform::ToUtf8;
using TvlPref::IniIoPolicy;

namespace {
using Kind = PreferenceChange::Kind;

constexpr int kLongest = 300;   // characters of a value that are shown

constexpr const char* kHeadings[] = {
    "where plug-ins are loaded from:\n",
    "values that this application has no preference for:\n",
    "other values:\n",
};

Kind KindOf(const PreferenceTree::Place& place)
{
    const TvlString& plugIns = CPluginStates::PluginDirs.GetName();
    if (place.section.CompareNoCase(plugIns.Left(plugIns.Find(L'/'))) == 0)
        return Kind::PlugIns;
    const TvlString name = place.section + L"/" + place.name;
    return CAppPrefManager::GetInstance().Find(name) ? Kind::Other : Kind::Unknown;
}

std::string Named(const PreferenceTree::Place& place) { return Quoted(place.section + L"/" + place.name); }

std::string ShowChange(const PreferenceChange& change)
{
    const std::string head = std::string("  ") + change.sign + ' ' + Named(change.place) + ": ";
    if (change.sign == '~')
        return head + Quoted(change.before) + " becomes " + Quoted(change.after) + '\n';
    return head + Quoted(change.sign == '+' ? change.after : change.before) + '\n';
}

bool IsHexadecimal(std::wstring_view digits)
{
    return digits.size() % 4 == 0 && digits.find_first_not_of(L"0123456789abcdefABCDEF") == std::wstring_view::npos;
}

/// What is wrong with a text as it stands in the file; empty when nothing is.
std::string Problem(const TvlString& text)
{
    if (text.Std().starts_with(L'>') && !IsHexadecimal(text.Std().substr(1)))
        return "is read as other text than it was written from";
    const TvlString meant = IniIoPolicy::Decode(text);
    if (meant.Find(L'\0') >= 0)
        return "ends at a zero character";
    return IniIoPolicy::ReadsBack(meant) ? "" : "would not be read back once it is saved again";
}

void AddProblem(std::string& report, const PreferenceTree::Place& place, const char* part, const TvlString& text)
{
    if (const std::string problem = Problem(text); !problem.empty())
        report += "  " + Named(place) + ": the " + part + ' ' + Quoted(text) + ' ' + problem + '\n';
}
}   // namespace

std::string Shown(const TvlString& text)
{
    const TvlString part = text.Left(kLongest);
    std::wstring shown;
    for (const wchar_t c : part.Std()) {
        const bool isControl = c < L' ' || (c >= 0x7F && c < 0xA0) || (c >= 0x200E && c <= 0x202E)
            || (c >= 0x2066 && c <= 0x2069);   // the latter turn the direction of what is shown
        if (isControl)
            shown += TvlString().Format(L"\\u%04x", static_cast<unsigned>(c)).Std();
        else
            shown += c;
    }
    return ToUtf8(shown) + (text.GetLength() > kLongest ? "..." : "");
}

std::string Quoted(const TvlString& text) { return '"' + Shown(text) + '"'; }

std::vector<PreferenceChange> CompareTrees(const PreferenceTree& before, const PreferenceTree& after)
{
    std::vector<PreferenceChange> changes;
    for (const auto& [place, value] : before.All())
        if (!after.All().contains(place))
            changes.push_back({'-', KindOf(place), place, value, {}});
    for (const auto& [place, value] : after.All()) {
        const auto old = before.All().find(place);
        if (old == before.All().end())
            changes.push_back({'+', KindOf(place), place, {}, value});
        else if (old->second != value)
            changes.push_back({'~', KindOf(place), place, old->second, value});
    }
    std::stable_sort(changes.begin(), changes.end(), [](const PreferenceChange& a, const PreferenceChange& b) {
        return a.kind != b.kind ? a.kind < b.kind : a.place < b.place;
    });
    return changes;
}

std::string ShowChanges(const std::vector<PreferenceChange>& changes)
{
    std::string text;
    const PreferenceChange* last = nullptr;
    for (const PreferenceChange& change : changes) {
        if (!last || last->kind != change.kind)
            text += kHeadings[static_cast<int>(change.kind)];
        text += ShowChange(change);
        last = &change;
    }
    return text;
}

std::string LintSettings(const TvlString& path)
{
    std::vector<PreferenceChange> foreign = CompareTrees({}, PreferenceTree::FromSettings(path));
    std::erase_if(foreign, [](const PreferenceChange& change) { return change.kind == Kind::Other; });
    std::string report;
    for (const auto& [section, entries] : TvlUtils::IniParser(path).GetAllData())
        for (const auto& [name, value] : entries) {
            AddProblem(report, {section, IniIoPolicy::Decode(name)}, "name", name);
            AddProblem(report, {section, IniIoPolicy::Decode(name)}, "value", value);
        }
    return ShowChanges(foreign) + (report.empty() ? "" : "values that don't keep:\n" + report);
}
