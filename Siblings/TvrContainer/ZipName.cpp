// Names of entries, each of which must be a place below the folder that an archive is unpacked to, on every system.
#include "TvrContainer/ZipDirectory.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvrContainer/DocContainer.h"

#include <algorithm>
#include <string_view>

namespace TvrContainers {

namespace {
// Windows takes these for devices, whatever the folder and the extension; raised digits count as digits there.
constexpr std::string_view kDevices[] = {"con", "conin$", "conout$", "prn", "aux", "nul", "com1", "com2", "com3",
    "com4", "com5", "com6", "com7", "com8", "com9", "com\u00B9", "com\u00B2", "com\u00B3", "lpt1", "lpt2", "lpt3",
    "lpt4", "lpt5", "lpt6", "lpt7", "lpt8", "lpt9", "lpt\u00B9", "lpt\u00B2", "lpt\u00B3"};

bool IsDevice(std::string_view element)
{
    std::string stem(element.substr(0, element.find('.')));
    stem.erase(stem.find_last_not_of(' ') + 1);   // Windows passes over blanks before the point
    std::transform(stem.begin(), stem.end(), stem.begin(),
        [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; });
    return std::find(std::begin(kDevices), std::end(kDevices), stem) != std::end(kDevices);
}

/// Whether there are control characters, of ASCII or of the block behind it: terminals obey both.
bool HasControls(std::string_view name)
{
    const auto isControl = [](char c) { return (c >= 0 && c < ' ') || c == 0x7F; };
    // U+0080 to U+009F in UTF-8.
    const auto isLater = [](unsigned char lead, unsigned char c) { return lead == 0xC2 && c >= 0x80 && c < 0xA0; };
    return std::any_of(name.begin(), name.end(), isControl)
        || std::adjacent_find(name.begin(), name.end(), isLater) != name.end();
}

const char* RefusedElement(std::string_view element)
{
    if (element.empty())
        return "its name has an empty element";
    // Among them "." and "..". Windows leaves these characters away at the end.
    if (element.ends_with('.') || element.ends_with(' '))
        return "its name has an element that ends with a point or a blank";
    return IsDevice(element) ? "its name is that of a device" : nullptr;
}
}   // namespace

bool IsUtf8(const std::string& text) { return TvlPlatform::ToUtf8(TvlPlatform::FromUtf8(text)) == text; }

bool IsUtf8Comment(const std::string& comment)
{
    const auto isControl = [](char c) { return c >= 0 && c < ' ' && c != '\t' && c != '\n' && c != '\r'; };
    return std::none_of(comment.begin(), comment.end(), isControl) && IsUtf8(comment);
}

std::string RefusedName(const std::string& name)
{
    if (name.empty() || name.size() > DocContainer::kMaxNameBytes)
        return "its name is empty or too long";
    if (HasControls(name))
        return "its name has control characters";
    // Drives, streams of files, and Windows' separator.
    if (name.find_first_of(":\\") != name.npos)
        return "its name has a colon or a backslash";
    if (!IsUtf8(name))
        return "its name is no UTF-8";
    std::string_view rest(name);
    if (rest.ends_with('/'))
        rest.remove_suffix(1);
    for (bool isLast = false; !isLast;) {
        const std::size_t slash = rest.find('/');
        isLast = slash == rest.npos;
        if (const char* const reason = RefusedElement(rest.substr(0, slash)))
            return reason;
        rest.remove_prefix(isLast ? rest.size() : slash + 1);
    }
    return {};
}

}   // namespace TvrContainers
