// The desktop through the Windows shell.
#include "Windows/SystemPorts.h"

#include <memory>
#include <windows.h>

#include <shellapi.h>
#include <shlobj.h>

namespace Ports {

namespace {
/// COM for the calling thread, for a while. A thread that has it in another form keeps that.
class ComOnThread {
public:
    ComOnThread() : m_result(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) { }
    ComOnThread(const ComOnThread&) = delete;
    ComOnThread& operator=(const ComOnThread&) = delete;
    ~ComOnThread()
    {
        if (SUCCEEDED(m_result))
            CoUninitialize();
    }

private:
    HRESULT m_result;
};

class Win32Shell final : public Shell {
public:
    bool Execute(HWND owner, const wchar_t* verb, const wchar_t* target, const wchar_t* parameters,
        const wchar_t* folder, int show) override
    {
        constexpr INT_PTR kGreatestError = 32;   // of ShellExecuteW's results
        return reinterpret_cast<INT_PTR>(ShellExecuteW(owner, verb, target, parameters, folder, show)) > kGreatestError;
    }

    bool SelectInFolder(const std::wstring& path) override
    {
        const ComOnThread com;
        const std::unique_ptr<ITEMIDLIST, decltype(&ILFree)> item(ILCreateFromPathW(path.c_str()), ILFree);
        return item && SUCCEEDED(SHOpenFolderAndSelectItems(item.get(), 0, nullptr, 0));
    }

    std::wstring WindowsFolder() const override
    {
        std::wstring folder(GetWindowsDirectoryW(nullptr, 0), L'\0');
        folder.resize(GetWindowsDirectoryW(folder.data(), static_cast<UINT>(folder.size())));
        return folder;
    }
};
}   // namespace

template <>
Shell& SystemPort<Shell>()
{
    static Win32Shell shell;
    return shell;
}

}   // namespace Ports
