// Private profile files over the file layer.
#include "Windows/SystemPorts.h"

#include "siblings/TvlUtils/ProfileText.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <algorithm>
#include <mutex>

namespace Ports {

namespace {
namespace File = TvlUtils::SystemIO::File;
using TvlUtils::ProfileText;

/// Copies a text that ends with the buffer at the latest.
DWORD CopyText(std::wstring_view text, wchar_t* buffer, DWORD size)
{
    const std::size_t count = text.copy(buffer, size - 1);
    buffer[count] = L'\0';
    return static_cast<DWORD>(count);
}

/// Copies names, each with its zero, and one more zero.
DWORD CopyNames(const std::vector<std::wstring>& names, wchar_t* buffer, DWORD size)
{
    std::wstring list;
    for (const std::wstring& name : names)
        list += name + L'\0';
    if (size < 2 || list.size() < size)
        return CopyText(list, buffer, size);
    CopyText(list, buffer, size - 1);
    buffer[size - 1] = L'\0';
    return size - 2;
}

std::wstring WithoutBlanksAtEnd(const wchar_t* text)
{
    const std::wstring whole = text ? text : L"";
    return whole.substr(0, whole.find_last_not_of(L' ') + 1);
}

class LinuxProfileFiles final : public ProfileFiles {
public:
    DWORD GetText(const wchar_t* section, const wchar_t* key, const wchar_t* defaultText, wchar_t* buffer, DWORD size,
        const wchar_t* file) const override
    {
        if (size == 0)
            return 0;
        std::string bytes;
        // A file that can't be read is an empty one.
        static_cast<void>(File::ReadAll(file, bytes, ProfileText::kMaxBytes));
        const ProfileText text(bytes);
        if (!section)
            return CopyNames(text.Sections(), buffer, size);
        if (!key)
            return CopyNames(text.Keys(section), buffer, size);
        const auto value = text.Value(section, key);
        return CopyText(value ? *value : WithoutBlanksAtEnd(defaultText), buffer, size);
    }

    bool SetText(const wchar_t* section, const wchar_t* key, const wchar_t* text, const wchar_t* file) override
    {
        if (!section)
            return false;
        const std::scoped_lock hold(m_lock);   // writers of one process don't undo each other's work
        std::string bytes;
        if (const auto read = File::ReadAll(file, bytes, ProfileText::kMaxBytes); !read && !read.IsMissing())
            return false;
        ProfileText profile(bytes);
        if (!key)
            profile.DeleteSection(section);
        else if (!text)
            profile.DeleteKey(section, key);
        else if (!profile.SetValue(section, key, text))
            return false;
        return static_cast<bool>(File::WriteAside(file, profile.Bytes()));
    }

private:
    std::mutex m_lock;
};
}   // namespace

template <>
ProfileFiles& SystemPort<ProfileFiles>()
{
    static LinuxProfileFiles files;
    return files;
}

}   // namespace Ports
