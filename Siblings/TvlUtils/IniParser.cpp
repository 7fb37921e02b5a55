#include "siblings/TvlUtils/IniParser.h"

#include "siblings/TvlUtils/LogMessage.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <string_view>

namespace TvlUtils {

namespace {
bool HasMoreLines(std::string_view bytes, std::size_t most)
{
    // Searched and not counted: the search takes many characters at a time.
    std::size_t lines = 0;
    for (std::size_t end = bytes.find('\n'); end != bytes.npos && lines <= most; end = bytes.find('\n', end + 1))
        ++lines;
    return lines > most;
}
}   // namespace

IniParser::IniParser(const TvlString& path) : m_path(path), m_text(Read()) { }

std::string IniParser::Read()
{
    std::string bytes;
    const auto read = SystemIO::File::ReadAll(m_path, bytes, ProfileText::kMaxBytes);
    const bool isLong = HasMoreLines(bytes, kMaxLines);
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
    ForEachSection([&](Section& section) { sections.push_back(std::move(section)); });
    return sections;
}

void IniParser::ForEachSection(const std::function<void(Section&)>& take) const
{
    m_text.ForEachSection([&](ProfileText::SectionData& data) {
        Section section(std::move(data.name), {});
        section.second.reserve(data.entries.size());
        for (ProfileText::KeyValue& entry : data.entries)
            section.second.emplace_back(std::move(entry.key), std::move(entry.value));
        take(section);
    });
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
