#include "siblings/TvlUtils/TextStreamWriter.h"

#include "siblings/TvlPlatform/TextEncoding.h"

#include <iterator>
#include <utility>

namespace TvlUtils {

namespace {
std::string Latin1(std::wstring_view text)
{
    std::string bytes;
    for (const wchar_t c : text)
        bytes += static_cast<unsigned long>(c) < 256 ? static_cast<char>(c) : '?';
    return bytes;
}

std::string Utf16Le(std::wstring_view text)
{
    const auto bytes = TvlPlatform::ToUtf16Le(text);
    return std::string(bytes.begin(), bytes.end());
}

std::string Utf16Be(std::wstring_view text)
{
    std::string bytes = Utf16Le(text);
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
        std::swap(bytes[i], bytes[i + 1]);
    return bytes;
}

using Encode = std::string (*)(std::wstring_view);
constexpr Encode kEncodings[] = {Latin1, Utf16Le, Utf16Be, TvlPlatform::ToUtf8};   // in the order of TextEncoding
}   // namespace

bool TextStreamWriter::Write(const TvlString& text)
{
    const auto index = static_cast<std::size_t>(m_encoding);
    if (index >= std::size(kEncodings))
        return false;
    const std::string bytes = kEncodings[index](text);
    return m_stream.Write(bytes.data(), bytes.size());
}

}   // namespace TvlUtils
