#include "siblings/TvlUtils/IniParser.h"

#include "siblings/TvlUtils/SystemIO.h"

namespace TvlUtils {

namespace {
std::string BytesOf(const TvlString& path)
{
    std::string bytes;
    static_cast<void>(SystemIO::File::ReadAll(path, bytes));   // leaves them empty when it fails
    return bytes;
}
}   // namespace

IniParser::IniParser(const TvlString& path) : m_path(path), m_text(BytesOf(path)) { }

std::vector<IniParser::Section> IniParser::GetAllData() const
{
    std::vector<Section> sections;
    for (ProfileText::SectionData& section : m_text.AllData()) {
        std::vector<Entry> entries;
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
    ProfileText changed = m_text;
    if (!changed.SetValue(section, name, value) || !SystemIO::File::WriteAside(m_path, changed.Bytes()))
        return false;
    m_text = std::move(changed);
    return true;
}

}   // namespace TvlUtils
