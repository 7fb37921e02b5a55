#include "siblings/TvlUtils/TextStreamReader.h"

#include "siblings/TvlPlatform/TextEncoding.h"

#include <utility>

namespace TvlUtils {

namespace {
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16LittleMark = "\xFF\xFE";
constexpr std::string_view kUtf16BigMark = "\xFE\xFF";

std::string FromUtf16(std::string_view bytes)
{
    return TvlPlatform::ToUtf8(TvlPlatform::FromUtf16Le(bytes.data(), bytes.size()));
}
}   // namespace

std::optional<std::string> TextStreamReader::ReadUtf8(std::size_t limit)
{
    const long long left = m_file.GetLength() - m_file.GetPosition();
    if (!m_file || left < 0 || static_cast<unsigned long long>(left) > limit)
        return std::nullopt;
    std::string bytes(static_cast<std::size_t>(left), '\0');
    if (!m_file.Read(bytes.data(), bytes.size()))
        return std::nullopt;
    if (bytes.starts_with(kUtf8Mark))
        bytes.erase(0, kUtf8Mark.size());
    else if (bytes.starts_with(kUtf16LittleMark))
        bytes = FromUtf16(std::string_view(bytes).substr(kUtf16LittleMark.size()));
    else if (bytes.starts_with(kUtf16BigMark)) {
        for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
            std::swap(bytes[i], bytes[i + 1]);
        bytes = FromUtf16(std::string_view(bytes).substr(kUtf16BigMark.size()));
    }
    return bytes;
}

std::optional<TvlString> TextStreamReader::ReadToEnd(std::size_t limit)
{
    const auto bytes = ReadUtf8(limit);
    return bytes ? std::optional<TvlString>(TvlPlatform::FromUtf8(*bytes)) : std::nullopt;
}

}   // namespace TvlUtils
