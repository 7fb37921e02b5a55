#include "siblings/TvlUtils/ProfileText.h"

#include "TvlUtils/SeenNames.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlPlatform/TvlString.h"

#include <algorithm>

namespace TvlUtils {

namespace {
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16Mark = "\xFF\xFE";

std::string_view Trimmed(std::string_view text)
{
    // Called several times for every line: the searches of string_view call the C library for each character.
    const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

/// The name of the section that a line begins; empty when it begins none.
std::optional<std::string_view> SectionName(std::string_view line)
{
    line = Trimmed(line);
    if (!line.starts_with('['))
        return std::nullopt;   // as most lines: they are looked through no further
    const std::size_t end = line.rfind(']');
    return end == std::string_view::npos ? std::nullopt : std::optional(Trimmed(line.substr(1, end - 1)));
}

struct Entry {
    std::string_view key;
    std::string_view value;
};

std::optional<Entry> EntryOf(std::string_view line)
{
    line = Trimmed(line);
    const std::size_t equals = line.find('=');
    if (line.starts_with(';') || line.starts_with('[') || equals == std::string_view::npos)
        return std::nullopt;
    const Entry entry{Trimmed(line.substr(0, equals)), Trimmed(line.substr(equals + 1))};
    return entry.key.empty() ? std::nullopt : std::optional(entry);
}

std::string_view Unquoted(std::string_view value)
{
    const bool quoted = value.size() > 1 && value.front() == value.back() && (value[0] == '"' || value[0] == '\'');
    return quoted ? value.substr(1, value.size() - 2) : value;
}

bool SameName(std::string_view bytes, std::wstring_view name)
{
    // No character has more than 4 bytes or fewer than one: long lines are told without a look at them.
    if (bytes.size() > 4 * name.size() || 4 * bytes.size() < name.size())
        return false;
    const std::wstring text = TvlPlatform::FromUtf8(bytes);
    return TvlStringViewT<wchar_t>(std::wstring_view(text)).CompareNoCase(name) == 0;
}

std::wstring_view WithoutBlanks(std::wstring_view text)
{
    const std::size_t first = text.find_first_not_of(L" \t");
    return first == std::wstring_view::npos ? std::wstring_view()
                                            : text.substr(first, text.find_last_not_of(L" \t") - first + 1);
}

bool HasOneOf(std::wstring_view text, std::wstring_view refused)
{
    return text.find_first_of(refused) != std::wstring_view::npos;
}

bool IsBlank(const std::string& line) { return Trimmed(line).empty(); }
}   // namespace

ProfileText::ProfileText(std::string_view bytes)
{
    std::string converted;
    if (bytes.starts_with(kUtf16Mark)) {
        m_encoding = Encoding::Utf16;
        const std::string_view units = bytes.substr(kUtf16Mark.size());
        converted = TvlPlatform::ToUtf8(TvlPlatform::FromUtf16Le(units.data(), units.size()));
        bytes = converted;
    } else if (bytes.starts_with(kUtf8Mark)) {
        m_encoding = Encoding::Utf8Marked;
        bytes.remove_prefix(kUtf8Mark.size());
    }
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size() - 1) + 1;
        m_lines.emplace_back(bytes.substr(0, end));
        bytes.remove_prefix(end);
    }
    if (!m_lines.empty() && m_lines[0].ends_with('\n') && !m_lines[0].ends_with("\r\n"))
        m_lineEnd = "\n";
}

std::string ProfileText::Bytes() const
{
    std::string text;
    for (const std::string& line : m_lines)
        text += line;
    if (m_encoding == Encoding::Utf8)
        return text;
    if (m_encoding == Encoding::Utf8Marked)
        return std::string(kUtf8Mark) + text;
    const auto units = TvlPlatform::ToUtf16Le(TvlPlatform::FromUtf8(text));
    return std::string(kUtf16Mark).append(units.begin(), units.end());
}

std::optional<ProfileText::Range> ProfileText::FindSection(std::wstring_view section) const
{
    const std::wstring_view wanted = WithoutBlanks(section);
    const auto begins = [](const std::string& line) { return SectionName(line).has_value(); };
    const auto found = std::find_if(m_lines.begin(), m_lines.end(), [&](const std::string& line) {
        const auto name = SectionName(line);
        return name && SameName(*name, wanted);
    });
    if (found == m_lines.end())
        return std::nullopt;
    const auto end = std::find_if(found + 1, m_lines.end(), begins);
    return Range{
        static_cast<std::size_t>(found - m_lines.begin()) + 1, static_cast<std::size_t>(end - m_lines.begin())};
}

std::optional<std::size_t> ProfileText::FindKey(const Range& range, std::wstring_view key) const
{
    const std::wstring_view wanted = WithoutBlanks(key);
    for (std::size_t line = range.first; line < range.end; ++line)
        if (const auto entry = EntryOf(m_lines[line]); entry && SameName(entry->key, wanted))
            return line;
    return std::nullopt;
}

std::optional<std::wstring> ProfileText::Value(std::wstring_view section, std::wstring_view key) const
{
    const auto range = FindSection(section);
    const auto line = range ? FindKey(*range, key) : std::nullopt;
    if (!line)
        return std::nullopt;
    return TvlPlatform::FromUtf8(Unquoted(EntryOf(m_lines[*line])->value));
}

std::vector<std::wstring> ProfileText::Sections() const
{
    std::vector<std::wstring> names;
    for (const std::string& line : m_lines)
        if (const auto name = SectionName(line))
            names.push_back(TvlPlatform::FromUtf8(*name));
    return names;
}

std::vector<std::wstring> ProfileText::Keys(std::wstring_view section) const
{
    std::vector<std::wstring> keys;
    const Range range = FindSection(section).value_or(Range{0, 0});
    for (std::size_t line = range.first; line < range.end; ++line)
        if (const auto entry = EntryOf(m_lines[line]))
            keys.push_back(TvlPlatform::FromUtf8(entry->key));
    return keys;
}

void ProfileText::ForEachSection(const std::function<void(SectionData&)>& take) const
{
    SeenNames names, keys;   // of the file, and of the section
    std::optional<SectionData> section;
    for (const std::string& line : m_lines) {
        if (const auto name = SectionName(line)) {
            if (section)
                take(*section);
            section = SectionData{TvlPlatform::FromUtf8(*name), {}};
            keys.Clear();
            if (!names.Add(section->name))
                section.reset();
        } else if (const auto entry = section ? EntryOf(line) : std::nullopt) {
            std::wstring key = TvlPlatform::FromUtf8(entry->key);
            if (keys.Add(key))
                section->entries.push_back({std::move(key), TvlPlatform::FromUtf8(Unquoted(entry->value))});
        }
    }
    if (section)
        take(*section);
}

std::vector<ProfileText::SectionData> ProfileText::AllData() const
{
    std::vector<SectionData> sections;
    ForEachSection([&](SectionData& section) { sections.push_back(std::move(section)); });
    return sections;
}

bool ProfileText::SetValue(std::wstring_view section, std::wstring_view key, std::wstring_view value)
{
    constexpr std::wstring_view kBreaks(L"\r\n\0", 3);
    section = WithoutBlanks(section);
    key = WithoutBlanks(key);
    const bool refused = HasOneOf(section, kBreaks) || HasOneOf(section, L"]") || HasOneOf(key, kBreaks)
        || HasOneOf(key, L"=") || HasOneOf(value, kBreaks) || key.empty() || key[0] == L';' || key[0] == L'[';
    if (refused)
        return false;
    if (!m_lines.empty() && !m_lines.back().ends_with('\n'))
        m_lines.back() += m_lineEnd;
    auto range = FindSection(section);
    if (!range) {
        m_lines.push_back("[" + TvlPlatform::ToUtf8(section) + "]" + m_lineEnd);
        range = Range{m_lines.size(), m_lines.size()};
    }
    const std::string line = TvlPlatform::ToUtf8(key) + "=" + TvlPlatform::ToUtf8(value) + m_lineEnd;
    if (const auto old = FindKey(*range, key)) {
        m_lines[*old] = line;
        return true;
    }
    while (range->end > range->first && IsBlank(m_lines[range->end - 1]))
        --range->end;
    m_lines.insert(m_lines.begin() + static_cast<std::ptrdiff_t>(range->end), line);
    return true;
}

void ProfileText::DeleteKey(std::wstring_view section, std::wstring_view key)
{
    const auto range = FindSection(section);
    if (const auto line = range ? FindKey(*range, key) : std::nullopt)
        m_lines.erase(m_lines.begin() + static_cast<std::ptrdiff_t>(*line));
}

void ProfileText::DeleteSection(std::wstring_view section)
{
    if (const auto range = FindSection(section))
        m_lines.erase(m_lines.begin() + static_cast<std::ptrdiff_t>(range->first) - 1,
            m_lines.begin() + static_cast<std::ptrdiff_t>(range->end));
}

}   // namespace TvlUtils
