#include "siblings/TvlUtils/IniParser.h"

#include "siblings/TvlUtils/LogMessage.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <algorithm>

namespace TvlUtils {

IniParser::IniParser(const TvlString& path) : m_path(path), m_text(Read()) { }

std::string IniParser::Read()
{
    std::string bytes;
    const auto read = SystemIO::File::ReadAll(m_path, bytes, ProfileText::kMaxBytes);
    const bool isLong = std::cmp_greater(std::count(bytes.begin(), bytes.end(), '\n'), kMaxLines);
    m_isComplete = (read && !isLong) || read.IsMissing();
    if (m_isComplete)
        return bytes;
    m_hasFailed = !isLong && !read.Is(std::errc::file_too_large);
    LogMessage(LogLevel::Warning,
        TvlString().Format(
            L"\"%s\" can't be read: %s", m_path.Std(), isLong ? L"it has too many lines" : read.Reason().Std()));
    return {};
}

std::vector<IniParser::Section> IniParser::GetAllData() const
{
    std::vector<Section> sections;
    for (ProfileText::SectionData& section : m_text.AllData()) {
        std::vector<Entry> entries;
        entries.reserve(section.entries.size());
        for (ProfileText::KeyValue& entry : section.entries)
            entries.emplace_back(std::move(entry.key), std::move(entry.value));
        sections.emplace_back(std::move(section.name), std::move(entries));
    }
    return sections;
}

TvlString IniParser::GetString(const TvlString& section, const TvlString& name, const TvlString& defaultValue) const
{
    const auto value = m_text.Value(section, name);
    return value ? TvlString(*value) : defaultValue;
}

bool IniParser::SetString(const TvlString& section, const TvlString& name, const TvlString& value)
{
    if (!m_isComplete)
        return false;   // what is there would be lost
    ProfileText changed = m_text;
    if (!changed.SetValue(section, name, value) || !SystemIO::File::WriteAside(m_path, changed.Bytes()))
        return false;
    m_text = std::move(changed);
    return true;
}

}   // namespace TvlUtils
